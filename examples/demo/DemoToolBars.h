// The main frame's tool bars: one at the top with the platform's standard images (new, open,
// save), two images of the demo's own and a combo box of font sizes; one at the left edge.
// Their tooltips and status texts are strings of the demo's resources ("status\ntooltip").
#pragma once

#include <VmGui.h>

// Docks both bars in frame and attaches the handler of their buttons and of the combo box.
void demoAddToolBars(GwFrame& frame);

// Rests the pointer on the first button of frame's top bar, so that its tooltip shows
// (--show toolbar).
void demoShowToolTip(GwFrame& frame);
