#include "kel/interface/KelRouting.h"

#include "basalt/linkage/Linkage.h"
#include "kel/foundation/TStringRef.h"
#include "kel/interface/KelProcess.h"

#include <array>

namespace {

constexpr std::array<const char*, static_cast<size_t>(TKKelEntry::Count)> kEntryNames = {
    "_TKKelGetDefaultDialogCreationOptions",
    "_TKKelCreateGetFileDialog",
    "_TKKelCreatePutFileDialog",
    "_TKKelCreateAskReviewDocumentsDialog",
    "_TKKelCreateAskSaveChangesDialog",
    "_TKKelCreateAskDiscardChangesDialog",
    "_TKKelCreateChooseFileDialog",
    "_TKKelCreateChooseFolderDialog",
    "_TKKelCreateChooseVolumeDialog",
    "_TKKelCreateChooseObjectDialog",
    "_TKKelCreateNewFolderDialog",
    "_TKKelDialogRun",
    "_TKKelCompleteSave",
    "_TKKelDialogDispose",
    "_TKKelDialogGetWindow",
    "_TKKelDialogGetUserAction",
    "_TKKelDialogGetReply",
    "_TKKelDisposeReply",
    "_TKKelCustomControl",
    "_TKKelDialogGetSaveFileName",
    "_TKKelDialogSetSaveFileName",
    "_TKKelDialogGetSaveFileExtensionHidden",
    "_TKKelDialogSetSaveFileExtensionHidden",
    "_TKKelDialogSetFilterTypeIdentifiers",
};

// The compatibility fixes that must all be allowed for the second implementation to be used.
constexpr std::array kRequiredFixes = {"5026050", "5110700", "5272262", "4924595",
                                       "5441085", "5433591", "5501511"};

bool routingEnabled = false;
bool routinesLoaded = false;
std::array<void*, kEntryNames.size()> routines{};

bool ReadRoutingPreference() {
    BCStringRef identifier = MainBundleIdentifier();
    if (identifier == nullptr) {
        return true;
    }
    Boolean exists = false;
    const Boolean value =
        BCPreferencesGetAppBooleanValue(BCSTR("VelmoUseTerraceKelServices"), identifier, &exists);
    return value != 0 || exists == 0;
}

bool IsMainThread() {
    return BCRunLoopGetCurrent() == BCRunLoopGetMain();
}

// The second implementation's bundle, found on the bundle search path, which is where the
// platform keeps its frameworks.
BCBundleRef FindTerraceKitBundle() {
    return BCBundleGetBundleWithIdentifier(BCSTR("com.velmo.TerraceKit"));
}

// Stops at the first entry point that is missing; they are all looked up again next time.
bool LoadEntryPoints(BCBundleRef bundle) {
    if (BCBundleLoadExecutable(bundle) == 0) {
        return false;
    }
    for (size_t index = 0; index < kEntryNames.size(); ++index) {
        TStringRef name = TStringRef::Create(kEntryNames[index], kBCStringEncodingASCII);
        routines[index] = BCBundleGetFunctionPointerForName(bundle, name.AsBCStringRef());
        if (routines[index] == nullptr) {
            return false;
        }
    }
    return true;
}

} // namespace

bool LoadTKKelRoutines() {
    static const bool preferenceAllowsRouting = [] {
        routingEnabled = ReadRoutingPreference();
        return routingEnabled;
    }();
    (void)preferenceAllowsRouting;
    if (!routingEnabled) {
        return false;
    }
    if (routinesLoaded) {
        return true;
    }
    if (ShouldNotUseTKKel() || !IsMainThread()) {
        routingEnabled = false;
        return false;
    }
    BCBundleRef bundle = FindTerraceKitBundle();
    if (bundle == nullptr) {
        return false;
    }
    routinesLoaded = LoadEntryPoints(bundle);
    return routinesLoaded;
}

bool ShouldNotUseTKKel() {
    enum class Answer { Unknown, MustNot, May };
    static Answer answer = Answer::Unknown;
    if (answer == Answer::Unknown) {
        answer = Answer::May;
        for (const char* fix : kRequiredFixes) {
            if (_BSCheckFix(TStringRef::Create(fix, kBCStringEncodingASCII).AsBCStringRef()) == 0) {
                answer = Answer::MustNot;
                break;
            }
        }
    }
    return answer == Answer::MustNot;
}

void* TKKelRoutine(TKKelEntry entry) {
    return routines[static_cast<size_t>(entry)];
}
