// Standard alerts and sheets: a window with the alert type's icon (or the caution icon the
// caller asks for) at the left, the message and
// the explanation beside it, and up to four buttons, items 1 (default), 2 (cancel), 3 (other)
// and 4 (help). A modal alert runs its own
// loop and answers the item hit; a sheet sends "cmds" 1 with "ok  ", "not!" or "othr" to its
// target and closes itself.

#include "basalt/toolbox/alerts/AlertIcon.h"
#include "basalt/toolbox/controls/ControlDrawing.h"
#include "basalt/toolbox/controls/Displays.h"
#include "basalt/toolbox/dialogs/Dialog.h"
#include "basalt/toolbox/views/UnicodeText.h"
#include "basalt/toolbox/windows/WindowList.h"

#include <cmath>

using namespace basalt::toolbox;

namespace {

constexpr double kWidth = 440;
constexpr double kMargin = 20;
constexpr double kIconSize = 48;
constexpr double kIconGap = 16;
constexpr double kButtonHeight = 24;

bool IsDefaultText(BCStringRef text) {
    return text == kAlertDefaultOKText;
}

std::u16string ButtonText(BCStringRef given, const char16_t* standard) {
    if (given == nullptr)
        return {};
    return IsDefaultText(given) ? std::u16string(standard) : FromBCString(given);
}

double TextHeight(const std::u16string& text, BTThemeFontID font, double width) {
    if (text.empty())
        return 0;
    StringHolder string(MakeBCString(text));
    BTThemeTextInfo info{};
    info.fontID = font;
    BGFloat height = 0;
    BTThemeGetTextDimensions(string.get(), width, &info, nullptr, &height, nullptr);
    return std::ceil(height);
}

std::shared_ptr<View> AddText(Window& window, const std::u16string& text, BTThemeFontID font,
                              double left, double top, double height) {
    auto view = std::make_shared<StaticText>();
    view->font = font;
    view->SetText(text);
    view->SetFrame(BGRectMake(left, top, kWidth - left - kMargin, height));
    window.Root().AddSubview(view);
    return view;
}

struct Buttons {
    std::u16string texts[4];
};

// Lays the buttons out from the right: default, cancel; other and help from the left.
void AddButtons(Window& window, Dialog& dialog, const Buttons& buttons, double top) {
    double right = kWidth - kMargin;
    double left = kMargin;
    for (int item = 1; item <= 4; ++item) {
        const std::u16string& text = buttons.texts[item - 1];
        if (text.empty()) {
            dialog.Append({});
            continue;
        }
        std::shared_ptr<View> button = MakeView(kControlKindPushButton);
        button->SetText(text);
        double width = std::max(80.0, button->OptimalSize(nullptr).width);
        if (item == 4)
            width = kButtonHeight;
        double x = item <= 2 ? right - width : left;
        if (item <= 2)
            right -= width + 12;
        else
            left += width + 12;
        button->SetFrame(BGRectMake(x, top, width, kButtonHeight));
        window.Root().AddSubview(button);
        Rect rect;
        BGRectToRect(button->Frame(), &rect);
        dialog.Append({button, rect, kDialogItemButton});
    }
}

StatusCode BuildAlert(AlertType alertType, BCStringRef error, BCStringRef explanation,
                      const AlertStdBCStringAlertParamRec* param, WindowClass windowClass,
                      DialogRef* outAlert) {
    if (outAlert == nullptr)
        return paramErr;
    AlertStdBCStringAlertParamRec defaults;
    GetStandardAlertDefaultParams(&defaults, kStdAlertVersionOne);
    const AlertStdBCStringAlertParamRec& p = param != nullptr ? *param : defaults;
    std::u16string message = FromBCString(error);
    std::u16string detail = FromBCString(explanation);
    std::shared_ptr<View> icon = MakeAlertIcon(
        (p.flags & kStdAlertCautionIcon) != 0 ? AlertType(kAlertCautionAlert) : alertType);
    // The text stands beside the icon, and the buttons below whichever of the two is longer.
    const double textLeft = icon != nullptr ? kMargin + kIconSize + kIconGap : kMargin;
    const double textWidth = kWidth - textLeft - kMargin;
    double messageHeight = TextHeight(message, kBTThemeFontEmphasized, textWidth);
    double detailHeight = TextHeight(detail, kBTThemeFontSmallSystem, textWidth);
    const double textHeight = messageHeight + (detail.empty() ? 0 : 8 + detailHeight);
    const double buttonsTop =
        kMargin + std::max(textHeight, icon != nullptr ? kIconSize : 0.0) + 20;
    Rect bounds = {0, 0, int16_t(buttonsTop + kButtonHeight + kMargin), int16_t(kWidth)};

    WindowClass actualClass = windowClass;
    if (windowClass != kSheetWindowClass)
        actualClass = p.movable ? kMovableAlertWindowClass : kAlertWindowClass;
    WindowRef ref = nullptr;
    if (StatusCode status = CreateNewWindow(actualClass, kWindowNoAttributes, &bounds, &ref);
        status != noErr)
        return status;
    Window& window = *Window::From(ref);
    if (icon != nullptr) {
        icon->SetFrame(BGRectMake(kMargin, kMargin, kIconSize, kIconSize));
        window.Root().AddSubview(icon);
    }
    AddText(window, message, kBTThemeFontEmphasized, textLeft, kMargin, messageHeight);
    if (!detail.empty())
        AddText(window, detail, kBTThemeFontSmallSystem, textLeft, kMargin + messageHeight + 8,
                detailHeight);

    window.dialog = std::make_unique<Dialog>(window);
    Dialog& dialog = *window.dialog;
    Buttons buttons;
    buttons.texts[0] = ButtonText(p.defaultText, u"OK");
    buttons.texts[1] = ButtonText(p.cancelText, u"Cancel");
    buttons.texts[2] = ButtonText(p.otherText, u"Don\u2019t Save");
    if (p.helpButton)
        buttons.texts[3] = std::u16string(1, u'?');
    AddButtons(window, dialog, buttons, buttonsTop);
    dialog.alertPosition = p.position;
    if (p.defaultButton > 0)
        SetDialogDefaultItem(dialog.Ref(), p.defaultButton);
    if (p.cancelButton > 0 && p.cancelButton != p.defaultButton)
        SetDialogCancelItem(dialog.Ref(), p.cancelButton);
    else if (p.defaultButton == kAlertStdAlertCancelButton)
        SetDialogCancelItem(dialog.Ref(), kAlertStdAlertCancelButton); // escape means Cancel too
    *outAlert = dialog.Ref();
    return noErr;
}

void PlaceAlert(Dialog& dialog) {
    // Alerts are made at the origin; one its caller has moved since stays where it was put.
    const Rect& content = dialog.window.ContentBounds();
    if (content.left != 0 || content.top != 0)
        return;
    WindowRef parent = nullptr;
    for (const auto& window : windows::All())
        if (window.get() != &dialog.window && window->IsVisible()) {
            parent = window->Ref();
            break;
        }
    bool onParent = dialog.alertPosition == kWindowAlertPositionParentWindow ||
                    dialog.alertPosition == kWindowAlertPositionParentWindowScreen;
    RepositionWindow(dialog.window.Ref(), parent,
                     onParent && parent != nullptr ? kWindowAlertPositionOnParentWindow
                                                   : kWindowAlertPositionOnMainScreen);
}

uint32_t CommandOfItem(DialogItemIndex item) {
    switch (item) {
    case kAlertStdAlertOKButton:
        return kBTCommandOK;
    case kAlertStdAlertCancelButton:
        return kBTCommandCancel;
    case kAlertStdAlertOtherButton:
        return kBTCommandOther;
    default:
        return 0;
    }
}

// One pass of a modal alert's filter: the event (or a null event) as a record.
bool Filtered(ModalFilterUPP filter, Dialog& dialog, EventRef event, DialogItemIndex* hit) {
    if (filter == nullptr)
        return false;
    EventRecord record{};
    if (event == nullptr || !ConvertEventRefToEventRecord(event, &record)) {
        record = {};
        record.what = nullEvent;
        record.when = TickCount();
    }
    DialogItemIndex item = 0;
    if (!filter(dialog.Ref(), &record, &item))
        return false;
    if (item != 0)
        *hit = item;
    return true;
}

} // namespace

extern "C" {

StatusCode GetStandardAlertDefaultParams(AlertStdBCStringAlertParamRec* param, uint32_t version) {
    if (param == nullptr || version != kStdAlertVersionOne)
        return paramErr;
    *param = {};
    param->version = version;
    param->defaultText = kAlertDefaultOKText;
    param->defaultButton = kAlertStdAlertOKButton;
    param->position = kWindowDefaultPosition;
    return noErr;
}

StatusCode CreateStandardAlert(AlertType alertType, BCStringRef error, BCStringRef explanation,
                               const AlertStdBCStringAlertParamRec* param, DialogRef* outAlert) {
    return BuildAlert(alertType, error, explanation, param, kAlertWindowClass, outAlert);
}

StatusCode RunStandardAlert(DialogRef inAlert, ModalFilterUPP filterProc,
                            DialogItemIndex* outItemHit) {
    if (inAlert == nullptr)
        return paramErr;
    Dialog& dialog = *Dialog::From(inAlert);
    auto window = dialog.window.Shared();
    DialogItemIndex hit = 0;
    dialog.onItemHit = [&hit](DialogItemIndex item) { hit = item; };
    PlaceAlert(dialog);
    ShowWindow(window->Ref());
    BeginAppModalStateForWindow(window->Ref());
    // Null events reach the filter three times a second, so that it can end the alert itself.
    while (hit == 0 && !window->disposed) {
        EventRef event = nullptr;
        StatusCode status = ReceiveNextEvent(0, nullptr, 1.0 / 3, true, &event);
        if (status != noErr && status != eventLoopTimedOutErr)
            break;
        if (!Filtered(filterProc, dialog, event, &hit) && event != nullptr)
            SendEventToEventTarget(event, GetEventDispatcherTarget());
        ReleaseEvent(event);
    }
    EndAppModalStateForWindow(window->Ref());
    if (!window->disposed) {
        window->dialog->onItemHit = nullptr;
        window->Dispose();
    }
    if (outItemHit != nullptr)
        *outItemHit = hit;
    return hit != 0 ? StatusCode(noErr) : StatusCode(userCanceledErr);
}

StatusCode CreateStandardSheet(AlertType alertType, BCStringRef error, BCStringRef explanation,
                               const AlertStdBCStringAlertParamRec* param,
                               EventTargetRef notifyTarget, DialogRef* outSheet) {
    StatusCode status =
        BuildAlert(alertType, error, explanation, param, kSheetWindowClass, outSheet);
    if (status != noErr)
        return status;
    Dialog& dialog = *Dialog::From(*outSheet);
    dialog.notifyTarget = notifyTarget;
    DialogRef ref = dialog.Ref();
    dialog.onItemHit = [ref](DialogItemIndex item) {
        if (uint32_t command = CommandOfItem(item))
            CloseStandardSheet(ref, command);
    };
    return noErr;
}

StatusCode CloseStandardSheet(DialogRef inSheet, uint32_t inResultCommand) {
    if (inSheet == nullptr)
        return paramErr;
    Dialog& dialog = *Dialog::From(inSheet);
    auto window = dialog.window.Shared();
    if (window->disposed)
        return errInvalidWindowRef;
    EventTargetRef target = dialog.notifyTarget;
    dialog.onItemHit = nullptr;
    window->Dispose();
    if (inResultCommand == 0 || target == nullptr)
        return noErr;
    BTCommand command{};
    command.attributes = kBTCommandFromControl;
    command.commandID = inResultCommand;
    EventHolder event(kEventClassCommand, kEventCommandProcess);
    SetParam(event.get(), kEventParamDirectObject, typeBTCommand, command);
    SendEventToEventTarget(event.get(), target);
    return noErr;
}

} // extern "C"
