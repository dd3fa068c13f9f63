#pragma once

// The where popup: the current folder on top, then the mounted volumes, the favourites and the
// recent places. The lists are read when the user opens the menu, not before, and kept until
// the dialog invalidates them, so a menu opened twice shows the same volumes. A choice goes to
// the dialog through IFavoritesCommandHandler. Without its control the popup stays idle.
//
// Menu: item 1 the target; a separator and the volumes, if any; a separator and the
// favourites, if any (the Desktop always among them); a separator, the disabled "Recent
// Places" header, the recent places. Only the recent places are filtered.

#include "kel/nodes/INodeObserver.h"
#include "kel/widgets/IFavoritesCommandHandler.h"
#include "kel/widgets/LocationMenuItems.h"

class KelBaseDialog;
class TNodeFilter;

class TFavoritesPopup : public INodeObserver {
public:
    TFavoritesPopup(const TNodeFilter& filter, IFavoritesCommandHandler* handler);
    TFavoritesPopup(const TFavoritesPopup&) = delete;
    TFavoritesPopup& operator=(const TFavoritesPopup&) = delete;

    // The popup registers for no container, so these never come.
    void NodeObserverNotePropertyChange(TKelNode&, unsigned long) override {}
    void NodeObserverNoteDeletion(TKelNode&) override {}
    void NodeObserverNoteChildAddition(TKelNode&, TKelNode&) override {}
    void NodeObserverNoteSyncCompletion(TKelNode&) override {}
    void NodeObserverNoteOpenSyncCompletion(TKelNode&) override {}
    virtual ~TFavoritesPopup();
    // Fills out with the full path of the item's location; true when it did, or for item 1.
    virtual bool DoMenuChoice(MenuRef menu, MenuItemIndex item, TKelNodeArray& out);

    // Attaches the menu to the dialog's control of that id; nothing without the control.
    StatusCode SetupWherePopup(KelBaseDialog* dialog, int16_t controlID);
    void SetTarget(const TKelNode& node);
    void Enable(unsigned char enable);
    // The next opening reads the lists again.
    void Invalidate() { menuIsValid = false; }
    bool CanNodeAppear(const TKelNode& node) const;

    ControlRef Control() const { return popupControl; }
    MenuRef Menu() const { return menu; }

private:
    void UpdateTargetItem();
    void FillWherePopup();
    void AddVolumesGroup();
    void AddFavoritesGroup();
    void AddRecentsGroup();
    bool ResolveFavorite(const TKelNode& entry, TKelNodeArray& out);
    void ReportInvalidFavorite(const TKelNode& node);
    StatusCode FavoritesMenuHandler(EventRef event);
    static StatusCode FavoritesMenuHandlerDispatch(EventHandlerCallRef call, EventRef event,
                                                   void* data);

    ControlRef popupControl = nullptr;
    MenuRef menu = nullptr;
    TKelNode target;
    TKelNode volumesContainer;
    std::vector<TKelNode> volumes;
    MenuItemIndex lastVolumeItem = 0;
    TKelNode desktopNode;
    TKelNode favoritesContainer;
    std::vector<TKelNode> favorites;
    MenuItemIndex lastFavoriteItem = 0;
    TRecentPlaces recents;
    // Kept to eight bits, so that past 255 items the number wraps.
    uint8_t firstRecentItem = 0;
    bool menuIsValid = false;
    const TNodeFilter* filter;
    EventHandlerRef menuHandler = nullptr;
    IFavoritesCommandHandler* commandHandler;
};
