// Platform calls that fail under the library: the frame's deferred layout, the capture of a
// drag, a device that cannot be fetched, a clipboard held by someone else, metafiles that
// cannot be written, a menu destroyed behind the library's back, list controls that refuse
// a line, and a common dialog that cannot open. Each ends quietly with the stated result.
#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <vector>

#include <VmGui.h>

#include "BreakpointCounter.h"
#include "FailureTesting.h"
#include "ImportHook.h"
#include "TestWindows.h"

using namespace testing_failures;
using namespace testing_windows;

namespace {

HMODULE library() {
    return GetModuleHandleA("VmGui.dll");
}

RECT rectOf(HWND hwnd) {
    RECT rect{};
    GetWindowRect(hwnd, &rect);
    return rect;
}

bool same(RECT const& a, RECT const& b) {
    return EqualRect(&a, &b) != FALSE;
}

std::string temporaryPath(char const* name) {
    char folder[MAX_PATH] = {};
    GetTempPathA(MAX_PATH, folder);
    return std::string(folder) + name;
}

bool fileExists(std::string const& path) {
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

class PlatformFailure : public ::testing::Test {
protected:
    void TearDown() override { pumpMessages(); }

    ScopedApplication mApplication;
};

// ---- Frame layout

HDWP WINAPI refuseDeferredPositions(int) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

} // namespace

TEST_F(PlatformFailure, ALayoutWhosePositionsCannotBeDeferredMovesNothing) {
    BreakpointCounter breaks;
    auto* frame = new GwFrame(1, 0, true);
    HWND const hwnd = static_cast<HWND>(frame->window());
    WindowCloser closer{hwnd};
    ASSERT_NE(frame->statusBar(), nullptr);
    HWND const bar = static_cast<HWND>(frame->statusBar()->window());
    SetWindowPos(hwnd, nullptr, 0, 0, 400, 300, SWP_NOZORDER | SWP_NOACTIVATE);
    RECT const placed = rectOf(bar);
    {
        ImportHook hook(library(), "user32.dll", "BeginDeferWindowPos",
                        reinterpret_cast<void*>(&refuseDeferredPositions));
        ASSERT_TRUE(hook.installed());
        SetWindowPos(hwnd, nullptr, 0, 0, 500, 420, SWP_NOZORDER | SWP_NOACTIVATE);
        EXPECT_TRUE(same(rectOf(bar), placed)) << "the bar stays where it was";
    }
    SetWindowPos(hwnd, nullptr, 0, 0, 520, 440, SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_FALSE(same(rectOf(bar), placed)) << "the next layout places the bar again";
    EXPECT_EQ(breaks.count(), 0);
}

// ---- Dragging a control bar

namespace {

// The capture stays with another window, as when someone else holds it.
HWND gCaptureKeeper = nullptr;

HWND WINAPI keepCaptureElsewhere(HWND) {
    return SetCapture(gCaptureKeeper);
}

std::vector<RECT> gFocusRectangles;

BOOL WINAPI recordFocusRectangle(HDC, RECT const* rect) {
    gFocusRectangles.push_back(*rect);
    return TRUE;
}

} // namespace

TEST_F(PlatformFailure, ADragWithoutTheCaptureEndsAtOnceAndErasesItsRectangle) {
    BreakpointCounter breaks;
    auto* frame = new GwFrame(1, 0, false);
    HWND const hwnd = static_cast<HWND>(frame->window());
    WindowCloser closer{hwnd};
    HWND const child = rawWindow(hwnd, 0x31, 10, 20, 80, 25);
    GwEventData data(child);
    GwDockBar* const bar = GwDockBar::newInstance(&data);
    ASSERT_NE(bar, nullptr);
    HWND const keeper = rawWindow();
    WindowCloser keeperCloser{keeper};
    gCaptureKeeper = keeper;
    gFocusRectangles.clear();
    // A button release queued for the bar would end a drag that did run; it must stay queued.
    PostMessageA(child, WM_KEYDOWN, 'A', 1);
    {
        ImportHook capture(library(), "user32.dll", "SetCapture",
                           reinterpret_cast<void*>(&keepCaptureElsewhere));
        ImportHook focus(library(), "user32.dll", "DrawFocusRect",
                         reinterpret_cast<void*>(&recordFocusRectangle));
        ASSERT_TRUE(capture.installed());
        ASSERT_TRUE(focus.installed());
        GwPosition start(15, 30);
        EXPECT_EQ(&bar->dragBegin(start), bar);
    }
    EXPECT_EQ(GetCapture(), keeper);
    ReleaseCapture();
    ASSERT_EQ(gFocusRectangles.size(), 2u) << "drawn once, erased once";
    EXPECT_TRUE(same(gFocusRectangles[0], gFocusRectangles[1]));
    EXPECT_TRUE(same(gFocusRectangles[0], rectOf(child)));
    MSG msg;
    EXPECT_TRUE(PeekMessageA(&msg, child, WM_KEYDOWN, WM_KEYDOWN, PM_NOREMOVE))
        << "the drag's loop did not run";
    EXPECT_EQ(breaks.count(), 0);
}

// ---- Graphics context

TEST_F(PlatformFailure, AContextWhoseDeviceCannotBeFetchedDrawsNothing) {
    BreakpointCounter breaks;
    HWND const gone = rawWindow();
    DestroyWindow(gone);
    auto draw = [&] {
        GwEventData data(gone);
        GwGC* const gc = GwGC::newInstance(&data);
        ASSERT_NE(gc, nullptr);
        EXPECT_EQ(gc->device(), nullptr) << "GetDC of a destroyed window fails";
        gc->drawStart();
        EXPECT_EQ(gc->device(), nullptr);
        gc->setColor(0xFF0000ul).setFont("Arial", 12).setLineStyle(GwGC::eSolid, 2);
        gc->drawLine(GwPosition(0, 0), GwPosition(50, 50));
        gc->drawRectangle(GwRectangle(1, 1, 20, 20), true);
        gc->drawCircle(GwPosition(10, 10), 5, true);
        gc->drawText("nichts", GwPosition(3, 3));
        GwDimension const size = gc->calcText("nichts");
        EXPECT_EQ(size.width(), 0);
        gc->drawStop();
        delete gc;
    };
    draw();
    EXPECT_LT(heapGrowth(draw, 50), 20);

    // A context on a window object that has no window has no device either.
    GwDockBar windowless;
    GwGC onNothing(&windowless, nullptr);
    EXPECT_EQ(onNothing.device(), nullptr);
    onNothing.drawLine(GwPosition(0, 0), GwPosition(9, 9));
    EXPECT_EQ(breaks.count(), 0);
}

// ---- Metafile context

namespace {

// Empties the clipboard of this thread.
void emptyClipboard() {
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    CloseClipboard();
}

void recordSquare(GwGCWMF& metafile) {
    metafile.setDimension(40, 40);
    metafile.record();
    metafile.drawRectangle(GwRectangle(5, 5, 30, 30), true);
}

} // namespace

TEST_F(PlatformFailure, AMetafileStaysWithItsContextWhileTheClipboardIsHeldElsewhere) {
    BreakpointCounter breaks;
    emptyClipboard();
    GwGCWMF metafile;
    recordSquare(metafile);
    {
        ClipboardHolder holder;
        ASSERT_TRUE(holder.holding());
        ASSERT_FALSE(OpenClipboard(nullptr)) << "the clipboard is held by another thread";
        metafile.setClipboard();
    }
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_ENHMETAFILE));
    EXPECT_NE(metafile.metafile(), nullptr) << "the context keeps its metafile";
    metafile.setClipboard(); // now it can go
    EXPECT_EQ(metafile.metafile(), nullptr);
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_ENHMETAFILE));
    emptyClipboard();
    EXPECT_EQ(breaks.count(), 0);
}

TEST_F(PlatformFailure, AMetafileThatCannotBeWrittenLeavesNoFile) {
    BreakpointCounter breaks;
    std::string const folder = temporaryPath("vmgui-no-such-folder\\");
    RemoveDirectoryA(folder.c_str());
    struct Kind {
        char const* name;
        bool enhanced;
        bool placeable;
    } const kinds[] = {{"a.emf", true, false}, {"b.wmf", false, false}, {"c.wmf", false, true}};
    for (Kind const& kind : kinds) {
        std::string const path = folder + kind.name;
        {
            GwGCWMF metafile(path.c_str(), kind.enhanced, kind.placeable);
            recordSquare(metafile);
        }
        EXPECT_FALSE(fileExists(path)) << path;
    }
    EXPECT_LT(heapGrowth(
                  [&] {
                      GwGCWMF metafile((folder + "b.wmf").c_str(), false, true);
                      recordSquare(metafile);
                  },
                  50),
              20);
    EXPECT_EQ(breaks.count(), 0);
}

// Wine maps Z:\dev\full to the host's /dev/full, which opens and then refuses every write as
// a full disk does.
TEST_F(PlatformFailure, AMetafileWrittenToAFullDiskGoesQuietly) {
    char const* const full = "Z:\\dev\\full";
    HANDLE const probe = CreateFileA(full, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                     nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (probe == INVALID_HANDLE_VALUE)
        GTEST_SKIP() << "no always-full device here (Wine's Z:\\dev\\full)";
    DWORD written = 0;
    BOOL const wrote = WriteFile(probe, "full", 4, &written, nullptr);
    DWORD const error = GetLastError();
    CloseHandle(probe);
    ASSERT_FALSE(wrote) << "the device took the bytes";
    EXPECT_EQ(error, static_cast<DWORD>(ERROR_DISK_FULL));

    BreakpointCounter breaks;
    struct Kind {
        bool enhanced;
        bool placeable;
    } const kinds[] = {{true, false}, {false, false}, {false, true}};
    for (Kind const& kind : kinds) {
        EXPECT_LT(heapGrowth(
                      [&] {
                          GwGCWMF metafile(full, kind.enhanced, kind.placeable);
                          recordSquare(metafile);
                      },
                      50),
                  20)
            << kind.enhanced << kind.placeable;
    }
    EXPECT_EQ(breaks.count(), 0);
}

TEST_F(PlatformFailure, AMetafileWhoseFileIsLockedIsNotWrittenAndCannotBeRead) {
    BreakpointCounter breaks;
    for (bool enhanced : {true, false}) {
        std::string const path = temporaryPath(enhanced ? "vmgui-locked.emf" : "vmgui-locked.wmf");
        HANDLE const lock = CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                        CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        ASSERT_NE(lock, INVALID_HANDLE_VALUE);
        DWORD written = 0;
        WriteFile(lock, "alt", 3, &written, nullptr);
        {
            GwGCWMF metafile(path.c_str(), enhanced, false);
            recordSquare(metafile);
        }
        LARGE_INTEGER size{};
        GetFileSizeEx(lock, &size);
        EXPECT_EQ(size.QuadPart, 3) << "the locked file keeps its content";

        // Reading: the file cannot be opened, so there is nothing to play.
        GwGCWMF reader(path.c_str(), enhanced, false);
        HDC const screen = GetDC(nullptr);
        HDC const memory = CreateCompatibleDC(screen);
        HBITMAP const bitmap = CreateCompatibleBitmap(screen, 40, 40);
        HGDIOBJ const old = SelectObject(memory, bitmap);
        {
            GwGC target(nullptr, memory);
            reader.setDimension(40, 40);
            reader.play(target);
        }
        EXPECT_EQ(reader.metafile(), nullptr);
        SelectObject(memory, old);
        DeleteObject(bitmap);
        DeleteDC(memory);
        ReleaseDC(nullptr, screen);
        CloseHandle(lock);
        DeleteFileA(path.c_str());
    }
    EXPECT_EQ(breaks.count(), 0);
}

// ---- Menus

TEST_F(PlatformFailure, AMenuDestroyedFromOutsideTakesNoEntriesAndAnswersTheEmptyItem) {
    BreakpointCounter breaks;
    auto* menu = new GwMenu(0, true);
    menu->add(GwMenuItem(1, "Eins"));
    ASSERT_EQ(menu->size(), 1);
    ASSERT_TRUE(DestroyMenu(static_cast<HMENU>(menu->window())));

    auto useIt = [menu] {
        menu->add(GwMenuItem(2, "Zwei"));
        menu->addAt(0, GwMenuItem(3, "Drei"));
        GwMenuItem const& item = menu->item(2);
        EXPECT_EQ(item.id(), ~0ull);
        EXPECT_EQ(item.style(), 0x800);
        EXPECT_EQ(&menu->itemAt(0), &menu->itemAt(0));
        EXPECT_EQ(menu->itemAt(0).id(), ~0ull);
        menu->setEnabled(2, false).setChecked(2, true);
        EXPECT_FALSE(menu->enabled(2));
        menu->remove(2ull);
        menu->removeAt(0);
    };
    useIt();
    EXPECT_LT(heapGrowth(useIt, 100), 20) << "the copies of refused entries are not kept";
    delete menu;
    EXPECT_EQ(breaks.count(), 0);
}

// ---- List and combo boxes

namespace {

// The procedure of the list controls under test: while gRefuseLines is set, every line to
// add or insert is refused with the answer of a control out of memory.
bool gRefuseLines = false;
WNDPROC gListProcedure = nullptr;
WNDPROC gComboProcedure = nullptr;

LRESULT CALLBACK refusingList(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (gRefuseLines && (msg == LB_ADDSTRING || msg == LB_INSERTSTRING))
        return LB_ERRSPACE;
    return CallWindowProcA(gListProcedure, hwnd, msg, wParam, lParam);
}

LRESULT CALLBACK refusingCombo(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (gRefuseLines && (msg == CB_ADDSTRING || msg == CB_INSERTSTRING))
        return CB_ERRSPACE;
    return CallWindowProcA(gComboProcedure, hwnd, msg, wParam, lParam);
}

HWND refusingControl(HWND parent, char const* cls, DWORD style, WNDPROC procedure, WNDPROC& saved) {
    HWND const hwnd =
        CreateWindowExA(0, cls, "", WS_CHILD | WS_VISIBLE | style, 0, 0, 120, 200, parent,
                        reinterpret_cast<HMENU>(7), GetModuleHandleA(nullptr), nullptr);
    saved = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
    return hwnd;
}

struct RefusedLines {
    RefusedLines() { gRefuseLines = true; }
    ~RefusedLines() { gRefuseLines = false; }
};

} // namespace

TEST_F(PlatformFailure, AListBoxThatRefusesALineStoresNothingAndLosesTheReplacedOne) {
    BreakpointCounter breaks;
    TopLevel top;
    HWND const hwnd =
        refusingControl(top.hwnd, "LISTBOX", LBS_HASSTRINGS, &refusingList, gListProcedure);
    GwEventData data(hwnd);
    auto* const list = GwListBox::newInstance(&data);
    ASSERT_NE(list, nullptr);
    list->add(GwTextItem(1, "Eins")).add(GwTextItem(2, "Zwei"));
    ASSERT_EQ(list->size(), 2);
    {
        RefusedLines refused;
        list->add(GwTextItem(3, "Drei"));
        list->addAt(0, GwTextItem(4, "Vier"));
        EXPECT_EQ(list->size(), 2) << "nothing is stored";
        EXPECT_EQ(list->item(3).text(), String(""));
        EXPECT_EQ(list->item(4).text(), String(""));
        list->add(GwTextItem(1, "Eins")); // replaces line 1: the old line goes first
        EXPECT_EQ(list->size(), 1);
        EXPECT_EQ(list->item(1).text(), String(""));
        EXPECT_EQ(list->item(2).text(), String("Zwei"));
        EXPECT_LT(heapGrowth([list] { list->add(GwTextItem(5, "Fünf")); }), 20);
    }
    list->add(GwTextItem(6, "Sechs"));
    EXPECT_EQ(list->size(), 2);
    EXPECT_EQ(list->item(6).text(), String("Sechs"));
    EXPECT_EQ(breaks.count(), 0);
}

TEST_F(PlatformFailure, AComboBoxThatRefusesALineStoresNothing) {
    BreakpointCounter breaks;
    TopLevel top;
    HWND const hwnd = refusingControl(top.hwnd, "COMBOBOX", CBS_DROPDOWN | CBS_HASSTRINGS,
                                      &refusingCombo, gComboProcedure);
    GwEventData data(hwnd);
    auto* const combo = GwComboBox::newInstance(&data);
    ASSERT_NE(combo, nullptr);
    combo->add(GwTextItem(1, "Eins"));
    ASSERT_EQ(combo->size(), 1);
    {
        RefusedLines refused;
        combo->add(GwTextItem(2, "Zwei"));
        combo->addAt(0, GwTextItem(3, "Drei"));
        EXPECT_EQ(combo->size(), 1);
        EXPECT_EQ(combo->item(2).text(), String(""));
        EXPECT_EQ(combo->item(3).text(), String(""));
        combo->add(GwTextItem(1, "Eins")); // replaces the line: it goes first
        EXPECT_EQ(combo->size(), 0);
        EXPECT_LT(heapGrowth([combo] { combo->add(GwTextItem(4, "Vier")); }), 20);
    }
    combo->add(GwTextItem(5, "Fünf"));
    EXPECT_EQ(combo->size(), 1);
    EXPECT_EQ(combo->item(5).text(), String("Fünf"));
    EXPECT_EQ(breaks.count(), 0);
}

// ---- File selection

TEST_F(PlatformFailure, AFileDialogThatCannotOpenGivesNoResultAndNoPaths) {
    BreakpointCounter breaks;
    TopLevel top;
    GwFileSelect select(top.window);
    select.setFilter("Texte (*.txt)|*.txt|").setFile("C:\\vorher.txt");
    {
        RefusedCreation refused;
        select.setVisible(true); // the dialog's window is refused: the dialog fails
        EXPECT_GT(RefusedCreation::refused(), 0);
    }
    EXPECT_EQ(select.result(), 0);
    EXPECT_EQ(select.file().size(), 0u);
    GwFileSelect::Iterator paths(select);
    EXPECT_EQ(paths.count(), 0);
    EXPECT_EQ(breaks.count(), 0);
}
