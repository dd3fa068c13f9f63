// The control's callbacks: cell data by property, the sort comparison, item messages, and the
// custom drawing and tracking of the preview column. Each finds its browser through the
// control's reference and turns the item id back into a node.

#include "kel/browser/BrowserNodes.h"
#include "kel/browser/NodeRowOrder.h"
#include "kel/browser/TNodeBrowserControl.h"

namespace {

constexpr FourCharCode kUnconnectedServerType = NodeCode("slua");
constexpr FourCharCode kDisplayName = NodeCode("dnam");
constexpr FourCharCode kModified = NodeCode("modd");

FourCharCode AliasType(const TKelNode& node) {
    FourCharCode type = 0;
    GetNodePropertyAsFourCharCode(node.PeekNodeRef(), NodeCode("asty"), &type, 0);
    return type;
}

bool IsUnconnectedServer(const TKelNode& node) {
    return AliasType(node) == kUnconnectedServerType;
}

} // namespace

TNodeBrowserControl* TNodeBrowserControl::FromControl(ControlRef control) {
    return control == nullptr
               ? nullptr
               : reinterpret_cast<TNodeBrowserControl*>(GetControlReference(control));
}

StatusCode TNodeBrowserControl::GetSetItemDataNotification(ControlRef control, unsigned long item,
                                                           unsigned long property, void* itemData,
                                                           bool setValue) {
    TNodeBrowserControl* self = FromControl(control);
    if (self == nullptr || setValue) {
        return kNodePropertyNotSupportedErr; // no cell is ever written back
    }
    // A stale row shows nothing until its deletion arrives. Whether the node is there was asked
    // of the file system when it was listed or first drawn, and holds until a change event.
    TKelNode node{uintptr_t(item)};
    return self->SortFactsOf(node.PeekNodeRef(), false).valid
               ? self->ItemData(node, property, itemData)
               : kNodePropertyNotSupportedErr;
}

StatusCode TNodeBrowserControl::ItemData(const TKelNode& node, unsigned long property,
                                         void* itemData) const {
    switch (property) {
    case kGridBrowserItemIsActiveProperty: {
        TKelNode original = OriginalOfHit(node);
        return SetGridBrowserItemDataBooleanValue(itemData, filter->CanSelect(original, 0) &&
                                                                filter->CanSee(original));
    }
    case kGridBrowserItemIsSelectableProperty: {
        TKelNode subject = node;
        if (IsQueryHit(node)) {
            node.FollowAlias(false, subject);
        }
        return SetGridBrowserItemDataBooleanValue(itemData, filter->CanSelect(subject, 0));
    }
    case kGridBrowserItemIsEditableProperty:
        return SetGridBrowserItemDataBooleanValue(itemData, false);
    case kGridBrowserItemIsContainerProperty:
        return SetGridBrowserItemDataBooleanValue(itemData, IsContainerRow(node));
    case kGridBrowserContainerIsOpenableProperty:
        return SetGridBrowserItemDataBooleanValue(itemData, CanOpenRow(node));
    case kGridBrowserContainerIsClosableProperty:
    case kGridBrowserContainerIsSortableProperty:
        return SetGridBrowserItemDataBooleanValue(itemData, true);
    case kGridBrowserItemSelfIdentityProperty:
    case kNameProperty:
        return NameCell(node, itemData);
    case kGridBrowserItemParentContainerProperty:
        return SetGridBrowserItemDataItemID(itemData, node.GetParent().AsItemID());
    case kGridBrowserItemLabelProperty: {
        int16_t label = 0;
        GetNodePropertyAsInt16(node.PeekNodeRef(), NodeCode("labl"), &label, 0);
        return SetGridBrowserItemDataValue(itemData, label);
    }
    case kGridBrowserNameTextProperty:
        return TextCell(node, itemData);
    case kDateProperty: {
        uint32_t date = 0;
        StatusCode status = GetNodePropertyAsDateTime(node.PeekNodeRef(), kModified, &date, 0);
        const LongDateTime longDate = date;
        return status != noErr ? status : SetGridBrowserItemDataLongDateTime(itemData, &longDate);
    }
    default:
        return kNodePropertyNotSupportedErr;
    }
}

// A container that the filter lets the user enter; or, in column view only, a server that
// isn't connected yet, whose column shows its connect button.
bool TNodeBrowserControl::IsContainerRow(const TKelNode& node) const {
    TKelNode subject = OriginalOfHit(node);
    if (subject.IsContainer() && filter->CanTarget(subject)) {
        return true;
    }
    return IsUnconnectedServer(subject) && viewStyle != kListViewStyle;
}

bool TNodeBrowserControl::CanOpenRow(const TKelNode& node) const {
    TKelNode subject = OriginalOfHit(node);
    if (IsUnconnectedServer(subject)) {
        return false;
    }
    TKelNode resolved;
    return subject.FollowAlias(true, resolved) == noErr;
}

StatusCode TNodeBrowserControl::NameCell(const TKelNode& node, void* itemData) const {
    TIcon icon = node.CopyBadgedIcon();
    SetGridBrowserItemDataIcon(itemData, icon.Get());
    return TextCell(node, itemData);
}

StatusCode TNodeBrowserControl::TextCell(const TKelNode& node, void* itemData) const {
    TUniString name;
    StatusCode status = node.GetPropertyAsString(kDisplayName, name);
    if (status != noErr) {
        return status;
    }
    TStringRef text(
        BCStringCreateWithCharacters(nullptr, name.Characters(), BCIndex(name.Length())), false);
    return SetGridBrowserItemDataText(itemData, text.AsBCStringRef());
}

// The rows' nodes are held by their containers' records, so the ids are used as they are: a
// sort of a large folder compares millions of times, and counting each node up and down would
// cost more than the comparison. What a comparison needs of a node is asked once per node.
bool TNodeBrowserControl::CompareNotification(ControlRef control, unsigned long item1,
                                              unsigned long item2, unsigned long property) {
    auto* first = reinterpret_cast<OpaqueNodeRef*>(item1);
    auto* second = reinterpret_cast<OpaqueNodeRef*>(item2);
    if (first == nullptr || second == nullptr || item1 == item2 || !IsSortProperty(property)) {
        return false;
    }
    const bool byName = IsNameSortProperty(property);
    TNodeBrowserControl* self = FromControl(control);
    auto row = [&](OpaqueNodeRef* node) {
        return NodeSortRow{node, self != nullptr ? self->SortFactsOf(node, byName)
                                                 : ReadSortFacts(node, byName)};
    };
    return RowPrecedes(row(first), row(second), byName);
}

// Validating asks the file system; what it said holds until the next change event, which is
// how a deletion of a row reaches us. The display name's key is asked for by name sorts only.
NodeSortFacts TNodeBrowserControl::SortFactsOf(OpaqueNodeRef* node, bool wantKey) {
    std::optional<NodeSortFacts> kept = sortMemo.Find(node);
    if (!kept) {
        NodeSortFacts facts = ReadSortFacts(node, wantKey);
        sortMemo.Keep(node, facts);
        return facts;
    }
    if (wantKey && !kept->keyKnown && !kept->queryHit) {
        ReadDisplayKey(node, *kept);
        sortMemo.Keep(node, *kept);
    }
    return *kept;
}

void TNodeBrowserControl::ItemNotification(ControlRef control, unsigned long item,
                                           unsigned long message) {
    TNodeBrowserControl* self = FromControl(control);
    if (self == nullptr) {
        return;
    }
    if (message == kGridBrowserSelectionChanged) {
        if (self->ignoreNextSelectionChange) {
            self->ignoreNextSelectionChange = false;
        } else {
            self->observer->NodeBrowserControlSelectionChanged(*self);
        }
        return;
    }
    if (message == kGridBrowserTargetChanged) {
        self->CheckTarget();
        return;
    }
    if (item != 0) {
        TKelNode node{uintptr_t(item)};
        self->RowMessage(node, message);
    }
}

void TNodeBrowserControl::RowMessage(TKelNode& node, unsigned long message) {
    switch (message) {
    case kGridBrowserItemDoubleClicked:
        DoubleClicked(node);
        break;
    case kGridBrowserContainerOpened:
        AddSnapshotOpenNode(node);
        OpenContainer(node);
        break;
    case kGridBrowserContainerClosed:
        RemoveSnapshotOpenNode(node);
        CloseContainer(node);
        break;
    case kGridBrowserUnselectableItemClicked:
        observer->NodeBrowserControlDisabledItemClicked(*this, node);
        break;
    case kGridBrowserPresortedContainerSortChanged:
        ReorderQuery();
        break;
    default:
        break;
    }
}

void TNodeBrowserControl::DoubleClicked(TKelNode& row) {
    inDoubleClick = true;
    TKelNode node = OriginalOfHit(row);
    // In column view a server that isn't connected is opened by its column's button instead.
    if (!(viewStyle == kColumnViewStyle && IsUnconnectedServer(node)) && OpenContainer(node)) {
        observer->NodeBrowserControlNodeDoubleClicked(*this, node);
    }
    inDoubleClick = false;
}

void TNodeBrowserControl::DrawItemNotification(ControlRef control, unsigned long item,
                                               unsigned long property, unsigned long,
                                               const Rect* rect, short, bool) {
    TNodeBrowserControl* self = FromControl(control);
    if (self == nullptr || property != kGridBrowserColumnViewPreviewProperty || rect == nullptr ||
        item == 0) {
        return;
    }
    int32_t scrollBarWidth = 0;
    GetThemeMetric(kBTThemeMetricScrollBarWidth, &scrollBarWidth);
    TRect area(*rect);
    area.right = int16_t(area.right - scrollBarWidth);
    TKelNode node = OriginalOfHit(TKelNode(uintptr_t(item)));
    self->previewDrawnByClient = self->observer->NodeBrowserControlDrawPreview(*self, node, area);
    if (!self->previewDrawnByClient) {
        // The library's own preview draws here once it exists; until then the column stays
        // empty, but it already knows which node it shows.
        self->previewNode = node;
    }
}

long TNodeBrowserControl::TrackItemNotification(ControlRef, unsigned long, unsigned long,
                                                const Rect*, Point, unsigned short) {
    // The preview's buttons are followed here once the library draws its own preview.
    return -1;
}
