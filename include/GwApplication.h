// The one application object of a process: arguments, names, start-up hooks and the loop.
#pragma once

#include <String.h>

#include "GwObject.h"

class GwResource;

// The application object of a process: its arguments, names, start-up hooks and message
// loop.
//
// An application derives its own class from GwApplication; the program's entry code
// constructs it, sets the arguments and calls run().
//
// The first application constructed becomes the current one: its construction runs
// initInstance() of every enrolled GwStartup hook in table order, its destruction every
// exitInstance(). An application constructed while another is current is inert: it never
// becomes current and runs no hook.
class VMGUI_API GwApplication : public GwObject {
    GW_DECLARE_CLASS(GwApplication)

public:
    // What path() answers for.
    enum ePathType : int {
        eExecutableDirectory = 1, // the running executable's directory, with the separator
    };

    // What systemValue() answers for.
    enum eSystemValue : int {
        eScreenWidth = 1,      // GetSystemMetrics(SM_CXSCREEN)
        eScreenHeight = 2,     // GetSystemMetrics(SM_CYSCREEN)
        eDialogBaseUnitX = 3,  // low word of GetDialogBaseUnits()
        eDialogBaseUnitY = 4,  // high word of GetDialogBaseUnits()
        eWheelDelta = 5,       // always 120
        eWheelScrollLines = 6, // SPI_GETWHEELSCROLLLINES; 0 when the system does not answer
    };

    // When current: runs every hook's exitInstance() and is current no longer.
    ~GwApplication() override;

    // Both do nothing here and answer true.
    virtual bool initInstance();
    virtual bool exitInstance();
    // PostQuitMessage(0): the running loop ends.
    virtual GwApplication& exit();
    // GwWindow::msgLoop() until WM_QUIT.
    virtual GwApplication& run();

    // The current application (there must be one).
    static GwApplication& current();

    // The program's arguments as main received them (not copied: they must outlive the
    // application).
    GwApplication& setArgs(int argc, char const* const* argv);
    int argc() const { return mArgc; }
    // Null at or beyond the argument count.
    char const* argv(int i) const;

    // The program's exit code, kept for the entry code to return.
    GwApplication& setResult(int result);
    int result() const { return mResult; }

    // The application's name (the help file's name when no help name is set).
    GwApplication& setName(String const& name);
    // The name, or when none is set, the name of the object's run-time class.
    String name() const;

    // The help file of frames without a help file of their own; without one, a file named
    // after the application beside the executable.
    GwApplication& setHelpName(String const& name);
    // Empty until set.
    String const& HelpName() const { return mHelpName; }

    // Assigns to the first resource reference when first is true, else to the second.
    GwApplication& setResource(GwResource const& resource, bool first);
    // The resource reference that first selects; both stand for the executable until set.
    GwResource const& resource(bool first) const;

    // The process's module handle (HINSTANCE); null for an inert application.
    void* instance() const { return mInstance; }

    // For eExecutableDirectory, the running executable's directory ending with its
    // separator; for every other type an empty string.
    String path(ePathType type) const;
    // 0 for an unknown value.
    long systemValue(eSystemValue which) const;

    // The current application, or null.
    static GwApplication* mTheApplication;

protected:
    // An unnamed application, or one with a name; the first one constructed becomes current.
    GwApplication();
    explicit GwApplication(String const& name);
    // The copy takes the arguments, names, result and resource references. It becomes
    // current, running the hooks, only when no application is current.
    GwApplication(GwApplication const& other);
    // Copies the arguments, names, result and resource references; which application is
    // current is unchanged.
    GwApplication& operator=(GwApplication const& other);

private:
    void start();

    void* mInstance;
    int mResult;
    // The resource references (owned), created empty.
    GwResource* mFirstResource;
    GwResource* mSecondResource;
    int mArgc;
    char const* const* mArgv; // not owned
    String mName;
    String mHelpName;
};
