// The demo's file and colour commands: the library's "Öffnen..." and "Speichern unter..."
// entries through GwFileSelect, and the text colour through GwColorSelect.
#pragma once

#include <VmGui.h>

// Carries out the file and colour commands of frame; false for every other command.
bool demoFilesCommand(GwFrame& frame, unsigned long long id);

// The text colour chosen last (0x00RRGGBB), black at first.
unsigned long demoTextColor();

// Cancels a common dialog of the program that is open, so that the program can end.
void demoCancelCommonDialog();
