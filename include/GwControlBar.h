// Windows that a frame stacks along its edges: the control bar base and the dock bar.
#pragma once

#include "GwGeometry.h"
#include "GwObjectTable.h"
#include "GwWindow.h"

// The base of the bars that a frame stacks along its edges.
//
// A control bar tells its frame how much room it needs along an edge (calculate) and offers
// a drag gesture that follows the pointer with a focus rectangle drawn on the desktop
// (dragBegin). The status bar and tool bars derive from it.
class VMGUI_API GwControlBar : public GwWindow {
    GW_DECLARE_CLASS(GwControlBar)

public:
    // How calculate measures the bar.
    enum eCalculate {
        eHorizontal = 1, // along the top or bottom edge; the limit is the width available
        eVertical = 2,   // along the left or right edge; the limit is the height available
        eFloating = 3,   // free-standing with a width limit (tool bars)
        eRelease = 4     // frees the records of the given table (tool bars)
    };

    // Copies and moves are memberwise: both objects name the same window.
    GwControlBar(GwControlBar const& other);
    GwControlBar(GwControlBar&& other);
    GwControlBar& operator=(GwControlBar const& other);
    GwControlBar& operator=(GwControlBar&& other);
    ~GwControlBar() override;

    // The size the bar needs. Here: its current dimension(), whatever the arguments; bars
    // that lay out parts replace it and may report the parts' rectangles in parts.
    virtual GwDimension calculate(eCalculate kind, int limit, GwObjectTable<GwRectangle>* parts);

    // Follows the pointer with a focus rectangle of the bar's size, drawn on the desktop,
    // until the left button is released, Escape is pressed or WM_QUIT arrives (which is
    // posted again). start is the pointer position in the bar's coordinates (bottom-up).
    // The bar does not move: callers that dock read the pointer themselves afterwards.
    // Writes trace lines to the standard output.
    GwControlBar& dragBegin(GwPosition& start);

    // Always null: a plain control bar is not made by name.
    static GwControlBar* newInstance(EventData const* data);

protected:
    // A bar without window; the derived bar creates it.
    GwControlBar();
    // A bar for an existing window (bound and subclassed); none for a null handle.
    explicit GwControlBar(void* handle);
};

// A control bar without behaviour of its own.
class VMGUI_API GwDockBar : public GwControlBar {
    GW_DECLARE_CLASS(GwDockBar)

public:
    // A dock bar without window.
    GwDockBar();
    // Memberwise: both objects name the same window.
    GwDockBar(GwDockBar const& other);
    GwDockBar& operator=(GwDockBar const& other);
    ~GwDockBar() override;

    // A dock bar wrapping the window that a GwEventData carries; null without one.
    static GwDockBar* newInstance(EventData const* data);

protected:
    // A dock bar for an existing window (bound and subclassed).
    explicit GwDockBar(void* handle);
};
