// The names under which TKelPrefs stores its values.

#include "kel/foundation/KelBundle.h"
#include "kel/foundation/TKelPrefs.h"

BCStringRef kKelPrefDialogPosition = nullptr;
BCStringRef kKelPrefDialogSize = nullptr;
BCStringRef kKelPrefDialogPath = nullptr;
BCStringRef kKelPrefDialogHomeDirectoryPath = nullptr;
BCStringRef kKelPrefWindowMinimized = nullptr;
BCStringRef kKelPrefExtensionHidden = nullptr;

namespace {

TStringRef* gMaximumRecentFoldersKey = nullptr;
TStringRef* gRecentFoldersKey = nullptr;
TStringRef* gShowAllFilesKey = nullptr;
TStringRef* gExpertModeKey = nullptr;

// Kept behind a pointer that is never freed: the names live as long as the process.
BCStringRef Resolve(TStringRef*& cache, BCStringRef name) {
    if (cache == nullptr) {
        cache = new TStringRef(KelBundle::GetStringResourceNonLocalized(name));
    }
    return cache->AsBCStringRef();
}

} // namespace

void TKelPrefs::MakeKeyLeaves() {
    if (kKelPrefDialogPosition != nullptr) {
        return;
    }
    kKelPrefDialogPosition = BCSTR("Position");
    kKelPrefDialogSize = BCSTR("Size");
    kKelPrefDialogPath = BCSTR("Path");
    kKelPrefDialogHomeDirectoryPath = BCSTR("HomeDirectoryPath");
    kKelPrefWindowMinimized = BCSTR("Disclosure");
    kKelPrefExtensionHidden = BCSTR("ExtensionHidden");
}

BCStringRef TKelPrefs::MaximumRecentFoldersKey() {
    return Resolve(gMaximumRecentFoldersKey, BCSTR("VelmoMaximumRecentFoldersKey"));
}

BCStringRef TKelPrefs::RecentFoldersKey() {
    return Resolve(gRecentFoldersKey, BCSTR("VelmoRecentFoldersKey"));
}

BCStringRef TKelPrefs::ShowAllFilesKey() {
    return Resolve(gShowAllFilesKey, BCSTR("VelmoShowAllFiles"));
}

BCStringRef TKelPrefs::ExpertModeKey() {
    return Resolve(gExpertModeKey, BCSTR("ExpertMode"));
}
