// The C calls on windows: making and disposing, showing, placing, titles and properties, and
// the display they are on.

#include "basalt/toolbox/views/UnicodeText.h"
#include "basalt/toolbox/windows/WindowList.h"

#include <algorithm>

using namespace basalt::toolbox;

namespace {

using windows::Live;

Rect Centered(const Rect& within, int16_t width, int16_t height, double verticalShare) {
    int16_t left = int16_t(within.left + (within.right - within.left - width) / 2);
    int16_t top = int16_t(within.top + (within.bottom - within.top - height) * verticalShare);
    return {top, left, int16_t(top + height), int16_t(left + width)};
}

} // namespace

extern "C" {

StatusCode CreateNewWindow(WindowClass windowClass, WindowAttributes attributes,
                           const Rect* contentBounds, WindowRef* outWindow) {
    if (contentBounds == nullptr || outWindow == nullptr ||
        contentBounds->right < contentBounds->left || contentBounds->bottom < contentBounds->top)
        return paramErr;
    auto window = std::make_shared<Window>(windowClass, attributes, *contentBounds);
    window->Root().AttachToWindow(window.get());
    window->EnsureSurface();
    windows::Add(window);
    *outWindow = window->Ref();
    return noErr;
}

void DisposeWindow(WindowRef window) {
    if (Window* live = Live(window))
        live->Dispose();
}

Boolean IsValidWindowPtr(WindowRef window) {
    return Live(window) != nullptr;
}

EventTargetRef GetWindowEventTarget(WindowRef window) {
    Window* live = Live(window);
    return live != nullptr ? live->Target() : nullptr;
}

void ShowWindow(WindowRef window) {
    if (Window* live = Live(window)) {
        live->SetVisible(true);
        windows::BringToFront(live);
    }
}

void HideWindow(WindowRef window) {
    if (Window* live = Live(window))
        live->SetVisible(false);
}

Boolean IsWindowVisible(WindowRef window) {
    Window* live = Live(window);
    return live != nullptr && live->IsVisible();
}

void SelectWindow(WindowRef window) {
    if (Window* live = Live(window))
        windows::BringToFront(live);
}

void BringToFront(WindowRef window) {
    SelectWindow(window);
}

WindowRef FrontWindow(void) {
    Window* front = windows::FrontVisible();
    return front != nullptr ? front->Ref() : nullptr;
}

WindowRef FrontNonFloatingWindow(void) {
    for (const auto& window : windows::All())
        if (window->IsVisible() && window->windowClass != kFloatingWindowClass &&
            window->windowClass != kSheetWindowClass)
            return window->Ref();
    return nullptr;
}

WindowRef GetUserFocusWindow(void) {
    Window* focus = windows::UserFocus();
    return focus != nullptr ? focus->Ref() : nullptr;
}

Boolean IsWindowActive(WindowRef window) {
    Window* live = Live(window);
    return live != nullptr && live->IsActive();
}

Boolean IsWindowHilited(WindowRef window) {
    return IsWindowActive(window);
}

StatusCode GetWindowClass(WindowRef window, WindowClass* outClass) {
    Window* live = Live(window);
    if (live == nullptr || outClass == nullptr)
        return errInvalidWindowRef;
    *outClass = live->windowClass;
    return noErr;
}

StatusCode SetWindowClass(WindowRef window, WindowClass windowClass) {
    Window* live = Live(window);
    if (live == nullptr)
        return errInvalidWindowRef;
    live->windowClass = windowClass;
    return noErr;
}

StatusCode GetWindowAttributes(WindowRef window, WindowAttributes* outAttributes) {
    Window* live = Live(window);
    if (live == nullptr || outAttributes == nullptr)
        return errInvalidWindowRef;
    *outAttributes = live->attributes;
    return noErr;
}

StatusCode ChangeWindowAttributes(WindowRef window, WindowAttributes setThese,
                                  WindowAttributes clearThese) {
    Window* live = Live(window);
    if (live == nullptr)
        return errInvalidWindowRef;
    live->attributes = (live->attributes | setThese) & ~clearThese;
    return noErr;
}

StatusCode GetWindowBounds(WindowRef window, WindowRegionCode regionCode, Rect* globalBounds) {
    Window* live = Live(window);
    if (live == nullptr || globalBounds == nullptr)
        return errInvalidWindowRef;
    *globalBounds =
        regionCode == kWindowStructureRgn ? live->StructureBounds() : live->ContentBounds();
    return noErr;
}

StatusCode SetWindowBounds(WindowRef window, WindowRegionCode regionCode, const Rect* bounds) {
    Window* live = Live(window);
    if (live == nullptr || bounds == nullptr)
        return errInvalidWindowRef;
    Rect content = *bounds;
    if (regionCode == kWindowStructureRgn && live->HasTitleBar())
        content.top = int16_t(content.top + kBTWindowTitleBarHeight);
    live->SetContentBounds(content);
    return noErr;
}

StatusCode GetWindowRegion(WindowRef window, WindowRegionCode inRegionCode, RgnHandle ioWinRgn) {
    Window* live = Live(window);
    if (live == nullptr || ioWinRgn == nullptr)
        return errInvalidWindowRef;
    Rect structure = live->StructureBounds();
    Rect content = live->ContentBounds();
    switch (inRegionCode) {
    case kWindowStructureRgn:
        RectRgn(ioWinRgn, &structure);
        return noErr;
    case kWindowContentRgn:
    case kWindowGlobalPortRgn:
        RectRgn(ioWinRgn, &content);
        return noErr;
    case kWindowTitleBarRgn:
    case kWindowTitleTextRgn: {
        Rect title = {structure.top, structure.left, content.top, structure.right};
        if (!live->HasTitleBar())
            title.bottom = title.top;
        RectRgn(ioWinRgn, &title);
        return noErr;
    }
    default:
        SetEmptyRgn(ioWinRgn);
        return noErr;
    }
}

void SizeWindow(WindowRef window, int16_t width, int16_t height, Boolean) {
    Window* live = Live(window);
    if (live == nullptr || width < 0 || height < 0)
        return;
    Rect bounds = live->ContentBounds();
    bounds.right = int16_t(bounds.left + width);
    bounds.bottom = int16_t(bounds.top + height);
    live->SetContentBounds(bounds);
}

void MoveWindow(WindowRef window, int16_t hGlobal, int16_t vGlobal, Boolean front) {
    Window* live = Live(window);
    if (live == nullptr)
        return;
    Rect bounds = live->ContentBounds();
    OffsetRect(&bounds, int16_t(hGlobal - bounds.left), int16_t(vGlobal - bounds.top));
    live->SetContentBounds(bounds);
    if (front)
        windows::BringToFront(live);
}

StatusCode RepositionWindow(WindowRef window, WindowRef parentWindow, uint32_t method) {
    Window* live = Live(window);
    if (live == nullptr)
        return errInvalidWindowRef;
    Window* parent = Live(parentWindow);
    Rect within = CurrentBackend().AvailableBounds();
    bool onParent =
        method == kWindowCenterOnParentWindow || method == kWindowAlertPositionOnParentWindow;
    if (onParent && parent != nullptr)
        within = parent->ContentBounds();
    const Rect& content = live->ContentBounds();
    bool alert =
        method == kWindowAlertPositionOnMainScreen || method == kWindowAlertPositionOnParentWindow;
    Rect placed = Centered(within, int16_t(content.right - content.left),
                           int16_t(content.bottom - content.top), alert ? 1.0 / 3 : 0.5);
    if (live->HasTitleBar() && !onParent)
        placed.top = std::max<int16_t>(placed.top, int16_t(within.top + kBTWindowTitleBarHeight));
    MoveWindow(window, placed.left, placed.top, false);
    return noErr;
}

StatusCode AutoPositionWindow(WindowRef window, uint32_t method, Boolean useWindow, Boolean) {
    return RepositionWindow(window, useWindow ? GetUserFocusWindow() : nullptr,
                            method == kWindowCenterOnParentWindow ? kWindowCenterOnParentWindow
                                                                  : kWindowCenterOnMainScreen);
}

StatusCode ZoomWindowIdeal(WindowRef inWindow, int16_t inPartCode, Point* ioIdealSize) {
    Window* live = Live(inWindow);
    if (live == nullptr)
        return errInvalidWindowRef;
    if (inPartCode == inZoomIn) {
        if (live->unzoomedBounds)
            live->SetContentBounds(*live->unzoomedBounds);
        live->unzoomedBounds.reset();
        return noErr;
    }
    if (inPartCode != inZoomOut)
        return paramErr;
    Point ideal = ioIdealSize != nullptr ? *ioIdealSize : Point{0, 0};
    if (ideal.h <= 0 || ideal.v <= 0) {
        EventHolder ask(kEventClassWindow, kEventWindowGetIdealSize);
        SetParam(ask.get(), kEventParamDirectObject, typeWindowRef, inWindow);
        if (SendEventToEventTargetWithOptions(ask.get(), live->Target(),
                                              kEventTargetDontPropagate) != noErr ||
            !GetParam(ask.get(), kEventParamDimensions, typeQDPoint, &ideal))
            return eventNotHandledErr;
    }
    Rect display = CurrentBackend().DisplayBounds();
    Rect bounds = live->ContentBounds();
    if (!live->unzoomedBounds)
        live->unzoomedBounds = bounds;
    ideal.h = std::min<int16_t>(ideal.h, int16_t(display.right - display.left));
    ideal.v =
        std::min<int16_t>(ideal.v, int16_t(display.bottom - display.top -
                                           (live->HasTitleBar() ? kBTWindowTitleBarHeight : 0)));
    bounds.right = int16_t(bounds.left + ideal.h);
    bounds.bottom = int16_t(bounds.top + ideal.v);
    // Slide the window back onto the display if the new size pushes it off.
    int16_t dh = std::min<int16_t>(0, int16_t(display.right - bounds.right));
    int16_t dv = std::min<int16_t>(0, int16_t(display.bottom - bounds.bottom));
    OffsetRect(&bounds, dh, dv);
    live->SetContentBounds(bounds);
    if (ioIdealSize != nullptr)
        *ioIdealSize = ideal;
    return noErr;
}

StatusCode SetWindowTitleWithBCString(WindowRef window, BCStringRef title) {
    Window* live = Live(window);
    if (live == nullptr)
        return errInvalidWindowRef;
    live->title = FromBCString(title);
    if (live->Surface() != nullptr)
        live->Surface()->SetTitle(ToUTF8(live->title));
    return noErr;
}

StatusCode CopyWindowTitleAsBCString(WindowRef window, BCStringRef* outTitle) {
    Window* live = Live(window);
    if (live == nullptr || outTitle == nullptr)
        return errInvalidWindowRef;
    *outTitle = MakeBCString(live->title);
    return noErr;
}

void SetWRefCon(WindowRef window, long data) {
    if (Window* live = Live(window))
        live->refCon = data;
}

long GetWRefCon(WindowRef window) {
    Window* live = Live(window);
    return live != nullptr ? live->refCon : 0;
}

StatusCode SetWindowProperty(WindowRef window, PropertyCreator creator, PropertyTag tag,
                             size_t size, const void* buffer) {
    Window* live = Live(window);
    if (live == nullptr)
        return errInvalidWindowRef;
    if (buffer == nullptr && size != 0)
        return paramErr;
    auto* bytes = static_cast<const uint8_t*>(buffer);
    live->properties[{creator, tag}].assign(bytes, bytes + size);
    return noErr;
}

StatusCode GetWindowProperty(WindowRef window, PropertyCreator creator, PropertyTag tag,
                             size_t bufferSize, size_t* actualSize, void* buffer) {
    Window* live = Live(window);
    if (live == nullptr)
        return errInvalidWindowRef;
    auto it = live->properties.find({creator, tag});
    if (it == live->properties.end())
        return errDataNotSupported;
    if (actualSize != nullptr)
        *actualSize = it->second.size();
    if (buffer != nullptr)
        std::copy_n(it->second.begin(), std::min(bufferSize, it->second.size()),
                    static_cast<uint8_t*>(buffer));
    return noErr;
}

StatusCode RemoveWindowProperty(WindowRef window, PropertyCreator creator, PropertyTag tag) {
    Window* live = Live(window);
    if (live == nullptr)
        return errInvalidWindowRef;
    return live->properties.erase({creator, tag}) != 0 ? StatusCode(noErr)
                                                       : StatusCode(errDataNotSupported);
}

StatusCode BTWindowFlush(WindowRef window) {
    Window* live = Live(window);
    if (live == nullptr)
        return errInvalidWindowRef;
    live->Flush();
    return noErr;
}

Boolean BTViewIsCompositingEnabled(WindowRef window) {
    return Live(window) != nullptr;
}

// Windows have no grow box of their own: resizing is the window manager's frame.
StatusCode BTGrowBoxViewSetTransparent(BTViewRef, Boolean) {
    return noErr;
}

StatusCode BTWindowGetGreatestAreaDisplay(WindowRef window, uint32_t, Rect* outDisplayBounds) {
    Window* live = Live(window);
    if (live == nullptr || outDisplayBounds == nullptr)
        return errInvalidWindowRef;
    *outDisplayBounds = CurrentBackend().GreatestAreaDisplay(live->ContentBounds());
    return noErr;
}

StatusCode BTWindowGetAvailablePositioningBounds(uint32_t, BGRect* outAvailableRect) {
    if (outAvailableRect == nullptr)
        return paramErr;
    Rect available = CurrentBackend().AvailableBounds();
    *outAvailableRect = BGRectFromRect(&available);
    return noErr;
}

RgnHandle GetGrayRgn(void) {
    static RgnHandle gray = NewRgn();
    Rect display = CurrentBackend().DisplayBounds();
    RectRgn(gray, &display);
    return gray;
}

int16_t GetMBarHeight(void) {
    return CurrentBackend().MenuBarHeight();
}

} // extern "C"
