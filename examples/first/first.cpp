// A first program: a frame with a menu and a status bar, and a handler that answers the
// menu command "Hallo..." with a message box. The menu and its help texts are in first.rc.
#include <VmGui.h>

constexpr unsigned long long kHello = 101; // "&Hallo..." in first.rc

class FirstApplication : public GwApplication {};

// A chosen menu command reaches the frame's handlers as an activation of the menu.
class HelloHandler : public GwEventHandler {
public:
    explicit HelloHandler(GwFrame& frame) : mFrame(frame) {}

    int cbActivate(GwWindow& window) override {
        auto* const menu = dynamic_cast<GwMenu*>(&window);
        if (menu == nullptr || menu->selected() != kHello)
            return GwResultContinue; // "Beenden" and the rest go on to the frame
        GwMessageBox box(&mFrame);
        box.setText("Erstes Programm");
        box.setMessage("Hallo, Welt!");
        box.setIconStyle(GwMessageBox::eIconAsterisk);
        box.setVisible(true);
        return GwResultHandled | GwResultStop;
    }

private:
    GwFrame& mFrame;
};

int main(int argc, char** argv) {
    FirstApplication application;
    application.setArgs(argc, argv);
    auto* frame = new GwFrame(1, 1); // identifier 1, menu bar 1, a status bar
    frame->setText("Erstes Programm");
    frame->add(new HelloHandler(*frame)); // the frame keeps the handler
    frame->setVisible(true);
    application.run(); // until the frame is closed; its window takes the frame with it
    return application.result();
}
