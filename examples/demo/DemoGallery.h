// The demo's gallery: views that show every family of the library, opened by the start-up
// steps (--show controls) for the screenshots of tools/run-demo.sh.
#pragma once

#include <string>

#include <VmGui.h>

// True when --show names a view of the gallery.
bool demoGalleryShows(std::string const& view);
// Opens the gallery's view for frame; false for a name that is not the gallery's.
bool demoGalleryShow(GwFrame& frame, std::string const& view);
