// The demo's drawing view: a viewport whose handler draws a small chart in the library's
// upward coordinates, in a frame of its own with commands that export the chart as an
// enhanced and as a placeable Windows metafile and copy it to the clipboard.
#pragma once

#include <VmGui.h>

// Carries out the drawing view's commands (opening it from frame, exporting, copying);
// false for every other command.
bool demoDrawingCommand(GwFrame& frame, unsigned long long id);

// Draws the chart into gc, width by height units with (0, 0) at the bottom left.
void demoDrawChart(GwGC& gc, long width, long height);
