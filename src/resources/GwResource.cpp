#include "GwResource.h"

#include <windows.h>

#include <cstdlib>
#include <type_traits>

#include "GwBitmap.h"
#include "GwEventData.h"
#include "GwFrame.h"
#include "GwMenu.h"
#include "GwRcData.h"
#include "GwWindow.h"
#include "GwWindowClass.h"

GW_CLASS_MAKES(GwResource, "GwResource", "GwObject")

namespace {

// The identifier of the dialog or menu itself among its attribute entries.
constexpr unsigned long long kSelfEntry = 0xFFFF;
// Attribute entries of a menu's popup entries: 0x8000 + position.
constexpr unsigned long long kPopupEntry = 0x8000;
// Strings and menu entry texts are read into buffers of this size; longer ones are cut.
constexpr int kTextRoom = 256;

HMODULE moduleOr(void* module) {
    return module != nullptr ? static_cast<HMODULE>(module) : GetModuleHandleA(nullptr);
}

// The file name of a module (the executable's for null); empty when it cannot be had.
String fileName(void* module) {
    char buffer[MAX_PATH] = {};
    DWORD const length = GetModuleFileNameA(moduleOr(module), buffer, MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return String();
    return String(buffer);
}

// A new load reference on the file of module; null when its name cannot be had.
void* loadAgain(void* module) {
    String const file = fileName(module);
    return file.empty() ? nullptr : LoadLibraryA(file.c_str());
}

LPCSTR resourceName(unsigned long long id) {
    return MAKEINTRESOURCEA(id & 0xFFFF);
}

struct Bytes {
    char const* data = nullptr;
    std::size_t size = 0;
};

// The locked bytes of a resource and their size; nothing for identifier 0 or a resource
// that is missing.
Bytes findBytes(HMODULE module, unsigned long long id, LPCSTR type) {
    Bytes bytes;
    if ((id & 0xFFFF) == 0)
        return bytes;
    HRSRC const found = FindResourceA(module, resourceName(id), type);
    if (found == nullptr)
        return bytes;
    HGLOBAL const loaded = LoadResource(module, found);
    if (loaded == nullptr)
        return bytes;
    bytes.data = static_cast<char const*>(LockResource(loaded));
    bytes.size = bytes.data != nullptr ? SizeofResource(module, found) : 0;
    return bytes;
}

GwRcDataItem const* item(GwRcDataEntry const* entry, char const* key) {
    return entry != nullptr ? (*entry)[key] : nullptr;
}

// The first of two keys that the entry holds.
GwRcDataItem const* item(GwRcDataEntry const* entry, char const* key, char const* fallback) {
    GwRcDataItem const* found = item(entry, key);
    return found != nullptr ? found : item(entry, fallback);
}

long number(GwRcDataItem const* item) {
    return std::atol(item->value().c_str());
}

// Whether a class record stands for objects of Type. A menu is a window in the class tree
// but wraps a menu handle: a window handle must never be given to it.
template <class Type> bool isClassOf(Class const* record) {
    if (record == nullptr || !record->isSubclassOf(Type::isa()))
        return false;
    return std::is_base_of_v<GwMenu, Type> || !record->isSubclassOf(GwMenu::isa());
}

// The class record that "Class" of the entry names when it stands for objects of Type,
// else the record of the default class (null when that does not exist).
template <class Type> Class const* chosenClass(GwRcDataEntry const* entry, char const* fallback) {
    if (GwRcDataItem const* named = item(entry, "Class")) {
        Class const* record = Class::lookup(named->value().c_str());
        if (isClassOf<Type>(record))
            return record;
    }
    return Class::lookup(fallback);
}

// A new object of Type for a handle, made by the record's factory. Null when the record is
// missing or stands for objects of another kind, so that no such object is ever made (a
// factory may also hand out a shared instance that must not be deleted).
template <class Type> Type* makeFor(Class const* record, void* handle) {
    if (!isClassOf<Type>(record))
        return nullptr;
    GwEventData const data(handle);
    return dynamic_cast<Type*>(Class::createInstance(record, &data));
}

} // namespace

// ---- Module reference

GwResource::GwResource() : mModule(nullptr) {}

GwResource::GwResource(String const& file)
    : mModule(file.empty() ? nullptr : LoadLibraryA(file.c_str())) {}

GwResource::GwResource(GwResource const& other)
    : GwObject(other), mModule(loadAgain(other.mModule)) {}

GwResource& GwResource::operator=(GwResource const& other) {
    GwObject::operator=(other);
    // The new reference is taken before the old one is dropped, so that assigning a
    // resource to itself (or to one of the same module) does not unload the module between.
    void* const module = other.mModule != nullptr ? loadAgain(other.mModule) : nullptr;
    if (mModule != nullptr)
        FreeLibrary(static_cast<HMODULE>(mModule));
    mModule = module;
    return *this;
}

GwResource::~GwResource() {
    if (mModule != nullptr)
        FreeLibrary(static_cast<HMODULE>(mModule));
}

void* GwResource::module() const {
    return moduleOr(mModule);
}

String GwResource::name() const {
    char buffer[MAX_PATH] = {};
    GetModuleFileNameA(moduleOr(mModule), buffer, MAX_PATH);
    return String(buffer);
}

GwResource* GwResource::newInstance(EventData const*) {
    return new GwResource();
}

// ---- Simple loaders

String GwResource::loadString(unsigned long long id) const {
    if (id == 0)
        return String();
    char buffer[kTextRoom] = {};
    int const length = LoadStringA(moduleOr(mModule), static_cast<UINT>(id), buffer,
                                   static_cast<int>(sizeof buffer));
    return length > 0 ? String(buffer) : String();
}

GwBitmap* GwResource::loadBitmap(unsigned long long id) const {
    if ((id & 0xFFFF) == 0)
        return nullptr;
    HANDLE const handle =
        LoadImageA(moduleOr(mModule), resourceName(id), IMAGE_BITMAP, 0, 0, LR_DEFAULTSIZE);
    return handle != nullptr ? new GwBitmap(id, handle) : nullptr;
}

GwBitmap* GwResource::loadBitmapTransparent(unsigned long long id) const {
    if ((id & 0xFFFF) == 0)
        return nullptr;
    HANDLE const handle = LoadImageA(moduleOr(mModule), resourceName(id), IMAGE_BITMAP, 0, 0,
                                     LR_DEFAULTSIZE | LR_LOADTRANSPARENT);
    return handle != nullptr ? new GwBitmap(id, handle) : nullptr;
}

GwRcData* GwResource::loadAttribute(unsigned long long id) const {
    Bytes const bytes = findBytes(moduleOr(mModule), id, MAKEINTRESOURCEA(10)); // RT_RCDATA
    return bytes.data != nullptr ? new GwRcData(id, bytes.data, bytes.size) : nullptr;
}

char const* GwResource::loadBinary(unsigned long long id) const {
    return findBytes(moduleOr(mModule), id, MAKEINTRESOURCEA(10)).data; // RT_RCDATA
}

// Bounded by the size of the resource: data without its end mark ends with the resource.
GwRcData::GwRcData(unsigned long long id, GwResource const& res) : GwRcData(id) {
    Bytes const bytes = findBytes(static_cast<HMODULE>(res.module()), id, MAKEINTRESOURCEA(10));
    if (bytes.data != nullptr)
        parse(bytes.data, bytes.size);
}

// ---- Dialogs

GwWindow* GwResource::loadDialog(unsigned long long id, GwWindow const* parent) const {
    Bytes const dialogTemplate = findBytes(moduleOr(mModule), id, MAKEINTRESOURCEA(5)); // RT_DIALOG
    if (dialogTemplate.data == nullptr)
        return nullptr;
    HWND const owner = parent != nullptr ? static_cast<HWND>(parent->window()) : nullptr;
    HWND const dialog = CreateDialogIndirectParamA(
        GetModuleHandleA(nullptr), reinterpret_cast<LPCDLGTEMPLATEA>(dialogTemplate.data), owner,
        nullptr, 0);
    if (dialog == nullptr)
        return nullptr;

    GwRcData const data(id, *this);
    GwRcDataEntry const* self = data[kSelfEntry];
    if (GwRcDataItem const* helpId = item(self, "HelpId"))
        SetWindowContextHelpId(dialog, static_cast<DWORD>(number(helpId)));

    GwWindow* const object = makeFor<GwWindow>(chosenClass<GwWindow>(self, "GwDialog"), dialog);
    if (object == nullptr) {
        // Without an object nobody would ever destroy the window.
        DestroyWindow(dialog);
        return nullptr;
    }
    // A dialog frame takes the help file of a parent frame; its own "HelpFile" item wins.
    if (auto* frame = dynamic_cast<GwFrame*>(object)) {
        if (auto const* parentFrame = dynamic_cast<GwFrame const*>(parent))
            frame->setHelpFile(parentFrame->helpFile());
        if (GwRcDataItem const* helpFile = item(self, "HelpFile"))
            frame->setHelpFile(helpFile->value());
    }
    object->setId(id);

    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        auto const control = static_cast<unsigned long long>(
            static_cast<unsigned int>(GetWindowLongPtrA(child, GWLP_ID)));
        if ((control & 0xFFFF) == 0xFFFF)
            continue; // the identifier of controls that take no part (IDC_STATIC)
        GwRcDataEntry const* entry = data[control];
        if (entry == nullptr)
            continue;
        if (GwRcDataItem const* helpId = item(entry, "HelpId"))
            SetWindowContextHelpId(child, static_cast<DWORD>(number(helpId)));
        GwRcDataItem const* named = item(entry, "Class");
        if (named == nullptr || GwWindow::window(child, false) != nullptr)
            continue;
        makeFor<GwWindow>(Class::lookup(named->value().c_str()), child);
    }
    return object;
}

GwWindow* GwResource::createChild(void* window) {
    return GwWindowClass::createChild(window);
}

// ---- Menus

GwMenu* GwResource::loadMenu(unsigned long long id) const {
    if ((id & 0xFFFF) == 0)
        return nullptr;
    HMENU const handle = LoadMenuA(moduleOr(mModule), resourceName(id));
    if (handle == nullptr)
        return nullptr;

    GwRcData data(id, *this);
    GwRcDataEntry const* self = data[kSelfEntry];
    if (GwRcDataItem const* helpId = item(self, "HelpId"))
        SetMenuContextHelpId(handle, static_cast<DWORD>(number(helpId)));

    GwMenu* const menu = makeFor<GwMenu>(chosenClass<GwMenu>(self, "GwMenu"), handle);
    if (menu == nullptr) {
        DestroyMenu(handle);
        return nullptr;
    }
    menu->setId(id);
    initMenuTree(*menu, data);
    return menu;
}

void GwResource::initMenuTree(GwMenu& menu, GwRcData& data) const {
    HMENU const handle = static_cast<HMENU>(menu.window());
    for (int position = 0;; ++position) {
        char text[kTextRoom] = {};
        MENUITEMINFOA info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_STRING | MIIM_DATA;
        info.dwTypeData = text;
        info.cch = sizeof text;
        if (!GetMenuItemInfoA(handle, static_cast<UINT>(position), TRUE, &info))
            break;
        if (info.dwItemData != 0)
            continue; // the entry has its item already

        GwMenuItem* entryItem = nullptr;
        if ((info.fType & MFT_SEPARATOR) != 0) {
            entryItem = new GwMenuItem(); // no identifier, style 0x800
        } else if (info.hSubMenu == nullptr) {
            entryItem = new GwMenuItem(info.wID, String(text));
            entryItem->setStyle(static_cast<int>(info.fType))
                .setState(static_cast<int>(info.fState));
        } else {
            GwRcDataEntry const* entry =
                data[kPopupEntry + static_cast<unsigned long long>(position)];
            // Menu templates without identifiers for their popups put the sub-menu's handle
            // where the identifier would be: such an entry has no identifier.
            unsigned long long const entryId =
                info.wID == static_cast<UINT>(reinterpret_cast<UINT_PTR>(info.hSubMenu)) ? 0
                                                                                         : info.wID;
            GwRcDataItem const* link = item(entry, "GwLinkId", "GwLink");
            GwRcDataItem const* menuId = item(entry, "GwMenuId", "GwMenu");
            unsigned long long subId = entryId;
            if (link != nullptr)
                subId = static_cast<unsigned long long>(number(link));
            else if (menuId != nullptr)
                subId = static_cast<unsigned long long>(number(menuId));
            GwRcDataItem const* itemId = item(entry, "GwId");

            GwMenu* const subMenu =
                makeFor<GwMenu>(chosenClass<GwMenu>(entry, "GwMenu"), info.hSubMenu);
            if (GwRcDataItem const* helpId = item(entry, "GwHelpId"))
                SetMenuContextHelpId(info.hSubMenu, static_cast<DWORD>(number(helpId)));
            entryItem = new GwMenuItem(
                itemId != nullptr ? static_cast<unsigned long long>(number(itemId)) : subId,
                String(text), subMenu);
            entryItem->setState(static_cast<int>(info.fState));
            if (subMenu != nullptr) {
                subMenu->setId(subId);
                subMenu->setDynamic(link != nullptr);
                GwRcData subData(subId, *this);
                initMenuTree(*subMenu, subData);
            }
        }
        MENUITEMINFOA store = {};
        store.cbSize = sizeof store;
        store.fMask = MIIM_DATA;
        store.dwItemData = reinterpret_cast<ULONG_PTR>(entryItem);
        if (!SetMenuItemInfoA(handle, static_cast<UINT>(position), TRUE, &store))
            delete entryItem;
    }
}
