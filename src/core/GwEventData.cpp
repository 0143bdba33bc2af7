#include "GwEventData.h"

#include "GwItem.h"

GW_CLASS_MAKES(GwEventData, "GwEventData", "EventData")

GwEventData::GwEventData(GwItem const& item)
    : mWindow(nullptr), mItem(const_cast<GwItem*>(&item)) {}

GwEventData* GwEventData::newInstance(EventData const* data) {
    auto const* wrapper = dynamic_cast<EventDataObject const*>(data);
    if (wrapper != nullptr) {
        if (auto const* inner = dynamic_cast<GwEventData const*>(wrapper->data()))
            return new GwEventData(*inner);
    }
    return new GwEventData();
}

void* GwEventData::windowOf(EventData const* data) {
    auto const* eventData = dynamic_cast<GwEventData const*>(data);
    return eventData != nullptr ? eventData->window() : nullptr;
}
