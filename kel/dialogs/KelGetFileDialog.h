#pragma once

// The open dialog, and the base of the choose and new folder dialogs. It owns the type popup
// ("Show", control 7 with its label 22): the popup's items come from the client's type list or
// type identifiers and the client's own items, and picking one changes what the filter lets
// the user select.

#include "kel/dialogs/TBrowseDialog.h"

class KelGetFileDialog : public TBrowseDialog {
public:
    explicit KelGetFileDialog(const TDialogConfiguration& configuration,
                              const BEDesc* defaultLocation = nullptr);
    // For the dialogs that derive from this one; wantsTypePopup false gives no popup at all.
    KelGetFileDialog(BCStringRef layoutName, uint32_t acceptAction, const TStringRef& prefsKey,
                     const TDialogConfiguration& configuration, const BEDesc* defaultLocation,
                     bool wantsTypePopup);

    // Rebuilds the popup's entries; a null configuration keeps the client's items as they are.
    void UpdateTypeMenu(KelTypeList** types, const TDialogConfiguration* configuration);
    // The title of a generic kind ("TEXT" of creator "****"); -5699 for a type of no kind.
    static StatusCode GetGenericKindString(unsigned long type, TStringRef& out);
    void SetUpShowFilterMenu();
    // Applies the popup's item to the filter, unless it is the item already acted on.
    void HandleShowPopup(ControlRef control);
    virtual StatusCode AddSelectionToRecents(const BEDesc& list);

    void AssignWindowTitle() override;
    StatusCode GetFirstCustomControl(uint16_t* item) override;
    bool FilterRawKeyEvent(uint16_t key, uint32_t modifiers, EventRef event) override;
    bool ValidateAcceptDialog(uint32_t modifiers) override;
    bool DoKeyEvents(uint16_t key, uint32_t modifiers, int16_t& itemHit) override;
    int32_t ItemHit(int16_t item, int16_t part, uint32_t modifiers) override;
    StatusCode SelectCustomType(KelMenuItemSpec* spec) override;
    StatusCode SelectAllType(uint16_t* kind) override;
    StatusCode FillReply(KelReplyRecord& reply) override;
    void SetupDialogItems() override;
    StatusCode StartDialog() override;
    StatusCode InitDialog() override;
    bool CanChoose() override;
    void NodeBrowserControlNodeDoubleClicked(TNodeBrowserControl& control, TKelNode& node) override;
    TStringRef GetDefaultButtonTitle() override;
    void FixButtons() override;
    void BuildTypeMenu(const TDialogConfiguration& configuration) override;
    StatusCode SetFilterTypeIdentifiers(BCArrayRef identifiers) override;

    ControlRef TypePopup() const { return typePopup; }

protected:
    // Appends one converted node per chosen item of the selection to the reply's list.
    StatusCode AppendChosenItems(KelReplyRecord& reply);
    // What every reply that names items ends with.
    void MarkReplyValid(KelReplyRecord& reply) const;

    ControlRef typePopup = nullptr;
    int16_t selectedPopupItem = -1;
    bool optionKeyDown = false;
    bool wantsTypePopup;

private:
    void ShowTypePopup(bool shown);
    // Selects the popup item and acts on it as if the user had picked it.
    void PickPopupItem(int16_t item);
    void ApplyFilterOf(const TTypeMenuItem& entry);
    // Keeps of the nodes those the new filter still lets the user select, and selects them.
    void Reselect(TKelNodeArray& nodes);
};
