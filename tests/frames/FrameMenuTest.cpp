// The frame's menus: menu bar and cache, the library's standard menus, menu messages with
// their events, status texts and the standard commands.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "FrameTesting.h"

#include <commctrl.h>

using namespace testing_frames;
using namespace testing_windows;

namespace {

constexpr unsigned long long kOpened = 0x10000;
constexpr unsigned long long kClosed = 0x10001;
constexpr unsigned long long kChosen = 0x10002;

std::string menuString(HMENU menu, UINT item, UINT flags) {
    char text[128] = {};
    GetMenuStringA(menu, item, text, sizeof text, flags);
    return text;
}

std::vector<std::string> entryTexts(HMENU menu) {
    std::vector<std::string> out;
    for (int i = 0; i < GetMenuItemCount(menu); ++i)
        out.push_back(menuString(menu, static_cast<UINT>(i), MF_BYPOSITION));
    return out;
}

// A popup menu with command entries.
GwMenu* popupWith(unsigned long long id,
                  std::vector<std::pair<unsigned long long, char const*>> const& entries) {
    auto* menu = new GwMenu(id, true);
    for (auto const& entry : entries)
        menu->add(GwMenuItem(entry.first, String(entry.second)));
    return menu;
}

// A menu bar with one popup per title, each with one command entry.
GwMenu* barWith(std::vector<char const*> const& titles) {
    auto* bar = new GwMenu(500, false);
    unsigned long long command = 0x700;
    for (char const* title : titles) {
        GwMenu* popup = popupWith(0, {{command++, "Eintrag"}});
        bar->add(GwMenuItem(~0ull, String(title), popup));
    }
    return bar;
}

GwMenu* subMenuAt(HMENU menu, int position) {
    return GwMenu::lookup(GetSubMenu(menu, position));
}

WPARAM selection(unsigned int entry, unsigned int flags) {
    return MAKEWPARAM(entry, flags);
}

// The simple-mode text, which is read at index 0 while the bar is in simple mode.
std::string statusText(HWND status) {
    char text[256] = {};
    SendMessageA(status, SB_GETTEXTA, 0, reinterpret_cast<LPARAM>(text));
    return text;
}

class FrameMenuTest : public FrameFixture {
protected:
    void SetUp() override {
        FrameFixture::SetUp();
        frame = new TestFrame(1, 0, false);
        hwnd = frame->hwnd();
    }
    void TearDown() override {
        delete frame;
        FrameFixture::TearDown();
    }

    void useLibraryResources() { frame->setResource(GwThisDll::current().resource()); }

    TestFrame* frame = nullptr;
    HWND hwnd = nullptr;
};

} // namespace

TEST_F(FrameMenuTest, MenuBarComesFromTheResourceThroughTheCache) {
    useLibraryResources();
    frame->setMenuBar(100);
    GwMenu* bar = frame->menuBar();
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->id(), 100u);
    EXPECT_FALSE(bar->popup());
    EXPECT_EQ(GetMenu(hwnd), bar->window());
    EXPECT_EQ(entryTexts(static_cast<HMENU>(bar->window())), std::vector<std::string>{"&Datei"});
    EXPECT_EQ(frame->menu(100), bar);
    EXPECT_EQ(bar->parent(), frame);
    EXPECT_TRUE(bar->hasListener(frame));
}

TEST_F(FrameMenuTest, ReplacingTheMenuBarDeletesTheOldOne) {
    useLibraryResources();
    frame->setMenuBar(100);
    void* oldHandle = frame->menuBar()->window();
    frame->setMenuBar(101);
    ASSERT_NE(frame->menuBar(), nullptr);
    EXPECT_EQ(entryTexts(GetMenu(hwnd)), std::vector<std::string>{"&Hilfe"});
    EXPECT_EQ(GwMenu::lookup(oldHandle), nullptr);
    EXPECT_FALSE(IsMenu(static_cast<HMENU>(oldHandle)));
    ASSERT_NE(frame->menuCache(), nullptr);
    EXPECT_EQ(frame->menuCache()->count(), 1);
    EXPECT_EQ(frame->menuCache()->at(0), frame->menuBar());

    frame->setMenuBar(0);
    EXPECT_EQ(frame->menuBar(), nullptr);
    EXPECT_EQ(GetMenu(hwnd), nullptr);
    EXPECT_EQ(frame->menuCache()->count(), 0);

    frame->setMenuBar(4711); // not in the resources
    EXPECT_EQ(frame->menuBar(), nullptr);
    EXPECT_EQ(GetMenu(hwnd), nullptr);
}

TEST_F(FrameMenuTest, AMenuMissingFromTheResourcesLeavesNoBar) {
    auto* other = new TestFrame(2, 100, false); // the test program has no menus
    EXPECT_EQ(other->menuBar(), nullptr);
    EXPECT_EQ(GetMenu(other->hwnd()), nullptr);
    EXPECT_EQ(other->menu(100), nullptr);
    delete other;
}

TEST_F(FrameMenuTest, MenusAreLoadedOnceAndKept) {
    useLibraryResources();
    GwMenu* help = frame->menu(101);
    ASSERT_NE(help, nullptr);
    EXPECT_EQ(frame->menu(101), help);
    EXPECT_EQ(help->id(), 101u);
    EXPECT_EQ(help->parent(), frame);
    EXPECT_EQ(frame->menu(999), nullptr);
    EXPECT_EQ(frame->menuCache()->count(), 1);
}

TEST_F(FrameMenuTest, APopupMenuBecomesABar) {
    GwMenu* popup = popupWith(55, {{0x501, "Eins"}});
    frame->cacheMenu(popup);
    frame->setMenuBar(55);
    EXPECT_EQ(frame->menuBar(), popup);
    EXPECT_FALSE(popup->popup());
    EXPECT_EQ(GetMenu(hwnd), popup->window());
    EXPECT_EQ(entryTexts(GetMenu(hwnd)), std::vector<std::string>{"Eins"});
}

TEST_F(FrameMenuTest, MenuStyleWithoutABarIsOnlyStored) {
    frame->setMenuStyle(GwFrame::eFileMenu | GwFrame::eHelpMenu);
    EXPECT_EQ(frame->menuStyle(), GwFrame::eFileMenu | GwFrame::eHelpMenu);
    useLibraryResources();
    frame->setMenuBar(102);
    EXPECT_EQ(entryTexts(GetMenu(hwnd)), std::vector<std::string>{"F&enster"});
}

TEST_F(FrameMenuTest, MenuStyleMergesTheLibraryMenus) {
    mApplication.setName("Testprogramm");
    frame->installMenuBar(barWith({"&Bearbeiten", "&Ansicht"}));
    frame->setMenuStyle(GwFrame::eFileMenu | GwFrame::eHelpMenu | GwFrame::eWindowMenu);
    HMENU bar = GetMenu(hwnd);
    EXPECT_EQ(entryTexts(bar), (std::vector<std::string>{"&Datei", "&Bearbeiten", "&Ansicht",
                                                         "F&enster", "&Hilfe"}));
    EXPECT_EQ(frame->menuStyle(), 7);

    // Each merged menu is a popup of the library's menu with its identifier.
    GwMenu* file = subMenuAt(bar, 0);
    GwMenu* window = subMenuAt(bar, 3);
    GwMenu* help = subMenuAt(bar, 4);
    ASSERT_NE(file, nullptr);
    ASSERT_NE(window, nullptr);
    ASSERT_NE(help, nullptr);
    EXPECT_EQ(file->id(), 100u);
    EXPECT_EQ(help->id(), 101u);
    EXPECT_EQ(window->id(), 102u);
    EXPECT_TRUE(file->popup());
    EXPECT_EQ(file->parent(), frame);

    HMENU fileMenu = static_cast<HMENU>(file->window());
    EXPECT_EQ(menuString(fileMenu, 0xF820, MF_BYCOMMAND), "&Neu");
    EXPECT_EQ(menuString(fileMenu, 0xF826, MF_BYCOMMAND), "&Beenden");
    EXPECT_EQ(file->item(0xF826).text(), String("&Beenden"));
    EXPECT_EQ(menuString(static_cast<HMENU>(window->window()), 0xF866, MF_BYCOMMAND),
              "&Alle schlie\xDF"
              "en");
    HMENU helpMenu = static_cast<HMENU>(help->window());
    EXPECT_EQ(menuString(helpMenu, 0xF880, MF_BYCOMMAND), "&Themen");
    EXPECT_EQ(menuString(helpMenu, 0xF886, MF_BYCOMMAND), "Testprogramm-&Info");
    EXPECT_EQ(help->item(0xF886).text(), String("Testprogramm-&Info"));
    // The entry keeps its place among the others.
    EXPECT_EQ(GetMenuItemID(helpMenu, GetMenuItemCount(helpMenu) - 1), 0xF886u);
}

TEST_F(FrameMenuTest, InfoEntryNamesTheApplicationClassWhenNoNameIsSet) {
    frame->installMenuBar(barWith({"&Bearbeiten"}));
    frame->setMenuStyle(GwFrame::eHelpMenu);
    GwMenu* help = subMenuAt(GetMenu(hwnd), 1);
    ASSERT_NE(help, nullptr);
    EXPECT_EQ(menuString(static_cast<HMENU>(help->window()), 0xF886, MF_BYCOMMAND),
              "GwApplication-&Info");
}

TEST_F(FrameMenuTest, WindowMenuGoesBeforeTheHelpMenu) {
    frame->installMenuBar(barWith({"&Bearbeiten"}));
    frame->setMenuStyle(GwFrame::eHelpMenu);
    EXPECT_EQ(entryTexts(GetMenu(hwnd)), (std::vector<std::string>{"&Bearbeiten", "&Hilfe"}));
    frame->setMenuStyle(GwFrame::eHelpMenu | GwFrame::eWindowMenu);
    EXPECT_EQ(entryTexts(GetMenu(hwnd)),
              (std::vector<std::string>{"&Bearbeiten", "F&enster", "&Hilfe"}));
}

TEST_F(FrameMenuTest, WindowMenuWithoutHelpMenuGoesLast) {
    frame->installMenuBar(barWith({"&Bearbeiten"}));
    frame->setMenuStyle(GwFrame::eWindowMenu);
    EXPECT_EQ(entryTexts(GetMenu(hwnd)), (std::vector<std::string>{"&Bearbeiten", "F&enster"}));
    frame->setMenuStyle(GwFrame::eWindowMenu | GwFrame::eFileMenu);
    EXPECT_EQ(entryTexts(GetMenu(hwnd)),
              (std::vector<std::string>{"&Datei", "&Bearbeiten", "F&enster"}));
}

TEST_F(FrameMenuTest, ClearedBitsTakeTheirMenusOut) {
    frame->installMenuBar(barWith({"&Bearbeiten", "&Ansicht"}));
    frame->setMenuStyle(7);
    frame->setMenuStyle(GwFrame::eFileMenu | GwFrame::eWindowMenu);
    EXPECT_EQ(entryTexts(GetMenu(hwnd)),
              (std::vector<std::string>{"&Datei", "&Bearbeiten", "&Ansicht", "F&enster"}));
    // The help menu comes back at the end; the window menu goes from before it.
    frame->setMenuStyle(GwFrame::eFileMenu | GwFrame::eHelpMenu);
    EXPECT_EQ(entryTexts(GetMenu(hwnd)),
              (std::vector<std::string>{"&Datei", "&Bearbeiten", "&Ansicht", "&Hilfe"}));
    std::int32_t const menus = GwMenu::allMenus().count();
    frame->setMenuStyle(0);
    EXPECT_EQ(entryTexts(GetMenu(hwnd)), (std::vector<std::string>{"&Bearbeiten", "&Ansicht"}));
    // The merged popups went with their entries.
    EXPECT_EQ(GwMenu::allMenus().count(), menus - 2);
    EXPECT_EQ(frame->menuStyle(), 0);
}

TEST_F(FrameMenuTest, StatusBarShowsTheTextOfTheEntryUnderThePointer) {
    delete frame;
    frame = new TestFrame(1, 0, true);
    hwnd = frame->hwnd();
    HWND status = static_cast<HWND>(frame->statusWindow());
    ASSERT_NE(status, nullptr);
    GwMenu* popup = popupWith(0, {{0xF826, "&Beenden"}, {0xF820, "&Neu"}, {0x4711, "Fremd"}});

    SendMessageA(hwnd, WM_ENTERMENULOOP, 0, 0);
    EXPECT_TRUE(SendMessageA(status, SB_ISSIMPLE, 0, 0));
    // The program has no such strings: the library's own texts are shown.
    SendMessageA(hwnd, WM_MENUSELECT, selection(0xF826, MF_STRING),
                 reinterpret_cast<LPARAM>(popup->window()));
    EXPECT_EQ(statusText(status), "Anwendung beenden");
    // Only the part before a line feed.
    SendMessageA(hwnd, WM_MENUSELECT, selection(0xF820, MF_STRING),
                 reinterpret_cast<LPARAM>(popup->window()));
    EXPECT_EQ(statusText(status), "Neues Dokument erstellen");
    // Entries that open sub-menus, system menu entries and entry 0 leave the text.
    SendMessageA(hwnd, WM_MENUSELECT, selection(0xF826, MF_POPUP),
                 reinterpret_cast<LPARAM>(popup->window()));
    SendMessageA(hwnd, WM_MENUSELECT, selection(0xF826, MF_SYSMENU),
                 reinterpret_cast<LPARAM>(popup->window()));
    SendMessageA(hwnd, WM_MENUSELECT, selection(0, MF_STRING),
                 reinterpret_cast<LPARAM>(popup->window()));
    EXPECT_EQ(statusText(status), "Neues Dokument erstellen");
    // An entry without text clears it.
    SendMessageA(hwnd, WM_MENUSELECT, selection(0x4711, MF_STRING),
                 reinterpret_cast<LPARAM>(popup->window()));
    EXPECT_EQ(statusText(status), "");

    SendMessageA(hwnd, WM_MENUSELECT, selection(0xF826, MF_STRING),
                 reinterpret_cast<LPARAM>(popup->window()));
    SendMessageA(hwnd, WM_EXITMENULOOP, 0, 0);
    EXPECT_FALSE(SendMessageA(status, SB_ISSIMPLE, 0, 0));
    SendMessageA(status, SB_SIMPLE, TRUE, 0);
    EXPECT_EQ(statusText(status), "");
    delete popup;
}

TEST_F(FrameMenuTest, StatusCodesOfTheRegisteredMessage) {
    delete frame;
    frame = new TestFrame(1, 0, true);
    hwnd = frame->hwnd();
    HWND status = static_cast<HWND>(frame->statusWindow());
    UINT const message = static_cast<UINT>(GwWindow::message());
    SendMessageA(hwnd, message, GwCodeStatusSimple, 1);
    EXPECT_TRUE(SendMessageA(status, SB_ISSIMPLE, 0, 0));
    SendMessageA(hwnd, message, GwCodeStatusText, reinterpret_cast<LPARAM>("Hallo"));
    EXPECT_EQ(statusText(status), "Hallo");
    SendMessageA(hwnd, message, GwCodeStatusId, 0x1F880); // the low 16 bits name the string
    EXPECT_EQ(statusText(status), "Allgemeine Hilfe zur Anwendung starten");
    SendMessageA(hwnd, message, GwCodeStatusSimple, 0);
    EXPECT_FALSE(SendMessageA(status, SB_ISSIMPLE, 0, 0));
}

TEST_F(FrameMenuTest, StatusTextsNeedAStatusBar) {
    GwMenu* popup = popupWith(0, {{0xF826, "&Beenden"}});
    SendMessageA(hwnd, WM_ENTERMENULOOP, 0, 0);
    SendMessageA(hwnd, WM_MENUSELECT, selection(0xF826, MF_STRING),
                 reinterpret_cast<LPARAM>(popup->window()));
    SendMessageA(hwnd, WM_EXITMENULOOP, 0, 0);
    frame->msgHandlerStatusText(0xF826);
    EXPECT_EQ(frame->statusWindow(), nullptr);
    delete popup;
}

TEST_F(FrameMenuTest, MenuEventsReachTheHandlersWithTheMenu) {
    Recorder recorder;
    frame->add(&recorder);
    GwMenu* popup = popupWith(0, {{0x501, "Eins"}});
    SendMessageA(hwnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup->window()), 0);
    ASSERT_EQ(recorder.names(), std::vector<std::string>{"show"});
    EXPECT_EQ(recorder.calls[0].window, popup);
    ASSERT_NE(frame->popupStack(), nullptr);
    EXPECT_EQ(frame->popupStack()->count(), 1);

    SendMessageA(hwnd, WM_MENUSELECT, selection(0x501, MF_STRING),
                 reinterpret_cast<LPARAM>(popup->window()));
    EXPECT_EQ(frame->currentMenu(), popup);
    SendMessageA(hwnd, WM_COMMAND, 0x501, 0);
    EXPECT_EQ(popup->selected(), 0x501u);
    // The stack is closed first, then the command is announced.
    EXPECT_EQ(recorder.names(), (std::vector<std::string>{"show", "hide", "activate"}));
    EXPECT_EQ(recorder.calls[1].window, popup);
    EXPECT_EQ(recorder.calls[2].window, popup);
    EXPECT_EQ(frame->menuEvents, (std::vector<std::pair<unsigned long long, GwMenu*>>{
                                     {kOpened, popup}, {kClosed, popup}, {kChosen, popup}}));
    EXPECT_EQ(frame->popupStack()->count(), 0);
    frame->remove(&recorder);
    delete popup;
}

TEST_F(FrameMenuTest, AnUnknownMenuHandleOpensNothing) {
    HMENU foreign = CreatePopupMenu();
    EXPECT_EQ(SendMessageA(hwnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(foreign), 0), 0);
    EXPECT_TRUE(frame->menuEvents.empty());
    EXPECT_EQ(frame->popupStack()->count(), 0);
    // Selecting in it: no current menu.
    SendMessageA(hwnd, WM_MENUSELECT, selection(3, MF_STRING), reinterpret_cast<LPARAM>(foreign));
    EXPECT_EQ(frame->currentMenu(), nullptr);
    DestroyMenu(foreign);
    EXPECT_EQ(SendMessageA(hwnd, WM_MENUCHAR, 'x', 0), 0);
}

TEST_F(FrameMenuTest, AHandlerThatTakesTheCommandKeepsItFromTheStandardCommands) {
    Recorder taker(false, GwResultHandled);
    frame->add(&taker);
    GwMenu* popup = popupWith(0, {{0xF826, "&Beenden"}});
    quitPosted(); // nothing left over
    SendMessageA(hwnd, WM_MENUSELECT, selection(0xF826, MF_STRING),
                 reinterpret_cast<LPARAM>(popup->window()));
    SendMessageA(hwnd, WM_COMMAND, 0xF826, 0);
    EXPECT_EQ(taker.names(), std::vector<std::string>{"activate"});
    EXPECT_FALSE(quitPosted());

    frame->remove(&taker);
    SendMessageA(hwnd, WM_MENUSELECT, selection(0xF826, MF_STRING),
                 reinterpret_cast<LPARAM>(popup->window()));
    SendMessageA(hwnd, WM_COMMAND, 0xF826, 0);
    EXPECT_TRUE(quitPosted());
    delete popup;
}

TEST_F(FrameMenuTest, ACommandWithoutCurrentMenuGoesToTheDefaultProcedure) {
    quitPosted();
    SendMessageA(hwnd, WM_COMMAND, 0xF826, 0);
    EXPECT_FALSE(quitPosted());
    EXPECT_TRUE(frame->menuEvents.empty());
}

TEST_F(FrameMenuTest, SelectingOnTheMenuBarWithoutPopupClearsTheCurrentMenu) {
    GwMenu* bar = barWith({"&Bearbeiten"});
    frame->installMenuBar(bar);
    GwMenu* popup = subMenuAt(static_cast<HMENU>(bar->window()), 0);
    SendMessageA(hwnd, WM_MENUSELECT, selection(0x700, MF_STRING),
                 reinterpret_cast<LPARAM>(popup->window()));
    EXPECT_EQ(frame->currentMenu(), popup);
    // The menu being closed changes nothing.
    SendMessageA(hwnd, WM_MENUSELECT, selection(0, 0xFFFF), 0);
    EXPECT_EQ(frame->currentMenu(), popup);
    // A popup entry of the bar makes the bar current; a plain one none.
    SendMessageA(hwnd, WM_MENUSELECT, selection(0, MF_POPUP),
                 reinterpret_cast<LPARAM>(bar->window()));
    EXPECT_EQ(frame->currentMenu(), bar);
    SendMessageA(hwnd, WM_MENUSELECT, selection(0x700, MF_STRING),
                 reinterpret_cast<LPARAM>(bar->window()));
    EXPECT_EQ(frame->currentMenu(), nullptr);
}

TEST_F(FrameMenuTest, PopupStackClosesDownToTheSelectedMenu) {
    GwMenu* a = popupWith(0, {{0x501, "Eins"}});
    GwMenu* b = popupWith(0, {{0x511, "Zwei"}});
    GwMenu* d = popupWith(0, {{0x521, "Drei"}});
    b->add(GwMenuItem(~0ull, String("D"), d));
    a->add(GwMenuItem(~0ull, String("B"), b)); // at position 1
    for (GwMenu* opened : {a, b, d})
        SendMessageA(hwnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(opened->window()), 0);
    ASSERT_EQ(frame->popupStack()->count(), 3);
    frame->menuEvents.clear();

    // The pointer on a's entry that opens b: what is above b closes, b stays.
    SendMessageA(hwnd, WM_MENUSELECT, selection(1, MF_POPUP),
                 reinterpret_cast<LPARAM>(a->window()));
    EXPECT_EQ(frame->currentMenu(), a);
    ASSERT_EQ(frame->popupStack()->count(), 2);
    EXPECT_EQ(frame->popupStack()->at(1), b);
    EXPECT_EQ(frame->menuEvents,
              (std::vector<std::pair<unsigned long long, GwMenu*>>{{kClosed, d}}));

    // The same again with b on top: nothing closes.
    SendMessageA(hwnd, WM_MENUSELECT, selection(1, MF_POPUP),
                 reinterpret_cast<LPARAM>(a->window()));
    EXPECT_EQ(frame->popupStack()->count(), 2);

    // A command entry of a: b closes.
    SendMessageA(hwnd, WM_MENUSELECT, selection(0x501, MF_STRING),
                 reinterpret_cast<LPARAM>(a->window()));
    ASSERT_EQ(frame->popupStack()->count(), 1);
    EXPECT_EQ(frame->popupStack()->at(0), a);
    EXPECT_EQ(frame->menuEvents.back(), std::make_pair(kClosed, b));

    SendMessageA(hwnd, WM_EXITMENULOOP, 0, 0);
    EXPECT_EQ(frame->popupStack()->count(), 0);
    EXPECT_EQ(frame->menuEvents.back(), std::make_pair(kClosed, a));
    delete a;
}

TEST_F(FrameMenuTest, RemoveStackWithTheFlagKeepsTheEntryAboveTheMenu) {
    GwMenu* a = popupWith(0, {{0x501, "Eins"}});
    GwMenu* b = popupWith(0, {{0x511, "Zwei"}});
    GwMenu* c = popupWith(0, {{0x521, "Drei"}});
    for (GwMenu* opened : {a, b, c})
        SendMessageA(hwnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(opened->window()), 0);
    frame->removeStack(a, true);
    ASSERT_EQ(frame->popupStack()->count(), 2);
    EXPECT_EQ(frame->popupStack()->at(1), b);
    frame->removeStack(a, false);
    EXPECT_EQ(frame->popupStack()->count(), 1);
    frame->removeStack(nullptr, false);
    EXPECT_EQ(frame->popupStack()->count(), 0);
    delete a;
    delete b;
    delete c;
}

TEST_F(FrameMenuTest, DynamicMenusAreFilledFromTheFramesMenuAndEmptiedWhenTheyClose) {
    GwMenu* source = popupWith(77, {{0x601, "Erstes"}, {0x602, "Zweites"}});
    frame->cacheMenu(source);
    GwMenu* a = popupWith(0, {{0x501, "Eins"}});
    GwMenu* dynamic = new GwMenu(77, true);
    dynamic->setDynamic(true);
    a->add(GwMenuItem(~0ull, String("Dynamisch"), dynamic));

    SendMessageA(hwnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(a->window()), 0);
    SendMessageA(hwnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(dynamic->window()), 0);
    EXPECT_EQ(entryTexts(static_cast<HMENU>(dynamic->window())),
              (std::vector<std::string>{"Erstes", "Zweites"}));
    // Selecting in it makes the frame's menu the current one, which gets the command.
    SendMessageA(hwnd, WM_MENUSELECT, selection(0x602, MF_STRING),
                 reinterpret_cast<LPARAM>(dynamic->window()));
    EXPECT_EQ(frame->currentMenu(), source);
    SendMessageA(hwnd, WM_COMMAND, 0x602, 0);
    EXPECT_EQ(source->selected(), 0x602u);
    EXPECT_EQ(frame->menuEvents.back(), std::make_pair(kChosen, source));
    // Closing emptied it.
    EXPECT_EQ(dynamic->size(), 0);
    EXPECT_EQ(source->size(), 2);
    delete a;
}

TEST_F(FrameMenuTest, StandardCommands) {
    frame->setHelpFile("anwendung.hlp");
    std::string const path = frame->helpPath().c_str();
    quitPosted();
    EXPECT_TRUE(frame->msgHandlerCommand(0xF826));
    EXPECT_TRUE(quitPosted());

    EXPECT_TRUE(frame->msgHandlerCommand(0xF880));
    EXPECT_TRUE(frame->msgHandlerCommand(0xF884));
    for (unsigned long long quiet : {0xF881ull, 0xF882ull, 0xF883ull, 0xF885ull, 0xF886ull})
        EXPECT_TRUE(frame->msgHandlerCommand(quiet)) << std::hex << quiet;
    EXPECT_FALSE(frame->msgHandlerCommand(0xF887));
    EXPECT_FALSE(frame->msgHandlerCommand(0xF820));

    std::vector<WinHelpCall> calls = gHelpCalls.requests();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].window, hwnd);
    EXPECT_EQ(calls[0].file, path);
    EXPECT_EQ(calls[0].command, static_cast<UINT>(HELP_FINDER));
    EXPECT_EQ(calls[0].data, 0u);
    EXPECT_EQ(calls[1].file, path);
    EXPECT_EQ(calls[1].command, static_cast<UINT>(HELP_CONTEXT));
    EXPECT_EQ(calls[1].data, 63620u);
    EXPECT_TRUE(gHelpCalls.shell.empty());
}

TEST_F(FrameMenuTest, HelpTopicsChosenFromTheMenuCallWinHelp) {
    GwMenu* popup = popupWith(0, {{0xF880, "&Themen"}});
    SendMessageA(hwnd, WM_MENUSELECT, selection(0xF880, MF_STRING),
                 reinterpret_cast<LPARAM>(popup->window()));
    SendMessageA(hwnd, WM_COMMAND, 0xF880, 0);
    std::vector<WinHelpCall> calls = gHelpCalls.requests();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].command, static_cast<UINT>(HELP_FINDER));
    EXPECT_EQ(calls[0].file, std::string(frame->helpPath().c_str()));
    delete popup;
}
