// The demo's entry: the application object, its arguments, its windows and its loop.
#include "DemoApplication.h"

int main(int argc, char** argv) {
    DemoApplication application;
    application.setArgs(argc, argv);
    if (application.initInstance())
        application.run();
    application.exitInstance();
    return application.result();
}
