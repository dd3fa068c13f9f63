#include "kel/dialogs/KelGetFileDialog.h"

#include "basalt/files/BFRef.h"
#include "basalt/nodes/NodeProperties.h"
#include "basalt/types/BLRegistry.h"
#include "kel/interface/KelCommandKeys.h"
#include "kel/interface/KelRecordConversion.h"

#include <algorithm>
#include <basalt/files/BEDesc.h>
#include <climits>

namespace {

constexpr uint16_t kReturnCharacter = 13;
constexpr uint16_t kDownArrowCharacter = 31;
constexpr int32_t kOpenCommandKey = 0;
constexpr FourCharCode kReplyFormatRef = 0x62667266; // "bfrf"

bool AnyFile(const TKelNodeArray& nodes) {
    return std::any_of(nodes.begin(), nodes.end(),
                       [](const TKelNode& node) { return !node.IsContainer(); });
}

} // namespace

KelGetFileDialog::KelGetFileDialog(const TDialogConfiguration& configuration,
                                   const BEDesc* defaultLocation)
    : KelGetFileDialog(BCSTR("Get File"), kKelUserActionOpen, TStringRef(BCSTR("GetFile")),
                       configuration, defaultLocation, true) {}

KelGetFileDialog::KelGetFileDialog(BCStringRef layoutName, uint32_t acceptAction,
                                   const TStringRef& prefsKey,
                                   const TDialogConfiguration& configuration,
                                   const BEDesc* defaultLocation, bool wantsTypePopup)
    : TBrowseDialog(layoutName, acceptAction, prefsKey, configuration, defaultLocation,
                    BCSTR("KelPanelFileListModeForOpenMode")),
      wantsTypePopup(wantsTypePopup) {
    UpdateTypeMenu(configuration.typeList, &configuration);
}

void KelGetFileDialog::AssignWindowTitle() {
    AssignTitleFrom("Open Title", "Open Default Title");
}

TStringRef KelGetFileDialog::GetDefaultButtonTitle() {
    return BundleText("Open Button");
}

StatusCode KelGetFileDialog::GetFirstCustomControl(uint16_t* item) {
    if (firstCustomItem < 0) {
        return kKelNotApplicableErr;
    }
    *item = static_cast<uint16_t>(firstCustomItem);
    return noErr;
}

void KelGetFileDialog::SetupDialogItems() {
    TBrowseDialog::SetupDialogItems();
    if ((optionFlags & kKelOptNoTypePopup) == 0 && wantsTypePopup && !typeMenuItems.empty()) {
        typePopup = Control(kBrowseTypePopup);
        if (typePopup != nullptr) {
            SetControlMinimum(typePopup, 0);
            SetControlValue(typePopup, 0);
        }
    }
    if (typePopup == nullptr) {
        ShowTypePopup(false);
    }
    if (browserView != nullptr) {
        SetKeyboardFocus(windowRef, browserView, kControlFocusNextPart);
    }
}

void KelGetFileDialog::ShowTypePopup(bool shown) {
    ControlRef popup = Control(kBrowseTypePopup);
    if (popup == nullptr) {
        return;
    }
    ControlRef label = Control(kBrowseTypePopupLabel);
    if (shown) {
        ShowControl(popup);
        if (label != nullptr) {
            ShowControl(label);
        }
    } else {
        HideControl(popup);
        if (label != nullptr) {
            HideControl(label);
        }
    }
    // The rows bound under the popup follow it up or down.
    AdjustViewPositionBySizeAndExtra(popup, shown ? kShiftDown : kShiftUp);
}

StatusCode KelGetFileDialog::InitDialog() {
    SetupDialogItems();
    if (typePopup != nullptr) {
        SetUpShowFilterMenu();
    }
    return TBrowseDialog::InitDialog();
}

StatusCode KelGetFileDialog::StartDialog() {
    if (browserView != nullptr) {
        SetKeyboardFocus(windowRef, browserView, kControlFocusNextPart);
    }
    // A client may have picked an item between the run and now; that choice stands.
    if (typePopup != nullptr && GetControlValue(typePopup) == 0) {
        uint16_t wanted = (optionFlags & kKelOptAllReadable) != 0 ? 1 : 0;
        StatusCode status = SelectAllType(&wanted);
        if (status != noErr && wanted == 1) {
            wanted = 0;
            status = SelectAllType(&wanted);
        }
        if (status != noErr) {
            KelMenuItemSpec first{};
            first.menuCreator = typeMenuItems.front().creator;
            first.menuType = typeMenuItems.front().fileType;
            status = SelectCustomType(&first);
        }
        if (status != noErr && !typeMenuItems.empty()) {
            PickPopupItem(1);
        }
    }
    return TBrowseDialog::StartDialog();
}

StatusCode KelGetFileDialog::SetFilterTypeIdentifiers(BCArrayRef identifiers) {
    TBrowseDialog::SetFilterTypeIdentifiers(identifiers);
    UpdateTypeMenu(nullptr, nullptr);
    if (typePopup == nullptr) {
        if (typeMenuItems.empty()) {
            return noErr;
        }
        typePopup = Control(kBrowseTypePopup);
        if (typePopup == nullptr) {
            return noErr;
        }
        ShowTypePopup(true);
    } else if (typeMenuItems.empty()) {
        ShowTypePopup(false);
        typePopup = nullptr;
        return noErr;
    }
    SetUpShowFilterMenu();
    if (browser != nullptr && !typeMenuItems.empty()) {
        PickPopupItem(1);
        browser->Refresh();
    }
    return noErr;
}

bool KelGetFileDialog::FilterRawKeyEvent(uint16_t key, uint32_t modifiers, EventRef event) {
    if (key != kReturnCharacter && (modifiers & cmdKey) == 0) {
        return false;
    }
    if (key == kDownArrowCharacter || key == CommandKeyAt(kOpenCommandKey)) {
        TKelNodeArray selection;
        if (GetSelection(selection) == noErr && AnyFile(selection) && CanChoose() &&
            defaultControl != nullptr) {
            BTViewSimulateClick(defaultControl, kControlButtonPart, modifiers, nullptr);
            return true;
        }
    }
    return TBrowseDialog::FilterRawKeyEvent(key, modifiers, event);
}

bool KelGetFileDialog::DoKeyEvents(uint16_t key, uint32_t modifiers, int16_t& itemHit) {
    if (key != 0 && (modifiers & cmdKey) != 0) {
        editMenu.AdjustMenu();
        if (ProcessModifierKeys(key, modifiers, itemHit)) {
            return true;
        }
        return TBrowseDialog::DoKeyEvents(key, modifiers, itemHit);
    }
    optionKeyDown = (modifiers & optionKey) != 0;
    if (optionKeyDown && modality == kKelModalityModeless && DefaultKeydown(key, itemHit)) {
        return true;
    }
    return TBrowseDialog::DoKeyEvents(key, modifiers, itemHit);
}

void KelGetFileDialog::NodeBrowserControlNodeDoubleClicked(TNodeBrowserControl& control,
                                                           TKelNode& node) {
    TBrowseDialog::NodeBrowserControlNodeDoubleClicked(control, node);
    if (!CanChoose()) {
        return;
    }
    const bool package =
        (optionFlags & kKelOptPackagesSelectable) != 0 && NodeIsPackage(node.PeekNodeRef());
    if (!node.IsContainer() || package) {
        TryAcceptDialog(optionKeyDown ? optionKey : 0);
    }
}

bool KelGetFileDialog::CanChoose() {
    if ((actionState & kActionOpenRefused) != 0) {
        return false;
    }
    return TBrowseDialog::CanChoose();
}

void KelGetFileDialog::FixButtons() {
    TBrowseDialog::FixButtons();
    if (defaultControl != nullptr) {
        if (CanChoose()) {
            EnableControl(defaultControl);
        } else {
            DisableControl(defaultControl);
        }
    }
}

bool KelGetFileDialog::ValidateAcceptDialog(uint32_t modifiers) {
    TKelNodeArray selection;
    if (GetSelection(selection) != noErr) {
        return false;
    }
    // Bits the client sets while it hears of the open refuse this accept only.
    const uint32_t savedState = actionState;
    selection.Sort(NodeCode("pnam"));
    NotifySelection(selection, kKelCBOpenSelection);
    bool accepted = false;
    if ((modifiers & optionKey) != 0 && modality == kKelModalityModeless) {
        // A modeless dialog stays up and hands the client an open of its own.
        client.record.userAction = kKelUserActionOpen;
        userAction = kKelUserActionOpen;
        client.Event(kKelCBUserAction);
        userAction = kKelUserActionNone;
        SetPortWindowPort(windowRef);
    } else {
        accepted = TBrowseDialog::ValidateAcceptDialog(modifiers);
    }
    SetKelState(savedState);
    return accepted;
}

StatusCode KelGetFileDialog::FillReply(KelReplyRecord& reply) {
    BEDesc list{typeNull, nullptr};
    BECreateList(nullptr, 0, false, &list);
    reply.selection = list;
    if (userAction != kKelUserActionOpen && userAction != kKelUserActionChoose) {
        KelDisposeReply(&reply);
        return userAction == kKelUserActionCancel ? StatusCode(userCanceledErr)
                                                  : StatusCode(kKelWrongStateErr);
    }
    if (const StatusCode status = AppendChosenItems(reply); status != noErr) {
        return status;
    }
    MarkReplyValid(reply);
    BEDesc chosen = reply.selection;
    AddSelectionToRecents(chosen);
    return noErr;
}

StatusCode KelGetFileDialog::AppendChosenItems(KelReplyRecord& reply) {
    TKelNodeArray selection;
    if (const StatusCode status = GetSelection(selection); status != noErr) {
        return status;
    }
    BEDesc list = reply.selection;
    long index = 0;
    StatusCode status = noErr;
    for (const TKelNode& node : selection) {
        if (!filter.CanChoose(node)) {
            continue;
        }
        TKelNode item = node;
        if (NodeIsAlias(node.PeekNodeRef()) && (optionFlags & kKelOptKeepAliases) == 0) {
            status = node.FollowAlias(true, item);
        }
        BEDesc desc{typeNull, nullptr};
        if (status == noErr) {
            status = item.GetAsBEDesc(desc, client.SelectionType());
        }
        if (status == noErr) {
            status = BEPutDesc(&list, ++index, &desc);
            BEDisposeDesc(&desc);
        }
        if (status != noErr) {
            break;
        }
    }
    reply.selection = list;
    return status;
}

void KelGetFileDialog::MarkReplyValid(KelReplyRecord& reply) const {
    reply.keyScript = GetScriptManagerVariable(smKeyScript);
    reply.isStationery = 0;
    reply.translationNeeded = 0;
    reply.fileTranslation = nullptr;
    reply.validRecord = 1;
}

StatusCode KelGetFileDialog::AddSelectionToRecents(const BEDesc& list) {
    if ((optionFlags & kKelOptNoRecents) != 0) {
        return noErr;
    }
    long count = 0;
    StatusCode status = BECountItems(&list, &count);
    for (long index = 1; status == noErr && index <= count; ++index) {
        BFRef ref{};
        DescType type = 0;
        Size size = 0;
        BEKeyword keyword = 0;
        status =
            BEGetNthPtr(&list, index, kReplyFormatRef, &keyword, &type, &ref, sizeof ref, &size);
        if (status == noErr) {
            status = AddFileToRecents(ref);
        }
    }
    return status;
}
