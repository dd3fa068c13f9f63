// What a browse dialog remembers when it ends: its place and size, the column width, and, when
// the user accepted, the folder it showed (also relative to home, so that the folder follows a
// home that moves) and a recent-folders entry. A cancelled dialog keeps the stored folder.

#include "kel/dialogs/TBrowseDialog.h"
#include "kel/foundation/TKelPrefsStore.h"
#include "kel/nodes/TNodePathHelper.h"

#include <algorithm>

namespace {

// The URL text of leaf with the home folder's URL replaced by "file://~/", or nil when the
// home folder is not on the path.
TStringRef HomeRelativeText(const TKelNodeArray& path, BCURLRef leafURL) {
    const TKelNode home = TKelNode::GetHomeNode();
    if (home.IsEmpty() || std::find(path.begin(), path.end(), home) == path.end()) {
        return TStringRef();
    }
    BCURLRef homeURL = BCCopyHomeDirectoryURLForUser(nullptr);
    if (homeURL == nullptr) {
        return TStringRef();
    }
    BCMutableStringRef text = BCStringCreateMutableCopy(nullptr, 0, BCURLGetString(leafURL));
    const BCStringRef homeText = BCURLGetString(homeURL);
    BCStringFindAndReplace(text, homeText, BCSTR("file://~/"),
                           BCRangeMake(0, BCStringGetLength(homeText)), 0);
    BCRelease(homeURL);
    return TStringRef(text, false);
}

} // namespace

void TBrowseDialog::SaveDialogPrefs() {
    if (modality != kKelModalitySheet) {
        prefs.SetDialogLocationPref(GetLocation());
    }
    TRect bounds;
    GetBounds(bounds);
    prefs.SetDialogSizePref(bounds);
    if (browser != nullptr && browser->ViewStyle() == kColumnViewStyle) {
        prefs.SetDefaultColumnViewColumnWidth(browser->GetDefaultColumnWidth());
    }
    if (userAction == kKelUserActionNone || userAction == acceptAction) {
        SavePath();
    }
    BCPreferencesAppSynchronize(kBCPreferencesCurrentApplication);
}

void TBrowseDialog::SavePath() {
    TKelNodeArray path;
    if (browser == nullptr || browser->GetFullTargetPath(path) != noErr || path.empty()) {
        return;
    }
    TNodePathHelper helper(path);
    if (!helper.IsComplete()) {
        return;
    }
    BCURLRef url = helper.CopyURL();
    if (url == nullptr) {
        return;
    }
    kel_prefs::SetAppValue(prefs.CreateKey(kKelPrefDialogPath), BCURLGetString(url));
    const TStringRef homeKey = prefs.CreateKey(kKelPrefDialogHomeDirectoryPath);
    kel_prefs::RemoveAppValue(homeKey);
    if (const TStringRef relative = HomeRelativeText(path, url); !relative.IsNil()) {
        kel_prefs::SetAppValue(homeKey, relative.AsBCStringRef());
    }
    BCRelease(url);
    prefs.AddRecentPath(path);
}
