// The combo box's edit part: finding it, and the operations that forward to it.
#include "GwComboBox.h"

#include <windows.h>

#include "GwEditField.h"
#include "GwWindowClass.h"

void GwComboBox::findEditPart() {
    if (mHandle == nullptr)
        return;
    for (HWND child = GetWindow(static_cast<HWND>(mHandle), GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        GwWindowClass const* entry = GwWindowClass::lookup(GetClassWord(child, GCW_ATOM));
        if (entry == nullptr || entry->kind() != GwWindowClass::eEdit)
            continue;
        GwWindow* object = GwWindow::window(child, false);
        if (object == nullptr)
            object = GwWindowClass::createChild(child);
        if (auto* edit = dynamic_cast<GwEditField*>(object))
            mEditPart = edit; // the last edit child wins
    }
}

bool GwComboBox::changed() const {
    if (mEditPart != nullptr) {
        auto const edit = static_cast<HWND>(mEditPart->window());
        bool const typed = SendMessageA(edit, EM_GETMODIFY, 0, 0) != 0;
        SendMessageA(edit, EM_SETMODIFY, FALSE, 0);
        if (typed) {
            mLastSelection = selectedAt();
            return true;
        }
    }
    int const current = selectedAt();
    if (current == mLastSelection)
        return false;
    mLastSelection = current;
    return true;
}

GwComboBox& GwComboBox::setValue(double value) {
    mEditPart->setValue(value);
    return *this;
}

GwComboBox& GwComboBox::setValue(long value) {
    mEditPart->setValue(value);
    return *this;
}

GwComboBox::operator double() const {
    return static_cast<double>(*mEditPart);
}

GwComboBox::operator long() const {
    return static_cast<long>(*mEditPart);
}

GwComboBox& GwComboBox::setFormat(char const* format) {
    mEditPart->setFormat(String(format));
    return *this;
}

char const* GwComboBox::format() const {
    return mEditPart->format().c_str();
}

GwComboBox& GwComboBox::checkFormat(bool on) {
    mEditPart->checkFormat(on);
    return *this;
}

GwComboBox& GwComboBox::checkMinValue(bool on) {
    mEditPart->checkMinValue(on);
    return *this;
}

GwComboBox& GwComboBox::checkMaxValue(bool on) {
    mEditPart->checkMaxValue(on);
    return *this;
}

GwComboBox& GwComboBox::setMinValue(double value) {
    mEditPart->setMinValue(value);
    return *this;
}

GwComboBox& GwComboBox::setMaxValue(double value) {
    mEditPart->setMaxValue(value);
    return *this;
}

GwComboBox& GwComboBox::setDefaultValue(double value) {
    mEditPart->setDefaultValue(value);
    return *this;
}

double GwComboBox::minValue() const {
    return mEditPart->minValue();
}

double GwComboBox::maxValue() const {
    return mEditPart->maxValue();
}

double GwComboBox::defaultValue() const {
    return mEditPart->defaultValue();
}

GwComboBox& GwComboBox::setSelection(int start, int end) {
    mEditPart->setSelection(start, end);
    return *this;
}
