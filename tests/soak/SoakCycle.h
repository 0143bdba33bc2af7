// One cycle of the soak run, and the figures measured between cycles.
#pragma once

#include <cstdio>

namespace soak {

// The resources of the soak program (data/soak.rc).
unsigned long long const kFrameId = 400;
unsigned long long const kMenuBar = 500;
unsigned long long const kViewportId = 450;
unsigned long long const kDialog = 600;
unsigned long long const kBitmap = 8100;
unsigned long long const kToolBar = 700;
unsigned long long const kToolBarId = 710;
unsigned long long const kToolCombo = 711;

// What one cycle saw, to tell that it did its work.
struct CycleReport {
    bool frame = false;    // the frame with its status bar and the merged menus
    bool toolBar = false;  // the tool bar with its images and its combo box
    bool painted = false;  // the viewport's handler drew
    bool dialog = false;   // the dialog with every control found and filled
    bool metafile = false; // a metafile was recorded and played
    bool complete() const { return frame && toolBar && painted && dialog && metafile; }
};

// Builds a frame with the library's menus merged into its menu bar, a status bar, a tool bar
// with images and an embedded combo box and a painted viewport, opens the modeless dialog with one
// control of every kind, records a small metafile and destroys everything again. Needs a
// GwApplication.
CycleReport runCycle();

// The process's figures: live library objects (GwObject::liveObjects, -1 in a release build
// of the library), USER and GDI handles (see HandleCount.h) and private bytes.
struct Figures {
    long objects = 0;
    long user = 0;
    long gdi = 0;
    unsigned long long privateBytes = 0;
};

Figures measure();

// Objects and handles exactly equal.
bool countsFlat(Figures const& before, Figures const& after);
// Private bytes grown by at most 1 %.
bool memoryFlat(Figures const& before, Figures const& after);

void print(std::FILE* out, char const* label, long long cycle, Figures const& figures);

} // namespace soak
