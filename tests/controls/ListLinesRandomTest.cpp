// The list box's lines against a literal implementation of their rules: a second, raw list
// box driven by linear walks that read every line's item data from the platform. Thousands
// of random operations (adds with replacement, inserts, removals by identifier, item and
// position, lines added and deleted by other code, item data cleared by other code, sorting
// switched on and off, selection) must give the same lines, the same copies and the same
// answers in both.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <typeinfo>

#include <GwListBox.h>

#include "ListTesting.h"

using namespace testing_lists;

namespace {

// Equal when the texts are: equality that does not follow the identifier.
class TextOnlyItem : public GwTextItem {
    GW_DECLARE_CLASS(TextOnlyItem)

public:
    TextOnlyItem(unsigned long long id, String const& text) : GwTextItem(id, text) {}
    TextOnlyItem(TextOnlyItem const&) = default;
    TextOnlyItem& operator=(TextOnlyItem const&) = default;

    bool operator==(Object const& other) const override {
        return text() == dynamic_cast<GwTextItem const&>(other).text();
    }

    static TextOnlyItem* newInstance(EventData const* data) {
        auto const* eventData = dynamic_cast<GwEventData const*>(data);
        auto const* item =
            eventData != nullptr ? dynamic_cast<TextOnlyItem const*>(eventData->item()) : nullptr;
        return item != nullptr ? new TextOnlyItem(*item) : new TextOnlyItem(0, "");
    }
};

} // namespace

GW_CLASS_MAKES(TextOnlyItem, "TextOnlyItem", "GwTextItem")

namespace {

// The rules done literally: one message per line read, the copies made by the item class's
// factory; a line without item data is not a match (where the walk would read through a
// null pointer).
class Literal {
public:
    explicit Literal(HWND list) : mList(list) {}
    ~Literal() {
        for (GwItem* copy : mCopies)
            delete copy;
    }

    bool sorted = false;

    int count() const { return static_cast<int>(send(LB_GETCOUNT, 0, 0)); }
    GwItem* data(int line) const {
        LRESULT const value = send(LB_GETITEMDATA, static_cast<WPARAM>(line), 0);
        return value == LB_ERR ? nullptr : reinterpret_cast<GwItem*>(value);
    }
    int find(unsigned long long id) const {
        for (int i = 0, n = count(); i < n; ++i) {
            if (GwItem* d = data(i); d != nullptr && d->id() == id)
                return i;
        }
        return -1;
    }
    int find(GwItem const& item) const {
        for (int i = 0, n = count(); i < n; ++i) {
            if (GwItem* d = data(i); d != nullptr && item == *d)
                return i;
        }
        return -1;
    }

    void add(GwItem const& item) {
        int position = -1;
        if (item.id() != ~0ull) {
            int const found = find(item);
            if (found >= 0) {
                GwItem* old = data(found);
                send(LB_DELETESTRING, static_cast<WPARAM>(found), 0);
                drop(old);
                position = found;
            }
        }
        LRESULT const at = sorted
                               ? send(LB_ADDSTRING, 0, text(item))
                               : send(LB_INSERTSTRING, static_cast<WPARAM>(position), text(item));
        store(at, item);
    }
    void addAt(int position, GwItem const& item) {
        int const n = count();
        int at = -1;
        if (position > 0 && position < n) {
            at = position;
            if (GwItem* d = data(position); d != nullptr && item == *d) {
                send(LB_DELETESTRING, static_cast<WPARAM>(position), 0);
                drop(d);
            }
        }
        store(send(LB_INSERTSTRING, static_cast<WPARAM>(at), text(item)), item);
    }
    void removeAt(int position) {
        if (position >= count())
            return;
        GwItem* d = data(position);
        if (send(LB_DELETESTRING, static_cast<WPARAM>(position), 0) != LB_ERR)
            drop(d);
    }
    void remove(unsigned long long id) {
        if (int const at = find(id); at >= 0)
            removeAt(at);
    }
    void remove(GwItem const& item) {
        if (int const at = find(item); at >= 0)
            removeAt(at);
    }
    void removeAll() {
        for (GwItem* copy : mCopies)
            delete copy;
        mCopies.clear();
        send(LB_RESETCONTENT, 0, 0);
    }

private:
    LRESULT send(UINT msg, WPARAM wParam, LPARAM lParam) const {
        return SendMessageA(mList, msg, wParam, lParam);
    }
    static LPARAM text(GwItem const& item) { return reinterpret_cast<LPARAM>(item.text().c_str()); }
    void store(LRESULT at, GwItem const& item) {
        if (at < 0)
            return;
        GwEventData const carried(item);
        auto* copy = dynamic_cast<GwItem*>(Class::createInstance(item.isA(), &carried));
        mCopies.insert(copy);
        send(LB_SETITEMDATA, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(copy));
    }
    // Copies of lines that other code deleted stay in mCopies until the end.
    void drop(GwItem* copy) {
        if (copy != nullptr && mCopies.erase(copy) != 0)
            delete copy;
    }

    HWND mList;
    std::set<GwItem*> mCopies;
};

bool same(GwItem const* a, GwItem const* b) {
    if (a == nullptr || b == nullptr)
        return a == b;
    return a->isA() == b->isA() && a->id() == b->id() && a->text() == b->text();
}

class ListLinesRandomTest : public ListFixture {
protected:
    void SetUp() override {
        ListFixture::SetUp();
        mList = new GwListBox(*mTop.window, 1, false, GwWindow::eUnsorted);
        mRaw = CreateWindowExA(0, "ListBox", "", 0x50330141, 0, 0, 100, 100, mTop.hwnd,
                               reinterpret_cast<HMENU>(2), GetModuleHandleA(nullptr), nullptr);
        mLiteral = std::make_unique<Literal>(mRaw);
    }
    void TearDown() override {
        mLiteral.reset();
        ListFixture::TearDown();
    }

    // One of the item kinds, with identifiers and texts from small sets so that equal
    // items, equal identifiers with other texts and mismatched classes all happen.
    std::unique_ptr<GwItem> randomItem() {
        unsigned long long const id = mRandom() % 40;
        String const text(kTexts[mRandom() % std::size(kTexts)]);
        switch (mRandom() % 10) {
        case 0:
            return std::make_unique<GwItem>(id);
        case 1:
            return std::make_unique<TextOnlyItem>(id, text);
        case 2:
            return std::make_unique<GwTextItem>(~0ull, text);
        default:
            return std::make_unique<GwTextItem>(id, text);
        }
    }

    // Runs one operation on both lists; both must throw or not throw alike.
    template <class Library, class Reference> void both(Library library, Reference reference) {
        bool libraryThrew = false;
        bool referenceThrew = false;
        try {
            library();
        } catch (std::bad_cast const&) {
            libraryThrew = true;
        }
        try {
            reference();
        } catch (std::bad_cast const&) {
            referenceThrew = true;
        }
        ASSERT_EQ(libraryThrew, referenceThrew);
        mThrows += libraryThrew ? 1 : 0;
    }

    void compare(int step) {
        HWND const hwnd = hwndOf(*mList);
        ASSERT_EQ(lineTexts(hwnd), lineTexts(mRaw)) << "step " << step;
        int const n = mLiteral->count();
        ASSERT_EQ(mList->size(), n);
        for (int i = 0; i < n; ++i) {
            GwItem const& stored = mList->itemAt(i);
            GwItem const* library = &stored == &mList->itemAt(-1) ? nullptr : &stored;
            ASSERT_TRUE(same(library, mLiteral->data(i))) << "step " << step << " line " << i;
        }
        unsigned long long const id = mRandom() % 42;
        int const literal = mLiteral->find(id);
        GwItem const& found = mList->item(id);
        if (literal < 0)
            ASSERT_EQ(&found, &mList->item(~0ull - 1)) << "step " << step;
        else
            ASSERT_EQ(&found, &mList->itemAt(literal)) << "step " << step;
        int const selected = static_cast<int>(SendMessageA(mRaw, LB_GETCURSEL, 0, 0));
        ASSERT_EQ(mList->selected(id), literal >= 0 && literal == selected);
    }

    static constexpr char const* kTexts[] = {"Ahornweg", "Birkenallee", "Eichenstraße",
                                             "Lindenplatz"};
    std::mt19937 mRandom{20261122};
    GwListBox* mList = nullptr;
    HWND mRaw = nullptr;
    std::unique_ptr<Literal> mLiteral;
    int mThrows = 0;
};

} // namespace

TEST_F(ListLinesRandomTest, EveryAnswerEqualsTheLiteralWalkOverThousandsOfMixedOperations) {
    int const kSteps = 4000;
    int longest = 0;
    int withoutData = 0;
    for (int step = 0; step < kSteps; ++step) {
        int const n = mLiteral->count();
        longest = std::max(longest, n);
        for (int i = 0; i < n; ++i)
            withoutData += mLiteral->data(i) == nullptr ? 1 : 0;
        int const line = static_cast<int>(mRandom() % static_cast<unsigned>(n + 3)) - 1;
        unsigned const operation = mRandom() % 100;
        std::unique_ptr<GwItem> item = randomItem();
        if (operation < 35) {
            both([&] { mList->add(*item); }, [&] { mLiteral->add(*item); });
        } else if (operation < 45) {
            both([&] { mList->addAt(line, *item); }, [&] { mLiteral->addAt(line, *item); });
        } else if (operation < 55) {
            unsigned long long const id = mRandom() % 40;
            both([&] { mList->remove(id); }, [&] { mLiteral->remove(id); });
        } else if (operation < 65) {
            both([&] { mList->remove(*item); }, [&] { mLiteral->remove(*item); });
        } else if (operation < 72) {
            both([&] { mList->removeAt(line); }, [&] { mLiteral->removeAt(line); });
        } else if (operation < 78) {
            // Other code adds a line without item data.
            UINT const msg = mRandom() % 2 != 0 ? LB_ADDSTRING : LB_INSERTSTRING;
            for (HWND hwnd : {hwndOf(*mList), mRaw})
                SendMessageA(hwnd, msg, static_cast<WPARAM>(line),
                             reinterpret_cast<LPARAM>("fremd"));
        } else if (operation < 84) {
            // Other code deletes a line: its copy is no longer reachable.
            for (HWND hwnd : {hwndOf(*mList), mRaw})
                SendMessageA(hwnd, LB_DELETESTRING, static_cast<WPARAM>(line), 0);
        } else if (operation < 87) {
            // Other code clears a line's item data.
            for (HWND hwnd : {hwndOf(*mList), mRaw})
                SendMessageA(hwnd, LB_SETITEMDATA, static_cast<WPARAM>(line), 0);
        } else if (operation < 91) {
            bool const on = mRandom() % 2 != 0;
            mList->setSorting(on ? GwWindow::eSorted : GwWindow::eUnsorted);
            mLiteral->sorted = on;
            LONG const style = GetWindowLongA(mRaw, GWL_STYLE);
            SetWindowLongA(mRaw, GWL_STYLE, on ? style | LBS_SORT : style & ~LBS_SORT);
        } else if (operation < 97) {
            unsigned long long const id = mRandom() % 40;
            mList->select(id, true);
            int const at = mLiteral->find(id);
            if (at >= 0)
                SendMessageA(mRaw, LB_SETCURSEL, static_cast<WPARAM>(at), 0);
        } else if (operation < 98) {
            mList->remove();
            mLiteral->removeAll();
        } else {
            both([&] { mList->remove(*item); }, [&] { mLiteral->remove(*item); });
        }
        if (HasFatalFailure())
            return;
        compare(step);
        if (HasFatalFailure())
            return;
    }
    // The walk met what it is meant to meet.
    EXPECT_GT(longest, 60);
    EXPECT_GT(withoutData, 1000);
    EXPECT_GT(mThrows, 10);
}
