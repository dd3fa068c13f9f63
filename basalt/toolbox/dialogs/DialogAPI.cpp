// The C calls on dialogs and dialog item lists.

#include "basalt/toolbox/controls/EditText.h"
#include "basalt/toolbox/dialogs/Dialog.h"
#include "basalt/toolbox/views/UnicodeText.h"
#include "basalt/toolbox/windows/WindowList.h"

#include <cstring>

using namespace basalt::toolbox;

namespace basalt::toolbox {
namespace {

// One item of a list: reserved i32, Rect, type byte, length byte, text, padding to even.
struct ParsedItem {
    Rect rect;
    int16_t type;
    std::string text;
};

bool ParseItemList(Handle list, std::vector<ParsedItem>* items) {
    if (list == nullptr || *list == nullptr)
        return false;
    auto size = size_t(GetHandleSize(list));
    auto* bytes = reinterpret_cast<const uint8_t*>(*list);
    if (size < 2)
        return false;
    int16_t countMinusOne;
    std::memcpy(&countMinusOne, bytes, 2);
    size_t at = 2;
    for (int i = 0; i <= countMinusOne; ++i) {
        if (at + 4 + sizeof(Rect) + 2 > size)
            return false;
        ParsedItem item{};
        std::memcpy(&item.rect, bytes + at + 4, sizeof(Rect));
        at += 4 + sizeof(Rect);
        item.type = bytes[at];
        size_t length = bytes[at + 1];
        at += 2;
        if (at + length > size)
            return false;
        item.text.assign(reinterpret_cast<const char*>(bytes + at), length);
        at += length + (length & 1);
        items->push_back(std::move(item));
    }
    return true;
}

OSType KindOfItem(int16_t type) {
    switch (type & ~kDialogItemDisabled) {
    case kDialogItemButton:
        return kControlKindPushButton;
    case kDialogItemCheckBox:
        return kControlKindCheckBox;
    case kDialogItemRadioButton:
        return kControlKindRadioButton;
    case kDialogItemStaticText:
        return kControlKindStaticText;
    case kDialogItemEditText:
        return kControlKindEditUnicodeText;
    default:
        return kControlKindUserPane;
    }
}

// Where appended items go: below or right of what is there, or beside an item.
BGPoint Placement(Dialog& dialog, DITLMethod method) {
    Rect all{0, 0, 0, 0};
    for (DialogItemIndex n = 1; n <= dialog.Count(); ++n)
        UnionRect(&all, &dialog.At(n)->rect, &all);
    if (method == appendDITLRight)
        return {double(all.right), 0};
    if (method == appendDITLBottom)
        return {0, double(all.bottom)};
    if (method < 0)
        if (Dialog::Item* item = dialog.At(DialogItemIndex(-method)))
            return {double(item->rect.left), double(item->rect.top)};
    return {0, 0};
}

} // namespace

bool AppendItemList(Dialog& dialog, Handle list, DITLMethod method) {
    std::vector<ParsedItem> parsed;
    if (!ParseItemList(list, &parsed))
        return false;
    BGPoint offset = Placement(dialog, method);
    for (ParsedItem& item : parsed) {
        OffsetRect(&item.rect, int16_t(offset.x), int16_t(offset.y));
        Dialog::Item entry;
        entry.rect = item.rect;
        entry.type = item.type;
        if ((item.type & ~kDialogItemDisabled) != kDialogItemUserItem) {
            std::shared_ptr<View> control = MakeView(KindOfItem(item.type));
            control->SetFrame(BGRectFromRect(&item.rect));
            control->SetText(FromUTF8(item.text));
            control->SetEnabled((item.type & kDialogItemDisabled) == 0);
            dialog.window.Root().AddSubview(control);
            entry.control = control;
        }
        dialog.Append(entry);
    }
    return true;
}

} // namespace basalt::toolbox

namespace {

Dialog* D(DialogRef ref) {
    return ref != nullptr ? Dialog::From(ref) : nullptr;
}

EditText* FocusedField(DialogRef ref) {
    Dialog* dialog = D(ref);
    return dialog != nullptr ? dynamic_cast<EditText*>(dialog->window.Focus()) : nullptr;
}

} // namespace

extern "C" {

StatusCode _CreatePrivateDialogRefAndBindToWindowRef(WindowRef inWindow, DialogRef* outDialog) {
    if (!IsValidWindowPtr(inWindow) || outDialog == nullptr)
        return paramErr;
    Window* window = Window::From(inWindow);
    if (window->dialog == nullptr)
        window->dialog = std::make_unique<Dialog>(*window);
    *outDialog = window->dialog->Ref();
    return noErr;
}

DialogRef GetDialogFromWindow(WindowRef window) {
    if (!IsValidWindowPtr(window) || Window::From(window)->dialog == nullptr)
        return nullptr;
    return Window::From(window)->dialog->Ref();
}

WindowRef GetDialogWindow(DialogRef dialog) {
    return dialog != nullptr ? D(dialog)->window.Ref() : nullptr;
}

void DisposeDialog(DialogRef theDialog) {
    if (theDialog != nullptr)
        DisposeWindow(D(theDialog)->window.Ref());
}

StatusCode SetDialogTracksCursor(DialogRef inDialog, Boolean inTracks) {
    if (inDialog == nullptr)
        return paramErr;
    D(inDialog)->tracksCursor = inTracks != 0;
    return noErr;
}

StatusCode GetDialogItemAsControl(DialogRef inDialog, int16_t inItemNo, ControlRef* outControl) {
    if (inDialog == nullptr || outControl == nullptr)
        return paramErr;
    View* control = D(inDialog)->ControlAt(inItemNo);
    *outControl = control != nullptr ? control->Ref() : nullptr;
    return control != nullptr ? StatusCode(noErr) : StatusCode(errUnknownControl);
}

void GetDialogItem(DialogRef theDialog, DialogItemIndex itemNo, int16_t* itemType, Handle* item,
                   Rect* box) {
    Dialog::Item* entry = theDialog != nullptr ? D(theDialog)->At(itemNo) : nullptr;
    View* control = entry != nullptr ? entry->control.lock().get() : nullptr;
    if (itemType != nullptr)
        *itemType = entry != nullptr ? entry->type : int16_t(0);
    if (item != nullptr)
        *item = control != nullptr ? reinterpret_cast<Handle>(control->Ref()) : nullptr;
    if (box != nullptr && entry != nullptr)
        *box = entry->rect;
}

StatusCode SetDialogDefaultItem(DialogRef theDialog, DialogItemIndex newItem) {
    Dialog* dialog = D(theDialog);
    if (dialog == nullptr)
        return paramErr;
    dialog->defaultItem = newItem;
    dialog->window.SetDefaultButton(dialog->ControlAt(newItem));
    return noErr;
}

StatusCode SetDialogCancelItem(DialogRef theDialog, DialogItemIndex newItem) {
    Dialog* dialog = D(theDialog);
    if (dialog == nullptr)
        return paramErr;
    dialog->cancelItem = newItem;
    dialog->window.SetCancelButton(dialog->ControlAt(newItem));
    return noErr;
}

DialogItemIndex CountDITL(DialogRef theDialog) {
    return theDialog != nullptr ? D(theDialog)->Count() : DialogItemIndex(0);
}

void AppendDITL(DialogRef theDialog, Handle theHandle, DITLMethod method) {
    if (theDialog != nullptr)
        AppendItemList(*D(theDialog), theHandle, method);
}

void ShortenDITL(DialogRef theDialog, DialogItemIndex numberItems) {
    if (theDialog != nullptr)
        D(theDialog)->Shorten(numberItems);
}

StatusCode GetDITLItemRectangle(DialogRef inDialog, DialogItemIndex inItemNo, Rect* outRect) {
    Dialog::Item* item = inDialog != nullptr ? D(inDialog)->At(inItemNo) : nullptr;
    if (item == nullptr || outRect == nullptr)
        return paramErr;
    if (View* control = item->control.lock().get())
        BGRectToRect(control->FrameInWindow(), &item->rect);
    *outRect = item->rect;
    return noErr;
}

StatusCode SetDialogItemRectangle(DialogRef inDialog, DialogItemIndex inItemNo,
                                  const Rect* inRect) {
    Dialog::Item* item = inDialog != nullptr ? D(inDialog)->At(inItemNo) : nullptr;
    if (item == nullptr || inRect == nullptr)
        return paramErr;
    item->rect = *inRect;
    if (View* control = item->control.lock().get())
        SetControlBounds(control->Ref(), inRect);
    return noErr;
}

Boolean IsDialogEvent(const EventRecord* theEvent) {
    if (theEvent == nullptr)
        return false;
    WindowRef window = nullptr;
    if (theEvent->what == mouseDown) {
        Window* under = windows::AtPoint(theEvent->where);
        window = under != nullptr ? under->Ref() : nullptr;
    } else if (theEvent->what == keyDown || theEvent->what == autoKey) {
        window = GetUserFocusWindow();
    } else if (theEvent->what == updateEvt || theEvent->what == activateEvt) {
        window = reinterpret_cast<WindowRef>(theEvent->message);
    }
    return window != nullptr && GetDialogFromWindow(window) != nullptr;
}

Boolean DialogSelect(const EventRecord* theEvent, DialogRef* theDialog, DialogItemIndex* itemHit) {
    if (!IsDialogEvent(theEvent))
        return false;
    if (theEvent->what == mouseDown) {
        Window* window = windows::AtPoint(theEvent->where);
        const Rect& content = window->ContentBounds();
        BGPoint local = {double(theEvent->where.h - content.left),
                         double(theEvent->where.v - content.top)};
        View* hit = window->Root().HitView(local);
        Dialog* dialog = window->dialog.get();
        std::optional<DialogItemIndex> number =
            hit != nullptr ? dialog->NumberOf(hit) : std::nullopt;
        if (theDialog != nullptr)
            *theDialog = dialog->Ref();
        if (!number)
            return false;
        if (itemHit != nullptr)
            *itemHit = *number;
        if (View* control = dialog->ControlAt(*number)) {
            if (control->AcceptsFocus())
                window->SetFocus(control, kControlEditTextPart);
            else
                ClickView(*control, control->HitTest(control->FromWindow(local)),
                          theEvent->modifiers);
        }
        return true;
    }
    if (theEvent->what == keyDown || theEvent->what == autoKey) {
        Window* window = windows::UserFocus();
        Dialog* dialog = window->dialog.get();
        if (theDialog != nullptr)
            *theDialog = dialog->Ref();
        std::optional<DialogItemIndex> number = dialog->NumberOf(window->Focus());
        if (!number)
            return false;
        if (itemHit != nullptr)
            *itemHit = *number;
        return true;
    }
    return false;
}

void DialogCut(DialogRef theDialog) {
    if (EditText* field = FocusedField(theDialog))
        field->Cut();
}

void DialogCopy(DialogRef theDialog) {
    if (EditText* field = FocusedField(theDialog))
        field->Copy();
}

void DialogPaste(DialogRef theDialog) {
    if (EditText* field = FocusedField(theDialog))
        field->Paste();
}

void DialogDelete(DialogRef theDialog) {
    if (EditText* field = FocusedField(theDialog))
        field->ReplaceSelection(u"");
}

} // extern "C"
