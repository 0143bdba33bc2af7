// Identifiers of the demo's resources (demo.rc), shared by the resource script and the code.
#pragma once

// Menu bars.
#define IDR_MAIN_MENU 1000
#define IDR_MDI_MENU 1001
#define IDR_DRAWING_MENU 1002

// The settings dialog and its controls (OK and Cancel are IDOK and IDCANCEL).
#define IDD_SETTINGS 2000
#define IDC_FONT_SIZE 2001
#define IDC_BOLD 2002
#define IDC_FACE_SANS 2003
#define IDC_FACE_SERIF 2004
#define IDC_FACE_MONO 2005
#define IDC_FACE_GROUP 2006
#define IDC_PICTURE 2007
// The picture in the settings dialog.
#define IDB_PAGE 2100

// Commands of the demo's own menu entries; the string of the same identifier is the entry's
// status text.
#define ID_SETTINGS 1101
#define ID_MESSAGE 1102
#define ID_MDI 1103
#define ID_RESET_SIZE 1104
#define ID_SIZE_SMALL 1111
#define ID_SIZE_MEDIUM 1112
#define ID_SIZE_LARGE 1113
#define ID_NEW_DOCUMENT 1121
#define ID_DRAWING 1105
#define ID_LISTS 1106
#define ID_TEXT_COLOR 1107
#define ID_EXPORT_EMF 1131
#define ID_EXPORT_WMF 1132
#define ID_COPY_DRAWING 1133

// Texts.
#define IDS_APP_NAME 100
#define IDS_TITLE 101
#define IDS_MDI_TITLE 102
#define IDS_READY 103
#define IDS_MDI_READY 104
#define IDS_MESSAGE_TITLE 110
#define IDS_MESSAGE_TEXT 111
#define IDS_ANSWER_YES 112
#define IDS_ANSWER_NO 113
#define IDS_SETTINGS_DONE 120
#define IDS_SETTINGS_KEPT 121
#define IDS_BAD_SIZE 122
#define IDS_SIZE_CHANGED 123
#define IDS_BOLD 124
// The font faces, in the order of the radio buttons IDC_FACE_SANS to IDC_FACE_MONO.
#define IDS_FACE_SANS 125
#define IDS_FACE_SERIF 126
#define IDS_FACE_MONO 127
#define IDS_USAGE 130
// The drawing view: its title, the chart's texts and the export messages.
#define IDS_DRAWING_TITLE 140
#define IDS_CHART_TITLE 141
#define IDS_CHART_AXIS 142
#define IDS_CHART_BEST 143
#define IDS_EXPORTED 144
#define IDS_COPIED 145
// The welcome text of the main window, one line each; an empty string ends it.
#define IDS_WELCOME 200
// Document n (1 to 3): its title at IDS_DOCUMENT + 10 * n, its lines from the next one on,
// up to an empty string. Later documents use IDS_NEW_DOCUMENT (with %d for the number).
#define IDS_DOCUMENT 300
#define IDS_NEW_DOCUMENT 340

// The text window in a frame.
#define IDC_TEXT 3000

// The lists view: the page of the tab control loaded from a template and its combo box, the
// captions of the tabs and the texts of its status bar.
#define IDD_SIZES_PAGE 4200
#define IDC_SIZE_COMBO 4201
#define IDS_LISTS_TITLE 150
#define IDS_LISTS_READY 151
#define IDS_LISTS_NOTE 152
#define IDS_TAB_STREETS 153
#define IDS_TAB_SIZES 154
#define IDS_TAB_NOTE 155
#define IDS_LIST_SELECTED 156
#define IDS_LIST_ACTIVATED 157
#define IDS_SIZE_SELECTED 158
#define IDS_TAB_SELECTED 159

// The file and colour commands: the filter of the file dialogs and the status texts.
#define IDS_TEXT_FILTER 160
#define IDS_FILE_CHOSEN 161
#define IDS_FILE_CANCELLED 162
#define IDS_FILE_NOT_WRITTEN 163
#define IDS_COLOR_CHOSEN 164
#define IDS_COLOR_KEPT 165

// The tool bars (DemoToolBars.cpp): the bars, their buttons and the tool-bar resource with
// the demo's own images; the string of a button's identifier is "status text\ntooltip".
#define IDR_TOOLBAR 1200
#define ID_TOP_BAR 1201
#define ID_LEFT_BAR 1202
#define ID_TB_NEW 1203
#define ID_TB_OPEN 1204
#define ID_TB_SAVE 1205
#define ID_TB_DRAWING 1206
#define ID_TB_LISTS 1207
#define ID_TB_SIZES 1208
#define ID_TB_SETTINGS 1209
#define ID_TB_MESSAGE 1210
#define ID_TB_INFO 1211
#define ID_TB_GAP1 1212
#define ID_TB_GAP2 1213
