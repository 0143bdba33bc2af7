// The demo's lists view: a tab control whose pages show a list box of street names, a combo
// box of font sizes (a page loaded from a dialog template) and a text, in a frame of its own
// whose status bar reports the selection and activate events of the controls.
#pragma once

#include <VmGui.h>

// Opens the lists view for the command ID_LISTS of frame; false for every other command.
bool demoListsCommand(GwFrame& frame, unsigned long long id);
