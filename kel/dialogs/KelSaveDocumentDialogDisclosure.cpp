// The two forms of the save window. Collapsed, it shows the name, the where popup and the
// buttons; disclosed, the browser too. The window changes size in three drawn steps, and the
// form the user left it in is what the next save dialog opens with.

#include "basalt/nodes/NodeProperties.h"
#include "kel/dialogs/KelSaveDocumentDialog.h"

#include <algorithm>

namespace {

constexpr FourCharCode kReplyFormatRef = NodeCode("bfrf");
constexpr int kSizeSteps = 3;

BGRect ToBGRect(const Rect& rect) {
    return BGRectMake(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
}

TRect ToTRect(const BGRect& rect) {
    return TRect(int16_t(rect.origin.x), int16_t(rect.origin.y),
                 int16_t(rect.origin.x + rect.size.width),
                 int16_t(rect.origin.y + rect.size.height));
}

void SetVisible(ControlRef control, bool visible) {
    if (control == nullptr) {
        return;
    }
    if (visible) {
        ShowControl(control);
    } else {
        HideControl(control);
    }
}

} // namespace

void KelSaveDocumentDialog::ShowWhereRow(bool shown) {
    SetVisible(Control(kBrowseWherePopup), shown);
    SetVisible(Control(kBrowseWherePopupLabel), shown);
}

BGFloat KelSaveDocumentDialog::WhereRowDepth() {
    ControlRef where = Control(kBrowseWherePopup);
    if (where == nullptr) {
        return 0;
    }
    BGRect frame = BGRectZero;
    BTViewGetFrame(where, &frame);
    return frame.size.height + ExtraOf(where);
}

void KelSaveDocumentDialog::MovePaneTop(BGFloat by) {
    ControlRef pane = Control(kBrowsePane);
    if (pane == nullptr) {
        return;
    }
    BGRect frame = BGRectZero;
    BTViewGetFrame(pane, &frame);
    frame.origin.y += by;
    frame.size.height -= by;
    BTViewSetFrame(pane, &frame);
}

// The where row is hidden in the disclosed form: the pane, its toolbar first, takes its place
// rather than leaving it empty. Its bottom stays, so the window sizes of both forms hold.
void KelSaveDocumentDialog::RaisePaneIntoWhereRow(bool raised) {
    if (raised == paneInWhereRow) {
        return;
    }
    paneInWhereRow = raised;
    MovePaneTop(raised ? -WhereRowDepth() : WhereRowDepth());
}

void KelSaveDocumentDialog::SetResizable(bool resizable) {
    WindowAttributes attributes = kWindowResizableAttribute;
    if (client.SelectionType() == kReplyFormatRef) {
        attributes |= kWindowLiveResizeAttribute;
    }
    ChangeWindowAttributes(windowRef, resizable ? attributes : 0, resizable ? 0 : attributes);
}

void KelSaveDocumentDialog::GetWindowDeltaSize(int16_t& width, int16_t& height) {
    ControlRef pane = Control(kBrowsePane);
    Rect browserRect = pane != nullptr ? GetControlContentRelativeRect(pane) : Rect{0, 0, 0, 0};
    if (pane != nullptr) {
        browserRect.top = int16_t(browserRect.top + ExtraOf(pane));
    }
    const Rect custom = client.record.customRect;
    width = RectWidth(collapsedCustomRect) < RectWidth(browserRect)
                ? int16_t(RectWidth(browserRect) - browserPaneWidth)
                : int16_t(RectWidth(collapsedCustomRect) - RectWidth(disclosedCustomRect));
    height = RectHeight(custom) < RectHeight(browserRect)
                 ? int16_t(RectHeight(browserRect) - browserPaneHeight)
                 : int16_t(RectHeight(custom) - RectHeight(disclosedCustomRect));
}

void KelSaveDocumentDialog::SetupWindowSize(TRect& bounds) {
    const Rect stored = prefs.GetDialogSizePref();
    ControlRef pane = Control(kBrowsePane);
    const int16_t paneHeight =
        pane != nullptr ? int16_t(RectHeight(GetControlContentRelativeRect(pane)) - ExtraOf(pane))
                        : 0;
    NegotiateForCustomSpace();
    disclosedCustomRect = client.record.customRect;
    GetBounds(bounds);
    collapsedMinimumWidth = minimumWidth = RectWidth(bounds);
    collapsedMinimumHeight = minimumHeight = int16_t(RectHeight(bounds) - paneHeight);
    const int16_t width = std::max(RectWidth(bounds), RectWidth(stored));
    const int16_t height = std::max(RectHeight(bounds), RectHeight(stored));
    disclosedBounds = TRect(0, 0, width, height);
    if (prefs.GetWindowMinimizedPref()) {
        DisclosableAreaShowHide(false);
        SizeWindow(windowRef, collapsedMinimumWidth, collapsedMinimumHeight, true);
        ShowWhereRow(true);
        simpleMode = true;
        SetResizable(false);
    } else {
        if (disclosureButton != nullptr) {
            SetControlValue(disclosureButton, 1);
        }
        SizeWindow(windowRef, width, height, true);
        ShowWhereRow(false);
        DisclosableAreaShowHide(true);
        RaisePaneIntoWhereRow(true);
        simpleMode = false;
        SetResizable(true);
    }
    GetBounds(bounds);
}

void KelSaveDocumentDialog::ShowBrowserPane() {
    if (disclosureButton != nullptr) {
        SetControlValue(disclosureButton, 1);
    }
    ShowWhereRow(false);
    TKelNode target;
    const bool searching =
        Target(target) == noErr && NodeIsQueryHitsContainer(target.PeekNodeRef());
    SetVisible(Control(kBrowsePathPopup), !searching);
    ToggleWindSize(1);
    DisclosableAreaShowHide(true);
    RaisePaneIntoWhereRow(true);
    simpleMode = false;
    FixButtons();
}

void KelSaveDocumentDialog::HideBrowserPane() {
    if (disclosureButton != nullptr) {
        SetControlValue(disclosureButton, 0);
    }
    GetBounds(disclosedBounds);
    if (nameField != nullptr) {
        nameField->SetFocus(kControlEditTextPart);
    }
    DisclosableAreaShowHide(false);
    RaisePaneIntoWhereRow(false);
    ToggleWindSize(0);
    ShowWhereRow(true);
    simpleMode = true;
    FixButtons();
    collapsedCustomRect = client.record.customRect;
}

void KelSaveDocumentDialog::ToggleWindSize(unsigned char grow) {
    TRect present;
    GetBounds(present);
    if (grow != 0) {
        minimumHeight = int16_t(RectHeight(present) + browserPaneHeight);
        minimumWidth = RectWidth(present);
        DiscloseDialogSize(present, disclosedBounds);
        SetResizable(true);
        return;
    }
    TRect target = present;
    target.right = int16_t(target.left + collapsedMinimumWidth);
    target.bottom = int16_t(target.top + collapsedMinimumHeight);
    MinimizeDialogSize(present, target);
    GetBounds(present);
    minimumWidth = RectWidth(present);
    minimumHeight = RectHeight(present);
    SetResizable(false);
}

void KelSaveDocumentDialog::MinimizeDialogSize(TRect& from, TRect& to) {
    AnimateSize(from, to);
}

// The full size is cut to the main screen, never below the window's minimum.
void KelSaveDocumentDialog::DiscloseDialogSize(TRect& from, TRect& to) {
    BGRect onScreen = ToBGRect(to);
    BTRectConvert(&onScreen, kBTCoordSpaceWindow, windowRef, kBTCoordSpaceScreenPixel, nullptr);
    BGRect screen = BGRectZero;
    BTWindowGetAvailablePositioningBounds(0, &screen);
    const BGFloat screenBottom = screen.origin.y + screen.size.height;
    const BGFloat screenRight = screen.origin.x + screen.size.width;
    if (onScreen.origin.y + onScreen.size.height > screenBottom) {
        onScreen.size.height =
            std::max<BGFloat>(screenBottom - onScreen.origin.y, BGFloat(minimumHeight));
    }
    if (onScreen.origin.x + onScreen.size.width > screenRight) {
        onScreen.size.width =
            std::max<BGFloat>(screenRight - onScreen.origin.x, BGFloat(minimumWidth));
    }
    BTRectConvert(&onScreen, kBTCoordSpaceScreenPixel, nullptr, kBTCoordSpaceWindow, windowRef);
    to = ToTRect(onScreen);
    AnimateSize(from, to);
}

// Each step is a third of the way, by integer division: the last lands within two points of
// the goal, which is near enough.
void KelSaveDocumentDialog::AnimateSize(const TRect& from, const TRect& to) {
    const int16_t stepWidth = int16_t((RectWidth(to) - RectWidth(from)) / kSizeSteps);
    const int16_t stepHeight = int16_t((RectHeight(to) - RectHeight(from)) / kSizeSteps);
    int16_t width = RectWidth(from);
    int16_t height = RectHeight(from);
    for (int step = 0; step < kSizeSteps; ++step) {
        width = int16_t(width + stepWidth);
        height = int16_t(height + stepHeight);
        SizeWindow(windowRef, width, height, false);
        BTViewRender(rootControl);
    }
}
