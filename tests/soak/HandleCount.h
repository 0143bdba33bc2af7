// Counting the USER and GDI handles that the process holds, for a run that must not leak.
//
// Wine's GetGuiResources counts nothing (it answers 0 and ERROR_CALL_NOT_IMPLEMENTED), so
// where it does, the handles are counted another way:
// - windows: every window of this thread, top-level and child, enumerated;
// - menus, icons and window hooks: the library's calls that make them (CreateMenu,
//   CreatePopupMenu, LoadMenuA, LoadImageA of an icon or cursor, SetWindowsHookExA) and
//   free them (DestroyMenu, DestroyIcon, UnhookWindowsHookEx) are watched through its
//   import table; a menu counts until DestroyMenu takes it or IsMenu no longer knows it (a
//   menu bar goes with its window);
// - GDI objects: the library's calls that make pens, brushes, fonts, regions, palettes,
//   bitmaps, memory and metafile devices and enhanced metafiles are watched the same way,
//   with DeleteObject, DeleteDC, DeleteEnhMetaFile and CloseEnhMetaFile, and an object also
//   stops counting when GetObjectType no longer knows its handle; the devices borrowed with
//   GetDC, GetDCEx and BeginPaint count until ReleaseDC and EndPaint give them back, and
//   the image lists made with ImageList_Create and ImageList_Duplicate (each holds GDI
//   bitmaps) until ImageList_Destroy;
// - icons copied with ImageList_GetIcon count as icons, until DestroyIcon.
// An object counts from the watched call that made it to the watched call that freed it,
// so a freed handle that the platform hands out again for its own use is not mistaken for
// the library's.
//
// Handles that the platform makes for the library on its own (the children of a dialog
// template, a combo box's list) are windows and so enumerated; the rest are counted only
// through what the library makes itself.
#pragma once

namespace soak {

struct HandleCount {
    long user = 0;
    long gdi = 0;
};

// Starts watching the library's calls (once; later calls do nothing). False when the
// library's import table could not be read.
bool watchLibraryHandles();

// GetGuiResources when the platform counts, else the count described above. watched tells
// which of the two it is.
HandleCount countHandles(bool* watched = nullptr);

// The windows of this thread, top-level and child.
long countThreadWindows();

} // namespace soak
