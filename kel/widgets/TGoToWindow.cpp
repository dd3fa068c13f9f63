#include "kel/widgets/TGoToWindow.h"

TGoToWindow::~TGoToWindow() {
    DisposeGoToWindow();
}

bool TGoToWindow::Run(TKelNodeArray& path, char) {
    nodePath = &path;
    result = false;
    return result;
}

void TGoToWindow::AttemptAutoComplete() {}

bool TGoToWindow::ConfirmLastAutoComplete() {
    return false;
}

bool TGoToWindow::AllocateGoToWindow() {
    return false;
}

void TGoToWindow::DisposeGoToWindow() {}

StatusCode TGoToWindow::WindowEventHandlerProc(EventHandlerCallRef, EventRef, void*) {
    return eventNotHandledErr;
}

StatusCode TGoToWindow::EditFieldEventHandlerProc(EventHandlerCallRef, EventRef, void*) {
    return eventNotHandledErr;
}

void TGoToWindow::AutoCompleteTimerProc(EventLoopTimerRef, void*) {}
