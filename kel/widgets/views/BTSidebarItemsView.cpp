// The items view's class, its scroll protocol and its geometry: how tall rows and icons are for
// the room there is, where each row and its parts lie, and how wide the sidebar should be.

#include "kel/widgets/views/BTSidebarItemsView.h"

#include "kel/widgets/BTSidebar.h"
#include "kel/widgets/SidebarEvents.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

constexpr int kSmallestRow = 18;
constexpr int kLargestRow = 34;
constexpr float kMargin = 3;            // above the first row and below the last
constexpr float kSectionGap = 12;       // between the sections, when the second has rows
constexpr float kEjectTextWidth = 19.0; // what an eject button adds to a row's text

} // namespace

BCStringRef BTSidebarItemsView::ClassID() {
    return BCSTR("com.velmo.BTSidebarItemsView");
}

StatusCode BTSidebarItemsView::Create(BTSidebar* sidebar, ControlRef* out) {
    if (sidebar == nullptr || out == nullptr)
        return paramErr;
    RegisterViewClassOnce<BTSidebarItemsView>();
    EventRef initialize = CreateInitializationEvent();
    if (initialize == nullptr)
        return eventInternalErr;
    SetEventParameter(initialize, kEventParamSidebar, typeSidebar, sizeof sidebar, &sidebar);
    BTObjectRef object = nullptr;
    StatusCode status = BTObjectCreate(ClassID(), initialize, &object);
    ReleaseEvent(initialize);
    if (status == noErr)
        *out = reinterpret_cast<ControlRef>(object);
    return status;
}

BTSidebarItemsView::BTSidebarItemsView(ControlRef control) : TView(control) {
    ChangeAutoInvalidateFlags(kInvalidateOnActivate | kInvalidateOnHilite | kInvalidateOnEnable, 0);
}

BTSidebarItemsView::~BTSidebarItemsView() {
    if (clientRootTimer != nullptr)
        RemoveEventLoopTimer(clientRootTimer);
    if (scrollHandler != nullptr)
        RemoveEventHandler(scrollHandler);
}

uint64_t BTSidebarItemsView::GetKind() {
    return ViewKind("velm", "SdIt");
}

StatusCode BTSidebarItemsView::Initialize(TBasaltEvent& event) {
    if (StatusCode status =
            event.GetParameter(kEventParamSidebar, typeSidebar, sizeof sidebar, &sidebar))
        return status;
    static const EventTypeSpec kScrollEvents[] = {
        {kEventClassScrollable, kEventScrollableGetInfo},
        {kEventClassScrollable, kEventScrollableScrollTo}};
    if (StatusCode status =
            InstallEventHandler(GetEventTarget(), ScrollEventHandler, std::size(kScrollEvents),
                                kScrollEvents, this, &scrollHandler))
        return status;
    ActivateInterface(kKeyboardFocusInterface);
    return ActivateInterface(kTrackingAreaInterface);
}

StatusCode BTSidebarItemsView::ScrollEventHandler(EventHandlerCallRef, EventRef ref, void* data) {
    TBasaltEvent event(ref);
    return static_cast<BTSidebarItemsView*>(data)->ScrollEvent(event);
}

StatusCode BTSidebarItemsView::ScrollEvent(TBasaltEvent& event) {
    BGRect bounds = Bounds();
    if (event.Kind() == kEventScrollableGetInfo) {
        int count = sidebar->CountItems();
        float gap = sidebar->HasBottomItems() ? kSectionGap : 0;
        float content = float(iconSize + 2) * count + gap + 2 * kMargin;
        event.SetParameter(kEventParamViewSize, bounds.size);
        event.SetParameter(kEventParamOrigin, bounds.origin);
        event.SetParameter(kEventParamLineSize, BGSize{bounds.size.width, rowHeight});
        event.SetParameter(
            kEventParamImageSize,
            BGSize{bounds.size.width, std::max<BGFloat>(content, bounds.size.height)});
        return noErr;
    }
    if (event.Kind() == kEventScrollableScrollTo) {
        BGPoint origin{};
        if (StatusCode status = event.GetParameter(kEventParamOrigin, &origin))
            return status;
        // The toolbox redraws a moved view whole, so the bits need not be moved first.
        BTViewSetBoundsOrigin(GetViewRef(), origin.x, origin.y);
        Invalidate();
        return noErr;
    }
    return eventNotHandledErr;
}

void BTSidebarItemsView::ScrollingInfoChanged() {
    ControlRef parent = BTViewGetSuperview(GetViewRef());
    if (parent == nullptr)
        return;
    TBasaltEvent changed(kEventClassScrollable, kEventScrollableInfoChanged);
    if (changed.Get() != nullptr)
        SendEventToEventTargetWithOptions(changed.Get(), GetControlEventTarget(parent),
                                          kEventTargetDontPropagate);
}

void BTSidebarItemsView::BoundsChanged(unsigned long, const BGRect&, const BGRect& current) {
    CalculateRowAndIconHeight(current);
    ScrollingInfoChanged();
    RebuildTrackingAreas();
}

// The largest rows (and icons two pixels less) that let every row show; the smallest ones and a
// scroll bar when not even those fit.
void BTSidebarItemsView::CalculateRowAndIconHeight(const BGRect& frame) {
    int count = sidebar->CountItems();
    float gap = sidebar->HasBottomItems() ? kSectionGap : 0;
    float height = float(frame.size.height) - 2 * kMargin;
    if (kSmallestRow * count + gap + 2 * kMargin > height) {
        iconSize = kSmallestRow - 2;
    } else {
        for (int row = kLargestRow; row >= kSmallestRow; --row) {
            if (row * count + gap + 2 * kMargin <= height) {
                iconSize = row - 2;
                break;
            }
        }
    }
    rowHeight = count == 0 ? float(kLargestRow)
                           : std::clamp((height - gap) / float(count), float(kSmallestRow),
                                        float(kLargestRow));
}

StatusCode BTSidebarItemsView::GetSizeConstraints(BGSize* minimum, BGSize* maximum) {
    int count = sidebar->CountItems();
    float gap = sidebar->HasBottomItems() ? kSectionGap : 0;
    BGFloat width = Bounds().size.width;
    *minimum = {width, kSmallestRow * count + gap + 2 * kMargin};
    *maximum = {width, float(iconSize + 2) * count + gap + 2 * kMargin};
    return noErr;
}

void BTSidebarItemsView::GetItemBounds(int row, BGRect* out) {
    float y = (row - 1) * rowHeight + kMargin;
    if (row > sidebar->CountTopItems())
        y += kSectionGap;
    *out = BGRectMake(0, y, Bounds().size.width, rowHeight);
}

void BTSidebarItemsView::GetItemTextBounds(const SidebarItem* item, const BGRect& rowRect,
                                           BGRect* out) const {
    bool eject = item->IsEjectable();
    BGFloat x = rowRect.origin.x + iconSize + 9;
    BGFloat width = BGRectGetMaxX(rowRect) - x - (eject ? 24 : 0);
    if (width < (eject ? 32 : 3))
        width = 0;
    else if (width < 32)
        width = 32;
    *out = BGRectMake(x, std::trunc(rowRect.origin.y) - 1, width, iconSize + 2);
}

void BTSidebarItemsView::GetItemButtonBounds(const SidebarItem*, const BGRect& rowRect,
                                             BGRect* out) const {
    BGFloat right = BGRectGetMaxX(rowRect);
    BGFloat x = right - (iconSize + 9) >= 32 ? right - 21 : iconSize + 8;
    BGFloat y = std::trunc(rowRect.origin.y) + (iconSize - 16) / 2;
    *out = BGRectMake(x, y, x + 18 > right ? 0 : 18, 18);
}

int BTSidebarItemsView::FindItemHit(const BGPoint& point) {
    int count = sidebar->CountItems();
    for (int row = 1; row <= count; ++row) {
        BGRect rect{};
        GetItemBounds(row, &rect);
        if (BGRectContainsPoint(rect, point))
            return row;
    }
    return 0;
}

short BTSidebarItemsView::HitTest(const BGPoint& point) {
    return FindItemHit(point) != 0 ? 1 : 0;
}

// Measured once: later changes of the rows leave the width the user settled on alone.
float BTSidebarItemsView::GetOptimalWidth() {
    if (!widestTextValid) {
        BTThemeTextInfo info = {0, kBTThemeStateActive, kBTThemeFontViews, 0, 0, 0, 0, 1, false};
        int count = sidebar->CountItems();
        int top = sidebar->CountTopItems();
        for (int index = 0; index < count; ++index) {
            const SidebarItem* item = sidebar->GetItem(index);
            BGFloat width = 0;
            if (!item->name.IsNil())
                BTThemeGetTextDimensions(item->name.AsBCStringRef(), 0, &info, &width, nullptr,
                                         nullptr);
            if (index < top && item->IsEjectable())
                width += kEjectTextWidth;
            widestText = std::max(widestText, float(width));
        }
        widestTextValid = true;
    }
    return float(iconSize + 9) + widestText + 5.0f;
}

// Snaps a dragged width: closed, just the icons, or the width that shows every name.
void BTSidebarItemsView::ConstrainFrame(BGRect* frame) {
    float iconsOnly = float(iconSize + 10);
    float optimal = GetOptimalWidth();
    auto width = float(frame->size.width);
    if (width < iconsOnly)
        width = width < 0.5f * iconsOnly ? 0 : iconsOnly;
    else if (width <= iconsOnly + 7)
        width = iconsOnly;
    else if (width > optimal && width <= optimal + 15)
        width = optimal;
    frame->size.width = width;
}

// The toolbox redraws a view whole, so the rows' own rectangles need no region of their own.
void BTSidebarItemsView::InvalidateItems(int first, int second) {
    if (first != 0 || second != 0)
        Invalidate();
}

void BTSidebarItemsView::ContentsChanged(int row) {
    if (row != 0) {
        InvalidateItems(row, 0);
        return;
    }
    selectedRow = 0;
    trackingRow = 0;
    CalculateRowAndIconHeight(Frame());
    ScrollingInfoChanged();
    Invalidate();
}

void BTSidebarItemsView::MakeItemVisible(int row) {
    BGRect rect{};
    GetItemBounds(row, &rect);
    if (row == 1)
        rect.origin.y = 0;
    if (row == 1 || row == sidebar->CountItems())
        rect.size.height += kMargin;
    BGRect bounds = Bounds();
    BGFloat y = bounds.origin.y;
    if (bounds.origin.y > rect.origin.y)
        y = rect.origin.y;
    else if (BGRectGetMaxY(rect) > BGRectGetMaxY(bounds))
        y = BGRectGetMaxY(rect) - bounds.size.height;
    y = std::round(y);
    if (y == bounds.origin.y)
        return;
    TBasaltEvent scroll(kEventClassScrollable, kEventScrollableScrollTo);
    if (scroll.Get() == nullptr)
        return;
    scroll.SetParameter(kEventParamOrigin, BGPoint{0, y});
    SendEventToEventTargetWithOptions(scroll.Get(), GetEventTarget(), kEventTargetDontPropagate);
    ScrollingInfoChanged();
}
