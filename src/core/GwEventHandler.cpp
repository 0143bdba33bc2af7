#include "GwEventHandler.h"

#include <windows.h>

#include "GwWindow.h"

GW_CLASS_NONE(GwEventHandler, "GwEventHandler", "GwObject")

GwEventHandler::~GwEventHandler() {
    if (mCounted && mRefCount != 0) {
        // Deleted while windows still hold references to it.
        DebugBreak();
        // The windows forget it below without releasing it again.
        mRefCount = 0;
    }
    sendEvent(Event(GwEventHandlerGone), nullptr, true);
}

long GwEventHandler::addRef() {
    if (!mCounted)
        return 0;
    return ++mRefCount;
}

long GwEventHandler::release() {
    if (!mCounted)
        return 0;
    long count = --mRefCount;
    if (count == 0)
        delete this;
    return count;
}

int GwEventHandler::cbActivate(GwWindow& window) {
    unsigned long long id = window.id();
    return id == IDOK || id == IDCANCEL ? GwResultContinue | GwResultHandled : GwResultContinue;
}

int GwEventHandler::cbButton(GwWindow&, GwPosition const&, unsigned int) {
    return GwResultContinue;
}
int GwEventHandler::cbClose(GwWindow&) {
    return GwResultContinue;
}
int GwEventHandler::cbDestroy(GwWindow&) {
    return GwResultContinue;
}
int GwEventHandler::cbEnter(GwWindow&) {
    return GwResultContinue;
}
int GwEventHandler::cbExpose(GwWindow&, GwGC&, unsigned int) {
    return GwResultContinue;
}
int GwEventHandler::cbFocusIn(GwWindow&) {
    return GwResultContinue;
}
int GwEventHandler::cbFocusOut(GwWindow&) {
    return GwResultContinue;
}
int GwEventHandler::cbHide(GwWindow&) {
    return GwResultContinue;
}
int GwEventHandler::cbKey(GwWindow&, unsigned int, unsigned int) {
    return GwResultContinue;
}
int GwEventHandler::cbLeave(GwWindow&) {
    return GwResultContinue;
}
int GwEventHandler::cbMouseMove(GwWindow&, GwPosition const&, unsigned int) {
    return GwResultContinue;
}
int GwEventHandler::cbMouseWheel(GwWindow&, GwPosition const&, unsigned int, int) {
    return GwResultContinue;
}
int GwEventHandler::cbResize(GwWindow&) {
    return GwResultContinue;
}
int GwEventHandler::cbSelect(GwWindow&) {
    return GwResultContinue;
}
int GwEventHandler::cbShow(GwWindow&) {
    return GwResultContinue;
}
int GwEventHandler::cbTimer(GwWindow&) {
    return GwResultContinue;
}
int GwEventHandler::cbValue(GwWindow&, unsigned int) {
    return GwResultContinue;
}
int GwEventHandler::cbNotify(GwWindow&, unsigned int) {
    return GwResultContinue;
}
