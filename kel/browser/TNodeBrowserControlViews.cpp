// The control's set-up and the two view styles: callbacks, list columns, and the switch between
// list and column view with the column view's width kept in the preferences.

#include "kel/browser/BrowserNodes.h"
#include "kel/browser/GridItemIDs.h"
#include "kel/browser/TNodeBrowserControl.h"
#include "kel/foundation/KelBundle.h"
#include "kel/foundation/TKelPrefs.h"

#include <map>
#include <string>

namespace {

constexpr uint16_t kNameWidthWithDisclosure = 228;
constexpr uint16_t kNameWidthWithoutDisclosure = 257;
constexpr uint16_t kDateWidth = 117;
constexpr uint32_t kControlAttributeSet = 1;
constexpr uint32_t kHiliteStyle = 1;

GridBrowserListViewColumnDesc Column(unsigned long property, OSType type, uint32_t flags,
                                     uint16_t minimumWidth) {
    GridBrowserListViewColumnDesc column;
    column.propertyID = property;
    column.propertyType = type;
    column.propertyFlags = flags;
    column.minimumWidth = minimumWidth;
    column.maximumWidth = 1000;
    column.titleOffset = 0;
    column.initialOrder = kGridBrowserOrderIncreasing;
    return column;
}

// Bundle texts outlive their holders by design, so each title is read once for the process.
const TStringRef& ColumnTitle(const char* titleKey) {
    // Never destroyed: the texts stay reachable for the life of the process.
    static auto* titles = new std::map<std::string, TStringRef>;
    auto [entry, added] = titles->try_emplace(titleKey);
    if (added) {
        entry->second =
            KelBundle::GetStringResource(TStringRef::Create(titleKey, kBCStringEncodingUTF8));
    }
    return entry->second;
}

// The control copies the title.
void AddListColumn(ControlRef control, GridBrowserListViewColumnDesc column, const char* titleKey,
                   uint32_t position) {
    column.titleString = ColumnTitle(titleKey).AsBCStringRef();
    AddGridBrowserListViewColumn(control, &column, position);
}

} // namespace

unsigned long TNodeBrowserControl::ItemProperty() const {
    return viewStyle == kColumnViewStyle ? kGridBrowserItemSelfIdentityProperty : kNameProperty;
}

void TNodeBrowserControl::InitControl(ControlRef newControl) {
    control = newControl;
    SetControlReference(control, reinterpret_cast<intptr_t>(this));
    ActivateControl(control);
    GridBrowserCallbacks callbacks;
    InitGridBrowserCallbacks(&callbacks);
    callbacks.itemDataCallback = &TNodeBrowserControl::GetSetItemDataNotification;
    callbacks.itemCompareCallback = &TNodeBrowserControl::CompareNotification;
    callbacks.itemNotificationCallback = &TNodeBrowserControl::ItemNotification;
    SetGridBrowserCallbacks(control, &callbacks);
    GridBrowserCustomCallbacks custom;
    InitGridBrowserCustomCallbacks(&custom);
    custom.drawItemCallback = &TNodeBrowserControl::DrawItemNotification;
    custom.trackingCallback = &TNodeBrowserControl::TrackItemNotification;
    SetGridBrowserCustomCallbacks(control, &custom);
    GridBrowserChangeAttributes(control, kControlAttributeSet, 0);
    if (viewStyle != kColumnViewStyle) {
        AddListColumns();
    }
}

void TNodeBrowserControl::AddListColumns() {
    AddListColumn(control, Column(kNameProperty, kGridBrowserIconAndTextType, 0xF0000, 150),
                  "Name Column Title", 0);
    if (observer->NodeBrowserControlWantsDisclosureTrianglesInListView()) {
        SetGridBrowserListViewDisclosureColumn(control, kNameProperty, false);
        SetGridBrowserTableViewNamedColumnWidth(control, kNameProperty, kNameWidthWithDisclosure);
    } else {
        SetGridBrowserTableViewNamedColumnWidth(control, kNameProperty,
                                                kNameWidthWithoutDisclosure);
    }
    AddListColumn(control, Column(kDateProperty, kGridBrowserDateTimeType, 0xE0100, 100),
                  "Date Modified Column Title", 1);
    SetGridBrowserTableViewNamedColumnWidth(control, kDateProperty, kDateWidth);
    SetGridBrowserSortProperty(control, kNameProperty);
    SetGridBrowserTableViewHiliteStyle(control, kHiliteStyle);
}

unsigned short TNodeBrowserControl::GetDefaultColumnWidth() const {
    uint16_t width = 0;
    GetGridBrowserTableViewColumnWidth(control, &width);
    return width;
}

StatusCode TNodeBrowserControl::SetBrowserView(unsigned long style, TPrefOption option,
                                               TKelPrefs& prefs) {
    StatusCode status = noErr;
    if (style != viewStyle) {
        status = SwitchViewStyle(style, option, prefs);
    }
    uint16_t width = 0;
    if (option == kPrefOptionRestoreWidth && viewStyle == kColumnViewStyle &&
        prefs.GetDefaultColumnViewColumnWidth(&width)) {
        SetGridBrowserTableViewColumnWidth(control, width);
    }
    return status;
}

StatusCode TNodeBrowserControl::SwitchViewStyle(unsigned long style, TPrefOption option,
                                                TKelPrefs& prefs) {
    viewStyle = style;
    if (style == kListViewStyle && option == kPrefOptionSaveRestore) {
        prefs.SetDefaultColumnViewColumnWidth(GetDefaultColumnWidth());
    }
    suppressSnapshot = true;
    StatusCode status = SetGridBrowserViewStyle(control, style);
    if (status == noErr) {
        InitControl(control);
        uint16_t width = 0;
        if (style == kColumnViewStyle && option == kPrefOptionSaveRestore &&
            prefs.GetDefaultColumnViewColumnWidth(&width)) {
            SetGridBrowserTableViewColumnWidth(control, width);
        }
        if (style == kColumnViewStyle) {
            EnterColumnView();
        }
        UseSelectionFlagsOfDialog();
        ShowControl(control);
    }
    suppressSnapshot = false;
    ChangeSnapshotView();
    observer->NodeBrowserControlViewStyleChanged(style);
    SendRootChangedNotification();
    return status;
}

// List view needs none of this: the target stays, and history reopens the rows.
void TNodeBrowserControl::EnterColumnView() {
    if (!targetPath.empty()) {
        GridItemIDs ids(targetPath);
        SetGridBrowserColumnViewPath(control, ids.Count(), ids.IDs());
    }
    RevealTarget();
    TKelNode target;
    GetTarget(target);
    if (target.IsEmpty() || !NodeIsQueryHitsContainer(target.PeekNodeRef())) {
        SetGridBrowserSortProperty(control, kGridBrowserItemSelfIdentityProperty);
    }
    SetGridBrowserSortOrder(control, kGridBrowserOrderIncreasing);
}
