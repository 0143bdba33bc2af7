// The library's private window messages, the codes of its registered message
// "GwWM_Message" (GwWindow::message()) and the event types its objects send.
#pragma once

// Private window messages the library sends to its own windows.
enum GwMessage : unsigned int {
    GwMsgNotifyReflected = 0x1003, // WM_NOTIFY reflected to the control that sent it
    GwMsgCommand = 0x1004,         // WM_COMMAND reflected to the control that sent it
    GwMsgDrawItem = 0x1005,        // WM_DRAWITEM reflected to the item's control
    GwMsgEnter = 0x1006,           // the mouse entered the window
    GwMsgLeave = 0x1007,           // the mouse left the window
    GwMsgActivate = 0x1008,        // activate; bubbles to the top-level window
    GwMsgSelect = 0x1009,          // select; bubbles
    GwMsgValue = 0x100A,           // value changed (wParam the value); bubbles
    GwMsgFrameEvent = 0x100B,      // low word of wParam: 0 show, 1 hide, 2 activate
    GwMsgLeftClick = 0x100C,       // posted by the click detector
    GwMsgRightClick = 0x100D,      // posted by the click detector
    GwMsgMiddleClick = 0x100E,     // posted by the click detector
    GwMsgNotify = 0x1013           // notification, low word of wParam the code
};

// wParam of the registered message "GwWM_Message".
enum GwMessageCode : unsigned int {
    GwCodeSetFocus = 7,          // set the focus to the receiver
    GwCodeLayout = 0x1001,       // a frame places its bars and its client
    GwCodePreTranslate = 0x1002, // lParam a queued MSG; non-zero answer: taken
    GwCodeContextHelp = 0x1010,  // F1 with Shift
    GwCodeHelp = 0x1011,         // F1
    GwCodeHelpFile = 0x1012,     // open the help file with the shell
    GwCodeStatusId = 0x1016,     // status text: the string whose id is in lParam's low word
    GwCodeStatusText = 0x1017,   // status text: the text that lParam points to
    GwCodeStatusSimple = 0x1018  // lParam 1: status bar into simple mode; 0: out, cleared
};

// Types of the events that library objects send to their listeners.
enum GwEventType : long {
    GwEventHandlerGone = 2,  // an event handler is being destroyed
    GwEventWindowResized = 3 // a window was resized
};
