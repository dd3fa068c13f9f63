#include "tools/kelpick/DialogDriving.h"

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/gridbrowser/GridBrowser.h"
#include "basalt/types/BUTypes.h"

using basalt::headless::HeadlessDriver;

namespace {

constexpr OSType kDialogSignature = 0x6B656C73; // "kels"
constexpr int32_t kBrowserID = 11;
constexpr int32_t kFormatPopupID = 6;
constexpr int32_t kTypePopupID = 7;
constexpr int32_t kViewSegmentsID = 21;
constexpr int32_t kSidebarID = 23;

ControlRef DialogControl(WindowRef window, int32_t id) {
    ControlID controlID{kDialogSignature, id};
    ControlRef control = nullptr;
    return GetControlByID(window, &controlID, &control) == noErr ? control : nullptr;
}

std::string TitleOf(ControlRef control) {
    BCStringRef title = nullptr;
    if (CopyControlTitleAsBCString(control, &title) != noErr || title == nullptr) {
        return {};
    }
    std::string text = basalt::types::Utf8(title);
    BCRelease(title);
    return text;
}

// The first visible control, depth first, whose title is label.
ControlRef FindTitled(BTViewRef view, const std::string& label) {
    for (BTViewRef child = BTViewGetFirstSubview(view); child != nullptr;
         child = BTViewGetNextView(child)) {
        if (!IsControlVisible(child)) {
            continue;
        }
        if (TitleOf(child) == label) {
            return child;
        }
        if (ControlRef found = FindTitled(child, label)) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

Refusal ClickBrowserRow(WindowRef window, const std::string& name, uint32_t modifiers, int clicks) {
    ControlRef browser = DialogControl(window, kBrowserID);
    if (browser == nullptr) {
        return "the dialog has no browser";
    }
    BCStringRef text = basalt::types::MakeString(name);
    GridBrowserItemID item = 0;
    Rect row{};
    StatusCode status = FindGridBrowserItemNamed(browser, 0, text, &item);
    BCRelease(text);
    if (status == noErr) {
        status = GetGridBrowserItemPartBounds(browser, item, kGridBrowserNameProperty, &row);
    }
    if (status != noErr) {
        return "no row \"" + name + "\" in the browser";
    }
    const BGPoint middle{BGFloat(row.left + row.right) / 2, BGFloat(row.top + row.bottom) / 2};
    for (int click = 0; click < clicks; ++click) {
        HeadlessDriver::ClickAt(window, middle, modifiers);
    }
    return std::nullopt;
}

WindowRef AlertOver(WindowRef window) {
    WindowRef front = FrontWindow();
    return front != nullptr && GetDialogFromWindow(front) != nullptr ? front : window;
}

// Works on a display too: the click is the toolbox's own, not one the headless driver posts.
bool AnswerCancel(WindowRef alert) {
    constexpr DialogItemIndex kCancelItem = 2;
    constexpr DialogItemIndex kOnlyItem = 1;
    DialogRef dialog = GetDialogFromWindow(alert);
    for (DialogItemIndex item : {kCancelItem, kOnlyItem}) {
        ControlRef button = nullptr;
        if (dialog != nullptr && GetDialogItemAsControl(dialog, item, &button) == noErr &&
            button != nullptr && IsControlVisible(button)) {
            return BTViewSimulateClick(button, kControlButtonPart, 0, nullptr) == noErr;
        }
    }
    return false;
}

Refusal ClickItem(WindowRef window, int16_t item) {
    ControlRef control = nullptr;
    if (GetDialogItemAsControl(GetDialogFromWindow(window), item, &control) != noErr ||
        control == nullptr) {
        return "the dialog has no item " + std::to_string(item);
    }
    HeadlessDriver::Click(control);
    return std::nullopt;
}

Refusal ClickButton(WindowRef window, const std::string& label) {
    ControlRef button = FindTitled(BTViewGetRoot(window), label);
    if (button == nullptr) {
        return "no button \"" + label + "\" in the dialog";
    }
    if (!IsControlEnabled(button)) {
        return "the button \"" + label + "\" is disabled";
    }
    HeadlessDriver::Click(button);
    return std::nullopt;
}

Refusal ClickSidebarRow(WindowRef window, const std::string& name) {
    ControlRef sidebar = DialogControl(window, kSidebarID);
    if (sidebar == nullptr || !IsControlVisible(sidebar)) {
        return "the dialog has no sidebar";
    }
    BGRect frame{};
    BGRect row{};
    BTViewGetFrame(sidebar, &frame);
    BTViewConvertRect(&frame, BTViewGetSuperview(sidebar), nullptr);
    if (!HeadlessDriver::FindShownText(window, name, frame, &row)) {
        return "no row \"" + name + "\" in the sidebar";
    }
    HeadlessDriver::ClickAt(window, {BGRectGetMidX(row), BGRectGetMidY(row)});
    return std::nullopt;
}

Refusal ChooseTypeItem(WindowRef window, const std::string& title) {
    ControlRef popup = nullptr;
    for (int32_t id : {kTypePopupID, kFormatPopupID}) {
        if (ControlRef control = DialogControl(window, id); control && IsControlVisible(control)) {
            popup = control;
        }
    }
    MenuRef menu = nullptr;
    if (popup == nullptr || GetControlData(popup, kControlNoPart, kControlPopupButtonMenuRefTag,
                                           sizeof menu, &menu, nullptr) != noErr) {
        return "the dialog has no type popup";
    }
    std::string titles;
    for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
        BCStringRef text = nullptr;
        if (CopyMenuItemTextAsBCString(menu, item, &text) != noErr || text == nullptr) {
            continue;
        }
        const std::string shown = basalt::types::Utf8(text);
        BCRelease(text);
        if (shown == title) {
            HeadlessDriver::ChooseMenuItem(item);
            HeadlessDriver::Click(popup);
            return std::nullopt;
        }
        titles += (titles.empty() || shown.empty() ? "" : ", ") + shown;
    }
    return "no item \"" + title + "\" in the type popup, which has: " + titles;
}

Refusal ChooseView(WindowRef window, bool columnView) {
    if (DialogControl(window, kViewSegmentsID) == nullptr) {
        return "the dialog has no view buttons";
    }
    HeadlessDriver::Click(window, ControlID{kDialogSignature, kViewSegmentsID}, 0,
                          columnView ? 2 : 1);
    return std::nullopt;
}
