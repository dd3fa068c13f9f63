#include "kel/dialogs/SaveDialogAlerts.h"

#include "kel/dialogs/TBrowseDialog.h"
#include "kel/interface/CStandardAlert.h"

#include <iterator>

int16_t RunSaveAlert(const SaveAlert& alert) {
    CStandardAlert shown(alert.kind, alert.text.AsBCStringRef(), alert.explanation.AsBCStringRef(),
                         nullptr, alert.cancelButton, false, alert.defaultText.AsBCStringRef(),
                         alert.otherText.AsBCStringRef(), alert.defaultButton, alert.position,
                         alert.filter, false, true, nullptr, kStdAlertCautionIcon);
    int16_t hit = 0;
    shown.Run(&hit);
    return hit;
}

TStringRef BundleTextWith(const char* key, std::initializer_list<TStringRef> params) {
    TMutableStringRef text = BundleText(key).CopyMutable(0);
    // Last mark first, each once: a name may itself hold the text of a later mark.
    auto index = static_cast<int32_t>(params.size());
    for (auto param = std::rbegin(params); param != std::rend(params); ++param) {
        text.ReplaceParam(--index, *param);
    }
    return text;
}
