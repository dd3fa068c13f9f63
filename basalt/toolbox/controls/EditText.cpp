#include "basalt/toolbox/controls/EditText.h"

#include "basalt/toolbox/controls/ControlDataCopy.h"
#include "basalt/toolbox/controls/ControlDrawing.h"
#include "basalt/toolbox/scrap/Scrap.h"
#include "basalt/toolbox/views/UnicodeText.h"
#include "basalt/toolbox/windows/Window.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace basalt::toolbox {
namespace {

constexpr BGFloat kInset = 4;

std::u16string ReadUnicode(EventRef event, EventParamName name) {
    size_t size = 0;
    if (GetEventParameter(event, name, typeUnicodeText, nullptr, 0, &size, nullptr) != noErr)
        return {};
    std::u16string text(size / 2, u'\0');
    GetEventParameter(event, name, typeUnicodeText, nullptr, size, nullptr, text.data());
    return text;
}

} // namespace

// ---- Text and selection -------------------------------------------------------------------

void EditText::SetText(const std::u16string& text) {
    View::SetText(text);
    auto length = int(Text().size());
    selStart_ = std::min(selStart_, length);
    selEnd_ = std::min(selEnd_, length);
}

void EditText::Select(int start, int end) {
    auto length = int(Text().size());
    start = std::clamp(start, 0, length);
    end = std::clamp(end, 0, length);
    selStart_ = std::min(start, end);
    selEnd_ = std::max(start, end);
    SetNeedsDisplay();
}

void EditText::ReplaceSelection(const std::u16string& text) {
    undoText_ = Text();
    undoStart_ = selStart_;
    undoEnd_ = selEnd_;
    hasUndo_ = true;
    std::u16string next = Text();
    next.replace(size_t(selStart_), size_t(selEnd_ - selStart_), text);
    int caret = selStart_ + int(text.size());
    View::SetText(next);
    Select(caret, caret);
    TextChanged();
}

void EditText::TextChanged() {
    auto keep = Shared();
    if (validation_ != nullptr)
        validation_(Ref());
    EventHolder event(kEventClassTextField, kEventTextFieldTextDidChange);
    SendEventToEventTargetWithOptions(event.get(), Target(), kEventTargetDontPropagate);
}

void EditText::Cut() {
    if (selStart_ == selEnd_)
        return;
    Copy();
    ReplaceSelection(u"");
}

void EditText::Copy() {
    if (selStart_ != selEnd_)
        scrap::PutText(Text().substr(size_t(selStart_), size_t(selEnd_ - selStart_)));
}

void EditText::Paste() {
    std::u16string text;
    if (!scrap::GetText(&text))
        return;
    if (singleLine_)
        std::replace_if(
            text.begin(), text.end(), [](char16_t c) { return c == u'\n' || c == u'\r'; }, u' ');
    ReplaceSelection(text);
}

void EditText::Undo() {
    if (!hasUndo_)
        return;
    std::u16string text = undoText_;
    int start = undoStart_, end = undoEnd_;
    undoText_ = Text();
    undoStart_ = selStart_;
    undoEnd_ = selEnd_;
    View::SetText(text);
    Select(start, end);
    TextChanged();
}

// ---- Keys ---------------------------------------------------------------------------------

bool EditText::HandleText(EventRef textEvent) {
    if (textEvent->kind == kEventTextInputUpdateActiveInputArea)
        return HandleInlineInput(textEvent);
    std::u16string typed = ReadUnicode(textEvent, kEventParamTextInputSendText);
    EventRef raw = nullptr;
    if (!GetParam(textEvent, kEventParamTextInputSendKeyboardEvent, typeEventRef, &raw)) {
        if (typed.empty())
            return false;
        ReplaceSelection(typed);
        return true;
    }
    return HandleKey(raw, typed);
}

bool EditText::HandleKey(EventRef rawKey, const std::u16string& typed) {
    uint32_t code = 0, modifiers = 0;
    char character = 0;
    GetParam(rawKey, kEventParamKeyCode, typeUInt32, &code);
    GetParam(rawKey, kEventParamKeyModifiers, typeUInt32, &modifiers);
    GetParam(rawKey, kEventParamKeyMacCharCodes, typeChar, &character);
    if (filter_ != nullptr) {
        auto keyCode = int16_t(code);
        auto charCode = int16_t(uint8_t(character));
        auto keyModifiers = EventModifiers(modifiers);
        if (filter_(Ref(), &keyCode, &charCode, &keyModifiers) == kControlKeyFilterBlockKey)
            return true;
    }
    if (modifiers & cmdKey)
        return HandleCommandKey(typed.empty() ? char16_t(uint8_t(character)) : typed[0]);
    bool extend = (modifiers & shiftKey) != 0;
    int caret = extend ? selEnd_ : selStart_;
    switch (code) {
    case kVK_Delete:
        if (selStart_ == selEnd_ && selStart_ > 0)
            selStart_ -= 1;
        if (selStart_ != selEnd_)
            ReplaceSelection(u"");
        return true;
    case kVK_ForwardDelete:
        if (selStart_ == selEnd_ && selEnd_ < int(Text().size()))
            selEnd_ += 1;
        if (selStart_ != selEnd_)
            ReplaceSelection(u"");
        return true;
    case kVK_LeftArrow:
        MoveCaret(selStart_ == selEnd_ || extend ? caret - 1 : selStart_, extend);
        return true;
    case kVK_RightArrow:
        MoveCaret(selStart_ == selEnd_ || extend ? selEnd_ + 1 : selEnd_, extend);
        return true;
    case kVK_UpArrow:
    case kVK_Home:
        MoveCaret(0, extend);
        return true;
    case kVK_DownArrow:
    case kVK_End:
        MoveCaret(int(Text().size()), extend);
        return true;
    case kVK_Return:
    case kVK_ANSI_KeypadEnter:
        if (singleLine_)
            return false;
        ReplaceSelection(u"\n");
        return true;
    default:
        break;
    }
    if (typed.empty() ||
        std::any_of(typed.begin(), typed.end(), [](char16_t c) { return c < 0x20; }))
        return false;
    ReplaceSelection(typed);
    return true;
}

bool EditText::HandleCommandKey(char16_t key) {
    switch (key | 0x20) {
    case u'a':
        Select(0, int(Text().size()));
        return true;
    case u'c':
        Copy();
        return true;
    case u'x':
        Cut();
        return true;
    case u'v':
        Paste();
        return true;
    case u'z':
        Undo();
        return true;
    default:
        return false;
    }
}

void EditText::MoveCaret(int to, bool extend) {
    auto length = int(Text().size());
    to = std::clamp(to, 0, length);
    if (extend)
        Select(selStart_, to);
    else
        Select(to, to);
}

// Composed text arrives as "text" 1 with "tstx" and the fixed length "tsfx": while the fixed
// length is short of the whole, the text is only shown; when it covers it, it is inserted.
bool EditText::HandleInlineInput(EventRef textEvent) {
    std::u16string text = ReadUnicode(textEvent, kEventParamTextInputSendText);
    int32_t fixed = 0;
    GetParam(textEvent, FourCC("tsfx"), typeSInt32, &fixed);
    if (fixed >= int32_t(text.size())) {
        composing_.clear();
        ReplaceSelection(text);
        if (inlineInput_ != nullptr)
            inlineInput_(Ref(), fixed, -1, -1);
    } else {
        composing_ = text;
        SetNeedsDisplay();
        if (inlineInput_ != nullptr)
            inlineInput_(Ref(), fixed, fixed, int32_t(text.size()));
    }
    return true;
}

// ---- Data ---------------------------------------------------------------------------------

StatusCode EditText::SetKindData(ResType tag, size_t size, const void* data) {
    switch (tag) {
    case kControlEditTextCFStringTag: {
        BCStringRef string = nullptr;
        if (StatusCode status = TakeControlValue(&string, size, data); status != noErr)
            return status;
        SetText(FromBCString(string));
        return noErr;
    }
    case kControlEditTextTextTag:
        SetText(FromUTF8({static_cast<const char*>(data), data != nullptr ? size : 0}));
        return noErr;
    case kControlEditTextSelectionTag: {
        ControlEditTextSelectionRec selection{};
        if (StatusCode status = TakeControlValue(&selection, size, data); status != noErr)
            return status;
        Select(selection.selStart, selection.selEnd);
        return noErr;
    }
    case kControlEditTextKeyFilterTag:
        return TakeControlValue(&filter_, size, data);
    case kControlEditTextValidationProcTag:
        return TakeControlValue(&validation_, size, data);
    case kControlEditTextInlineInputTag:
        return TakeControlValue(&inlineInput_, size, data);
    case kControlEditTextSingleLineTag: {
        Boolean single = false;
        StatusCode status = TakeControlValue(&single, size, data);
        singleLine_ = single != 0;
        return status;
    }
    default:
        return errDataNotSupported;
    }
}

StatusCode EditText::GetKindData(ResType tag, size_t size, void* data, size_t* actual) {
    switch (tag) {
    case kControlEditTextCFStringTag: {
        // The caller owns the string it gets; asking only for the size makes none.
        BCStringRef string =
            data != nullptr && size >= sizeof(BCStringRef) ? MakeBCString(Text()) : nullptr;
        return PutControlValue(string, size, data, actual);
    }
    case kControlEditTextTextTag: {
        std::string utf8 = ToUTF8(Text());
        if (data != nullptr)
            std::memcpy(data, utf8.data(), std::min(size, utf8.size()));
        if (actual != nullptr)
            *actual = utf8.size();
        return noErr;
    }
    case kControlEditTextSelectionTag:
        return PutControlValue(ControlEditTextSelectionRec{int16_t(std::min(selStart_, 0x7FFF)),
                                                           int16_t(std::min(selEnd_, 0x7FFF))},
                               size, data, actual);
    case kControlEditTextKeyFilterTag:
        return PutControlValue(filter_, size, data, actual);
    case kControlEditTextValidationProcTag:
        return PutControlValue(validation_, size, data, actual);
    case kControlEditTextInlineInputTag:
        return PutControlValue(inlineInput_, size, data, actual);
    case kControlEditTextSingleLineTag:
        return PutControlValue(Boolean(singleLine_), size, data, actual);
    default:
        return errDataNotSupported;
    }
}

// ---- Drawing ------------------------------------------------------------------------------

ControlPartCode EditText::HitTest(BGPoint local) {
    return BGRectContainsPoint(Bounds(), local) ? ControlPartCode(kControlEditTextPart)
                                                : ControlPartCode(kControlNoPart);
}

BGSize EditText::OptimalSize(float* baseline) {
    int32_t height = 22;
    GetThemeMetric(kBTThemeMetricEditTextHeight, &height);
    BGFloat base = 0;
    BGSize text = MeasureText(Text(), kBTThemeFontSystem, &base);
    if (baseline != nullptr)
        *baseline = float((height - text.height) / 2 + base);
    return {std::max(Frame().size.width, std::ceil(text.width) + 2 * kInset), BGFloat(height)};
}

BGRect EditText::TextRect() const {
    return BGRectInset(Bounds(), kInset, 2);
}

void EditText::DrawTextAndSelection(BGContextRef context, const BGRect& area) {
    Window* window = OwnerWindow();
    bool focused = window != nullptr && window->Focus() == this && IsActive();
    std::u16string shown = Text();
    if (!composing_.empty())
        shown.insert(size_t(selStart_), composing_);
    BGSize lineSize = MeasureText(u"Xg", kBTThemeFontSystem);
    double top = area.origin.y + (area.size.height - lineSize.height) / 2;
    if (focused) {
        double x0 = area.origin.x +
                    MeasureText(Text().substr(0, size_t(selStart_)), kBTThemeFontSystem).width;
        double x1 = area.origin.x +
                    MeasureText(Text().substr(0, size_t(selEnd_)), kBTThemeFontSystem).width;
        if (selStart_ != selEnd_) {
            BGContextSetRGBFillColor(context, 0.70, 0.83, 1.0, 1.0);
            BGContextFillRect(context, BGRectMake(x0, top, x1 - x0, lineSize.height));
        } else {
            BGContextSetGrayFillColor(context, 0.1, 1.0);
            BGContextFillRect(context, BGRectMake(std::round(x0), top, 1, lineSize.height));
        }
    }
    DrawText(context, shown, area, kBTThemeFontSystem, kBTThemeTextFlushLeft, ThemeState(*this));
}

void EditText::Draw(BGContextRef context) {
    Window* window = OwnerWindow();
    bool focused = window != nullptr && window->Focus() == this;
    BGRect bounds = Bounds();
    BTThemeFrameDrawInfo frame{};
    frame.kind = kBTThemeFrameTextField;
    frame.state = IsEnabledInTree() ? kBTThemeStateActive : kBTThemeStateUnavailable;
    frame.isFocused = focused;
    BGRect inside = BGRectInset(bounds, 1, 1);
    BTThemeApplyBackground(&inside, kBTThemeBackgroundListView, frame.state, context);
    BGContextFillRect(context, inside);
    BTThemeDrawFrame(&bounds, &frame, context);
    DrawTextAndSelection(context, TextRect());
}

// ---- Search field -------------------------------------------------------------------------

BGRect SearchField::CancelRect() const {
    BGRect bounds = Bounds();
    double side = std::min(bounds.size.height - 6, 14.0);
    return BGRectMake(bounds.origin.x + bounds.size.width - side - 5,
                      bounds.origin.y + (bounds.size.height - side) / 2, side, side);
}

BGRect SearchField::TextRect() const {
    BGRect area = EditText::TextRect();
    if (attributes & kBTSearchFieldAttributesSearchIcon) {
        area.origin.x += 16;
        area.size.width -= 16;
    }
    area.size.width -= CancelRect().size.width + 4;
    return area;
}

ControlPartCode SearchField::HitTest(BGPoint local) {
    if ((attributes & kBTSearchFieldAttributesCancel) && !Text().empty() &&
        BGRectContainsPoint(CancelRect(), local))
        return kBTSearchFieldCancelPart;
    return EditText::HitTest(local);
}

ControlPartCode SearchField::PerformClick(ControlPartCode part, uint32_t) {
    if (part != kBTSearchFieldCancelPart)
        return kControlNoPart;
    auto keep = Shared();
    Select(0, int(Text().size()));
    ReplaceSelection(u""); // keeps the undo point of what was cleared
    EventHolder event(kEventClassSearchField, kEventSearchFieldCancelClicked);
    SendEventToEventTargetWithOptions(event.get(), Target(), kEventTargetDontPropagate);
    return part;
}

void SearchField::Draw(BGContextRef context) {
    EditText::Draw(context);
    BGRect bounds = Bounds();
    BGContextSetGrayStrokeColor(context, 0.45, 1.0);
    BGContextSetLineWidth(context, 1.5);
    if (attributes & kBTSearchFieldAttributesSearchIcon) {
        double cy = bounds.origin.y + bounds.size.height / 2;
        BGContextStrokeEllipseInRect(context, BGRectMake(bounds.origin.x + 6, cy - 5, 8, 8));
        BGPoint handle[2] = {{bounds.origin.x + 12.5, cy + 1.5},
                             {bounds.origin.x + 15.5, cy + 4.5}};
        BGContextStrokeLineSegments(context, handle, 2);
    }
    if ((attributes & kBTSearchFieldAttributesCancel) && !Text().empty()) {
        BGRect mark = CancelRect();
        BGContextSetGrayFillColor(context, 0.6, 1.0);
        BGContextFillEllipseInRect(context, mark);
        BGRect cross = BGRectInset(mark, mark.size.width * 0.3, mark.size.height * 0.3);
        BGPoint lines[4] = {{BGRectGetMinX(cross), BGRectGetMinY(cross)},
                            {BGRectGetMaxX(cross), BGRectGetMaxY(cross)},
                            {BGRectGetMinX(cross), BGRectGetMaxY(cross)},
                            {BGRectGetMaxX(cross), BGRectGetMinY(cross)}};
        BGContextSetGrayStrokeColor(context, 1.0, 1.0);
        BGContextStrokeLineSegments(context, lines, 4);
    }
}

} // namespace basalt::toolbox
