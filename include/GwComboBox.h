// A drop-down combo box ("COMBOBOX"): item-backed lines as in a list box, and an edit part
// with the number format, bounds and correction of an edit field.
#pragma once

#include <String.h>

#include "GwControl.h"
#include "GwItem.h"

class GwEditField;
class GwLines;
struct GwLineChannel;

// A drop-down combo box: an edit field that holds a number, over a list of item lines.
//
// The lines behave exactly as those of GwListBox (the same implementation with the combo
// box's messages): copies of items as item data, owned by the combo box, searches by
// identifier and by item equality, replacement of an equal line, addAt(0, …) appending, and
// lines without item data (or with item data that other code set) matching no search. Only
// one line can be selected.
//
// The edit part is the library object of the combo box's "Edit" child: found when the combo
// box is made or wrapped, and made by the child factory (as a GwEditField) when the child
// has none yet. The combo box does not own it. The operations that forward to the edit part
// must not be used on a combo box without one (a drop-down list).
class VMGUI_API GwComboBox : public GwControl {
    GW_DECLARE_CLASS(GwComboBox)

public:
    // A visible drop-down "COMBOBOX" child of parent with the control identifier id.
    GwComboBox(GwWindow& parent, unsigned long long id);
    // Clones the platform control (which starts empty); the copy names the source's edit
    // part and takes its last selection.
    GwComboBox(GwComboBox const& source);
    // Memberwise: afterwards both objects name the same window and share its lines.
    GwComboBox& operator=(GwComboBox const& other);
    ~GwComboBox() override;

    // The edit part, null for a drop-down list. The operations up to changed() forward to
    // it, as GwEditField documents them; a setter of the format, a bound or a flag runs its
    // check, which rewrites the text in the format.
    GwEditField* editPart() const { return mEditPart; }
    // Writes the value in the format.
    GwComboBox& setValue(double value);
    GwComboBox& setValue(long value);
    // As setValue(long): a plain int literal would otherwise fit both forms.
    GwComboBox& setValue(int value) { return setValue(static_cast<long>(value)); }
    // The text read as a number.
    operator double() const;
    operator long() const;
    // The printf-style format of the number.
    GwComboBox& setFormat(char const* format);
    char const* format() const;
    // Switch correction, the lower and the upper bound on or off.
    GwComboBox& checkFormat(bool on);
    GwComboBox& checkMinValue(bool on);
    GwComboBox& checkMaxValue(bool on);
    // Set a bound.
    GwComboBox& setMinValue(double value);
    GwComboBox& setMaxValue(double value);
    // The value of text without a number; setting it runs no check.
    GwComboBox& setDefaultValue(double value);
    // The bounds and the default value.
    double minValue() const;
    double maxValue() const;
    double defaultValue() const;
    // Selects characters of the edit part and scrolls them into view.
    GwComboBox& setSelection(int start, int end);

    // Whether the text was typed into or the selected line changed since the last call:
    // true after an edit (whose mark it clears, taking the selected line as seen), else
    // whether the selected line differs from the one last seen (which it then becomes).
    bool changed() const;

    // The lines work as GwListBox's do; sorted means CBS_SORT in the style at the time of
    // the call.
    using GwControl::add;
    using GwControl::remove;
    // Adds a line for a copy of the item, or for a GwTextItem with a fresh identifier and
    // the text; the forms with a position insert as addAt does.
    GwComboBox& add(GwItem const& item) override;
    GwComboBox& add(String const& text);
    GwComboBox& add(String const& text, int position);
    GwComboBox& add(GwItem const& item, int position);
    // Inserts at position, replacing a line there that is equal to the item (as GwListBox).
    GwComboBox& addAt(int position, GwItem const& item);
    // Removes the lines equal to the item, with the identifier, at the position, or all.
    GwComboBox& remove(GwItem const& item) override;
    GwComboBox& remove(unsigned long long id);
    GwComboBox& removeAt(int position);
    GwComboBox& remove();
    // The copy of a line by identifier or position; a shared empty item when there is none.
    GwItem const& item(unsigned long long id) const;
    GwItem const& itemAt(int position) const;
    // The number of lines.
    int size() const;
    int sizeOf() const { return size(); }

    // CBS_SORT of the live style: 1 when set (also by other code), else 0.
    GwWindow::eSorting sorting() const;
    // Sets or clears CBS_SORT; the lines keep their order.
    GwComboBox& setSorting(GwWindow::eSorting sorting);

    // The line found by identifier, item or position becomes the selection (on), or nothing
    // is selected (off).
    GwComboBox& setSelected(unsigned long long id, bool on);
    GwComboBox& select(unsigned long long id, bool on) { return setSelected(id, on); }
    GwComboBox& setSelected(GwItem const& item, bool on);
    GwComboBox& select(GwItem const& item, bool on) { return setSelected(item, on); }
    GwComboBox& setSelectedAt(int position, bool on);
    GwComboBox& selectAt(int position, bool on) { return setSelectedAt(position, on); }
    // Whether the line found by identifier, item or position is the selected one.
    bool selected(unsigned long long id) const;
    bool selected(GwItem const& item) const;
    bool selectedAt(int position) const;
    // The selected line, -1 for none.
    int selectedAt() const;
    // The identifier of the selected line's item; all bits set for none (and for a selected
    // line that holds no copy).
    unsigned long long selected() const;

    // A combo box attached to the window that GwEventData carries; null without one.
    static GwComboBox* newInstance(EventData const* data);

protected:
    // Attaches to an existing combo box and finds its edit part.
    explicit GwComboBox(void* hwnd = nullptr);

    // For a subclassed combo box: the base's clean-up, then remove().
    bool exitInstance() override;
    // The combo box's own focus messages go to the platform only: the focus events come from
    // the reflected CBN_SETFOCUS and CBN_KILLFOCUS. CBN_SELCHANGE gives the select event,
    // CBN_DBLCLK the activate event. Line messages of other code keep the index current.
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;

private:
    // The last "Edit" child's library object, made by the child factory when it has none.
    void findEditPart();
    static long long lineMessage(void* combo, unsigned int msg, unsigned long long wParam,
                                 long long lParam);
    GwLineChannel channel() const;
    long long comboMessage(unsigned int msg, unsigned long long wParam, long long lParam) const;
    bool subclassed() const { return mHandle != nullptr && mPrevProc != nullptr; }

    GwEditField* mEditPart;
    mutable int mLastSelection;
    GwLines* mLines;
};
