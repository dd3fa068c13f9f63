#pragma once

// The base of every dialog with a file browser. For now it keeps what its create call configured
// (the filter masks, the type list, the creator filter, type identifiers); the window, the browser
// and the sidebar come with the browse dialog's own work, and until then CreateDialog reports that
// the dialog cannot be shown.

#include "kel/interface/__KelDialog.h"

class TBrowseDialog : public __KelDialog {
public:
    TBrowseDialog(const TDialogConfiguration& configuration, BCStringRef layoutName,
                  uint32_t acceptAction);
    ~TBrowseDialog() override;

    StatusCode FillReply(KelReplyRecord& reply) override;
    StatusCode SetFilterTypeIdentifiers(BCArrayRef identifiers) override;
    StatusCode CreateDialog() override;
    StatusCode StartDialog() override;
    void TerminateDialog() override;

    BCStringRef LayoutName() const { return layoutName; }
    uint32_t AcceptAction() const { return acceptAction; }
    const NodeFilterMaskSet& FilterMasks() const { return filterMasks; }
    FourCharCode FileCreatorFilter() const { return fileCreatorFilter; }
    KelTypeList** TypeList() const { return typeList; }
    BCArrayRef TypeIdentifiers() const { return typeIdentifiers; }

protected:
    // Base name of the window in the layout file, such as "Get File"; not owned.
    BCStringRef layoutName;
    // What a successful accept ends the dialog with.
    uint32_t acceptAction;
    NodeFilterMaskSet filterMasks;
    FourCharCode fileCreatorFilter;
    // The client's handle; the client keeps it alive while the dialog lives.
    KelTypeList** typeList;
    // Retained.
    BCArrayRef typeIdentifiers = nullptr;
};
