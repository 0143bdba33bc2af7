#include "GwMenu.h"

#include "GwEventData.h"

GW_CLASS_MAKES(GwMenuItem, "GwMenuItem", "GwTextItem")

namespace {
// The identifier of an entry that has none.
constexpr unsigned long long kNoId = ~0ull;
} // namespace

GwMenuItem::GwMenuItem() : GwTextItem(kNoId), mStyle(eSeparator), mState(0), mMenu(nullptr) {}

GwMenuItem::GwMenuItem(unsigned long long id)
    : GwTextItem(id), mStyle(eString), mState(0), mMenu(nullptr) {}

GwMenuItem::GwMenuItem(unsigned long long id, String const& text)
    : GwTextItem(id, text), mStyle(eString), mState(0), mMenu(nullptr) {}

GwMenuItem::GwMenuItem(unsigned long long id, int style)
    : GwTextItem(id), mStyle(style), mState(0), mMenu(nullptr) {}

GwMenuItem::GwMenuItem(unsigned long long id, int style, int state)
    : GwTextItem(id), mStyle(style), mState(state), mMenu(nullptr) {}

GwMenuItem::GwMenuItem(unsigned long long id, GwMenu* menu)
    : GwTextItem(id), mStyle(ePopup), mState(0), mMenu(menu) {}

GwMenuItem::GwMenuItem(unsigned long long id, String const& text, GwMenu* menu)
    : GwTextItem(id, text), mStyle(ePopup), mState(0), mMenu(menu) {}

GwMenuItem::GwMenuItem(GwMenuItem const& other) = default;

GwMenuItem& GwMenuItem::operator=(GwMenuItem const& other) = default;

GwMenuItem::~GwMenuItem() = default;

bool GwMenuItem::operator==(Object const& other) const {
    return GwItem::operator==(other);
}

int GwMenuItem::operator!=(Object const& other) const {
    return GwItem::operator!=(other);
}

GwMenuItem& GwMenuItem::setText(String const& text) {
    GwTextItem::setText(text);
    return *this;
}

String const& GwMenuItem::text() const {
    return GwTextItem::text();
}

GwMenuItem& GwMenuItem::setStyle(int style) {
    mStyle = style;
    return *this;
}

GwMenuItem& GwMenuItem::setState(int state) {
    mState = state;
    return *this;
}

GwMenuItem& GwMenuItem::setMenu(GwMenu* menu) {
    mMenu = menu;
    return *this;
}

unsigned long long GwMenuItem::menuId() const {
    return mMenu != nullptr ? mMenu->id() : 0;
}

GwMenuItem& GwMenuItem::setMenuId(unsigned long long id) {
    if (id != 0 && mMenu != nullptr)
        mMenu->setId(id);
    else
        mMenu = nullptr;
    return *this;
}

GwMenuItem* GwMenuItem::newInstance(EventData const* data) {
    auto const* eventData = dynamic_cast<GwEventData const*>(data);
    auto const* item =
        eventData != nullptr ? dynamic_cast<GwMenuItem const*>(eventData->item()) : nullptr;
    return item != nullptr ? new GwMenuItem(*item) : new GwMenuItem();
}
