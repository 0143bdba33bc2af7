// The demo program: an application with a main frame and a multiple-document frame, a
// settings dialog built from a template, a message box, and text windows in the frames.
#pragma once

#include <string>
#include <vector>

#include <String.h>
#include <VmGui.h>

class DemoFrame;
class DemoMDIFrame;
class DemoText;

// The application: it reads the command line, makes the windows, answers the menu commands
// of both frames and keeps the font of every text window.
//
//   demo.exe                      the main frame
//   demo.exe --mdi                the multiple-document frame instead
//   --show menu|dialog|drawing|lists|open|color|message|controls|toolbar
//                                 open the "Ansicht" menu, the settings dialog, the drawing
//                                 view, the lists view, the open dialog, the colour dialog,
//                                 the message box, the gallery's dialog of every control
//                                 kind or a tool-bar tooltip at the start
//   --exit-after SECONDS          end by itself after that time
//   --ready-file PATH             write PATH once the window is up (and the menu or dialog open)
class DemoApplication : public GwApplication {
    GW_DECLARE_CLASS(DemoApplication)

public:
    DemoApplication();
    ~DemoApplication() override;

    // Reads the arguments and shows the first frame; false for a bad command line.
    bool initInstance() override;
    // Deletes the windows that are left and the font.
    bool exitInstance() override;

    static DemoApplication& demo();

    // The string of the executable's string table.
    String text(unsigned id) const;
    // The string with its first %d replaced by number and its first %s by extra.
    String format(unsigned id, int number, String const& extra = String()) const;
    // The strings from first on, up to the first missing one, as lines of a text window.
    String lines(unsigned first) const;

    // Carries out a menu command for frame; false for commands that are not the demo's.
    bool command(GwFrame& frame, unsigned long long id);
    // One tick of the timer that runs --show, --ready-file and --exit-after.
    void tick(GwFrame& frame);
    // The frame's window is gone.
    void forget(GwFrame* frame);

    // The text windows follow the font.
    void enrol(DemoText* text);
    void forget(DemoText* text);
    void* font() const { return mFont; }
    int fontPoints() const { return mPoints; }
    bool fontBold() const { return mBold; }
    // 0 sans serif, 1 serif, 2 typewriter: the radio buttons of the settings dialog.
    int fontFace() const { return mFace; }
    // Makes the font and gives it to every text window; the size menus follow.
    void setFont(int points, bool bold, int face);
    void setFont(int points, bool bold) { setFont(points, bold, mFace); }

private:
    DemoFrame& openMain();
    DemoMDIFrame& openMDI();
    void openSettings(GwFrame& owner);
    void showMessage(GwFrame& owner);
    void showInfo(GwFrame& owner);
    void startTour(GwFrame& frame);
    void requestQuit();
    bool parseArguments();

    // Options of the command line.
    bool mStartMDI;
    std::string mShow;
    int mExitAfter;
    std::string mReadyFile;

    DemoFrame* mMain;   // null once its window is gone
    DemoMDIFrame* mMDI; // null once its window is gone
    GwDialog* mDialog;  // the settings dialog while it is shown
    std::vector<DemoText*> mTexts;
    void* mFont; // HFONT, owned
    int mPoints;
    bool mBold;
    int mFace;
    int mTicks;
    bool mQuitting;
};

// The limits of the font size that the settings dialog takes.
inline constexpr int kSmallestPoints = 6;
inline constexpr int kLargestPoints = 36;

// Shows text in the frame's status bar until a menu is opened.
void demoStatus(GwFrame& frame, String const& text);

// A text window: an existing multi-line edit control of the platform, attached to a
// GwControl. Frames take it as their client.
class DemoText : public GwControl {
    GW_DECLARE_CLASS(DemoText)

public:
    DemoText(GwWindow& parent, String const& text);
    ~DemoText() override;

    void setFont(void* font);

private:
    static void* createWindow(GwWindow& parent, String const& text);
};

// The main frame: the demo's menu bar with the library's file and help menus, the status
// bar, and a text window as client.
class DemoFrame : public GwFrame {
    GW_DECLARE_CLASS(DemoFrame)

public:
    DemoFrame();

    // The ready text in the status bar.
    void showReady();

protected:
    // After a menu has closed, the status bar shows the ready text again.
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;
};

// The multiple-document frame: the demo's menu bar with the library's file, window and help
// menus, and document windows tiled side by side.
class DemoMDIFrame : public GwMDIFrame {
    GW_DECLARE_CLASS(DemoMDIFrame)

public:
    DemoMDIFrame();

    // The first three documents, tiled side by side.
    void addFirstDocuments();
    // One more document.
    GwMDIChildFrame& addDocument();
    void showReady();

protected:
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;

private:
    // Document number: title and text from the string table (1 to 3), or made up.
    GwMDIChildFrame& addDocument(int number);

    int mDocuments;
};

// The handler of both frames: menu commands, the timer, closing and the end of the window.
class DemoCommands : public GwEventHandler {
    GW_DECLARE_CLASS(DemoCommands)

public:
    // main: closing the frame ends the program; otherwise only the frame goes.
    DemoCommands(GwFrame& frame, bool main);

    int cbActivate(GwWindow& window) override;
    int cbTimer(GwWindow& window) override;
    int cbClose(GwWindow& window) override;
    int cbDestroy(GwWindow& window) override;

private:
    GwFrame* mFrame; // not owned: the handler goes with the frame
    bool mMain;
};

// The handler of the settings dialog: OK takes the values, Cancel drops them.
class DemoSettingsHandler : public GwEventHandler {
    GW_DECLARE_CLASS(DemoSettingsHandler)

public:
    DemoSettingsHandler() = default;

    int cbActivate(GwWindow& window) override;
};
