#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <cctype>
#include <memory>
#include <string>
#include <vector>

#include <GwMenu.h>
#include <GwResource.h>
#include <GwThisDll.h>
#include <GwDialog.h>
#include <GwEventHandler.h>

#include "TestWindows.h"

// The library's own resources (res/VmGui.rc): German menus 100 to 102 with a status text
// for every entry, the texts of the editor loader, dialog 100 and cursor 100. The texts are
// Windows-1252: the expected bytes are written as escapes.

namespace {

struct Entry {
    unsigned int id; // 0 for a separator
    char const* text;
};

// The entries of the popups, by position.
std::vector<Entry> const kFileMenu = {
    {0xF820, "&Neu"},
    {0xF821, "\xD6&ffnen..."},
    {0xF822, "&Speichern"},
    {0xF823, "Speichern &unter..."},
    {0, nullptr},
    {0xF824, "&Drucken..."},
    {0xF825, "Seiten&ansicht"},
    {0, nullptr},
    {0xF800, "Zuletzt ge\xF6"
             "ffnete Datei"},
    {0, nullptr},
    {0xF826, "&Beenden"},
};

std::vector<Entry> const kHelpMenu = {
    {0xF880, "&Themen"},
    {0, nullptr},
    {0xF881, "&Service..."},
    {0xF882, "&Fernwartung..."},
    {0xF883, "&Online-Aktualisierung..."},
    {0, nullptr},
    {0xF884, "&Erste Schritte"},
    {0xF885, "&Neuigkeiten"},
    {0, nullptr},
    {0xF886, "%s-&Info"},
};

std::vector<Entry> const kWindowMenu = {
    {0xF861, "&Untereinander"},
    {0xF862, "&Nebeneinander"},
    {0xF863, "\xDC&berlappend"},
    {0xF864, "&Kacheln"},
    {0xF865, "&Symbole anordnen"},
    {0, nullptr},
    {0xF866, "&Alle schlie\xDF"
             "en"},
};

// Status texts: the part before a line feed is shown, what follows is a tool tip.
std::vector<Entry> const kStrings = {
    {0xF800, "Zuletzt ge\xF6"
             "ffnete Datei wieder \xF6"
             "ffnen"},
    {0xF820, "Neues Dokument erstellen\nNeu"},
    {0xF821, "Vorhandenes Dokument \xF6"
             "ffnen\n\xD6"
             "ffnen"},
    {0xF822, "Aktives Dokument speichern\nSpeichern"},
    {0xF823, "Aktives Dokument unter einem neuen Namen speichern\nSpeichern unter"},
    {0xF824, "Aktives Dokument drucken\nDrucken"},
    {0xF825, "Ganze Seiten vor dem Drucken anzeigen\nSeitenansicht"},
    {0xF826, "Anwendung beenden"},
    {0xF861, "Fenster untereinander anordnen\nUntereinander"},
    {0xF862, "Fenster nebeneinander anordnen\nNebeneinander"},
    {0xF863, "Fenster \xFC"
             "berlappend anordnen\n\xDC"
             "berlappend"},
    {0xF864, "Fenster als nicht \xFC"
             "berlappende Kacheln anordnen\nKacheln"},
    {0xF865, "Symbole am unteren Fensterrand anordnen\nSymbole anordnen"},
    {0xF866, "Alle Fenster schlie\xDF"
             "en\nAlle schlie\xDF"
             "en"},
    {0xF880, "Allgemeine Hilfe zur Anwendung starten"},
    {0xF881, "Service und Unterst\xFCtzung zur Anwendung anzeigen"},
    {0xF882, "Fernwartung durch den Service starten"},
    {0xF883, "Nach einer neueren Version der Anwendung suchen"},
    {0xF884, "Einf\xFChrung in die Bedienung der Anwendung anzeigen"},
    {0xF885, "Neuerungen dieser Version anzeigen"},
    {0xF886, "Programminformation, Versionsnummer und Copyright anzeigen"},
    {1000, "VALMOR\xAE Dynamischer Linker"},
    {1001, "Die Quill-Editor Bibliothek konnte nicht geladen werden!\n\n"
           "Bitte installieren Sie die Anwendung neu"},
    {1002, "Die Quill-Editor Bibliothek konnte nicht geladen werden!\n\n"
           "Bitte installieren Sie die Anwendung neu"},
};

HINSTANCE library() {
    return static_cast<HINSTANCE>(GwThisDll::current().module());
}

std::string loadString(unsigned int id) {
    char buffer[512] = {};
    int length = LoadStringA(library(), id, buffer, sizeof buffer);
    return std::string(buffer, length > 0 ? static_cast<std::size_t>(length) : 0);
}

std::wstring loadWideString(unsigned int id) {
    wchar_t buffer[512] = {};
    int length = LoadStringW(library(), id, buffer, 512);
    return std::wstring(buffer, length > 0 ? static_cast<std::size_t>(length) : 0);
}

std::string menuString(HMENU menu, unsigned int item, unsigned int flags) {
    char buffer[256] = {};
    int length = GetMenuStringA(menu, item, buffer, sizeof buffer, flags);
    return std::string(buffer, length > 0 ? static_cast<std::size_t>(length) : 0);
}

// The ANSI functions give Windows-1252 bytes only where that is the ANSI code page.
bool ansiIsWindows1252() {
    return GetACP() == 1252;
}

// Every entry of the popup of menu id: by position with its identifier and text, and by
// command with GetMenuStringA.
void expectPopup(unsigned int id, char const* title, std::vector<Entry> const& entries) {
    SCOPED_TRACE("menu " + std::to_string(id));
    HMENU menu = LoadMenuA(library(), MAKEINTRESOURCEA(id));
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(GetMenuItemCount(menu), 1) << "a bar with one popup";
    EXPECT_EQ(menuString(menu, 0, MF_BYPOSITION), title);
    HMENU popup = GetSubMenu(menu, 0);
    ASSERT_NE(popup, nullptr);
    ASSERT_EQ(GetMenuItemCount(popup), static_cast<int>(entries.size()));
    for (std::size_t position = 0; position < entries.size(); ++position) {
        Entry const& entry = entries[position];
        SCOPED_TRACE("position " + std::to_string(position));
        MENUITEMINFOA info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE | MIIM_ID | MIIM_SUBMENU;
        ASSERT_TRUE(GetMenuItemInfoA(popup, static_cast<UINT>(position), TRUE, &info));
        EXPECT_EQ(info.hSubMenu, nullptr);
        if (entry.text == nullptr) {
            EXPECT_NE(info.fType & MFT_SEPARATOR, 0u);
            continue;
        }
        EXPECT_EQ(info.fType & MFT_SEPARATOR, 0u);
        EXPECT_EQ(info.wID, entry.id);
        EXPECT_EQ(menuString(popup, entry.id, MF_BYCOMMAND), entry.text);
    }
    DestroyMenu(menu);
}

} // namespace

TEST(LibraryResources, TheFileMenuIsOnePopupWithTheFileCommands) {
    if (!ansiIsWindows1252())
        GTEST_SKIP() << "the ANSI code page is " << GetACP() << ", not 1252";
    expectPopup(100, "&Datei", kFileMenu);
}

TEST(LibraryResources, TheHelpMenuIsOnePopupWithTheHelpCommands) {
    expectPopup(101, "&Hilfe", kHelpMenu);
}

TEST(LibraryResources, TheWindowMenuIsOnePopupWithTheWindowCommands) {
    if (!ansiIsWindows1252())
        GTEST_SKIP() << "the ANSI code page is " << GetACP() << ", not 1252";
    expectPopup(102, "F&enster", kWindowMenu);
}

TEST(LibraryResources, TheRecentFilePlaceholderIsGrayed) {
    HMENU menu = LoadMenuA(library(), MAKEINTRESOURCEA(100));
    ASSERT_NE(menu, nullptr);
    EXPECT_NE(GetMenuState(menu, 0xF800, MF_BYCOMMAND) & MF_GRAYED, 0u);
    EXPECT_EQ(GetMenuState(menu, 0xF826, MF_BYCOMMAND) & MF_GRAYED, 0u);
    DestroyMenu(menu);
}

TEST(LibraryResources, EveryMenuEntryHasAStatusText) {
    for (std::vector<Entry> const* menu : {&kFileMenu, &kHelpMenu, &kWindowMenu}) {
        for (Entry const& entry : *menu) {
            if (entry.text != nullptr) {
                EXPECT_FALSE(loadWideString(entry.id).empty()) << std::hex << entry.id;
            }
        }
    }
}

TEST(LibraryResources, TheStringTableHoldsTheExpectedTexts) {
    if (!ansiIsWindows1252())
        GTEST_SKIP() << "the ANSI code page is " << GetACP() << ", not 1252";
    for (Entry const& entry : kStrings)
        EXPECT_EQ(loadString(entry.id), entry.text) << std::hex << entry.id;
}

TEST(LibraryResources, TheEditorLoaderTextsAreExact) {
    EXPECT_EQ(loadWideString(1000), L"VALMOR\u00AE Dynamischer Linker");
    std::wstring const failure = L"Die Quill-Editor Bibliothek konnte nicht geladen werden!\n\n"
                                 L"Bitte installieren Sie die Anwendung neu";
    EXPECT_EQ(loadWideString(1001), failure);
    EXPECT_EQ(loadWideString(1002), failure);
    EXPECT_EQ(loadWideString(1002).find(L"\r"), std::wstring::npos) << "line feeds only";
}

// The script is Windows-1252 text: the resource compiler must have read it as such, which
// the wide texts show whatever the ANSI code page is.
TEST(LibraryResources, GermanCharactersAreStoredAsTheirUnicodeCharacters) {
    EXPECT_NE(loadWideString(0xF866).find(L"schlie\u00DFen"), std::wstring::npos);
    EXPECT_NE(loadWideString(0xF863).find(L"\n\u00DCberlappend"), std::wstring::npos);
    EXPECT_NE(loadWideString(1000).find(L"VALMOR\u00AE"), std::wstring::npos);
}

TEST(LibraryResources, LoadStringAGivesWindows1252BytesForGermanCharacters) {
    if (!ansiIsWindows1252())
        GTEST_SKIP() << "the ANSI code page is " << GetACP() << ", not 1252";
    std::string const sharpS = loadString(0xF866);
    EXPECT_NE(sharpS.find("schlie\xDF"), std::string::npos);
    EXPECT_NE(sharpS.find('\xDF'), std::string::npos);
    std::string const umlaut = loadString(0xF863);
    EXPECT_NE(umlaut.find('\xDC'), std::string::npos);
    std::string const registered = loadString(1000);
    ASSERT_GE(registered.size(), 7u);
    EXPECT_EQ(static_cast<unsigned char>(registered[6]), 0xAE);
    EXPECT_EQ(registered.size(), std::string("VALMOR\xAE Dynamischer Linker").size());
}

TEST(LibraryResources, DialogHundredIsAGermanInfoBox) {
    HRSRC found = FindResourceA(library(), MAKEINTRESOURCEA(100), MAKEINTRESOURCEA(5));
    ASSERT_NE(found, nullptr);
    auto const* dialogTemplate =
        static_cast<DLGTEMPLATE const*>(LockResource(LoadResource(library(), found)));
    ASSERT_NE(dialogTemplate, nullptr);
    EXPECT_NE(dialogTemplate->style & DS_SETFONT, 0u);
    HWND dialog =
        CreateDialogIndirectParamA(GetModuleHandleA(nullptr), dialogTemplate, nullptr, nullptr, 0);
    ASSERT_NE(dialog, nullptr);
    char text[64] = {};
    GetWindowTextA(dialog, text, sizeof text);
    EXPECT_STREQ(text, "Info");
    HWND ok = GetDlgItem(dialog, IDOK);
    ASSERT_NE(ok, nullptr);
    GetWindowTextA(ok, text, sizeof text);
    EXPECT_STREQ(text, "OK");
    EXPECT_NE(GetWindowLongA(ok, GWL_STYLE) & BS_DEFPUSHBUTTON, 0);
    LOGFONTA font = {};
    GetObjectA(reinterpret_cast<HFONT>(SendMessageA(dialog, WM_GETFONT, 0, 0)), sizeof font, &font);
    EXPECT_STREQ(font.lfFaceName, "MS Shell Dlg");
    EXPECT_FALSE(IsWindowVisible(dialog));
    DestroyWindow(dialog);
}

TEST(LibraryResources, CursorHundredIsStillThere) {
    EXPECT_NE(LoadCursorA(library(), MAKEINTRESOURCEA(100)), nullptr);
}

// ---- The library's module as a resource

TEST(LibraryResources, ThisDllsResourceNamesTheLibrarysFile) {
    GwResource resource = GwThisDll::current().resource();
    EXPECT_FALSE(resource.empty());
    EXPECT_EQ(resource.module(), GwThisDll::current().module());
    std::string name = resource.name().c_str();
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    EXPECT_NE(name.find("vmgui.dll"), std::string::npos) << name;
}

TEST(LibraryResources, ThisDllsResourceLoadsTheLibrarysTexts) {
    GwResource resource = GwThisDll::current().resource();
    EXPECT_EQ(resource.loadString(0xF880), String("Allgemeine Hilfe zur Anwendung starten"));
    EXPECT_EQ(resource.loadString(0xF826), String("Anwendung beenden"));
}

TEST(LibraryResources, ThisDllsResourceLoadsTheLibrarysMenusAsMenuObjects) {
    std::unique_ptr<GwMenu> menu(GwThisDll::current().resource().loadMenu(101));
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->id(), 101u);
    HMENU bar = static_cast<HMENU>(menu->window());
    ASSERT_EQ(GetMenuItemCount(bar), 1);
    GwMenu* help = GwMenu::lookup(GetSubMenu(bar, 0));
    ASSERT_NE(help, nullptr);
    GwMenuItem const& info = help->item(0xF886);
    EXPECT_EQ(info.id(), 0xF886u);
    EXPECT_EQ(info.text(), String("%s-&Info"));
}

namespace {

// Notes the activations it hears and lets them through.
class ActivationListener : public GwEventHandler {
public:
    ActivationListener() : GwEventHandler(false) {}
    int cbActivate(GwWindow& window) override {
        activated.push_back(&window);
        return GwResultContinue;
    }
    std::vector<GwWindow*> activated;
};

} // namespace

TEST(LibraryResources, DialogHundredsOkIsAPushButtonThatActivatesAndEndsTheDialog) {
    testing_windows::ScopedApplication application;
    GwWindow* const window = GwThisDll::current().resource().loadDialog(100, nullptr);
    auto* const dialog = dynamic_cast<GwDialog*>(window);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = static_cast<HWND>(dialog->window());
    GwWindow* const ok = GwWindow::window(GetDlgItem(hwnd, IDOK), false);
    ASSERT_NE(ok, nullptr);
    EXPECT_EQ(ok->isA(), Class::lookup("GwPushButton"));
    ActivationListener listener;
    dialog->add(&listener);
    ShowWindow(hwnd, SW_SHOW);
    SendMessageA(GetDlgItem(hwnd, IDOK), BM_CLICK, 0, 0);
    EXPECT_EQ(listener.activated, std::vector<GwWindow*>{ok});
    EXPECT_EQ(dialog->result(), IDOK);
    EXPECT_FALSE(IsWindowVisible(hwnd));
    DestroyWindow(hwnd);
}

TEST(LibraryResources, MenuHundredIsNotTouchedByTheDialogsAttributeData) {
    std::unique_ptr<GwMenu> menu(GwThisDll::current().resource().loadMenu(100));
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->isA(), GwMenu::isa());
    GwMenu* const file = GwMenu::lookup(GetSubMenu(static_cast<HMENU>(menu->window()), 0));
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->isA(), GwMenu::isa());
    EXPECT_EQ(file->item(0xF820).text(), String("&Neu"));
}
