// The toolbar row and the scope bar follow whether a search shows. A search has no path: the
// path popup gives way to the arrows, the count of hits and a wider search field, and the scope
// bar comes in above the browser, which keeps its bottom where it was.

#include "kel/browser/BrowserNodes.h"
#include "kel/dialogs/TBrowseDialog.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr BGFloat kRowGap = 8.0;
constexpr BGFloat kScopeBarOverlap = 2.0;
constexpr BGFloat kFolderScopeY = 4.0;

void SetFrameX(ControlRef view, BGFloat x, BGFloat width) {
    BGRect frame = FrameOf(view);
    frame.origin.x = x;
    frame.size.width = width;
    BTViewSetFrame(view, &frame);
}

// The name a node shows, as text.
TStringRef DisplayName(const TKelNode& node) {
    TUniString name;
    if (node.IsEmpty() || node.GetPropertyAsString(NodeCode("dnam"), name) != noErr) {
        return TStringRef(BCSTR(""));
    }
    return name.AsBCString();
}

} // namespace

BGFloat TBrowseDialog::ShowItemCount(long count) {
    const TStringRef& format = BundleText("QueryItemCountString");
    TStringRef text(BCStringCreateWithFormat(nullptr, nullptr, format.AsBCStringRef(), count),
                    false);
    BTViewSetText(countText, text.AsBCStringRef());
    BGRect best = BGRectZero;
    BTViewGetOptimalBounds(countText, &best, nullptr);
    return best.size.width;
}

void TBrowseDialog::AdjustForSearch() {
    if (browser == nullptr) {
        return;
    }
    TKelNode root;
    TKelNode target;
    browser->GetViewRoot(root);
    browser->GetTarget(target);
    ControlRef popup = Control(kBrowsePathPopup);
    if (popup != nullptr) {
        BTViewSetVisible(popup, !IsHitsContainer(root) && !SimpleSaveMode());
    }
    PlaceScopeBar(root, target);
    if (popup == nullptr || countText == nullptr || searchField == nullptr ||
        Control(kBrowsePathArrows) == nullptr) {
        return;
    }
    const bool searching = IsHitsContainer(target) && root.savedQueryRef == nullptr;
    if (searching) {
        PlaceSearchRowSearching(FrameOf(popup), target);
    } else {
        PlaceSearchRowIdle(FrameOf(popup));
    }
    FollowSearchText();
}

void TBrowseDialog::PlaceScopeBar(const TKelNode& root, const TKelNode& target) {
    if (scopeBar == nullptr || browserView == nullptr) {
        return;
    }
    // A saved search has its own scope: the bar is for typed searches.
    const bool hits =
        browser->ViewStyle() == kColumnViewStyle ? IsHitsContainer(root) : IsHitsContainer(target);
    const bool visible = hits && root.savedQueryRef == nullptr;
    BTViewSetVisible(scopeBar, visible);
    const BGRect bar = FrameOf(scopeBar);
    BGRect frame = FrameOf(browserView);
    const BGFloat bottom = BGRectGetMaxY(frame);
    frame.origin.y = bar.origin.y + (visible ? bar.size.height : 0) - kScopeBarOverlap;
    frame.size.height = bottom - frame.origin.y;
    BTViewSetFrame(browserView, &frame);
    if (!visible) {
        return;
    }
    if (ControlRef folder = Control(kBrowseScopeFolder)) {
        TMutableStringRef title = BundleText("CurrentFolderScopeString").CopyMutable(0);
        BCStringFindAndReplace(title.AsBCMutableStringRef(), BCSTR("%s"),
                               DisplayName(browser->QueryScopeNode()).AsBCStringRef(),
                               BCRangeMake(0, title.Length()), 0);
        BTViewSetText(folder, title.AsBCStringRef());
        BGRect best = BGRectZero;
        BTViewGetOptimalBounds(folder, &best, nullptr);
        BGRect place = FrameOf(folder);
        place.origin.y = kFolderScopeY;
        place.size = best.size;
        BTViewSetFrame(folder, &place);
    }
    ShowQueryScope(prefs.GetQueryScope());
}

// The arrows, the count and the field are bound left to right, each to the one before: each is
// placed in that order, so that what follows moves along before it is placed itself.
void TBrowseDialog::PlaceSearchRowIdle(const BGRect& popupFrame) {
    ControlRef arrows = Control(kBrowsePathArrows);
    const BGFloat fieldRight = BGRectGetMaxX(FrameOf(searchField));
    SetFrameX(arrows, BGRectGetMaxX(popupFrame) + kRowGap, FrameOf(arrows).size.width);
    const BGFloat x = BGRectGetMaxX(FrameOf(arrows)) + kRowGap;
    BTViewSetText(countText, BCSTR(""));
    BTViewSetVisible(countText, false);
    SetFrameX(countText, x, 0);
    BTViewSetText(searchField, BCSTR(""));
    SetFrameX(searchField, x, fieldRight - x);
}

void TBrowseDialog::PlaceSearchRowSearching(const BGRect& popupFrame, const TKelNode& target) {
    if (searchTextStale) {
        // History went back or forth into a search: the field shows that search's text.
        BTViewSetText(searchField, DisplayName(target).AsBCStringRef());
        searchTextStale = false;
    }
    const BGFloat fieldRight = BGRectGetMaxX(FrameOf(searchField));
    const BGFloat fieldX = std::floor(BGRectGetMidX(popupFrame));
    uint32_t count = 0;
    GetGridBrowserItemCount(browser->Control(), target.AsItemID(), false, 0, &count);
    const BGFloat countWidth = std::max<BGFloat>(ShowItemCount(long(count)), countTextMinWidth);
    const BGFloat countX = fieldX - countWidth - kRowGap;
    ControlRef arrows = Control(kBrowsePathArrows);
    SetFrameX(arrows, countX - kRowGap - FrameOf(arrows).size.width, FrameOf(arrows).size.width);
    BTViewSetVisible(countText, true);
    SetFrameX(countText, countX, countWidth);
    SetFrameX(searchField, fieldX, fieldRight - fieldX);
}
