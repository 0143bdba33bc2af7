// A list of lines backed by items: the platform's "LISTBOX".
#pragma once

#include <String.h>

#include "GwControl.h"
#include "GwItem.h"

class GwLines;
struct GwLineChannel;

// A list box whose lines are items.
//
// Each line shows an item's text and keeps the list's own copy of the item (made by the
// item class's factory) as its item data, so that lines are found, selected and removed by
// item identifier or item equality as well as by position. The list owns the copies: they
// are deleted when their lines are removed, by remove(), and when a subclassed list ends.
//
// Searches answer the first line from line 0 whose copy has the identifier / is equal to the
// item (the item's operator== applied to the copy), and stay fast on long lists: the list
// keeps an index of its copies beside the control (see src/controls/GwLines.h). A line
// without item data, or with item data that other code set, is not a match for any search;
// it is neither read through nor deleted.
class VMGUI_API GwListBox : public GwControl {
    GW_DECLARE_CLASS(GwListBox)

public:
    // A visible "LISTBOX" child of parent, with the control identifier id; several lines
    // may be selected when multipleSelection is set; a sorting mode above 0 sorts (LBS_SORT).
    GwListBox(GwWindow& parent, unsigned long long id, bool multipleSelection,
              GwWindow::eSorting sorting);
    // Clones the platform control (which starts empty) with sorting and selection mode.
    GwListBox(GwListBox const& source);
    // Memberwise: afterwards both objects name the same window and share its lines.
    GwListBox& operator=(GwListBox const& other);
    ~GwListBox() override;

    using GwControl::add;
    using GwControl::remove;
    // Replaces a line equal to the item (an item with identifier) in place, else appends;
    // a sorted list places the line by its text instead.
    GwListBox& add(GwItem const& item) override;
    // A GwTextItem with a fresh identifier and the text.
    GwListBox& add(String const& text);
    // As addAt(position, item), for the item or for a new GwTextItem with the text.
    GwListBox& add(String const& text, int position);
    GwListBox& add(GwItem const& item, int position);
    // Inserts at position, replacing a line there that is equal to the item; a position of
    // 0 or less, or past the last line, appends (position 0 does not insert at the top).
    // The sorting mode does not apply.
    GwListBox& addAt(int position, GwItem const& item);
    // Removes the lines equal to the item, or the lines whose item has the identifier.
    GwListBox& remove(GwItem const& item) override;
    GwListBox& remove(unsigned long long id);
    // Nothing for a position past the last line; a negative one goes to the platform.
    GwListBox& removeAt(int position);
    // Every line and every copy.
    GwListBox& remove();

    // The copy of the first line with the identifier, or a shared empty item.
    GwItem const& item(unsigned long long id) const;
    // The copy of a line, or a second shared empty item for a position out of range (and
    // for a line that holds no copy).
    GwItem const& itemAt(int position) const;
    // The number of lines.
    int size() const;
    int sizeOf() const { return size(); }
    // The first visible line; setting it scrolls the list.
    int topIndex() const;
    GwListBox& setTopIndex(int position);

    // The stored mode: 0 for a list wrapped from a dialog, whatever its style says.
    GwWindow::eSorting sorting() const { return mSorting; }
    // Stores the mode and sets or clears LBS_SORT; the lines keep their order.
    GwListBox& setSorting(GwWindow::eSorting sorting);
    // Whether the list allows several selected lines (LBS_MULTIPLESEL or LBS_EXTENDEDSEL).
    bool multipleSelection() const { return mMultiple; }

    // Selection of the line found by id / item / position: a single-selection list selects
    // it (on) or selects nothing (off); a multiple-selection list sets the line's state.
    GwListBox& setSelected(unsigned long long id, bool on);
    GwListBox& select(unsigned long long id, bool on) { return setSelected(id, on); }
    GwListBox& setSelected(GwItem const& item, bool on);
    GwListBox& select(GwItem const& item, bool on) { return setSelected(item, on); }
    GwListBox& setSelectedAt(int position, bool on);
    GwListBox& selectAt(int position, bool on) { return setSelectedAt(position, on); }
    // Every line (multiple selection); a single-selection list selects its last line (on)
    // or nothing (off).
    GwListBox& setSelected(bool on);
    GwListBox& select(bool on) { return setSelected(on); }

    // Whether the line with this item identifier, with an equal item, or at this position is
    // selected; false when there is none.
    bool selected(unsigned long long id) const;
    bool selected(GwItem const& item) const;
    bool selectedAt(int position) const;
    // The selected line, the first one of a multiple-selection list; -1 for none.
    int selectedAt() const;
    // Single selection: the identifier of the selected line's item, all bits set for none
    // (and for a selected line that holds no copy).
    // Multiple selection: the position of the first selected line (sign-extended; -1 for
    // none), not an identifier.
    unsigned long long selected() const;

    // A list box attached to the window that GwEventData carries; null without one.
    static GwListBox* newInstance(EventData const* data);

protected:
    // Attaches to an existing list: sorting 0, the selection mode from the style.
    explicit GwListBox(void* hwnd = nullptr);

    // For a subclassed list: the base's clean-up, then remove().
    bool exitInstance() override;
    // Reflected LBN_SELCHANGE and LBN_DBLCLK become the select and activate events; line
    // messages that other code sends keep the index current.
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;

private:
    static long long lineMessage(void* list, unsigned int msg, unsigned long long wParam,
                                 long long lParam);
    GwLineChannel channel() const;
    long long listMessage(unsigned int msg, unsigned long long wParam, long long lParam) const;
    bool subclassed() const { return mHandle != nullptr && mPrevProc != nullptr; }

    GwWindow::eSorting mSorting;
    bool mMultiple;
    GwLines* mLines;
};
