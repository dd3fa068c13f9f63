#include "kel/foundation/TKelPrefsStore.h"

#include <unistd.h>

namespace kel_prefs {

bool MayWrite() {
    return getuid() == geteuid();
}

BCTypeRef CopyAppValue(const TStringRef& key) {
    if (key.IsNil()) {
        return nullptr;
    }
    return BCPreferencesCopyAppValue(key.AsBCStringRef(), kBCPreferencesCurrentApplication);
}

void SetAppValue(const TStringRef& key, BCTypeRef value) {
    if (key.IsNil() || !MayWrite()) {
        return;
    }
    BCPreferencesSetAppValue(key.AsBCStringRef(), value, kBCPreferencesCurrentApplication);
}

void RemoveAppValue(const TStringRef& key) {
    SetAppValue(key, nullptr);
}

BCTypeRef CopySharedValue(const TStringRef& key) {
    if (key.IsNil()) {
        return nullptr;
    }
    return BCPreferencesCopyValue(key.AsBCStringRef(), kBCPreferencesAnyApplication,
                                  kBCPreferencesCurrentUser, kBCPreferencesAnyHost);
}

BCTypeRef CopySharedValueFromDisk(const TStringRef& key) {
    BCPreferencesSynchronize(kBCPreferencesAnyApplication, kBCPreferencesCurrentUser,
                             kBCPreferencesAnyHost);
    return CopySharedValue(key);
}

void SetSharedValue(const TStringRef& key, BCTypeRef value) {
    if (key.IsNil() || !MayWrite()) {
        return;
    }
    BCPreferencesSetValue(key.AsBCStringRef(), value, kBCPreferencesAnyApplication,
                          kBCPreferencesCurrentUser, kBCPreferencesAnyHost);
    BCPreferencesSynchronize(kBCPreferencesAnyApplication, kBCPreferencesCurrentUser,
                             kBCPreferencesAnyHost);
}

bool GetInteger(BCTypeRef value, int32_t& out) {
    if (value == nullptr) {
        return false;
    }
    if (BCGetTypeID(value) == BCNumberGetTypeID()) {
        return BCNumberGetValue(static_cast<BCNumberRef>(value), kBCNumberSInt32Type, &out);
    }
    if (BCGetTypeID(value) == BCStringGetTypeID()) {
        out = BCStringGetIntValue(static_cast<BCStringRef>(value));
        return true;
    }
    return false;
}

bool IsAffirmative(BCTypeRef value) {
    if (value == nullptr || BCGetTypeID(value) != BCStringGetTypeID()) {
        return false;
    }
    auto text = static_cast<BCStringRef>(value);
    return BCStringCompare(text, BCSTR("yes"), kBCCompareCaseInsensitive) == kBCCompareEqualTo ||
           BCStringCompare(text, BCSTR("1"), 0) == kBCCompareEqualTo;
}

} // namespace kel_prefs
