// Identified entries (menu, tab and tool-bar items) and entries with a text.
#pragma once

#include <String.h>

#include "GwObject.h"

// An entry with an identifier, the base of menu, tab and tool-bar items. Containers keep
// copies made by the item class's factory.
class VMGUI_API GwItem : public GwObject {
    GW_DECLARE_CLASS(GwItem)

public:
    // A fresh identifier from gItemId (0 once the counter has reached its maximum).
    GwItem();
    // An item with this identifier.
    explicit GwItem(unsigned long long id) : mId(id) {}
    // Copies the identifier.
    GwItem(GwItem const&) = default;
    GwItem& operator=(GwItem const&) = default;
    ~GwItem() override = default;

    // The identifier (a command identifier for menu entries).
    virtual GwItem& setId(unsigned long long id);
    virtual unsigned long long id() const;
    // An item without text ignores it.
    virtual GwItem& setText(String const& text);
    // Empty here.
    virtual String const& text() const;

    // Equal identifiers; the other must be a GwItem (std::bad_cast otherwise).
    bool operator==(Object const& other) const override;
    // Three-way: -1 when this identifier is smaller, 1 when it differs otherwise, 0 equal.
    int operator!=(Object const& other) const override;
    GW_DECLARE_COMPARISON(GwItem)

    // The text, as text() returns it.
    operator char const*() const { return text().c_str(); }
    operator String const&() const { return text(); }

    // An item with the identifier of the item that GwEventData carries, else a fresh one.
    static GwItem* newInstance(EventData const* data);

    // The counter that fresh identifiers are taken from.
    static unsigned int gItemId;

protected:
    // The next value of gItemId, or 0 once the counter is at its maximum.
    static unsigned long long freshId();

private:
    unsigned long long mId;
};

// An item with a text (the label of a menu entry, a tab, a list line).
class VMGUI_API GwTextItem : public GwItem {
    GW_DECLARE_CLASS(GwTextItem)

public:
    // An empty text with a fresh identifier, or the given identifier and text.
    GwTextItem() = default;
    explicit GwTextItem(unsigned long long id) : GwItem(id) {}
    GwTextItem(unsigned long long id, String const& text) : GwItem(id), mText(text) {}
    explicit GwTextItem(String const& text) : mText(text) {}
    GwTextItem(String const& text, unsigned long long id) : GwItem(id), mText(text) {}
    // Copies identifier and text.
    GwTextItem(GwTextItem const&) = default;
    GwTextItem& operator=(GwTextItem const&) = default;
    ~GwTextItem() override = default;

    // The item's own text.
    GwTextItem& setText(String const& text) override;
    String const& text() const override;

    // Equal identifiers and equal texts.
    bool operator==(Object const& other) const override;
    // By identifier as GwItem does; equal identifiers then by text (-1 when this text
    // sorts first, 1 when it differs otherwise, 0 when equal).
    int operator!=(Object const& other) const override;
    GW_DECLARE_COMPARISON(GwTextItem)

    // Identifier and text of the item that GwEventData carries, else a fresh identifier.
    static GwTextItem* newInstance(EventData const* data);

private:
    String mText;
};
