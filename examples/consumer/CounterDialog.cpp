// The consumer's counter dialog: a platform dialog from the program's own template, wrapped
// by a GwDialog subclass.
#include "CounterDialog.h"

#include <windows.h>

#include <string>

#include "resource.h"

CounterDialog::CounterDialog(GwFrame* owner) : GwDialog(createWindow(owner)) {
    setModal(true);
    // "Weiter" gets its object (a GwPushButton), so that its click reaches the handler.
    child(IDC_ADD);
    add(new Presses(*this));
}

void* CounterDialog::createWindow(GwFrame* owner) {
    HWND const parent = owner != nullptr ? static_cast<HWND>(owner->window()) : nullptr;
    return CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDD_COUNTER), parent,
                              nullptr, 0);
}

void CounterDialog::press() {
    ++mCount;
    SetDlgItemTextA(static_cast<HWND>(window()), IDC_COUNT, std::to_string(mCount).c_str());
}

int CounterDialog::Presses::cbActivate(GwWindow& window) {
    if (window.id() != IDC_ADD)
        return GwResultContinue; // OK and Abbrechen end the dialog by themselves
    mDialog.press();
    return GwResultHandled | GwResultStop;
}
