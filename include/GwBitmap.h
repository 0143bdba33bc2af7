// A bitmap handle with the resource identifier it was loaded from.
#pragma once

#include "GwObject.h"

class GwWindow;

// Owns one bitmap handle (HBITMAP). Copies share the handle: it is counted, and the last
// bitmap that refers to it deletes it, so a copy may outlive the bitmap it was made from.
class VMGUI_API GwBitmap : public GwObject {
    GW_DECLARE_CLASS(GwBitmap)

public:
    // No handle, identifier 0.
    GwBitmap();
    // An identifier without a handle.
    explicit GwBitmap(unsigned long long id);
    // Takes over handle (null: none).
    GwBitmap(unsigned long long id, void* handle);
    // Shares other's handle and takes its identifier.
    GwBitmap(GwBitmap const& other);
    GwBitmap& operator=(GwBitmap const& other);
    // Deletes the handle when no other bitmap refers to it.
    ~GwBitmap() override;

    // The handle (HBITMAP), or null.
    void* handle() const { return mHandle; }
    // The resource identifier, 0 when unknown.
    virtual unsigned long long id() const;

    // Copies the bitmap onto a device (HDC) with its top-left corner at the logical point
    // (x, y). The bitmap's size is converted into the device's mapping (mode and extents),
    // so that the copy keeps its size in device pixels and its orientation, also where the
    // logical y axis points up. invert combines it with SRCINVERT instead of SRCCOPY. A
    // bitmap without handle copies nothing.
    virtual void draw(void* device, short x, short y, bool invert) const;
    // The same onto the client area of the window, through its device (GetDC/ReleaseDC).
    void draw(GwWindow& window, short x, short y, bool invert) const;

    // A bitmap without handle, identifier 0.
    static GwBitmap* newInstance(EventData const* data);

private:
    // Drops this bitmap's share of the handle.
    void release();

    void* mHandle;
    unsigned long long mId;
    // How many bitmaps share mHandle; null without a handle.
    long* mShares;
};
