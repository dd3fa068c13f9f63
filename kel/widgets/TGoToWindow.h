#pragma once

// The small application-modal window in which the user types a path to go to, with completion
// of the folder name being typed. It only answers the path: moving the browser is the caller's
// part. One object serves one run and goes out of scope with its caller.

#include "basalt/BasaltToolbox.h"
#include "kel/nodes/TKelNodeArray.h"

class TGoToWindow {
public:
    TGoToWindow() = default;
    ~TGoToWindow();
    TGoToWindow(const TGoToWindow&) = delete;
    TGoToWindow& operator=(const TGoToWindow&) = delete;

    // Asks for a path, starting the field with firstCharacter unless it is 0. True with path set
    // to the nodes from the root to the leaf; false on cancel, with path untouched.
    bool Run(TKelNodeArray& path, char firstCharacter);

    // Offers the rest of the folder name being typed, selected so that typing replaces it.
    void AttemptAutoComplete();
    // Accepts the next segment of a selected completion; true when the selection moved.
    bool ConfirmLastAutoComplete();

private:
    bool AllocateGoToWindow();
    // "ok  ": ends the run with the typed path, or says that it leads nowhere.
    void AcceptTypedPath();
    StatusCode HandleTabKey(EventRef event);
    // Before the field gets a key: hides the message and completes on tab; true when tab or
    // "/" accepted a completion, which uses the key up.
    bool TakeKey(UniChar key);
    // After a key: the Go button follows the text, and the completion wait starts again.
    void KeyDone(UniChar key);
    static StatusCode WindowEventHandlerProc(EventHandlerCallRef call, EventRef event, void* data);
    static StatusCode EditFieldEventHandlerProc(EventHandlerCallRef call, EventRef event,
                                                void* data);
    static void AutoCompleteTimerProc(EventLoopTimerRef timer, void* data);

    WindowRef window = nullptr;
    ControlRef editField = nullptr;
    ControlRef messageText = nullptr;
    ControlRef okButton = nullptr;
    EventLoopTimerRef autoCompleteTimer = nullptr;
    bool result = false;
    TKelNodeArray* nodePath = nullptr;
};
