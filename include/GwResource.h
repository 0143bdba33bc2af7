// Resource modules and the loaders of strings, dialogs, menus, bitmaps and attribute data.
#pragma once

#include <String.h>

#include "GwObject.h"

class GwBitmap;
class GwMenu;
class GwRcData;
class GwWindow;

// Names the module whose resources are read: the executable, or a library loaded by file
// name. The resource holds one load reference on its module (LoadLibraryA) and drops it
// (FreeLibrary) when it is destroyed or reassigned. A resource without module stands for
// the executable: every operation then uses GetModuleHandleA(NULL).
//
// Dialogs and menus are built with the attribute data (GwRcData) of the same identifier:
// entry 0xFFFF describes the dialog or menu itself, other entries a control by its control
// identifier or the popup entry at position n of a menu by 0x8000 + n.
//
// Every loader answers null (or an empty string) for identifier 0, a missing resource or a
// failing platform call; nothing is reported.
class VMGUI_API GwResource : public GwObject {
    GW_DECLARE_CLASS(GwResource)

public:
    // The executable.
    GwResource();
    // LoadLibraryA(file); an empty name gives the executable.
    explicit GwResource(String const& file);
    // Loads other's file again, the executable's when other has no module: a copy always
    // holds a module, so copying an empty resource gives one that holds the executable.
    GwResource(GwResource const& other);
    // Drops the own module, then loads other's file again; an empty other leaves this
    // resource empty too (unlike the copy constructor).
    GwResource& operator=(GwResource const& other);
    // Frees the module it loaded.
    ~GwResource() override;

    // The module (HMODULE), or the executable's when the resource has none.
    void* module() const;
    // True while the resource holds no module of its own and so stands for the executable.
    bool empty() const { return mModule == nullptr; }
    // The module's file name (GetModuleFileNameA, at most 260 characters).
    String name() const;
    operator String() const { return name(); }

    // The text of the string resource, at most 255 characters.
    virtual String loadString(unsigned long long id) const;
    // Creates the dialog of the template id & 0xFFFF as a modeless window of parent (the
    // executable's instance being the dialog's instance), binds an object to it and applies
    // the attribute data: the class of the dialog and of its children, their context help
    // identifiers. The dialog's class is the window class that "Class" of entry 0xFFFF
    // names (a menu class does not count), else GwDialog; when that class cannot make a
    // window, the dialog is destroyed again and the answer is null. Children whose entry
    // names no window class get no object here.
    virtual GwWindow* loadDialog(unsigned long long id, GwWindow const* parent) const;
    // The menu id & 0xFFFF as a GwMenu (or the menu class that "Class" of entry 0xFFFF
    // names) whose entries carry GwMenuItem copies and whose sub-menus are GwMenu objects of
    // their own, built with the attribute data (see initMenuTree). Owned by the caller.
    virtual GwMenu* loadMenu(unsigned long long id) const;
    // The bitmap id & 0xFFFF in its own size (LR_DEFAULTSIZE), owned by the caller.
    virtual GwBitmap* loadBitmap(unsigned long long id) const;
    // As loadBitmap, with LR_LOADTRANSPARENT: the colour of the first pixel becomes the
    // window colour.
    virtual GwBitmap* loadBitmapTransparent(unsigned long long id) const;
    // The attribute data of the RT_RCDATA resource id & 0xFFFF, owned by the caller.
    virtual GwRcData* loadAttribute(unsigned long long id) const;
    // The bytes of the RT_RCDATA resource id & 0xFFFF; they belong to the module.
    virtual char const* loadBinary(unsigned long long id) const;

    // A new object for a window that has none, of the library class that fits its window
    // class and style (GwWindowClass::mappedClassName); null when none can be made.
    static GwWindow* createChild(void* window);

    // A reference to the executable.
    static GwResource* newInstance(EventData const* data);

protected:
    // Gives every entry of menu a GwMenuItem in its item data, and every sub-menu a menu
    // object of its own, filled in turn from the attribute data of its identifier. Keys of
    // the entry 0x8000 + position of a popup entry:
    //   "Class"                 the sub-menu's menu class (default GwMenu);
    //   "GwLinkId" or "GwLink"  the sub-menu becomes a dynamic link to the frame's menu of
    //                           that identifier, which is then also its identifier;
    //   "GwMenuId" or "GwMenu"  the sub-menu's identifier otherwise (default: the entry's
    //                           command identifier, 0 when the template gives it none);
    //   "GwId"                  the identifier of the entry's item (default: the
    //                           sub-menu's identifier);
    //   "GwHelpId"              the sub-menu's context help identifier.
    void initMenuTree(GwMenu& menu, GwRcData& data) const;

private:
    void* mModule;
};
