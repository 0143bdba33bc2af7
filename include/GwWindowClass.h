// The platform window classes that the library knows, and the choice of a library class
// for a window that has no object yet.
#pragma once

#include <String.h>

#include "GwObject.h"
#include "GwObjectTable.h"
#include "GwStartup.h"

class GwWindow;

// One entry per known platform class: the library's kind number, the class atom and the
// class name. Every instance is enrolled in one static table. The table is filled by the
// start-up hook when the application starts and emptied when it ends; before that no atom
// is known.
class VMGUI_API GwWindowClass : public GwObject {
    GW_DECLARE_CLASS(GwWindowClass)

public:
    // The library's numbers for the known classes (15 is not used).
    enum eKind : unsigned int {
        eButton = 1,    // "Button"
        eComboBox = 2,  // "ComboBox"
        eEdit = 3,      // "Edit"
        eListBox = 4,   // "ListBox"
        eScrollBar = 5, // "ScrollBar"
        eStatic = 6,    // "Static"
        eToolBar = 7,   // "ToolbarWindow32"
        eStatusBar = 8, // "msctls_statusbar32"
        eProgress = 9,  // "msctls_progress32"
        eTrackBar = 10, // "msctls_trackbar32"
        eTab = 11,      // "SysTabControl32"
        eListView = 12, // "SysListView32"
        eTreeView = 13, // "SysTreeView32"
        eHeader = 14,   // "SysHeader32"
        eAnimate = 16,  // "SysAnimate32"
        eUpDown = 17,   // "msctls_updown32"
    };

    // Initialises the common controls and creates an entry for every known class, in
    // table order; at the end deletes every entry.
    class VMGUI_API GwRegister : public GwStartup {
    public:
        // Creates the entries; always true.
        bool initInstance() override;
        // Deletes the entries; always true.
        bool exitInstance() override;
    };

    // Learns the atom of the named class (0 when no such class is registered) and enrols
    // the entry in the table.
    GwWindowClass(String const& name, unsigned int kind);
    // The copy is enrolled too.
    GwWindowClass(GwWindowClass const& other);
    // Copies kind, atom and name.
    GwWindowClass& operator=(GwWindowClass const& other);
    // Leaves the table.
    ~GwWindowClass() override;

    // The library's number of the class (eKind).
    unsigned int kind() const { return mKind; }
    // As GetClassWord(GCW_ATOM) reports it for windows of the class.
    unsigned short atom() const { return mAtom; }
    // The platform class name.
    String const& name() const { return mName; }

    // The table of entries (never null).
    static GwObjectTable<GwWindowClass> const* table();
    // The first entry with the atom, walking from slot 0 to the first empty slot; null for
    // none and for atom 0.
    static GwWindowClass const* lookup(unsigned short atom);
    // The kind of a window's class (by its atom); 0 when the table lacks it.
    static unsigned int kindOf(void* hwnd);

    // The name of the library class that a window without object gets: by kind and style
    // for the known classes, else the window's own class name when a class record of that
    // name exists, else "GwControl".
    static String mappedClassName(void* hwnd);
    // A new object of the class that mappedClassName chooses, made by its record's factory
    // from a GwEventData that carries the handle, which binds it to the window. Null for a
    // null handle, a class without factory, or a created object that is no window.
    static GwWindow* createChild(void* hwnd);

    // Always null: entries are made by the start-up hook.
    static GwWindowClass* newInstance(EventData const* data);

    // Fills and empties the table.
    static GwRegister gStartup;

private:
    void enrol();

    unsigned int mKind;
    unsigned short mAtom;
    String mName;

    static GwObjectTable<GwWindowClass> allWindowClasses;
};

// Holder of the optional three-dimensional-controls library. Nothing in the library loads
// it; when a module is set, destruction unregisters it (Ctl3dUnregister) and frees it.
class VMGUI_API GwWindowControl3D : public GwObject {
    GW_DECLARE_CLASS(GwWindowControl3D)

public:
    // A holder without module.
    GwWindowControl3D() : mModule(nullptr) {}
    // The module belongs to the object that was given it: a copy holds none.
    GwWindowControl3D(GwWindowControl3D const& other);
    // Keeps this object's module.
    GwWindowControl3D& operator=(GwWindowControl3D const& other);
    ~GwWindowControl3D() override;

    // The library's module handle (HMODULE), or null.
    void* module() const { return mModule; }

    // Always null.
    static GwWindowControl3D* newInstance(EventData const* data);

    // The process's holder.
    static GwWindowControl3D gControl3D;

protected:
    // Takes over a load reference on the module.
    explicit GwWindowControl3D(void* module) : mModule(module) {}

private:
    void* mModule;
};
