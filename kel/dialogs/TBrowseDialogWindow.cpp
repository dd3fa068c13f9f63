// The browse window's size and place: the minimum, the size and place remembered for the
// client, and the rule that a window is never left off every screen.

#include "kel/dialogs/TBrowseDialog.h"

#include <algorithm>

namespace {

constexpr int16_t kCornerSquare = 20;

bool RectOnAnyScreen(const Rect& rect) {
    return RectInRgn(&rect, GetGrayRgn());
}

// The whole main display, menu bar included.
Rect MainScreen() {
    BGRect usable = BGRectZero;
    BTWindowGetAvailablePositioningBounds(0, &usable);
    return Rect{int16_t(usable.origin.y - GetMBarHeight()), int16_t(usable.origin.x),
                int16_t(usable.origin.y + usable.size.height),
                int16_t(usable.origin.x + usable.size.width)};
}

bool Intersect(const Rect& a, const Rect& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

} // namespace

void TBrowseDialog::SetupWindowSize(TRect& bounds) {
    minimumWidth = 518;
    minimumHeight = 378;
    NegotiateForCustomSpace();
    GetBounds(bounds);
    const Rect stored = prefs.GetDialogSizePref();
    const int16_t width = int16_t(stored.right - stored.left);
    const int16_t height = int16_t(stored.bottom - stored.top);
    if (width < 1 || height < 1 || width < bounds.right - bounds.left ||
        height < bounds.bottom - bounds.top) {
        return;
    }
    SizeWindow(windowRef, width, height, true);
    GetBounds(bounds);
}

void TBrowseDialog::PositionDialog() {
    if (location.h != -1 || location.v != -1) {
        MoveWindow(windowRef, location.h, location.v, false);
        return;
    }
    const Point stored = prefs.GetDialogLocationPref();
    if (modality < kKelModalitySheet && stored.v > GetMBarHeight()) {
        MoveWindow(windowRef, stored.h, stored.v, false);
        return;
    }
    RepositionWindow(windowRef, nullptr, kWindowCenterOnMainScreen);
}

void TBrowseDialog::MonitorAdjustDialog() {
    const Rect screen = MainScreen();
    Rect structure{0, 0, 0, 0};
    GetWindowBounds(windowRef, kWindowStructureRgn, &structure);
    const bool fits = screen.bottom - GetMBarHeight() >= structure.bottom - structure.top &&
                      structure.right - structure.left <= screen.right;
    if (modality == kKelModalitySheet) {
        if (!fits) {
            ShrinkToMainScreen(structure, screen);
        }
        return;
    }
    RgnHandle titleRegion = NewRgn();
    GetWindowRegion(windowRef, kWindowTitleBarRgn, titleRegion);
    Rect title{0, 0, 0, 0};
    GetRegionBounds(titleRegion, &title);
    DisposeRgn(titleRegion);
    const Rect leftSquare{title.top, title.left, int16_t(title.top + kCornerSquare),
                          int16_t(title.left + kCornerSquare)};
    const Rect rightSquare{title.top, int16_t(title.right - kCornerSquare),
                           int16_t(title.top + kCornerSquare), title.right};
    if (!RectOnAnyScreen(leftSquare) && !RectOnAnyScreen(rightSquare)) {
        if (fits) {
            RepositionWindow(windowRef, nullptr, kWindowCenterOnMainScreen);
        } else {
            ShrinkToMainScreen(structure, screen);
        }
        return;
    }
    if (!Intersect(structure, screen) || fits) {
        return;
    }
    ShrinkToMainScreen(structure, screen);
}

void TBrowseDialog::ShrinkToMainScreen(const Rect& structure, const Rect& screen) {
    Rect content{0, 0, 0, 0};
    GetWindowBounds(windowRef, kWindowContentRgn, &content);
    const int16_t frameHeight =
        int16_t((structure.bottom - structure.top) - (content.bottom - content.top));
    const int16_t frameWidth =
        int16_t((structure.right - structure.left) - (content.right - content.left));
    const int16_t height = std::min<int16_t>(int16_t(structure.bottom - structure.top),
                                             int16_t(screen.bottom - GetMBarHeight()));
    const int16_t width =
        std::min<int16_t>(int16_t(structure.right - structure.left), screen.right);
    SizeWindow(windowRef, int16_t(width - frameWidth), int16_t(height - frameHeight), true);
    RepositionWindow(windowRef, nullptr, kWindowCenterOnMainScreen);
}

void TBrowseDialog::MyDisplayNotifyProc(BGDirectDisplayID, BGDisplayChangeSummaryFlags flags,
                                        void* data) {
    if (flags != kBGDisplayBeginConfigurationFlag) {
        static_cast<TBrowseDialog*>(data)->MonitorAdjustDialog();
    }
}
