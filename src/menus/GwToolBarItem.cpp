// The description of one tool-bar button, separator or embedded control.
#include "GwToolBar.h"

#include <Event.h>

#include "GwControl.h"
#include "GwEventData.h"
#include "GwMessages.h"

GW_CLASS_MAKES(GwToolBarItem, "GwToolBarItem", "GwItem")

GwToolBarItem::GwToolBarItem()
    : GwItem(), mBitmap(0), mStyle(eSeparator), mState(eEnabled), mToolCtrl(nullptr) {}

GwToolBarItem::GwToolBarItem(unsigned long long id, int bitmap)
    : GwItem(id), mBitmap(bitmap), mStyle(eButton), mState(eEnabled), mToolCtrl(nullptr) {}

GwToolBarItem::GwToolBarItem(unsigned long long id, int bitmap, eButtonStyle style)
    : GwItem(id), mBitmap(bitmap), mStyle(style), mState(eEnabled), mToolCtrl(nullptr) {}

GwToolBarItem::GwToolBarItem(unsigned long long id, int bitmap, eButtonStyle style, int state)
    : GwItem(id), mBitmap(bitmap), mStyle(style),
      mState((state & eDisabled) != 0 ? state & ~eDisabled : state | eEnabled), mToolCtrl(nullptr) {
}

GwToolBarItem::GwToolBarItem(unsigned long long id, GwControl& control)
    : GwItem(id), mBitmap(0), mStyle(eSeparator), mState(eEnabled), mToolCtrl(nullptr) {
    setStyle(control);
}

GwToolBarItem::GwToolBarItem(GwToolBarItem const& other)
    : GwItem(other), mBitmap(other.mBitmap), mStyle(other.mStyle), mState(other.mState),
      mToolCtrl(nullptr) {}

GwToolBarItem& GwToolBarItem::operator=(GwToolBarItem const& other) {
    if (this == &other)
        return *this;
    GwItem::setId(other.id());
    if (other.mToolCtrl != nullptr) {
        setStyle(*other.mToolCtrl);
    } else {
        detach();
        mBitmap = other.mBitmap;
        mState = other.mState;
        mStyle = other.mStyle;
    }
    return *this;
}

GwToolBarItem::~GwToolBarItem() {
    detach();
}

void GwToolBarItem::detach() {
    if (mToolCtrl != nullptr)
        mToolCtrl->removeEvent(this);
    mToolCtrl = nullptr;
}

GwToolBarItem& GwToolBarItem::setStyle(eButtonStyle style) {
    detach();
    mStyle = style;
    return *this;
}

GwToolBarItem& GwToolBarItem::setStyle(GwControl& control) {
    if (mToolCtrl != &control)
        detach();
    mToolCtrl = &control;
    mBitmap = static_cast<int>(control.dimension().width());
    mState = eEnabled;
    mStyle = eSeparator;
    control.addEvent(this);
    control.setId(id());
    return *this;
}

GwToolBarItem& GwToolBarItem::setState(int state) {
    if (mToolCtrl != nullptr)
        mState = state;
    return *this;
}

GwToolBarItem& GwToolBarItem::setId(unsigned long long id) {
    GwItem::setId(id);
    if (mToolCtrl != nullptr)
        mToolCtrl->setId(id);
    return *this;
}

void GwToolBarItem::receiveEvent(Object* sender, Event const& event, EventData const* data) {
    if (event.type() == GwEventHandlerGone && sender != nullptr &&
        sender == static_cast<Object*>(mToolCtrl)) {
        mToolCtrl = nullptr;
        return;
    }
    GwItem::receiveEvent(sender, event, data);
}

GwToolBarItem* GwToolBarItem::newInstance(EventData const* data) {
    auto const* eventData = dynamic_cast<GwEventData const*>(data);
    auto const* item =
        eventData != nullptr ? dynamic_cast<GwToolBarItem const*>(eventData->item()) : nullptr;
    return item != nullptr ? new GwToolBarItem(*item) : new GwToolBarItem();
}
