#pragma once

// Everything a create or blocking call hands to a dialog's constructor. It lives on the caller's
// stack for the time of the construction and owns one reference to each of its six strings and,
// when it came from a current options record, to popupExtension.

#include "kel/interface/NodeFilterMaskSet.h"

#include <kel/KelServices.h>

struct TDialogConfiguration : KelDialogCreationOptions {
    // From the older record, which may be null: texts become strings in the application's text
    // encoding and replies carry "bfs " items.
    TDialogConfiguration(const KelDialogOptions* options, KelEventProc eventProc,
                         KelPreviewProc previewProc, KelObjectFilterProc filterProc,
                         void* clientData);
    // From the current record, which may be null: replies carry "bfrf" items.
    TDialogConfiguration(const KelDialogCreationOptions* options, KelEventProc eventProc,
                         KelPreviewProc previewProc, KelObjectFilterProc filterProc,
                         void* clientData);
    TDialogConfiguration(const TDialogConfiguration&) = delete;
    TDialogConfiguration& operator=(const TDialogConfiguration&) = delete;
    ~TDialogConfiguration();

    KelEventProc eventProc;
    KelPreviewProc previewProc;
    KelObjectFilterProc filterProc;
    void* clientData;
    FourCharCode selectionType;
    Handle legacyPopupExtension = nullptr;
    KelTypeList** typeList = nullptr;
    NodeFilterMaskSet filterMasks;
    FourCharCode fileCreatorFilter = 0;

private:
    void SetDefaults();
};
