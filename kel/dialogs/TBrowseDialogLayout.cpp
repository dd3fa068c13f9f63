// The controls of a browse window: which ones the dialog keeps, their texts and images, the
// binding of each to its neighbours, the dismiss buttons' widths, the bottom group and the
// splitter between sidebar and browser.

#include "kel/dialogs/TBrowseDialog.h"
#include "kel/foundation/KelBundle.h"
#include "kel/widgets/BTSidebar.h"
#include "kel/widgets/SidebarEvents.h"

#include <algorithm>
#include <map>
#include <string>

namespace {

constexpr BGFloat kScopeButtonGap = 6.0;
constexpr BGFloat kFirstScopeButtonX = 8.0;
constexpr int16_t kButtonGap = 12;
constexpr BGFloat kMinimumBrowserWidth = 120.0;

// Gives a view its optimal size, keeping its origin, and places it at x.
void SizeToFitAt(ControlRef view, BGFloat x) {
    BGRect best = BGRectZero;
    BTViewGetOptimalBounds(view, &best, nullptr);
    BGRect frame = FrameOf(view);
    frame.origin.x = x;
    frame.size.width = best.size.width;
    BTViewSetFrame(view, &frame);
}

void SetSegmentImage(ControlRef view, int16_t segment, BCStringRef name) {
    BGImageRef image = KelBundle::GetImageFromPNG(name);
    if (image == nullptr) {
        return;
    }
    SetControlData(view, segment, kControlImageViewImageTag, sizeof image, &image);
    BGImageRelease(image);
}

} // namespace

// The bundle's text of a key, read once for the process as bundle texts are meant to be.
const TStringRef& BundleText(const char* key) {
    static auto* texts = new std::map<std::string, TStringRef>;
    auto found = texts->find(key);
    if (found == texts->end()) {
        found = texts
                    ->emplace(key, KelBundle::GetStringResource(
                                       TStringRef::Create(key, kBCStringEncodingUTF8)))
                    .first;
    }
    return found->second;
}

int32_t TBrowseDialog::ExtraOf(ControlRef view) {
    int32_t extra = 0;
    GetControlProperty(view, kKelControlSignature, NodeCode("extr"), sizeof extra, nullptr, &extra);
    return extra;
}

// The layout file holds a plain pane where the browser goes: the GridBrowser takes its place,
// frame, bindings and id.
ControlRef TBrowseDialog::MakeBrowserView() {
    ControlRef placeholder = Control(kBrowseBrowser);
    if (placeholder == nullptr) {
        return nullptr;
    }
    const Rect frame = GetControlContentRelativeRect(placeholder);
    ControlRef grid = nullptr;
    if (CreateGridBrowserControl(windowRef, &frame, kGridBrowserColumnView, &grid) != noErr) {
        return nullptr;
    }
    BTLayoutInfo layout{};
    BTViewGetLayoutInfo(placeholder, &layout);
    BTViewAddSubview(BTViewGetSuperview(placeholder), grid);
    SetControlContentRelativeRect(grid, frame);
    BTViewSetLayoutInfo(grid, &layout);
    DisposeControl(placeholder);
    const ControlID id{kKelControlSignature, kBrowseBrowser};
    SetControlID(grid, &id);
    return grid;
}

void TBrowseDialog::CacheControlRefs() {
    KelBaseDialog::CacheControlRefs();
    SetupCountText();
    searchField = Control(kBrowseSearchField);
    if (searchField != nullptr) {
        BTSearchFieldChangeAttributes(searchField, kBTSearchFieldAttributesSearchIcon, 0);
    }
    sidebar = Control(kBrowseSidebar);
    if (sidebar != nullptr) {
        _BTSidebarSetFilter(sidebar, &filter);
    }
    scopeBar = Control(kBrowseScopeBar);
    browserView = MakeBrowserView();
    if (browserView != nullptr && scopeBar != nullptr) {
        BTViewSetZOrder(browserView, 1, scopeBar);
    }
    SetupScopeButtons();
    SetupSegmentImages();
}

void TBrowseDialog::SetupCountText() {
    countText = Control(kBrowseCountText);
    if (countText == nullptr) {
        return;
    }
    const Boolean single = true;
    SetControlData(countText, 0, NodeCode("stim"), sizeof single, &single);
    // The count keeps the width of four digits, so that it doesn't jitter as hits come in.
    countTextMinWidth = float(ShowItemCount(9999));
}

void TBrowseDialog::SetupScopeButtons() {
    ControlRef everywhere = Control(kBrowseScopeEverywhere);
    ControlRef home = Control(kBrowseScopeHome);
    ControlRef folder = Control(kBrowseScopeFolder);
    if (everywhere == nullptr || home == nullptr || folder == nullptr) {
        return;
    }
    BTViewSetText(everywhere, BundleText("EverywhereScopeString").AsBCStringRef());
    SizeToFitAt(everywhere, kFirstScopeButtonX);
    BTViewSetValue(everywhere, 1);
    BTViewSetText(home, BundleText("HomeScopeString").AsBCStringRef());
    SizeToFitAt(home, BGRectGetMaxX(FrameOf(everywhere)) + kScopeButtonGap);
    SizeToFitAt(folder, BGRectGetMaxX(FrameOf(home)) + kScopeButtonGap);
}

void TBrowseDialog::SetupSegmentImages() {
    if (ControlRef history = Control(kBrowseBackForward)) {
        SetSegmentImage(history, 1, BCSTR("_internal_left.png"));
        SetSegmentImage(history, 2, BCSTR("_internal_right.png"));
    }
    if (ControlRef view = Control(kBrowseViewStyle)) {
        SetSegmentImage(view, 1, BCSTR("_internal_list.png"));
        SetSegmentImage(view, 2, BCSTR("_internal_column.png"));
    }
}

void TBrowseDialog::SetSegmentEnabled(int16_t segment, bool enabled) {
    ControlRef history = Control(kBrowseBackForward);
    Boolean current = false;
    GetControlData(history, segment, kControlSegmentEnabledTag, sizeof current, &current, nullptr);
    if (bool(current) != enabled) {
        const Boolean value = enabled;
        SetControlData(history, segment, kControlSegmentEnabledTag, sizeof value, &value);
    }
}

void TBrowseDialog::AdjustViewPositionBySizeAndExtra(ControlRef view, long direction) {
    const BGRect frame = FrameOf(view);
    const BGFloat extra = ExtraOf(view);
    switch (direction) {
    case kShiftUp:
        BTViewMoveBy(view, 0, -(frame.size.height + extra));
        break;
    case kShiftDown:
        BTViewMoveBy(view, 0, frame.size.height + extra);
        break;
    case kShiftLeft:
        BTViewMoveBy(view, -(frame.size.width + extra), 0);
        break;
    case kShiftRight:
        BTViewMoveBy(view, frame.size.width + extra, 0);
        break;
    default:
        break;
    }
}

// The last widget takes the group with it: the group folds to nothing below its old bottom, so
// that what ends at its top keeps its size as the window shrinks by the group's height.
void TBrowseDialog::RemoveWidgetFromBottomGroup(ControlRef widget) {
    ControlRef group = Control(kBrowseBottomGroup);
    if (group == nullptr) {
        return;
    }
    TRect bounds;
    GetBounds(bounds);
    BGRect frame = FrameOf(group);
    if (bottomGroupCount-- == 1) {
        HideControl(group);
        const BGFloat gone = frame.size.height + ExtraOf(group);
        const BGRect folded =
            BGRectMake(frame.origin.x, frame.origin.y + gone, frame.size.width, 0);
        BTViewSuspendLayout(group);
        BTViewSetFrame(group, &folded);
        BTViewResumeLayout(group);
        SizeWindow(windowRef, RectWidth(bounds), int16_t(RectHeight(bounds) - gone), true);
        return;
    }
    const BGFloat d = FrameOf(widget).size.height + ExtraOf(widget);
    BTViewSuspendLayout(group);
    frame.origin.y += d;
    frame.size.height -= d;
    BTViewSetFrame(group, &frame);
    if (ControlRef area = Control(kBrowseCustomArea); area != nullptr && area != widget) {
        BTViewMoveBy(area, 0, -d);
    }
    BTViewResumeLayout(group);
    SizeWindow(windowRef, RectWidth(bounds), int16_t(RectHeight(bounds) - d), true);
}

void TBrowseDialog::SetupDismissButtons() {
    SetDefaultButtonTitle();
    if (cancelControl != nullptr && cancelButtonLabel.Length() > 0) {
        SetControlTitleWithBCString(cancelControl, cancelButtonLabel.AsBCStringRef());
    }
    DetermineBestControlBounds();
}

int16_t TBrowseDialog::GetLeftBoundsLimit() {
    return 24;
}

void TBrowseDialog::DetermineBestControlBounds() {
    if (defaultControl == nullptr || cancelControl == nullptr) {
        return;
    }
    Rect accept = GetControlContentRelativeRect(defaultControl);
    Rect cancel = GetControlContentRelativeRect(cancelControl);
    Rect best{0, 0, 0, 0};
    GetBestControlRect(defaultControl, &best, nullptr);
    const int16_t bestAccept = int16_t(best.right - best.left);
    GetBestControlRect(cancelControl, &best, nullptr);
    const int16_t bestCancel = int16_t(best.right - best.left);
    const int16_t limit = GetLeftBoundsLimit();
    TRect window;
    GetBounds(window);
    const int16_t half = int16_t((RectWidth(window) - 60 - limit) / 2);
    if (half < bestAccept && half < bestCancel) {
        accept.left = int16_t(accept.right - half);
        cancel.right = int16_t(accept.left - kButtonGap);
        cancel.left = int16_t(cancel.right - half);
    } else {
        if (bestAccept != accept.right - accept.left) {
            MoveDefaultButton(accept, cancel, bestAccept, limit);
        }
        if (bestCancel != cancel.right - cancel.left) {
            cancel.left =
                std::max<int16_t>(int16_t(limit + kButtonGap), int16_t(cancel.right - bestCancel));
        }
    }
    SetControlContentRelativeRect(defaultControl, accept);
    SetControlContentRelativeRect(cancelControl, cancel);
}

// The default button takes its best width, never crowding the cancel button off the left
// limit; the cancel button keeps its width and stands 12 to its left.
void TBrowseDialog::MoveDefaultButton(Rect& accept, Rect& cancel, int16_t best, int16_t limit) {
    const int16_t cancelWidth = int16_t(cancel.right - cancel.left);
    const int16_t candidate = int16_t(accept.right - best);
    accept.left = candidate < limit + cancelWidth + kButtonGap
                      ? int16_t(limit + cancelWidth + 2 * kButtonGap)
                      : candidate;
    cancel.right = int16_t(accept.left - kButtonGap);
    cancel.left = int16_t(cancel.right - cancelWidth);
}

BGFloat TBrowseDialog::ConstrainSplitterPosition(ControlRef splitter, BGFloat position) {
    const BGRect bounds = FrameOf(splitter);
    ControlRef first = BTViewGetFirstSubview(splitter);
    ControlRef second = first != nullptr ? BTViewGetNextView(first) : nullptr;
    if (second == nullptr) {
        return position;
    }
    const BGFloat thickness =
        bounds.size.width - FrameOf(first).size.width - FrameOf(second).size.width;
    position = std::max<BGFloat>(position, 0);
    // The sidebar keeps its width within its own limits; a first pane that isn't one leaves it.
    BGRect frame = FrameOf(first);
    frame.size.width = position;
    _BTSidebarConstrainFrame(first, &frame);
    position = frame.size.width;
    return std::min(position, bounds.size.width - thickness - kMinimumBrowserWidth);
}

// The splitter has moved; a position outside the sidebar's limits or leaving less than the
// browser's minimum is moved back within them.
StatusCode TBrowseDialog::SplitterHandler(EventHandlerCallRef, EventRef event, void* data) {
    auto* dialog = static_cast<TBrowseDialog*>(data);
    ControlRef splitter = nullptr;
    if (GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof splitter,
                          nullptr, &splitter) != noErr ||
        dialog->sidebar == nullptr) {
        return eventNotHandledErr;
    }
    const BGFloat position = BTViewGetValue(splitter);
    const BGFloat allowed = dialog->ConstrainSplitterPosition(splitter, position);
    if (allowed != position) {
        BTViewSetValue(splitter, int32_t(allowed));
    }
    return noErr;
}
