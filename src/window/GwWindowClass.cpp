#include "GwWindowClass.h"

#include <windows.h>
#include <commctrl.h>

#include "GwEventData.h"
#include "GwWindow.h"

GwObjectTable<GwWindowClass> GwWindowClass::allWindowClasses;
GwWindowClass::GwRegister GwWindowClass::gStartup;
GwWindowControl3D GwWindowControl3D::gControl3D;

GW_CLASS_NULL(GwWindowClass, "GwWindowClass", "GwObject")
GW_CLASS_NULL(GwWindowControl3D, "GwWindowControl3D", "GwObject")

namespace {

struct KnownClass {
    char const* name;
    unsigned int kind;
};

// In the order of registration.
KnownClass const gKnownClasses[] = {
    {"Button", GwWindowClass::eButton},
    {"ComboBox", GwWindowClass::eComboBox},
    {"Edit", GwWindowClass::eEdit},
    {"ListBox", GwWindowClass::eListBox},
    {"ScrollBar", GwWindowClass::eScrollBar},
    {"Static", GwWindowClass::eStatic},
    {"SysTabControl32", GwWindowClass::eTab},
    {"SysListView32", GwWindowClass::eListView},
    {"SysTreeView32", GwWindowClass::eTreeView},
    {"SysHeader32", GwWindowClass::eHeader},
    {"ToolbarWindow32", GwWindowClass::eToolBar},
    {"msctls_statusbar32", GwWindowClass::eStatusBar},
    {"SysAnimate32", GwWindowClass::eAnimate},
    {"msctls_updown32", GwWindowClass::eUpDown},
    {"msctls_progress32", GwWindowClass::eProgress},
    {"msctls_trackbar32", GwWindowClass::eTrackBar},
};

// GetClassInfoExA answers the class atom, the same one that GetClassWord(GCW_ATOM) reports
// for every window of the class; the class is looked up as CreateWindowExA would for the
// executable, so no window has to be made for it.
unsigned short classAtom(String const& name) {
    WNDCLASSEXA info = {};
    info.cbSize = sizeof info;
    return static_cast<unsigned short>(
        GetClassInfoExA(GetModuleHandleA(nullptr), name.c_str(), &info));
}

char const* buttonClassName(LONG style) {
    switch (style & 0x0F) {
    case BS_PUSHBUTTON:
    case BS_DEFPUSHBUTTON:
        return "GwPushButton";
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
        return "GwToggleButton";
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        return "GwRadioButton";
    case BS_3STATE:
    case BS_AUTO3STATE:
        return "Gw3StateButton";
    case BS_GROUPBOX:
        return "GwGroupBox";
    case BS_USERBUTTON:
        return "GwUserButton";
    default:
        return "GwButton";
    }
}

// The whole low byte counts, not only the SS_TYPEMASK bits: SS_NOPREFIX makes a GwStatic.
char const* staticClassName(LONG style) {
    switch (style & 0xFF) {
    case SS_LEFT:
    case SS_CENTER:
    case SS_RIGHT:
    case SS_SIMPLE:
    case SS_LEFTNOWORDWRAP:
        return "GwText";
    case SS_ICON:
    case SS_BITMAP:
    case SS_ENHMETAFILE:
        return "GwImage";
    default:
        return "GwStatic";
    }
}

// The window's own class name when a class record of that name exists.
String recordOrControl(HWND hwnd) {
    char name[101] = {};
    GetClassNameA(hwnd, name, sizeof name);
    if (name[0] != '\0' && Class::lookup(name) != nullptr)
        return String(name);
    return String("GwControl");
}

} // namespace

GwWindowClass::GwWindowClass(String const& name, unsigned int kind)
    : mKind(kind), mAtom(classAtom(name)), mName(name) {
    enrol();
}

GwWindowClass::GwWindowClass(GwWindowClass const& other)
    : GwObject(other), mKind(other.mKind), mAtom(other.mAtom), mName(other.mName) {
    enrol();
}

GwWindowClass& GwWindowClass::operator=(GwWindowClass const& other) {
    GwObject::operator=(other);
    mKind = other.mKind;
    mAtom = other.mAtom;
    mName = other.mName;
    return *this;
}

GwWindowClass::~GwWindowClass() {
    allWindowClasses.remove(this);
}

void GwWindowClass::enrol() {
    allWindowClasses.add(this);
}

GwObjectTable<GwWindowClass> const* GwWindowClass::table() {
    return &allWindowClasses;
}

GwWindowClass const* GwWindowClass::lookup(unsigned short atom) {
    if (atom == 0)
        return nullptr;
    for (GwObjectTableIterator<GwWindowClass> next(allWindowClasses);
         GwWindowClass const* entry = next();) {
        if (entry->mAtom == atom)
            return entry;
    }
    return nullptr;
}

unsigned int GwWindowClass::kindOf(void* hwnd) {
    GwWindowClass const* entry =
        lookup(hwnd != nullptr ? GetClassWord(static_cast<HWND>(hwnd), GCW_ATOM) : 0);
    return entry != nullptr ? entry->mKind : 0;
}

String GwWindowClass::mappedClassName(void* hwnd) {
    HWND const window = static_cast<HWND>(hwnd);
    LONG const style = GetWindowLongA(window, GWL_STYLE);
    switch (kindOf(hwnd)) {
    case eButton:
        return String(buttonClassName(style));
    case eComboBox:
        return String("GwComboBox");
    case eEdit:
        return String("GwEditField");
    case eListBox:
        return String("GwListBox");
    case eScrollBar:
        return String("GwControl");
    case eTab:
        return String("GwTab");
    case eStatic:
        return String(staticClassName(style));
    default:
        // Another known kind, or a class that the table lacks.
        return recordOrControl(window);
    }
}

GwWindow* GwWindowClass::createChild(void* hwnd) {
    if (hwnd == nullptr)
        return nullptr;
    String const name = mappedClassName(hwnd);
    GwEventData const data(hwnd);
    // A record that makes something other than a window gives no child. What its factory
    // answered is left alone: it may be a shared instance (GwThisDll answers the one there is).
    return dynamic_cast<GwWindow*>(Class::createInstance(Class::lookup(name.c_str()), &data));
}

bool GwWindowClass::GwRegister::initInstance() {
    INITCOMMONCONTROLSEX controls = {};
    controls.dwSize = sizeof controls;
    controls.dwICC = ICC_WIN95_CLASSES; // every common control class of the table
    InitCommonControlsEx(&controls);
    for (KnownClass const& known : gKnownClasses)
        new GwWindowClass(known.name, known.kind);
    return true;
}

bool GwWindowClass::GwRegister::exitInstance() {
    for (std::int32_t slot = allWindowClasses.count(); slot-- > 0;)
        delete allWindowClasses.at(slot);
    return true;
}

GwWindowControl3D::GwWindowControl3D(GwWindowControl3D const& other)
    : GwObject(other), mModule(nullptr) {}

GwWindowControl3D& GwWindowControl3D::operator=(GwWindowControl3D const& other) {
    GwObject::operator=(other);
    return *this;
}

GwWindowControl3D::~GwWindowControl3D() {
    if (mModule == nullptr)
        return;
    HMODULE const module = static_cast<HMODULE>(mModule);
    using Unregister = BOOL(WINAPI*)(HINSTANCE);
    auto unregister = reinterpret_cast<Unregister>(
        reinterpret_cast<void*>(GetProcAddress(module, "Ctl3dUnregister")));
    if (unregister != nullptr)
        unregister(GetModuleHandleA(nullptr));
    FreeLibrary(module);
}
