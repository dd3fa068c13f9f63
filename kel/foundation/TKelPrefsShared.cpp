// The settings of TKelPrefs that are not tied to one dialog: view style, column width, search
// scope and the display of invisible items.

#include "kel/foundation/KelBundle.h"
#include "kel/foundation/TKelPrefs.h"
#include "kel/foundation/TKelPrefsStore.h"

namespace {

TObjectRef NumberValue(int32_t value) {
    return {BCNumberCreate(kBCAllocatorDefault, kBCNumberSInt32Type, &value), false};
}

} // namespace

TKelPrefs::View TKelPrefs::GetView(BCStringRef key) const {
    TObjectRef value(kel_prefs::CopySharedValue(key), false);
    int32_t stored = 0;
    return kel_prefs::GetInteger(value.Get(), stored) && stored == kListView ? kListView
                                                                             : kColumnView;
}

void TKelPrefs::SetView(View view, BCStringRef key) const {
    kel_prefs::SetSharedValue(key, NumberValue(view == kListView ? kListView : kColumnView).Get());
}

bool TKelPrefs::GetDefaultColumnViewColumnWidth(uint16_t* width) const {
    TObjectRef value(kel_prefs::CopyAppValue(BCSTR("KelPanelPreferredColumnContentWidth")), false);
    int32_t stored = 0;
    if (width == nullptr || value.IsNil() || BCGetTypeID(value.Get()) != BCNumberGetTypeID() ||
        !kel_prefs::GetInteger(value.Get(), stored)) {
        return false;
    }
    *width = static_cast<uint16_t>(stored);
    return true;
}

void TKelPrefs::SetDefaultColumnViewColumnWidth(uint16_t width) const {
    kel_prefs::SetAppValue(BCSTR("KelPanelPreferredColumnContentWidth"), NumberValue(width).Get());
}

TKelPrefs::QueryScope TKelPrefs::GetQueryScope() const {
    TObjectRef value(kel_prefs::CopySharedValue(BCSTR("KelPanelBeaconSearchScopeMode")), false);
    int32_t stored = kQueryScopeEverywhere;
    if (value.IsNil() || BCGetTypeID(value.Get()) != BCNumberGetTypeID() ||
        !kel_prefs::GetInteger(value.Get(), stored)) {
        return kQueryScopeEverywhere;
    }
    return static_cast<QueryScope>(stored);
}

void TKelPrefs::SetQueryScope(QueryScope scope) const {
    kel_prefs::SetSharedValue(BCSTR("KelPanelBeaconSearchScopeMode"), NumberValue(scope).Get());
}

bool TKelPrefs::GetInvisiblePrefs() {
    TStringRef showAllKey = KelBundle::GetStringResourceNonLocalized(BCSTR("VelmoShowAllFiles"));
    TObjectRef showAll(
        BCPreferencesCopyAppValue(showAllKey.AsBCStringRef(), kBCPreferencesAnyApplication), false);
    if (showAll.IsNil()) {
        showAll =
            TObjectRef(BCPreferencesCopyValue(showAllKey.AsBCStringRef(), BCSTR("TKGlobal"),
                                              kBCPreferencesCurrentUser, kBCPreferencesAnyHost),
                       false);
    }
    TStringRef expertKey = KelBundle::GetStringResourceNonLocalized(BCSTR("ExpertMode"));
    TObjectRef expert(
        BCPreferencesCopyAppValue(expertKey.AsBCStringRef(), kBCPreferencesAnyApplication), false);
    return kel_prefs::IsAffirmative(showAll.Get()) || kel_prefs::IsAffirmative(expert.Get());
}
