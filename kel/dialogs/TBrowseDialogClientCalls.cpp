// The answers of the base browse dialog to the client's control messages that only some
// dialogs serve: a dialog without a type popup or a name field refuses them as the wrong
// class, and the open and save dialogs override them.

#include "kel/dialogs/TBrowseDialog.h"

StatusCode TBrowseDialog::GetFirstCustomControl(uint16_t* item) {
    *item = 0;
    return kKelWrongDialogClassErr;
}

StatusCode TBrowseDialog::SelectSaveFileName(ControlEditTextSelectionRec*) {
    return kKelWrongDialogClassErr;
}

StatusCode TBrowseDialog::SelectCustomType(KelMenuItemSpec*) {
    return kKelWrongDialogClassErr;
}

StatusCode TBrowseDialog::SelectAllType(uint16_t*) {
    return kKelWrongDialogClassErr;
}

StatusCode TBrowseDialog::IsPreviewShowing(unsigned char* showing) {
    *showing = 0;
    if (!NodeBrowserControlIsPreviewAllowed()) {
        return kKelNotApplicableErr;
    }
    TKelNodeArray selection;
    if (GetSelection(selection) != noErr || selection.size() != 1) {
        return kKelBadCustomControlParamErr;
    }
    *showing = selection.front().IsContainer() ? 0 : 1;
    return noErr;
}

void TBrowseDialog::AddTypeMenuItems() {
    if (typeMenu == nullptr) {
        return;
    }
    DeleteMenuItems(typeMenu, 1, CountMenuItems(typeMenu));
    for (const TTypeMenuItem& item : typeMenuItems) {
        if (item.kind == TTypeMenuItem::kSeparator) {
            AppendMenuItemTextWithBCString(typeMenu, BCSTR(""), kMenuItemAttrSeparator, 0, nullptr);
        } else {
            AppendMenuItemTextWithBCString(typeMenu, item.title.AsBCStringRef(), 0, 0, nullptr);
        }
    }
}

void TBrowseDialog::AttachTypeMenu(ControlRef popup) {
    SetControlData(popup, kControlNoPart, kControlPopupButtonMenuRefTag, sizeof typeMenu,
                   &typeMenu);
    CalcMenuSize(typeMenu);
    AddTypeMenuItems();
    SetControlMaximum(popup, static_cast<int16_t>(CountMenuItems(typeMenu)));
}
