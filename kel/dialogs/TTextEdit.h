#pragma once

// A toolbox text field holding a file name: a length limit in characters or bytes, ":" and "/"
// turned into "-", and an observer told of focus, typing and every change of the text, by keys,
// composition, the Edit menu or undo. With validates off
// the field is left as the toolbox made it and only notifies.

#include "kel/dialogs/ITextEditObserver.h"

#include <basalt/BasaltToolbox.h>
#include <cstdint>

class KelBaseDialog;

class TTextEdit {
public:
    TTextEdit(KelBaseDialog* dialog, ITextEditObserver* observer, unsigned char validates,
              ControlRef control);
    TTextEdit(const TTextEdit&) = delete;
    TTextEdit& operator=(const TTextEdit&) = delete;
    virtual ~TTextEdit();
    virtual void SetupControlEventHandler();

    void SetFocus(int16_t part);
    bool HasFocus() const;
    void SelectTextContent(ControlEditTextSelectionRec& selection);
    void GetSelectionEndpoints(int16_t& start, int16_t& end) const;
    TStringRef GetTextContent() const;
    StatusCode SetTextContent(const TStringRef& text);
    void SetMaxTextLength(unsigned long length);
    void SetMaxTextLengthIsUnicode(unsigned char isUnicode);
    void ValidateAndUpdateWithNotification(unsigned char notify);

    ControlRef GetControl() const { return control; }
    bool IsComposing() const { return !compositionDone; }

    static bool HasTextSelection(DialogRef dialog);
    static bool TextControlHasKeyboardFocus(DialogRef dialog);

private:
    int32_t SpaceLeftWithTruncation(TMutableStringRef& text, bool truncate,
                                    bool& wasTruncated) const;
    bool ValidateText(TMutableStringRef& text) const;
    void WriteText(const TStringRef& text);
    void NotifyTextChanged(const TStringRef& text);
    bool CheckForValidKeyStrokes(int16_t keyCode, int16_t character, EventModifiers modifiers);
    StatusCode HandleEvent(EventHandlerCallRef call, EventRef event);
    StatusCode HandleTypedText(EventHandlerCallRef call, EventRef event, const bool& wasDestroyed);
    void HandleTextDidChange();
    StatusCode HandleFocusEvent(EventHandlerCallRef call, EventRef event, const bool& wasDestroyed);

    static ControlKeyFilterResult EditFieldFilter(ControlRef control, int16_t* keyCode,
                                                  int16_t* charCode, EventModifiers* modifiers);
    static void InlineInputProc(ControlRef control, int32_t fixLength, int32_t activeStart,
                                int32_t activeEnd);
    static void ValidationProc(ControlRef control);
    static StatusCode ControlEventHandler(EventHandlerCallRef call, EventRef event, void* data);
    static TTextEdit* FromControl(ControlRef control);

    ControlRef control;
    KelBaseDialog* dialog;
    uint32_t maxTextLength = 255;
    bool maxIsUnicode = true;
    bool validates;
    bool compositionDone = true;
    bool validated = true;
    int32_t focusOverride = -1;
    ITextEditObserver* observer;
    EventHandlerRef eventHandler = nullptr;
    // Set while an event is delivered, so the handler learns if the event destroyed this field;
    // deliveries nest, each keeping the one further out.
    bool* destroyed = nullptr;
    // Typed keys being delivered: the field reports their change itself when each is done.
    int32_t typingDepth = 0;
    // The text the observer heard last, so a change the validation already reported is not
    // reported twice.
    TStringRef lastReported;
};
