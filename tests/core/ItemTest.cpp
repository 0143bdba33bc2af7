#include <gtest/gtest.h>

#include <GwEventData.h>
#include <GwItem.h>
#include <GwUserData.h>

#include <typeinfo>

// Runs in a process of its own (see tests/CMakeLists.txt): no item exists before it.
TEST(FreshProcess, FirstTwoItemsGetIdentifiersZeroAndOne) {
    GwItem first;
    GwItem second;
    EXPECT_EQ(first.id(), 0u);
    EXPECT_EQ(second.id(), 1u);
    EXPECT_EQ(GwItem::gItemId, 2u);
}

TEST(Item, FreshIdentifiersCountUp) {
    GwItem::gItemId = 40;
    GwItem a;
    GwTextItem b("b");
    EXPECT_EQ(a.id(), 40u);
    EXPECT_EQ(b.id(), 41u);
    EXPECT_EQ(GwItem::gItemId, 42u);
}

TEST(Item, CounterAtItsMaximumHandsOutZero) {
    GwItem::gItemId = 4294967295u;
    GwItem item;
    EXPECT_EQ(item.id(), 0u);
    EXPECT_EQ(GwItem::gItemId, 1u);
}

TEST(Item, GivenIdentifierLeavesTheCounterAlone) {
    GwItem::gItemId = 10;
    GwItem item(77);
    GwTextItem text(78, "x");
    EXPECT_EQ(item.id(), 77u);
    EXPECT_EQ(text.id(), 78u);
    EXPECT_EQ(GwItem::gItemId, 10u);
}

TEST(Item, NotEqualIsThreeWay) {
    EXPECT_EQ(GwItem(7) != GwItem(9), -1);
    EXPECT_EQ(GwItem(9) != GwItem(7), 1);
    EXPECT_EQ(GwItem(9) != GwItem(9), 0);
    EXPECT_TRUE(GwItem(9) == GwItem(9));
    EXPECT_FALSE(GwItem(9) == GwItem(8));
}

TEST(Item, TextStaysEmptyAfterSetText) {
    GwItem item(1);
    EXPECT_EQ(&item.setText("hello"), &item);
    EXPECT_EQ(item.text(), "");
    EXPECT_STREQ(static_cast<char const*>(item), "");
    // One shared empty text for all items.
    EXPECT_EQ(&GwItem(2).text(), &item.text());
}

TEST(Item, ComparingWithAnotherClassThrowsBadCast) {
    GwItem item(1);
    GwUserData data;
    EXPECT_THROW((void)(item == static_cast<Object const&>(data)), std::bad_cast);
    EXPECT_THROW((void)(item != static_cast<Object const&>(data)), std::bad_cast);
}

TEST(Item, CopiesKeepTheIdentifier) {
    GwItem item(12);
    GwItem copy(item);
    EXPECT_EQ(copy.id(), 12u);
    GwItem other(3);
    other = item;
    EXPECT_EQ(other.id(), 12u);
    EXPECT_EQ(&other.setId(99), &other);
    EXPECT_EQ(other.id(), 99u);
}

TEST(Item, FactoryTakesTheCarriedItemsIdentifier) {
    GwItem carried(1234);
    GwEventData data(carried);
    GwItem* made = GwItem::newInstance(&data);
    EXPECT_EQ(made->id(), 1234u);
    delete made;

    GwItem::gItemId = 500;
    made = GwItem::newInstance(nullptr);
    EXPECT_EQ(made->id(), 500u);
    delete made;
    GwEventData empty;
    made = GwItem::newInstance(&empty);
    EXPECT_EQ(made->id(), 501u);
    delete made;
}

TEST(TextItem, ConstructorsSetIdentifierAndText) {
    GwItem::gItemId = 20;
    GwTextItem a;
    GwTextItem b(5);
    GwTextItem c(6, "six");
    GwTextItem d("dee");
    GwTextItem e("eee", 8);
    EXPECT_EQ(a.id(), 20u);
    EXPECT_EQ(a.text(), "");
    EXPECT_EQ(b.id(), 5u);
    EXPECT_EQ(c.id(), 6u);
    EXPECT_EQ(c.text(), "six");
    EXPECT_EQ(d.id(), 21u);
    EXPECT_EQ(d.text(), "dee");
    EXPECT_EQ(e.id(), 8u);
    EXPECT_EQ(e.text(), "eee");
    EXPECT_STREQ(static_cast<char const*>(e), "eee");
    EXPECT_EQ(static_cast<String const&>(e), "eee");
}

TEST(TextItem, EqualityNeedsIdentifierAndText) {
    EXPECT_TRUE(GwTextItem(1, "a") == GwTextItem(1, "a"));
    EXPECT_FALSE(GwTextItem(1, "a") == GwTextItem(1, "b"));
    EXPECT_FALSE(GwTextItem(1, "a") == GwTextItem(2, "a"));
}

TEST(TextItem, NotEqualComparesIdentifierThenText) {
    EXPECT_EQ(GwTextItem(1, "z") != GwTextItem(2, "a"), -1);
    EXPECT_EQ(GwTextItem(2, "a") != GwTextItem(1, "z"), 1);
    EXPECT_EQ(GwTextItem(1, "a") != GwTextItem(1, "b"), -1);
    EXPECT_EQ(GwTextItem(1, "b") != GwTextItem(1, "a"), 1);
    EXPECT_EQ(GwTextItem(1, "a") != GwTextItem(1, "a"), 0);
}

TEST(TextItem, SetTextReplacesTheText) {
    GwTextItem item(1, "old");
    GwItem& asItem = item;
    EXPECT_EQ(&asItem.setText("new"), &item);
    EXPECT_EQ(asItem.text(), "new");
}

TEST(TextItem, FactoryCopiesTheCarriedItem) {
    GwTextItem carried(42, "Datei");
    GwEventData data(carried);
    GwTextItem* made = GwTextItem::newInstance(&data);
    EXPECT_EQ(made->id(), 42u);
    EXPECT_EQ(made->text(), "Datei");
    delete made;
}

TEST(UserData, ConversionsOtherThanPointerAreZero) {
    int value = 5;
    GwUserData data(&value);
    EXPECT_EQ(static_cast<void*>(data), &value);
    EXPECT_EQ(static_cast<int>(data), 0);
    EXPECT_EQ(static_cast<long>(data), 0);
    EXPECT_EQ(static_cast<char*>(data), nullptr);
    EXPECT_EQ(static_cast<char const*>(data), nullptr);
    EXPECT_EQ(static_cast<GwWindow*>(data), nullptr);
}

TEST(UserData, ComparesByValue) {
    int a = 0, b = 0;
    EXPECT_EQ(GwUserData(&a) != GwUserData(&b), 1);
    EXPECT_EQ(GwUserData(&a) != GwUserData(&a), 0);
    EXPECT_TRUE(GwUserData(&a) == GwUserData(&a));
    GwItem item(1);
    EXPECT_THROW((void)(GwUserData(&a) != static_cast<Object const&>(item)), std::bad_cast);
    GwUserData copy(&a);
    copy = GwUserData(&b);
    EXPECT_EQ(static_cast<void*>(copy), &b);
}

TEST(UserData, FactoryMakesANullValue) {
    GwUserData* made = GwUserData::newInstance(nullptr);
    EXPECT_EQ(static_cast<void*>(*made), nullptr);
    delete made;
}

namespace {
// An application gives the conversions a meaning.
class Named : public GwUserData {
public:
    explicit Named(char const* name) : GwUserData(const_cast<char*>(name)) {}
    operator char const*() const override { return static_cast<char const*>(value()); }
};
} // namespace

TEST(UserData, DerivedClassesGiveConversionsAMeaning) {
    Named named("panel");
    GwUserData& data = named;
    EXPECT_STREQ(static_cast<char const*>(data), "panel");
}
