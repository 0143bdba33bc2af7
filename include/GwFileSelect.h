// The common dialogs for opening and saving files, and the paths they give.
#pragma once

#include <String.h>

#include "GwDialog.h"

// The open and save dialogs of the platform.
//
// Shows GetOpenFileNameA or GetSaveFileNameA modally from setVisible, whatever its argument,
// and makes no window of its own; result() is non-zero when the user confirmed, 0 when the
// dialog was cancelled or failed. The chosen paths come from an Iterator made from the
// dialog (or file() for the first one).
//
// The dialog record (OPENFILENAMEA with a 4000-byte file buffer, flags OFN_EXPLORER |
// OFN_NOTESTFILECREATE | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY at first) is shared by a dialog
// and its copies and freed with the last of them.
//
// The filter lists entries "description|pattern|description|pattern|..."; a pattern may list
// several patterns separated by ";". Showing the dialog selects the first entry. After the
// dialog the default extension comes from the pattern of the entry the user chose: the first
// of its patterns whose text after the last "." holds no wildcard ("*.txt" gives ".txt",
// "*.*" none). A filter without "|", an empty entry or an entry number beyond the entries
// gives no default extension.
class VMGUI_API GwFileSelect : public GwDialog {
    GW_DECLARE_CLASS(GwFileSelect)

public:
    // What setStyle changes. eMultiselect, eOverwritePrompt, eFileMustExist, ePathMustExist
    // and eCreatePrompt set their flag when on; eChangeDir, eReadOnlyReturn and eValidate set
    // the flag that forbids it when off; eSaveAs is setSaveAs.
    enum eStyle : unsigned int {
        eMultiselect = 0,     // OFN_ALLOWMULTISELECT
        eChangeDir = 1,       // OFN_NOCHANGEDIR when off
        eReadOnlyReturn = 2,  // OFN_NOREADONLYRETURN when off
        eOverwritePrompt = 3, // OFN_OVERWRITEPROMPT
        eFileMustExist = 4,   // OFN_FILEMUSTEXIST
        ePathMustExist = 5,   // OFN_FILEMUSTEXIST as well
        eCreatePrompt = 6,    // OFN_CREATEPROMPT
        eValidate = 7,        // OFN_NOVALIDATE when off
        eSaveAs = 8           // setSaveAs
    };

    // The paths chosen in a dialog, one full path per selected file, in the order of the
    // dialog's result buffer, with the default extension appended to a name without ".".
    // A walk takes begin() and then ++ until the empty string comes back.
    //
    // Every iterator owns its table and its strings; a copy or an assigned iterator holds
    // copies of the same paths and the same position.
    class VMGUI_API Iterator : public GwObject {
        GW_DECLARE_CLASS(Iterator)

    public:
        // No paths.
        Iterator();
        // The paths of the dialog's last showing; none when its result() is 0. The buffer's
        // separator before a single selection's name is overwritten with a NUL, so that it
        // reads like a multiple selection. The buffer is read only up to its end: a buffer
        // full to its last byte without an ending empty string ends the list there.
        explicit Iterator(GwFileSelect const& dialog);
        // Copies the paths and the position.
        Iterator(Iterator const& other);
        Iterator& operator=(Iterator const& other);
        ~Iterator() override;

        // Position 0 and the path there.
        String begin();
        // Position past the last path and the path there, which is the empty string.
        String end();
        // The path at the current position (empty past the last).
        String operator*() const;
        String const* operator->() const;
        // Advances, then answers the new current path.
        String operator++();
        // Answers the current path, then advances.
        String operator++(int);
        // Steps back, then answers the new current path; the postfix form answers the current
        // path, then steps back.
        String operator--();
        String operator--(int);

        // The number of paths.
        int count() const { return mCount; }
        // The current position (0 for the first path).
        int position() const { return mPosition; }

        // An iterator without paths.
        static Iterator* newInstance(EventData const* data);

    protected:
        // The path at index; the shared empty string for an index below 0 or not below the
        // count.
        String const& at(int index) const;

    private:
        void add(String const& path);
        void copyFrom(Iterator const& other);
        void clear();

        int mCount;
        String** mPaths; // owned, with their strings
        int mCapacity;
        int mPosition;
    };

    // An open dialog without owner, or owned by a window (null for none).
    GwFileSelect();
    explicit GwFileSelect(GwWindow const& parent);
    explicit GwFileSelect(GwWindow const* parent);
    // Copies the title, filter, default extension, save flag and result; shares the record.
    GwFileSelect(GwFileSelect const& other);
    GwFileSelect& operator=(GwFileSelect const& other);
    ~GwFileSelect() override;

    // The owner of the dialog: the window's handle, or none.
    GwFileSelect& setParent(GwWindow const* parent) override;
    // Shows the dialog modally, whatever the argument; the window active before is made
    // active again afterwards.
    GwFileSelect& setVisible(bool visible) override;

    // The filter list: description|pattern pairs separated by "|", several patterns of one
    // entry by ";" ("Text|*.txt|All|*.*|").
    GwFileSelect& setFilter(String const& filter);
    String const& filter() const { return mFilter; }
    // The extension appended to names without "." (".txt", or empty), from the last showing.
    String const& defaultExtension() const { return mDefaultExtension; }

    // The path the dialog starts with, each "/" turned into "\". A path longer than the file
    // buffer is cut to its first 3999 characters.
    GwFileSelect& setFile(String const& path);
    // The first path the dialog gave; empty when nothing was chosen.
    String file() const;

    // The save dialog when on; OFN_FILEMUSTEXIST is set to the opposite.
    GwFileSelect& setSaveAs(bool saveAs);
    // Whether the save dialog is shown.
    bool saveAs() const { return mSaveAs; }
    // Whether several files may be chosen (OFN_ALLOWMULTISELECT).
    GwFileSelect& setMultiselect(bool multiselect);
    bool multiselect() const;
    // A value above eSaveAs changes nothing.
    GwFileSelect& setStyle(eStyle style, bool on);

    // The record's flags and the buffer's capacity, as the dialog gets them.
    unsigned long flags() const;
    // The filter entry the user chose (1 for the first), as the dialog left it.
    unsigned long filterIndex() const;
    // Raw access to the record's file buffer, which holds fileBufferSize bytes.
    char* fileBuffer() const;
    enum : unsigned long { fileBufferSize = 4000 };
    // The offset of the name in the buffer after a single selection, as the dialog left it.
    unsigned short fileOffset() const;

    // An open dialog without owner.
    static GwFileSelect* newInstance(EventData const* data);

private:
    struct Record; // the shared OPENFILENAMEA with its buffer
    void setFlag(unsigned long flag, bool on);

    String mFilter;
    String mDefaultExtension;
    bool mSaveAs;
    Record* mRecord;
};
