#include "GwApplication.h"

#include <windows.h>

#include "GwResource.h"
#include "GwStartup.h"
#include "GwWindow.h"

GwApplication* GwApplication::mTheApplication = nullptr;

GW_CLASS_NONE(GwApplication, "GwApplication", "GwObject")

GwApplication::GwApplication()
    : mInstance(nullptr), mResult(0), mFirstResource(new GwResource),
      mSecondResource(new GwResource), mArgc(0), mArgv(nullptr) {
    start();
}

GwApplication::GwApplication(String const& name)
    : mInstance(nullptr), mResult(0), mFirstResource(new GwResource),
      mSecondResource(new GwResource), mArgc(0), mArgv(nullptr), mName(name) {
    start();
}

GwApplication::GwApplication(GwApplication const& other)
    : GwObject(other), mInstance(nullptr), mResult(other.mResult), mFirstResource(new GwResource),
      mSecondResource(new GwResource), mArgc(other.mArgc), mArgv(other.mArgv), mName(other.mName),
      mHelpName(other.mHelpName) {
    // Assigned, so that an empty reference stays empty.
    *mFirstResource = *other.mFirstResource;
    *mSecondResource = *other.mSecondResource;
    start();
}

GwApplication& GwApplication::operator=(GwApplication const& other) {
    if (this != &other) {
        GwObject::operator=(other);
        mResult = other.mResult;
        *mFirstResource = *other.mFirstResource;
        *mSecondResource = *other.mSecondResource;
        mArgc = other.mArgc;
        mArgv = other.mArgv;
        mName = other.mName;
        mHelpName = other.mHelpName;
    }
    return *this;
}

// Makes this the current application unless there is one: a second application stays inert.
void GwApplication::start() {
    if (mTheApplication != nullptr)
        return;
    mInstance = GetModuleHandleA(nullptr);
    mTheApplication = this;
    GwStartup::run(true);
}

GwApplication::~GwApplication() {
    if (mTheApplication == this) {
        GwStartup::run(false);
        mTheApplication = nullptr;
    }
    delete mFirstResource;
    delete mSecondResource;
}

bool GwApplication::initInstance() {
    return true;
}

bool GwApplication::exitInstance() {
    return true;
}

GwApplication& GwApplication::exit() {
    PostQuitMessage(0);
    return *this;
}

GwApplication& GwApplication::run() {
    GwWindow::msgLoop();
    return *this;
}

GwApplication& GwApplication::current() {
    return *mTheApplication;
}

GwApplication& GwApplication::setArgs(int argc, char const* const* argv) {
    mArgc = argc;
    mArgv = argv;
    return *this;
}

char const* GwApplication::argv(int i) const {
    if (i < 0 || i >= mArgc || mArgv == nullptr)
        return nullptr;
    return mArgv[i];
}

GwApplication& GwApplication::setResult(int result) {
    mResult = result;
    return *this;
}

GwApplication& GwApplication::setName(String const& name) {
    mName = name;
    return *this;
}

String GwApplication::name() const {
    if (!mName.empty())
        return mName;
    return String(Class::name(isA()));
}

GwApplication& GwApplication::setHelpName(String const& name) {
    mHelpName = name;
    return *this;
}

GwApplication& GwApplication::setResource(GwResource const& resource, bool first) {
    *(first ? mFirstResource : mSecondResource) = resource;
    return *this;
}

GwResource const& GwApplication::resource(bool first) const {
    return *(first ? mFirstResource : mSecondResource);
}

String GwApplication::path(ePathType type) const {
    if (type != eExecutableDirectory)
        return String();
    char buffer[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, buffer, MAX_PATH);
    String file(buffer);
    std::size_t separator = file.findLastOf("\\/");
    if (separator == String::npos)
        return String();
    return file.substr(0, separator + 1);
}

long GwApplication::systemValue(eSystemValue which) const {
    switch (which) {
    case eScreenWidth:
        return GetSystemMetrics(SM_CXSCREEN);
    case eScreenHeight:
        return GetSystemMetrics(SM_CYSCREEN);
    case eDialogBaseUnitX:
        return LOWORD(GetDialogBaseUnits());
    case eDialogBaseUnitY:
        return HIWORD(GetDialogBaseUnits());
    case eWheelDelta:
        return 120;
    case eWheelScrollLines: {
        UINT lines = 0;
        if (!SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0))
            return 0;
        return static_cast<long>(lines);
    }
    }
    return 0;
}
