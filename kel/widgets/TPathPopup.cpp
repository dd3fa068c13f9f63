#include "kel/widgets/TPathPopup.h"

#include "kel/dialogs/TBrowseDialog.h"
#include "kel/nodes/TNodePathHelper.h"

TPathPopup::TPathPopup(const TNodeFilter& filter) : filter(&filter) {
    CreateNewMenu(0, 0, &menu);
}

TPathPopup::~TPathPopup() {
    if (menuHandler != nullptr) {
        RemoveEventHandler(menuHandler);
    }
    if (menu != nullptr) {
        DisposeMenu(menu);
    }
}

StatusCode TPathPopup::SetPopupControl(TBrowseDialog* owner, ControlRef control) {
    dialog = owner;
    popupControl = control;
    if (StatusCode status = SetControlData(popupControl, kControlNoPart,
                                           kControlPopupButtonMenuRefTag, sizeof menu, &menu)) {
        return status;
    }
    InsertMenuItemTextWithBCString(menu, BCSTR(""), 0, 0, 0);
    if (!target.IsEmpty()) {
        if (StatusCode status = UpdateTargetItem()) {
            return status;
        }
    }
    ShowFirstItem(popupControl, menu);
    return InstallLocationMenuHandler(menu, MenuHandlerDispatch, this, &menuHandler);
}

void TPathPopup::SetTarget(const TKelNode& node) {
    if (node == target) {
        return;
    }
    target = node;
    ancestors.clear();
    menuIsValid = false;
    if (popupControl != nullptr) {
        UpdateTargetItem();
        Draw1Control(popupControl);
    }
}

bool TPathPopup::CanNodeAppear(const TKelNode& node) const {
    return ::CanNodeAppear(*filter, node);
}

// Unlike the where popup, a search's hits show no icon of their own here.
StatusCode TPathPopup::UpdateTargetItem() {
    if (popupControl == nullptr) {
        return noErr;
    }
    SetControlValue(popupControl, 1);
    SetItemTextToName(menu, 1, target);
    TIcon icon;
    StatusCode status = target.GetPropertyAsIcon(NodeCode("icon"), icon, false);
    if (status == kBTIconNotFoundErr && target.IsRoot()) {
        icon = SystemIcon(kBTIconComputer, status);
        if (status != noErr) {
            icon = SystemIcon(kBTIconGenericFolder, status);
        }
    }
    if (status != noErr) {
        return status;
    }
    SetMenuItemIcon(menu, 1, icon);
    return noErr;
}

// A target that has gone since it was set falls back to the top of the tree; item 1 keeps
// its old text until the next SetTarget.
void TPathPopup::FillPopup() {
    if (CountMenuItems(menu) > 1) {
        DeleteMenuItems(menu, 2, CountMenuItems(menu) - 1);
    }
    ancestors.clear();
    if (!target.Validate()) {
        target = TKelNode(TKelNode::GetRootNodeRef(), true);
    }
    if (!target.IsRoot()) {
        TNodePathHelper helper(target.PeekNodeRef());
        const TKelNodeArray& path = helper.NodePath();
        if (path.size() >= 2) {
            ancestors.assign(std::next(path.rbegin()), path.rend());
        }
        for (const TKelNode& ancestor : ancestors) {
            AppendNodeItem(menu, ancestor, PlainIcon(ancestor));
        }
    }
    lastPathItem = CountMenuItems(menu);
    AddRecentsGroup();
    ShowFirstItem(popupControl, menu);
}

void TPathPopup::AddRecentsGroup() {
    recents.AppendGroup(menu, *filter);
}

bool TPathPopup::DoMenuChoice(MenuRef chosenMenu, MenuItemIndex item, TKelNodeArray& out) {
    out.clear();
    if (chosenMenu != menu) {
        return false;
    }
    if (item == 1) {
        return true;
    }
    if (item <= lastPathItem) {
        const size_t index = item - 2;
        if (index >= ancestors.size() || ancestors[index].IsEmpty()) {
            return false;
        }
        out = ChoicePathOf(ancestors[index]);
        return true;
    }
    const long index = long(item) - 1 - long(CountMenuItems(menu)) + long(recents.Count());
    if (index < 0) {
        return false;
    }
    out = recents.PathAt(size_t(index));
    return !out.empty();
}

StatusCode TPathPopup::MenuHandler(EventRef event) {
    return HandleLocationMenuEvent(
        event, menu, popupControl, menuIsValid, [this] { FillPopup(); },
        [this](MenuItemIndex item, TKelNodeArray& out) { return DoMenuChoice(menu, item, out); },
        *dialog);
}

StatusCode TPathPopup::MenuHandlerDispatch(EventHandlerCallRef, EventRef event, void* data) {
    return static_cast<TPathPopup*>(data)->MenuHandler(event);
}
