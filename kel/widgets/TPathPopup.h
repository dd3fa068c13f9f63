#pragma once

// The path popup: the current folder, and when opened, the folders that enclose it, nearest
// first, up to the top of the tree, then the recent places. The lists go stale as soon as the
// target changes and are read again at the next opening. A choice goes straight to the
// dialog's SetTargetCommand.
//
// Menu: item 1 the target; the ancestors, one item each; a separator; the disabled "Recent
// Places" header; the recent places, addressed from the end of the menu.

#include "kel/widgets/LocationMenuItems.h"

class TBrowseDialog;
class TNodeFilter;

class TPathPopup {
public:
    explicit TPathPopup(const TNodeFilter& filter);
    TPathPopup(const TPathPopup&) = delete;
    TPathPopup& operator=(const TPathPopup&) = delete;
    ~TPathPopup();

    StatusCode SetPopupControl(TBrowseDialog* dialog, ControlRef control);
    void SetTarget(const TKelNode& node);
    // Fills out with the full path of the item's location; true when it did, or for item 1.
    bool DoMenuChoice(MenuRef menu, MenuItemIndex item, TKelNodeArray& out);
    bool CanNodeAppear(const TKelNode& node) const;

    const TKelNode& Target() const { return target; }
    MenuRef Menu() const { return menu; }

private:
    void FillPopup();
    void AddRecentsGroup();
    StatusCode UpdateTargetItem();
    StatusCode MenuHandler(EventRef event);
    static StatusCode MenuHandlerDispatch(EventHandlerCallRef call, EventRef event, void* data);

    TBrowseDialog* dialog = nullptr;
    ControlRef popupControl = nullptr;
    MenuRef menu = nullptr;
    const TNodeFilter* filter;
    TKelNode target;
    // Nearest first; the top of the tree last.
    TKelNodeArray ancestors;
    MenuItemIndex lastPathItem = 0;
    TRecentPlaces recents;
    bool menuIsValid = false;
    EventHandlerRef menuHandler = nullptr;
};
