// The event payload of the library: a platform window handle and an item.
#pragma once

#include "GwObject.h"

class GwItem;

// What an event or a factory is told: the window handle it concerns, or an item.
class VMGUI_API GwEventData : public EventData {
    GW_DECLARE_CLASS(GwEventData)

public:
    // Empty data, data about a window handle (HWND), or data about an item (not owned).
    GwEventData() : mWindow(nullptr), mItem(nullptr) {}
    explicit GwEventData(void* window) : mWindow(window), mItem(nullptr) {}
    explicit GwEventData(GwItem const& item);
    // Copies the handle and the item pointer.
    GwEventData(GwEventData const&) = default;
    GwEventData& operator=(GwEventData const&) = default;
    ~GwEventData() override = default;

    // The window handle and the item, each null when not given.
    void* window() const { return mWindow; }
    GwItem* item() const { return mItem; }

    // The window handle that data carries when it is a GwEventData, else null.
    static void* windowOf(EventData const* data);

    // A copy of the GwEventData wrapped by an EventDataObject; otherwise empty data.
    static GwEventData* newInstance(EventData const* data);

private:
    void* mWindow;
    GwItem* mItem; // not owned
};
