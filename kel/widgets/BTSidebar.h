#pragma once

// The column of places at the left of a browse dialog: a view that holds a scroll view with one
// BTSidebarItemsView, owns the rows of the two sections, and keeps them in step with the node
// service's virtual nodes 11 (computer, home volume, removable volumes) and 12 (places, then
// bookmarks). Nothing is read from the node service before the first row is needed. It speaks
// to its dialog only through the "SIDB" events of SidebarEvents.h.
//
// Rows are numbered from 1 over the first section and then the second, 0 meaning none, except
// GetItem, which takes a 0-based index.

#include "kel/nodes/INodeObserver.h"
#include "kel/nodes/TKelNodeObservatory.h"
#include "kel/widgets/SidebarItem.h"
#include "kel/widgets/views/TView.h"

#include <vector>

class BTSidebarItemsView;
class TNodeFilter;

class BTSidebar : public TView, public INodeObserver {
public:
    static BCStringRef ClassID();

    explicit BTSidebar(ControlRef control);
    ~BTSidebar() override;

    uint64_t GetKind() override;
    uint32_t GetBehaviors() override { return TView::GetBehaviors() | 2; }
    StatusCode Initialize(TBasaltEvent& event) override;
    void Draw(RgnHandle limit, BGContextRef context) override;
    StatusCode GetRegion(short part, RgnHandle region) override;
    void BoundsChanged(unsigned long attributes, const BGRect& original,
                       const BGRect& current) override;

    void NodeObserverNotePropertyChange(TKelNode&, unsigned long) override {}
    void NodeObserverNoteDeletion(TKelNode&) override {}
    void NodeObserverNoteChildAddition(TKelNode&, TKelNode&) override {}
    void NodeObserverNoteSyncCompletion(TKelNode&) override {}
    void NodeObserverNoteOpenSyncCompletion(TKelNode&) override {}
    void NodeObserverNoteVirtualChildListChanged(TKelNode& node) override;

    // Null for an index out of range. Both acquire the rows first if need be.
    SidebarItem* GetItem(int index);
    int CountItems();
    // Rows in the first section.
    int CountTopItems();
    bool HasBottomItems();

    void SelectRootItem(OpaqueNodeRef* node);
    int LocateNode(OpaqueNodeRef* node);
    // What the dialog shows, as the dialog answers "SIDB" 2; empty if it does not answer.
    TKelNode CopyCurrentClientRoot();
    // The volume of the row the user just chose: the dialog's report of it selects nothing anew.
    void SetPendingRoot(const TKelNode& volume) { pendingRoot = volume; }
    BTSidebarItemsView* ItemsView() const { return itemsView; }
    void ResetItemsInScrollView();

private:
    static StatusCode EventHandler(EventHandlerCallRef call, EventRef event, void* data);
    StatusCode ClientRootChanged(TBasaltEvent& event);
    void PlaceScrollView();
    void AcquireContent();
    StatusCode AcquireChildren(const TKelNode& parent, bool first, std::vector<SidebarItem>& items);
    void FetchNodeInfo(TKelNode node, bool first, SidebarItem& item) const;

    BTSidebarItemsView* itemsView = nullptr;
    TKelNode pendingRoot;
    TKelNodeObservatory observatory;
    ControlRef scrollView = nullptr;
    ControlRef itemsViewRef = nullptr;
    TKelNode topNode;
    TKelNode bottomNode;
    std::vector<SidebarItem> topItems;
    std::vector<SidebarItem> bottomItems;
    bool acquired = false;
    EventHandlerRef sidebarHandler = nullptr;
};

// What the library's dialogs call; view is the sidebar as a toolbox object, and each answers -50
// for a view that is not one.
StatusCode _BTSidebarRegisterClass();
StatusCode _BTSidebarConstrainFrame(ControlRef view, BGRect* frame);
StatusCode _BTSidebarSetFilter(ControlRef view, const TNodeFilter* filter);
StatusCode _BTSidebarResetSidebarItemsInScrollView(ControlRef view);
