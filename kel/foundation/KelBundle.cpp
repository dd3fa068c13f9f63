#include "kel/foundation/KelBundle.h"

namespace KelBundle {

namespace {

// Written without a lock: every writer finds the same bundle.
BCBundleRef gBundle = nullptr;

TStringRef CopyFromTable(const TStringRef& key, BCStringRef table) {
    if (key.IsNil()) {
        return {};
    }
    BCStringRef found = BCBundleCopyLocalizedString(KelGetBundle(), key.AsBCStringRef(),
                                                    key.AsBCStringRef(), table);
    if (found == nullptr) {
        found = static_cast<BCStringRef>(BCRetain(key.AsBCStringRef()));
    }
    // Retained again on purpose: see the header.
    return {found, true};
}

} // namespace

BCBundleRef KelGetBundle() {
    if (gBundle == nullptr) {
        gBundle = BCBundleGetBundleWithIdentifier(BCSTR("com.velmo.KelServices"));
    }
    return gBundle;
}

TStringRef GetStringResource(TStringRef key) {
    return CopyFromTable(key, BCSTR("Localized"));
}

TStringRef GetStringResourceNonLocalized(TStringRef key) {
    return CopyFromTable(key, BCSTR("KelServices"));
}

} // namespace KelBundle
