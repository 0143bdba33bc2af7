// Identifiers of the gallery's resources (gallery.rc), shared by the script and the code.
#pragma once

// The dialog of every control kind and its controls (Schließen is IDOK).
#define IDD_CONTROLS 5000
#define IDC_G_BUTTONS 5001
#define IDC_G_PUSH 5002
#define IDC_G_TOGGLE 5003
#define IDC_G_THREE 5004
#define IDC_G_FIRST 5005
#define IDC_G_SECOND 5006
#define IDC_G_USER 5007
#define IDC_G_NUMBER 5008
#define IDC_G_IMAGE 5009
#define IDC_G_LIST 5010
#define IDC_G_COMBO 5011
#define IDC_G_TEXT 5012
