// The consumer's own dialog on the installed library.
#pragma once

#include <VmGui.h>

// The dialog of the template IDD_COUNTER (counter.rc): its button "Weiter" counts and shows
// the count; OK ends it with the result IDOK, Abbrechen and closing with IDCANCEL.
class CounterDialog : public GwDialog {
public:
    // A hidden modal dialog, owned by owner's window when there is one.
    explicit CounterDialog(GwFrame* owner = nullptr);

    // The presses of "Weiter" counted.
    int count() const { return mCount; }

private:
    // Answers the activation of "Weiter", which bubbles from the button to the dialog.
    class Presses : public GwEventHandler {
    public:
        explicit Presses(CounterDialog& dialog) : mDialog(dialog) {}
        int cbActivate(GwWindow& window) override;

    private:
        CounterDialog& mDialog;
    };

    static void* createWindow(GwFrame* owner);
    void press();

    int mCount = 0;
};
