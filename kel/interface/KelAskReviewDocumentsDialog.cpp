#include "kel/interface/KelAskReviewDocumentsDialog.h"

namespace {

// The banner key by how many documents there are and whether the application is named.
const char* BannerKey(uint32_t count, bool named) {
    if (count == 0) {
        return named ? "Review Several App Docs Banner" : "Review Several Docs Banner";
    }
    if (count == 1) {
        return named ? "Review App Single Doc Banner" : "Review Single Doc Banner";
    }
    return named ? "Review App Docs Banner" : "Review Docs Banner";
}

} // namespace

StatusCode KelAskReviewDocumentsDialog::CreateDialog() {
    const bool named = !clientName.IsNil();
    TStringRef banner = Localized(BannerKey(documentCount, named));
    if (documentCount > 0) {
        banner = WithParam(banner, 0,
                           TStringRef::CreateWithFormat("%ld", static_cast<long>(documentCount)));
    }
    if (named) {
        banner = WithParam(banner, 1, clientName);
    }
    AlertTexts texts{};
    texts.position = 0x700A;
    texts.banner = banner;
    texts.explanation = Localized("Review Docs Explanation");
    texts.defaultText = Localized("Review Button");
    texts.otherText = Localized("Discard Button");
    CreateAlert(texts);
    return noErr;
}
