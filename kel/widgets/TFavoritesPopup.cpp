#include "kel/widgets/TFavoritesPopup.h"

#include "kel/dialogs/TBrowseDialog.h"
#include "kel/foundation/TMutableStringRef.h"
#include "kel/interface/CStandardAlert.h"
#include "kel/interface/KelBaseDialog.h"
#include "kel/interface/KelCommandKeys.h"
#include "kel/nodes/NodeRefOperations.h"

namespace {

constexpr int32_t kDesktopCommandKey = 13;
constexpr int16_t kRemoveFavoriteButton = 2;
constexpr uint16_t kAlertOnParentScreen = 43018;

// The entry that counts back `distance` items from the last one of a group, or empty.
TKelNode CountedFromEnd(const std::vector<TKelNode>& group, MenuItemIndex last,
                        MenuItemIndex item) {
    const size_t distance = last - item;
    return distance < group.size() ? group[group.size() - 1 - distance] : TKelNode();
}

} // namespace

TFavoritesPopup::TFavoritesPopup(const TNodeFilter& filter, IFavoritesCommandHandler* handler)
    : filter(&filter), commandHandler(handler) {
    CreateNewMenu(0, 0, &menu);
}

TFavoritesPopup::~TFavoritesPopup() {
    if (menuHandler != nullptr) {
        RemoveEventHandler(menuHandler);
    }
    if (menu != nullptr) {
        DisposeMenu(menu);
    }
}

StatusCode TFavoritesPopup::SetupWherePopup(KelBaseDialog* dialog, int16_t controlID) {
    ControlRef control = dialog != nullptr ? dialog->GetControlFromLayout(controlID) : nullptr;
    if (control == nullptr || menu == nullptr) {
        return noErr;
    }
    popupControl = control;
    SetControlData(popupControl, kControlNoPart, kControlPopupButtonMenuRefTag, sizeof menu, &menu);
    InsertMenuItemTextWithBCString(menu, BCSTR(""), 0, 0, 0);
    if (!target.IsEmpty()) {
        UpdateTargetItem();
    }
    volumesContainer = TKelNode(GetVirtualNode(kVirtualNodeDevices), false);
    desktopNode = TKelNode(KelCopyDesktopNode(), false);
    favoritesContainer = TKelNode(GetVirtualNode(kVirtualNodePlaces), false);
    ShowFirstItem(popupControl, menu);
    return InstallLocationMenuHandler(menu, FavoritesMenuHandlerDispatch, this, &menuHandler);
}

void TFavoritesPopup::SetTarget(const TKelNode& node) {
    if (node == target) {
        return;
    }
    target = node;
    if (popupControl != nullptr) {
        UpdateTargetItem();
        Draw1Control(popupControl);
    }
}

void TFavoritesPopup::Enable(unsigned char enable) {
    if (popupControl != nullptr) {
        HiliteControl(popupControl, enable != 0 ? 0 : 255);
    }
}

bool TFavoritesPopup::CanNodeAppear(const TKelNode& node) const {
    return ::CanNodeAppear(*filter, node);
}

// The folder's own icon; the computer's or a plain folder's for the top of the tree when it
// has none, and a magnifying glass for the hits of a search.
void TFavoritesPopup::UpdateTargetItem() {
    SetControlValue(popupControl, 1);
    SetItemTextToName(menu, 1, target);
    TIcon icon;
    StatusCode status = target.GetPropertyAsIcon(NodeCode("icon"), icon, false);
    if (status == kBTIconNotFoundErr && target.IsRoot()) {
        icon = SystemIcon(kBTIconComputer, status);
        if (status != noErr) {
            icon = SystemIcon(kBTIconGenericFolder, status);
        }
    } else if (NodeIsQueryHitsContainer(target.PeekNodeRef())) {
        icon = SystemIcon(kBTIconSearch, status);
    }
    if (status == noErr) {
        SetMenuItemIcon(menu, 1, icon);
    }
}

void TFavoritesPopup::FillWherePopup() {
    if (CountMenuItems(menu) > 1) {
        DeleteMenuItems(menu, 2, CountMenuItems(menu) - 1);
    }
    AddVolumesGroup();
    AddFavoritesGroup();
    AddRecentsGroup();
    ShowFirstItem(popupControl, menu);
}

void TFavoritesPopup::AddVolumesGroup() {
    volumes.clear();
    lastVolumeItem = 0;
    if (volumesContainer.IsEmpty() || CopyChildNodes(volumesContainer, volumes) != noErr ||
        volumes.empty()) {
        return;
    }
    AppendMenuSeparator(menu);
    for (const TKelNode& volume : volumes) {
        lastVolumeItem = AppendNodeItem(menu, volume, EntryIcon(volume));
    }
}

// The Desktop is always offered: first, when the user took it out of the favourites.
void TFavoritesPopup::AddFavoritesGroup() {
    favorites.clear();
    lastFavoriteItem = 0;
    if (favoritesContainer.IsEmpty() && desktopNode.IsEmpty()) {
        return;
    }
    TKelNode desktopEntry;
    if (!favoritesContainer.IsEmpty() && !desktopNode.IsEmpty()) {
        OpaqueNodeRef* found = nullptr;
        if (NodeFindVirtualChild(favoritesContainer.PeekNodeRef(), desktopNode.PeekNodeRef(),
                                 &found, 0) != noErr) {
            desktopEntry = desktopNode;
            favorites.push_back(desktopNode);
        } else {
            desktopEntry = TKelNode(found, false);
        }
    }
    std::vector<TKelNode> entries;
    if (!favoritesContainer.IsEmpty() && CopyChildNodes(favoritesContainer, entries) == noErr) {
        favorites.insert(favorites.end(), entries.begin(), entries.end());
    }
    if (favorites.empty()) {
        return;
    }
    AppendMenuSeparator(menu);
    for (const TKelNode& entry : favorites) {
        lastFavoriteItem = AppendNodeItem(menu, entry, EntryIcon(entry));
        if (!desktopEntry.IsEmpty() && entry == desktopEntry) {
            SetItemCmd(menu, lastFavoriteItem, CommandKeyAt(kDesktopCommandKey));
        }
    }
}

void TFavoritesPopup::AddRecentsGroup() {
    firstRecentItem = uint8_t(recents.AppendGroup(menu, *filter));
}

bool TFavoritesPopup::DoMenuChoice(MenuRef chosenMenu, MenuItemIndex item, TKelNodeArray& out) {
    out.clear();
    if (chosenMenu != menu) {
        return false;
    }
    if (item == 1) {
        return true;
    }
    if (item <= lastVolumeItem) {
        const TKelNode volume = CountedFromEnd(volumes, lastVolumeItem, item);
        if (volume.IsEmpty()) {
            return false;
        }
        out = ChoicePathOf(volume);
        return true;
    }
    if (item <= lastFavoriteItem) {
        const TKelNode entry = CountedFromEnd(favorites, lastFavoriteItem, item);
        return !entry.IsEmpty() && ResolveFavorite(entry, out);
    }
    if (firstRecentItem != 0 && item >= firstRecentItem) {
        out = recents.PathAt(item - firstRecentItem);
        return !out.empty();
    }
    return false;
}

// Following an entry may ask the user to connect to a server, so the second, slow try shows
// that the dialog is busy. A cancelled connection is the user's answer, not a failure.
bool TFavoritesPopup::ResolveFavorite(const TKelNode& entry, TKelNodeArray& out) {
    OpaqueNodeRef* resolved = nullptr;
    StatusCode status = NodeFollowAlias(entry.PeekNodeRef(), false, &resolved);
    if (status != noErr) {
        commandHandler->SetBusyState(1);
        status = NodeFollowAlias(entry.PeekNodeRef(), true, &resolved);
        commandHandler->SetBusyState(0);
    }
    if (status == noErr) {
        out = ChoicePathOf(TKelNode(resolved, false));
    }
    if (!out.empty()) {
        return true;
    }
    if (status != noErr && status != userCanceledErr) {
        ReportInvalidFavorite(entry);
    }
    return false;
}

void TFavoritesPopup::ReportInvalidFavorite(const TKelNode& node) {
    if (node.IsEmpty()) {
        return;
    }
    TUniString name;
    node.GetPropertyAsString(NodeCode("dnam"), name);
    TMutableStringRef message = BundleText("Cant Resolve Alias NotFound").CopyMutable(0);
    message.ReplaceParam(0, name.AsBCString());
    const TStringRef& remove = BundleText("Remove Favorite");
    CStandardAlert alert(kAlertCautionAlert, message.AsBCStringRef(), nullptr,
                         remove.AsBCStringRef(), kRemoveFavoriteButton, false, nullptr, nullptr, 1,
                         kAlertOnParentScreen, nullptr, false, true, nullptr);
    int16_t hit = 0;
    if (alert.Run(&hit) == noErr && hit == kRemoveFavoriteButton) {
        DeleteNode(node.PeekNodeRef());
    }
}

StatusCode TFavoritesPopup::FavoritesMenuHandler(EventRef event) {
    return HandleLocationMenuEvent(
        event, menu, popupControl, menuIsValid, [this] { FillWherePopup(); },
        [this](MenuItemIndex item, TKelNodeArray& out) { return DoMenuChoice(menu, item, out); },
        *commandHandler);
}

StatusCode TFavoritesPopup::FavoritesMenuHandlerDispatch(EventHandlerCallRef, EventRef event,
                                                         void* data) {
    return static_cast<TFavoritesPopup*>(data)->FavoritesMenuHandler(event);
}
