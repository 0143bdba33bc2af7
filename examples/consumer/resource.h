// Identifiers of the consumer's resources (counter.rc).
#pragma once

#define IDD_COUNTER 100 // the counter dialog
#define IDC_COUNT 101   // the text that shows the count
#define IDC_ADD 102     // the button "Weiter" that counts
