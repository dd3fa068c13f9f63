#pragma once

// Asks, on quitting with changed documents, whether to review them, discard them, or cancel.

#include "kel/interface/KelGenericAskDialog.h"

class KelAskReviewDocumentsDialog : public KelGenericAskDialog {
public:
    KelAskReviewDocumentsDialog(const TDialogConfiguration& configuration, uint32_t count)
        : KelGenericAskDialog(configuration), documentCount(count) {}

    StatusCode CreateDialog() override;
    StatusCode TerminateWithAlertResult(int16_t hit) override {
        return TerminateWithHit(hit, kKelUserActionReviewDocuments, kKelUserActionDiscardDocuments);
    }

    uint32_t DocumentCount() const { return documentCount; }

private:
    uint32_t documentCount;
};
