#pragma once

// The model behind a browse dialog's file list. It owns one GridBrowser control, which draws
// rows or columns and knows only item ids: an id is the node's reference itself, and the
// TContainerData that listed a child keeps that node alive while the control shows it.
//
// The class is split by concern: containers and their changes (TNodeBrowserControlContainers),
// the target, selection and searches (TNodeBrowserControlTarget), the control's callbacks and
// view styles (TNodeBrowserControlCallbacks, TNodeBrowserControlViews) and the history
// (TNodeBrowserControlHistory). Everything runs on the main thread; node events arrive through
// the observatory from the event loop, or inside SetSelection's wait.

#include "basalt/gridbrowser/GridBrowser.h"
#include "kel/browser/INodeBrowserControlObserver.h"
#include "kel/browser/NodeSortMemo.h"
#include "kel/browser/TContainerData.h"
#include "kel/browser/TViewSnapshot.h"
#include "kel/nodes/TKelNodeObservatory.h"
#include "kel/nodes/TNodeFilter.h"

#include <memory>
#include <vector>

class GridItemIDs;
struct __KelDialog;
class TKelPrefs;

inline constexpr unsigned long kListViewStyle = kGridBrowserListView;
inline constexpr unsigned long kColumnViewStyle = kGridBrowserColumnView;
inline constexpr unsigned long kNameProperty = kGridBrowserNameProperty;
inline constexpr unsigned long kDateProperty = kGridBrowserDateProperty;

// How SetBrowserView treats the column view's column width.
enum TPrefOption : unsigned long {
    kPrefOptionNone = 0,         // a dialog opening in list view
    kPrefOptionSaveRestore = 1,  // the user's change of view, or a return through history
    kPrefOptionRestoreWidth = 2, // a dialog opening in column view
};

class TNodeBrowserControl {
public:
    TNodeBrowserControl(__KelDialog* dialog, unsigned long viewStyle, const TNodeFilter& filter,
                        INodeBrowserControlObserver& observer, ControlRef control);
    TNodeBrowserControl(const TNodeBrowserControl&) = delete;
    TNodeBrowserControl& operator=(const TNodeBrowserControl&) = delete;
    ~TNodeBrowserControl();

    // ---- Containers ----
    bool OpenContainer(TKelNode& node);
    void CloseContainer(TKelNode& node);
    void RequestPopulateContainerData(TContainerData& data);
    void PopulateContainerData(TContainerData& data);
    void PopulateDeferredContainers();
    void RequestSynchronizeContainerData(TContainerData& data);
    static void SynchronizeContainers(EventLoopTimerRef timer, void* control);
    void NoteChildAddition(TContainerData& data, TKelNode& child);
    void NoteChildDeletion(TContainerData& data, TKelNode& child);
    void NoteChildPropertyChange(TContainerData& data, TKelNode& child, unsigned long property);
    StatusCode AddItems(const TKelNode& container, const TKelNodeArray& nodes,
                        unsigned long preSortProperty);
    StatusCode RemoveItems(const TKelNode& container, const TKelNodeArray& nodes,
                           unsigned long preSortProperty);
    StatusCode GetItems(const TKelNode* container, bool recurse, unsigned long state,
                        TKelNodeArray& out);

    // ---- Target and selection ----
    StatusCode SetTarget(const TKelNode& target, const TKelNode& root, TKelNode query);
    StatusCode SetTargetPath(const TKelNodeArray& path, TKelNode query);
    bool SynchronizeTargetPath(const TKelNodeArray& path);
    void CheckTarget();
    void TargetChanged();
    void SendRootChangedNotification();
    StatusCode GetTarget(TKelNode& out) const;
    StatusCode GetViewRoot(TKelNode& out) const;
    StatusCode GetFullTargetPath(TKelNodeArray& out) const;
    StatusCode RevealTarget();
    StatusCode RevealSelection();
    StatusCode GetSelection(TKelNodeArray& out);
    StatusCode SetSelection(const TKelNodeArray& nodes, unsigned long operation);
    StatusCode SelectAll();
    StatusCode SetQueryTarget(BCStringRef text);
    StatusCode SetSavedQueryTarget(TKelNode saved);
    void Refresh();

    // ---- Callbacks and views ----
    static StatusCode GetSetItemDataNotification(ControlRef control, unsigned long item,
                                                 unsigned long property, void* itemData,
                                                 bool setValue);
    static bool CompareNotification(ControlRef control, unsigned long item1, unsigned long item2,
                                    unsigned long property);
    static void ItemNotification(ControlRef control, unsigned long item, unsigned long message);
    static void DrawItemNotification(ControlRef control, unsigned long item, unsigned long property,
                                     unsigned long state, const Rect* rect, short depth,
                                     bool colorDevice);
    static long TrackItemNotification(ControlRef control, unsigned long item,
                                      unsigned long property, const Rect* rect, Point start,
                                      unsigned short modifiers);
    void InitControl(ControlRef control);
    StatusCode SetBrowserView(unsigned long style, TPrefOption option, TKelPrefs& prefs);
    unsigned short GetDefaultColumnWidth() const;

    // ---- History ----
    StatusCode TakeSnapshot();
    StatusCode SetHistoryViewSnapshot(unsigned long back, TKelPrefs& prefs);
    StatusCode ChangeSnapshotView(unsigned long unused = 0);
    StatusCode AddSnapshotOpenNode(const TKelNode& node);
    StatusCode RemoveSnapshotOpenNode(const TKelNode& node);

    ControlRef Control() const { return control; }
    unsigned long ViewStyle() const { return viewStyle; }
    const TKelNodeArray& TargetPath() const { return targetPath; }
    // The folder the searches of the current folder scope look in.
    const TKelNode& QueryScopeNode() const { return queryScopeNode; }
    const TKelNode& QueryNode() const { return queryNode; }
    const std::vector<std::unique_ptr<TContainerData>>& Containers() const { return containers; }
    long SnapshotIndex() const { return snapshotIndex; }
    long SnapshotCount() const { return long(snapshots.size()); }
    bool SyncTimerInstalled() const { return syncTimer != nullptr; }

    // Written by a save dialog while its browser is collapsed: no folder is listed until shown.
    bool deferPopulation = false;

    // For the records' events: a query's hits changed.
    void ObserverNodeOpen(TKelNode& node) { observer->NodeBrowserControlNodeOpen(*this, node); }

private:
    void FinalizeControl();
    void UseSelectionFlagsOfDialog();
    // The node whose children a record lists and watches: the original of an alias or a hit.
    static TKelNode ListedNode(const TKelNode& node);
    static TKelNode VolumeOf(const TKelNode& node);
    TContainerData* FindContainer(const TKelNode& node) const;
    void InstallSyncTimer();
    // Asks the control to show the path or the target with the history's row bookkeeping off:
    // rows the control closes or opens on its way are not the user's doing.
    StatusCode ShowTargetPathInControl(const GridItemIDs& ids);

    void RevealHiddenBranch(const TKelNodeArray& newPath);
    StatusCode ReadColumnViewPath(TKelNodeArray& out) const;
    StatusCode RevealSelectedUnderTarget(unsigned long property, bool fromRevealTarget);
    void SetDisclosureColumnFromObserver();

    StatusCode ItemData(const TKelNode& node, unsigned long property, void* itemData) const;
    bool IsContainerRow(const TKelNode& node) const;
    bool CanOpenRow(const TKelNode& node) const;
    NodeSortFacts SortFactsOf(OpaqueNodeRef* node, bool wantKey);
    std::vector<GridBrowserItemID> InControlOrder(const TKelNodeArray& nodes);
    StatusCode NameCell(const TKelNode& node, void* itemData) const;
    StatusCode TextCell(const TKelNode& node, void* itemData) const;
    void RowMessage(TKelNode& node, unsigned long message);
    void DoubleClicked(TKelNode& row);
    void ReorderQuery();
    void UpdateQueryScope();
    TKelNode QueryScope() const;
    void QuerySortOrder(unsigned long& property, bool& ascending) const;
    unsigned long ItemProperty() const;
    void AddListColumns();
    StatusCode SwitchViewStyle(unsigned long style, TPrefOption option, TKelPrefs& prefs);
    void EnterColumnView();

    bool IsSearchRefinement(const TViewSnapshot& current) const;
    void CutForwardHistory();
    bool ReplacesCurrentSnapshot(const TViewSnapshot& current) const;
    StatusCode OpenSnapshotItems(const TViewSnapshot& snapshot);
    void DeleteSnapshot(long index);
    bool RecordsOpenRows() const;

    static TNodeBrowserControl* FromControl(ControlRef control);

    __KelDialog* dialog;
    std::vector<std::unique_ptr<TContainerData>> containers;
    const TNodeFilter* filter;
    TKelNodeObservatory observatory;
    INodeBrowserControlObserver* observer;
    EventLoopTimerRef syncTimer = nullptr;
    bool populationDeferred = false;
    TKelNodeArray targetPath;
    bool ignoreNextSelectionChange = false;
    bool firstTargetCheck = true;
    ControlRef control = nullptr;
    unsigned long viewStyle;
    std::vector<std::unique_ptr<TViewSnapshot>> snapshots;
    long snapshotIndex = -1;
    bool suppressSnapshot = false;
    bool inDoubleClick = false;
    TKelNode viewRoot;
    bool previewDrawnByClient = false;
    TKelNode queryNode;
    TKelNode queryScopeNode;
    TKelNode previewNode;
    // What the control's sorts learnt of their nodes, until the next change event.
    NodeSortMemo sortMemo;
};
