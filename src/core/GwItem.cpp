#include "GwItem.h"

#include "GwEventData.h"

unsigned int GwItem::gItemId = 0;

GW_CLASS_MAKES(GwItem, "GwItem", "GwObject")
GW_CLASS_MAKES(GwTextItem, "GwTextItem", "GwItem")

unsigned long long GwItem::freshId() {
    unsigned int id = gItemId == 4294967295u ? 0 : gItemId;
    gItemId = id + 1;
    return id;
}

GwItem::GwItem() : mId(freshId()) {}

GwItem& GwItem::setId(unsigned long long id) {
    mId = id;
    return *this;
}

unsigned long long GwItem::id() const {
    return mId;
}

GwItem& GwItem::setText(String const&) {
    return *this;
}

String const& GwItem::text() const {
    static String const empty;
    return empty;
}

bool GwItem::operator==(Object const& other) const {
    return mId == dynamic_cast<GwItem const&>(other).mId;
}

int GwItem::operator!=(Object const& other) const {
    unsigned long long otherId = dynamic_cast<GwItem const&>(other).mId;
    if (mId < otherId)
        return -1;
    return mId != otherId ? 1 : 0;
}

namespace {
GwItem const* carriedItem(EventData const* data) {
    auto const* eventData = dynamic_cast<GwEventData const*>(data);
    return eventData != nullptr ? eventData->item() : nullptr;
}
} // namespace

GwItem* GwItem::newInstance(EventData const* data) {
    GwItem const* item = carriedItem(data);
    return item != nullptr ? new GwItem(item->id()) : new GwItem();
}

GwTextItem& GwTextItem::setText(String const& text) {
    mText = text;
    return *this;
}

String const& GwTextItem::text() const {
    return mText;
}

bool GwTextItem::operator==(Object const& other) const {
    return GwItem::operator==(other) && mText == dynamic_cast<GwTextItem const&>(other).mText;
}

int GwTextItem::operator!=(Object const& other) const {
    int byId = GwItem::operator!=(other);
    if (byId != 0)
        return byId;
    String const& otherText = dynamic_cast<GwTextItem const&>(other).mText;
    if (mText < otherText)
        return -1;
    return mText != otherText ? 1 : 0;
}

GwTextItem* GwTextItem::newInstance(EventData const* data) {
    GwItem const* item = carriedItem(data);
    return item != nullptr ? new GwTextItem(item->id(), item->text()) : new GwTextItem();
}
