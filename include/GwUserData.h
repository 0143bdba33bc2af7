// An opaque value that an application attaches to a window.
#pragma once

#include "GwObject.h"

class GwWindow;

// A value of the application kept with a window (GwWindow::setUserData).
//
// The conversions other than void* answer 0 or null here; an application derives from
// this class to give them meaning.
class VMGUI_API GwUserData : public GwObject {
    GW_DECLARE_CLASS(GwUserData)

public:
    // Holds value (not owned).
    explicit GwUserData(void* value = nullptr) : mValue(value) {}
    // Copies the value.
    GwUserData(GwUserData const&) = default;
    GwUserData& operator=(GwUserData const&) = default;
    ~GwUserData() override = default;

    // The value as the application reads it: void* gives the value itself; the others give
    // 0 or null unless a derived class defines them.
    virtual operator void*() const;
    virtual operator int() const;
    virtual operator long() const;
    virtual operator char*() const;
    virtual operator char const*() const;
    virtual operator GwWindow*() const;

    // Equal values; the other must be a GwUserData (std::bad_cast otherwise).
    bool operator==(Object const& other) const override;
    // 1 when the values differ, else 0.
    int operator!=(Object const& other) const override;
    GW_DECLARE_COMPARISON(GwUserData)

    // User data with a null value.
    static GwUserData* newInstance(EventData const* data);

protected:
    // The value given to the constructor.
    void* value() const { return mValue; }

private:
    void* mValue; // not owned
};
