// The open and save dialogs: the record's flags and buffer, the style table, the real
// dialogs of the platform answered from a thread timer, and the paths an iterator builds
// from the result buffer, with its navigation, copies and bad buffers.
#include <gtest/gtest.h>

#include <windows.h>

#include <commdlg.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <typeinfo>
#include <vector>

#include <GwFileSelect.h>
#include <GwFrame.h>

#include "DialogsTesting.h"

using namespace testing_dialogs;
using testing_windows::pumpMessages;

namespace {

std::string text(String const& string) {
    return string.c_str();
}

// Every path of the iterator, walked with begin() and ++ until the empty string.
std::vector<std::string> walk(GwFileSelect::Iterator& paths) {
    std::vector<std::string> all;
    for (String path = paths.begin(); path.size() != 0; path = ++paths)
        all.push_back(text(path));
    return all;
}

// Writes a result into the dialog's buffer as the platform's dialog does, and a result.
void fillBuffer(GwFileSelect& dialog, std::string const& bytes) {
    std::memset(dialog.fileBuffer(), 0, GwFileSelect::fileBufferSize);
    std::memcpy(dialog.fileBuffer(), bytes.data(), bytes.size());
    dialog.setResult(1);
}

class FileSelectTest : public ::testing::Test {
protected:
    void TearDown() override { pumpMessages(); }
    testing_windows::ScopedApplication mApplication;
};

constexpr unsigned long kInitialFlags = 0x91004;

} // namespace

TEST_F(FileSelectTest, RecordStartsWithTheOpenFlagsAndAnEmptyBuffer) {
    GwFileSelect dialog;
    EXPECT_EQ(dialog.flags(), kInitialFlags);
    EXPECT_FALSE(dialog.saveAs());
    EXPECT_FALSE(dialog.multiselect());
    ASSERT_NE(dialog.fileBuffer(), nullptr);
    for (unsigned long i = 0; i < GwFileSelect::fileBufferSize; ++i)
        ASSERT_EQ(dialog.fileBuffer()[i], '\0') << i;
    EXPECT_EQ(dialog.window(), nullptr);
    EXPECT_EQ(text(dialog.file()), "");
}

TEST_F(FileSelectTest, NewInstanceMakesADefaultDialog) {
    Class const* record = Class::lookup("GwFileSelect");
    ASSERT_NE(record, nullptr);
    GwFileSelect* made = dynamic_cast<GwFileSelect*>(record->createInstance(nullptr));
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->flags(), kInitialFlags);
    delete made;
}

TEST_F(FileSelectTest, StyleTableSetsItsFlags) {
    struct Case {
        GwFileSelect::eStyle style;
        bool on;
        unsigned long set;   // flags set afterwards
        unsigned long clear; // flags cleared afterwards
    };
    Case const cases[] = {
        {GwFileSelect::eMultiselect, true, OFN_ALLOWMULTISELECT, 0},
        {GwFileSelect::eMultiselect, false, 0, OFN_ALLOWMULTISELECT},
        {GwFileSelect::eChangeDir, false, OFN_NOCHANGEDIR, 0},
        {GwFileSelect::eChangeDir, true, 0, OFN_NOCHANGEDIR},
        {GwFileSelect::eReadOnlyReturn, false, OFN_NOREADONLYRETURN, 0},
        {GwFileSelect::eReadOnlyReturn, true, 0, OFN_NOREADONLYRETURN},
        {GwFileSelect::eOverwritePrompt, true, OFN_OVERWRITEPROMPT, 0},
        {GwFileSelect::eOverwritePrompt, false, 0, OFN_OVERWRITEPROMPT},
        {GwFileSelect::eFileMustExist, false, 0, OFN_FILEMUSTEXIST},
        {GwFileSelect::eFileMustExist, true, OFN_FILEMUSTEXIST, 0},
        {GwFileSelect::ePathMustExist, false, 0, OFN_FILEMUSTEXIST},
        {GwFileSelect::ePathMustExist, true, OFN_FILEMUSTEXIST, 0},
        {GwFileSelect::eCreatePrompt, true, OFN_CREATEPROMPT, 0},
        {GwFileSelect::eCreatePrompt, false, 0, OFN_CREATEPROMPT},
        {GwFileSelect::eValidate, false, OFN_NOVALIDATE, 0},
        {GwFileSelect::eValidate, true, 0, OFN_NOVALIDATE},
        {GwFileSelect::eSaveAs, true, 0, OFN_FILEMUSTEXIST},
        {GwFileSelect::eSaveAs, false, OFN_FILEMUSTEXIST, 0},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(testing::Message() << "style " << c.style << " on " << c.on);
        GwFileSelect dialog;
        dialog.setStyle(c.style, !c.on); // from the opposite state
        unsigned long const before = dialog.flags();
        dialog.setStyle(c.style, c.on);
        unsigned long const after = dialog.flags();
        EXPECT_EQ(after & c.set, c.set);
        EXPECT_EQ(after & c.clear, 0u);
        EXPECT_EQ(after & ~(c.set | c.clear), before & ~(c.set | c.clear));
        EXPECT_NE(after, before);
    }
    GwFileSelect saving;
    saving.setStyle(GwFileSelect::eSaveAs, true);
    EXPECT_TRUE(saving.saveAs());
}

TEST_F(FileSelectTest, StyleAboveEightChangesNothing) {
    GwFileSelect dialog;
    dialog.setMultiselect(true);
    unsigned long const before = dialog.flags();
    for (unsigned int value : {9u, 10u, 100u, 0xFFFFFFFFu}) {
        dialog.setStyle(static_cast<GwFileSelect::eStyle>(value), true);
        dialog.setStyle(static_cast<GwFileSelect::eStyle>(value), false);
        EXPECT_EQ(dialog.flags(), before) << value;
    }
    EXPECT_FALSE(dialog.saveAs());
}

TEST_F(FileSelectTest, SaveAsClearsFileMustExist) {
    GwFileSelect dialog;
    dialog.setSaveAs(true);
    EXPECT_TRUE(dialog.saveAs());
    EXPECT_EQ(dialog.flags(), kInitialFlags & ~static_cast<unsigned long>(OFN_FILEMUSTEXIST));
    dialog.setSaveAs(false);
    EXPECT_EQ(dialog.flags(), kInitialFlags);
}

TEST_F(FileSelectTest, MultiselectIsTheFlag) {
    GwFileSelect dialog;
    dialog.setMultiselect(true);
    EXPECT_TRUE(dialog.multiselect());
    EXPECT_EQ(dialog.flags(), kInitialFlags | OFN_ALLOWMULTISELECT);
    dialog.setMultiselect(false);
    EXPECT_EQ(dialog.flags(), kInitialFlags);
}

TEST_F(FileSelectTest, SetFileTurnsSlashesIntoBackslashes) {
    GwFileSelect dialog;
    dialog.setFile("C:/data/sub/report.txt");
    EXPECT_STREQ(dialog.fileBuffer(), "C:\\data\\sub\\report.txt");
}

TEST_F(FileSelectTest, SetFileLongerThanTheBufferIsCut) {
    GwFileSelect dialog;
    // A guard right behind the buffer would catch a longer write under a debug heap; the
    // visible answer is the cut path with its NUL in the last byte.
    dialog.setFile(String(std::string(5000, 'a').c_str()));
    EXPECT_EQ(std::strlen(dialog.fileBuffer()), GwFileSelect::fileBufferSize - 1);
    EXPECT_EQ(dialog.fileBuffer()[GwFileSelect::fileBufferSize - 1], '\0');
}

TEST_F(FileSelectTest, FilterIsKept) {
    GwFileSelect dialog;
    dialog.setFilter("Text|*.txt|All|*.*|");
    EXPECT_EQ(text(dialog.filter()), "Text|*.txt|All|*.*|");
}

TEST_F(FileSelectTest, OwnerIsTheParentsWindow) {
    GwFrame frame(1, 0, false);
    ASSERT_NE(frame.window(), nullptr);
    GwFileSelect dialog(frame);
    dialog.setSaveAs(true);
    DialogDriver driver(IDCANCEL);
    dialog.setVisible(true);
    ASSERT_TRUE(driver.seen.found);
    EXPECT_EQ(driver.seen.owner, static_cast<HWND>(frame.window()));

    dialog.setParent(nullptr);
    DialogDriver second(IDCANCEL);
    dialog.setVisible(true);
    ASSERT_TRUE(second.seen.found);
    EXPECT_EQ(second.seen.owner, nullptr);

    GwFileSelect fromPointer(&frame);
    DialogDriver third(IDCANCEL);
    fromPointer.setVisible(true);
    ASSERT_TRUE(third.seen.found);
    EXPECT_EQ(third.seen.owner, static_cast<HWND>(frame.window()));
}

TEST_F(FileSelectTest, SaveDialogAppendsTheChosenFiltersExtension) {
    TempFolder folder;
    GwFileSelect dialog;
    dialog.setText("Speichern unter");
    dialog.setSaveAs(true);
    dialog.setFilter("Text|*.txt|All|*.*|");
    dialog.setFile(folder.file("start").c_str());
    DialogDriver driver(IDOK, [&](HWND box) { typeFileName(box, folder.file("report")); });
    dialog.setVisible(false); // the argument is not looked at
    ASSERT_TRUE(driver.seen.found);
    EXPECT_FALSE(driver.timedOut());
    EXPECT_EQ(driver.seen.title, "Speichern unter");
    EXPECT_NE(dialog.result(), 0);
    EXPECT_EQ(dialog.filterIndex(), 1u);
    EXPECT_EQ(text(dialog.defaultExtension()), ".txt");

    GwFileSelect::Iterator paths(dialog);
    EXPECT_EQ(walk(paths), std::vector<std::string>{folder.file("report.txt")});
    EXPECT_EQ(text(dialog.file()), folder.file("report.txt"));
    // The separator before the name is a NUL now, as in a multiple selection.
    ASSERT_GT(dialog.fileOffset(), 0);
    EXPECT_EQ(dialog.fileBuffer()[dialog.fileOffset() - 1], '\0');
}

TEST_F(FileSelectTest, WildcardPatternAppendsNoExtension) {
    TempFolder folder;
    GwFileSelect dialog;
    dialog.setSaveAs(true);
    dialog.setFilter("All|*.*|");
    DialogDriver driver(IDOK, [&](HWND box) { typeFileName(box, folder.file("report")); });
    dialog.setVisible(true);
    ASSERT_TRUE(driver.seen.found);
    ASSERT_NE(dialog.result(), 0);
    EXPECT_EQ(text(dialog.defaultExtension()), "");
    EXPECT_EQ(text(dialog.file()), folder.file("report"));
}

TEST_F(FileSelectTest, SecondFilterEntryChosenGivesItsExtension) {
    TempFolder folder;
    GwFileSelect dialog;
    dialog.setSaveAs(true);
    dialog.setFilter("All|*.*|Text|*.txt|");
    DialogDriver driver(IDOK, [&](HWND box) {
        HWND const types = GetDlgItem(box, 0x0470); // cmb1, the file types
        SendMessageA(types, CB_SETCURSEL, 1, 0);
        // A choice with the mouse ends with both notifications.
        for (WORD code : {CBN_SELCHANGE, CBN_SELENDOK})
            SendMessageA(box, WM_COMMAND, MAKEWPARAM(0x0470, code),
                         reinterpret_cast<LPARAM>(types));
        typeFileName(box, folder.file("notes"));
    });
    dialog.setVisible(true);
    ASSERT_TRUE(driver.seen.found);
    ASSERT_NE(dialog.result(), 0);
    EXPECT_EQ(dialog.filterIndex(), 2u);
    EXPECT_EQ(text(dialog.defaultExtension()), ".txt");
    EXPECT_EQ(text(dialog.file()), folder.file("notes.txt"));
}

TEST_F(FileSelectTest, OpenDialogGivesAnExistingFile) {
    TempFolder folder;
    folder.create("report.txt");
    GwFileSelect dialog;
    dialog.setFilter("Text|*.txt|");
    DialogDriver driver(IDOK, [&](HWND box) { typeFileName(box, folder.file("report.txt")); });
    dialog.setVisible(true);
    ASSERT_TRUE(driver.seen.found);
    ASSERT_NE(dialog.result(), 0);
    EXPECT_EQ(text(dialog.file()), folder.file("report.txt"));
}

TEST_F(FileSelectTest, MultipleSelectionGivesEveryPathInBufferOrder) {
    TempFolder folder;
    folder.create("b.txt");
    folder.create("a.txt");
    SetCurrentDirectoryA(folder.path().c_str());
    GwFileSelect dialog;
    dialog.setMultiselect(true);
    dialog.setFilter("Text|*.txt|");
    dialog.setFile(folder.file("").c_str());
    DialogDriver driver(IDOK, [&](HWND box) { typeFileName(box, "\"b.txt\" \"a.txt\""); });
    dialog.setVisible(true);
    ASSERT_TRUE(driver.seen.found);
    ASSERT_NE(dialog.result(), 0);

    // The names in the buffer's own order after the directory.
    std::vector<std::string> expected;
    char const* buffer = dialog.fileBuffer();
    std::string const directory = buffer;
    for (char const* name = buffer + directory.size() + 1; *name != '\0';
         name += std::strlen(name) + 1)
        expected.push_back(directory + "\\" + name);
    ASSERT_EQ(expected.size(), 2u);
    GwFileSelect::Iterator paths(dialog);
    EXPECT_EQ(walk(paths), expected);
    EXPECT_EQ(paths.count(), 2);
    std::vector<std::string> sorted = expected;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(sorted, (std::vector<std::string>{folder.file("a.txt"), folder.file("b.txt")}));
    char temp[MAX_PATH] = {};
    GetTempPathA(sizeof temp, temp);
    SetCurrentDirectoryA(temp);
}

TEST_F(FileSelectTest, CancelGivesNoPaths) {
    GwFileSelect dialog;
    dialog.setFile("C:\\data\\report.txt");
    DialogDriver driver(IDCANCEL);
    dialog.setVisible(true);
    ASSERT_TRUE(driver.seen.found);
    EXPECT_EQ(dialog.result(), 0);
    GwFileSelect::Iterator paths(dialog);
    EXPECT_EQ(paths.count(), 0);
    EXPECT_EQ(text(paths.begin()), "");
    EXPECT_EQ(text(dialog.file()), "");
}

TEST_F(FileSelectTest, FilterWithoutBarsStillShowsTheDialog) {
    GwFileSelect dialog;
    dialog.setFilter("no bars");
    DialogDriver driver(IDCANCEL);
    dialog.setVisible(true);
    ASSERT_TRUE(driver.seen.found);
    EXPECT_EQ(dialog.result(), 0);
    EXPECT_EQ(text(dialog.defaultExtension()), "");
    EXPECT_EQ(text(dialog.filter()), "no bars");
}

TEST_F(FileSelectTest, ActiveWindowIsActiveAgainAfterwards) {
    GwFrame frame(1, 0, false);
    GwFileSelect dialog;
    expectActiveAgainAfter(frame, dialog);
}

TEST_F(FileSelectTest, CopySharesTheRecord) {
    GwFileSelect dialog;
    dialog.setFilter("Text|*.txt");
    dialog.setSaveAs(true);
    dialog.setText("Titel");
    {
        GwFileSelect copy(dialog);
        EXPECT_EQ(copy.fileBuffer(), dialog.fileBuffer());
        EXPECT_EQ(text(copy.filter()), "Text|*.txt");
        EXPECT_TRUE(copy.saveAs());
        EXPECT_EQ(text(copy.text()), "Titel");
        copy.setFile("C:/x");
        EXPECT_STREQ(dialog.fileBuffer(), "C:\\x");
        GwFileSelect other;
        other = copy;
        EXPECT_EQ(other.fileBuffer(), dialog.fileBuffer());
    }
    // The record outlives the copies.
    dialog.setFile("C:/y");
    EXPECT_STREQ(dialog.fileBuffer(), "C:\\y");
}

// Iterators over a buffer written as the platform's dialog writes it.

TEST_F(FileSelectTest, IteratorOfANeverShownDialogReadsTheBuffer) {
    GwFileSelect dialog;
    EXPECT_EQ(dialog.result(), -1);
    std::memcpy(dialog.fileBuffer(), "C:\\data\0a.txt\0b.txt\0", 20);
    GwFileSelect::Iterator paths(dialog);
    EXPECT_EQ(walk(paths), (std::vector<std::string>{"C:\\data\\a.txt", "C:\\data\\b.txt"}));
}

TEST_F(FileSelectTest, EndLeavesThePositionPastTheLastPath) {
    GwFileSelect dialog;
    fillBuffer(dialog, std::string("C:\\data\0a.txt\0b.txt\0", 20));
    GwFileSelect::Iterator paths(dialog);
    EXPECT_EQ(text(paths.end()), "");
    EXPECT_EQ(paths.position(), 2);
    EXPECT_EQ(text(*paths), "");
    EXPECT_EQ(text(*paths.operator->()), "");
    EXPECT_EQ(text(--paths), "C:\\data\\b.txt");
}

TEST_F(FileSelectTest, IncrementAndDecrementInBothForms) {
    GwFileSelect dialog;
    fillBuffer(dialog, std::string("C:\\d\0a\0b\0c\0", 11));
    GwFileSelect::Iterator paths(dialog);
    EXPECT_EQ(text(paths.begin()), "C:\\d\\a");
    EXPECT_EQ(text(paths++), "C:\\d\\a");
    EXPECT_EQ(text(*paths), "C:\\d\\b");
    EXPECT_EQ(text(++paths), "C:\\d\\c");
    EXPECT_EQ(text(paths--), "C:\\d\\c");
    EXPECT_EQ(text(*paths), "C:\\d\\b");
    EXPECT_EQ(text(--paths), "C:\\d\\a");
    EXPECT_EQ(paths->size(), 6u);
    EXPECT_EQ(paths.position(), 0);
}

TEST_F(FileSelectTest, PositionBelowZeroGivesTheEmptyString) {
    GwFileSelect dialog;
    fillBuffer(dialog, std::string("C:\\d\0a\0", 7));
    GwFileSelect::Iterator paths(dialog);
    EXPECT_EQ(text(paths.begin()), "C:\\d\\a");
    EXPECT_EQ(text(--paths), "");
    EXPECT_EQ(paths.position(), -1);
    EXPECT_EQ(text(*paths), "");
    EXPECT_EQ(text(paths--), "");
    EXPECT_EQ(text(*paths.operator->()), "");
    EXPECT_EQ(text(++paths), "");
    EXPECT_EQ(text(++paths), "C:\\d\\a");
}

TEST_F(FileSelectTest, EmptyIterator) {
    GwFileSelect::Iterator paths;
    EXPECT_EQ(paths.count(), 0);
    EXPECT_EQ(text(paths.begin()), "");
    EXPECT_EQ(text(paths.end()), "");
    EXPECT_EQ(paths.position(), 0);
    Class const* record = Class::lookup("GwFileSelect::Iterator");
    ASSERT_NE(record, nullptr);
    GwFileSelect::Iterator* made =
        dynamic_cast<GwFileSelect::Iterator*>(record->createInstance(nullptr));
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->count(), 0);
    delete made;
}

TEST_F(FileSelectTest, ManyPathsGrowTheTable) {
    GwFileSelect dialog;
    std::string bytes = std::string("C:\\d") + '\0';
    std::vector<std::string> expected;
    for (int i = 0; i < 250; ++i) {
        std::string const name = "f" + std::to_string(i) + ".txt";
        bytes += name + '\0';
        expected.push_back("C:\\d\\" + name);
    }
    fillBuffer(dialog, bytes);
    GwFileSelect::Iterator paths(dialog);
    EXPECT_EQ(paths.count(), 250);
    EXPECT_EQ(walk(paths), expected);
    EXPECT_EQ(text(paths.end()), "");
    EXPECT_EQ(paths.position(), 250);
}

TEST_F(FileSelectTest, CopiesAndAssignmentOwnTheirPaths) {
    GwFileSelect dialog;
    fillBuffer(dialog, std::string("C:\\d\0a\0b\0", 9));
    GwFileSelect::Iterator* source = new GwFileSelect::Iterator(dialog);
    ++*source;
    GwFileSelect::Iterator copy(*source);
    GwFileSelect::Iterator assigned;
    assigned = *source;
    GwFileSelect::Iterator& itself = assigned;
    assigned = itself; // to itself: unchanged
    delete source;
    EXPECT_EQ(copy.position(), 1);
    EXPECT_EQ(text(*copy), "C:\\d\\b");
    EXPECT_EQ(assigned.position(), 1);
    EXPECT_EQ(text(*assigned), "C:\\d\\b");
    EXPECT_EQ(walk(copy), (std::vector<std::string>{"C:\\d\\a", "C:\\d\\b"}));
    EXPECT_EQ(walk(assigned), (std::vector<std::string>{"C:\\d\\a", "C:\\d\\b"}));
    // Assigning through the object interface checks the class.
    GwFileSelect::Iterator viaObject;
    viaObject = static_cast<Object const&>(copy);
    EXPECT_EQ(viaObject.count(), 2);
    EXPECT_THROW(viaObject = static_cast<Object const&>(dialog), std::bad_cast);
}

TEST_F(FileSelectTest, BufferFullToItsLastByteEndsTheListThere) {
    GwFileSelect dialog;
    // A directory, then names up to the very last byte: no NUL after the last one and no
    // empty string to end the list.
    std::string bytes = std::string("C:\\d") + '\0';
    while (bytes.size() < GwFileSelect::fileBufferSize - 10)
        bytes += std::string("x") + '\0';
    std::size_t const tail = GwFileSelect::fileBufferSize - bytes.size();
    bytes += std::string(tail, 'y');
    ASSERT_EQ(bytes.size(), GwFileSelect::fileBufferSize);
    fillBuffer(dialog, bytes);
    GwFileSelect::Iterator paths(dialog);
    std::vector<std::string> const all = walk(paths);
    ASSERT_EQ(all.size(), (GwFileSelect::fileBufferSize - 5 - tail) / 2 + 1);
    EXPECT_EQ(all.front(), "C:\\d\\x");
    EXPECT_EQ(all.back(), "C:\\d\\" + std::string(tail, 'y'));

    // Not a single NUL: the whole buffer is the directory and nothing follows.
    fillBuffer(dialog, std::string(GwFileSelect::fileBufferSize, 'z'));
    GwFileSelect::Iterator none(dialog);
    EXPECT_EQ(none.count(), 0);
}
