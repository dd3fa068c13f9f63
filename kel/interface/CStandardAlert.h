#pragma once

// One standard alert of the toolbox, shown modally or as a sheet on a parent window. A modal
// alert runs inside Run and its window is gone when Run returns; a sheet returns at once, its
// buttons reach parentTarget as commands, and it closes itself when answered. A sheet that
// the program ends (Terminate) is closed by the destructor.

#include <basalt/BasaltToolbox.h>

class CStandardAlert {
public:
    CStandardAlert(AlertType alertType, BCStringRef error, BCStringRef explanation,
                   BCStringRef cancelText, int16_t cancelButton, bool runNow,
                   BCStringRef defaultText, BCStringRef otherText, int16_t defaultButton,
                   uint16_t position, ModalFilterUPP filter, bool helpButton, bool movable,
                   WindowRef parentWindow, OptionBits moreFlags = 0);
    CStandardAlert(const CStandardAlert&) = delete;
    CStandardAlert& operator=(const CStandardAlert&) = delete;
    virtual ~CStandardAlert();

    // A modal alert answers the item hit; a sheet answers 0 and the status of showing it.
    StatusCode Run(int16_t* itemHit);
    void SetupEventHandler(EventHandlerUPP proc, void* data);
    void Terminate() { terminated = true; }
    bool IsTerminated() const { return terminated; }
    DialogRef GetDialog() const { return dialog; }
    bool IsSheet() const { return parentWindow != nullptr; }

    // The filter of alerts made with neither filter nor parent: return and enter press the
    // default button (item 1 unless the alert chose another), escape and command-period the
    // cancel button.
    static Boolean builtInFilter(DialogRef dialog, EventRecord* event, DialogItemIndex* itemHit);

private:
    void Initialize(AlertType alertType, BCStringRef error, BCStringRef explanation,
                    BCStringRef cancelText, int16_t cancelButton, BCStringRef defaultText,
                    BCStringRef otherText, int16_t defaultButton, uint16_t position,
                    bool helpButton, bool movable, OptionBits moreFlags);

    EventHandlerUPP eventHandlerProc = nullptr;
    DialogRef dialog = nullptr;
    void* eventHandlerData = nullptr;
    bool terminated = false;
    WindowRef parentWindow;
    EventTargetRef parentTarget = nullptr;
    EventHandlerRef handlerRef = nullptr;
    ModalFilterUPP filter;
};
