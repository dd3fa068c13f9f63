#pragma once

// An editable Unicode text field: text, a selection (UTF-16 offsets, start <= end), the key
// filter, validation and inline-input hooks, the scrap commands and a one-step undo. A single
// line field leaves return and enter to the window (the default button).

#include "basalt/toolbox/views/View.h"

namespace basalt::toolbox {

class EditText : public View {
public:
    explicit EditText(OSType kind = kControlKindEditUnicodeText) : View(kind) {}

    bool AcceptsFocus() const override { return true; }
    uint32_t Cursor(BGPoint) override { return kThemeIBeamCursor; }
    void Draw(BGContextRef context) override;
    ControlPartCode HitTest(BGPoint local) override;
    ControlPartCode PerformClick(ControlPartCode, uint32_t) override { return kControlNoPart; }
    bool HandleText(EventRef textEvent) override;
    void SetText(const std::u16string& text) override;
    BGSize OptimalSize(float* baseline) override;
    StatusCode SetKindData(ResType tag, size_t size, const void* data) override;
    StatusCode GetKindData(ResType tag, size_t size, void* data, size_t* actual) override;

    int SelectionStart() const { return selStart_; }
    int SelectionEnd() const { return selEnd_; }
    void Select(int start, int end);
    // Replaces the selection as typing does: undo point, notification, validation.
    void ReplaceSelection(const std::u16string& text);
    void Cut();
    void Copy();
    void Paste();
    void Undo();

protected:
    // The text area inside the frame.
    virtual BGRect TextRect() const;
    void DrawTextAndSelection(BGContextRef context, const BGRect& area);

private:
    bool HandleKey(EventRef rawKey, const std::u16string& typed);
    bool HandleCommandKey(char16_t key);
    bool HandleInlineInput(EventRef textEvent);
    void MoveCaret(int to, bool extend);
    void TextChanged();

    int selStart_ = 0;
    int selEnd_ = 0;
    bool singleLine_ = false;
    ControlKeyFilterUPP filter_ = nullptr;
    ControlEditTextValidationUPP validation_ = nullptr;
    ControlEditTextInlinePreUpdateUPP inlineInput_ = nullptr;
    std::u16string composing_;
    std::u16string undoText_;
    int undoStart_ = 0, undoEnd_ = 0;
    bool hasUndo_ = false;
};

class SearchField : public EditText {
public:
    SearchField() : EditText(kControlKindSearchField) {}
    void Draw(BGContextRef context) override;
    ControlPartCode HitTest(BGPoint local) override;
    ControlPartCode PerformClick(ControlPartCode part, uint32_t modifiers) override;
    uint32_t attributes = kBTSearchFieldAttributesCancel | kBTSearchFieldAttributesSearchIcon;
    BGRect CancelRect() const;

protected:
    BGRect TextRect() const override;
};

} // namespace basalt::toolbox
