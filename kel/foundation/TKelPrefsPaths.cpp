// The locations TKelPrefs remembers: the dialog's last folder, stored as URL text (relative to
// the home folder as "file://~/..." where it can be), and the recent folders shared by all
// applications, newest first.

#include "kel/foundation/TKelPrefs.h"
#include "kel/foundation/TKelPrefsStore.h"
#include "kel/foundation/TMutableStringRef.h"
#include "kel/nodes/TNodePathHelper.h"

namespace {

BCURLRef AsURL(const TObjectRef& ref) {
    return static_cast<BCURLRef>(ref.Get());
}

// The folder a stored URL text leads to, or an empty node.
TKelNode LeafOfURLText(BCStringRef text) {
    TObjectRef url(BCURLCreateWithString(nullptr, text, nullptr), false);
    if (url.IsNil()) {
        return TKelNode();
    }
    TNodePathHelper helper(AsURL(url));
    return helper.IsComplete() && !helper.NodePath().empty() ? helper.NodePath().back()
                                                             : TKelNode();
}

bool IsString(BCTypeRef value) {
    return value != nullptr && BCGetTypeID(value) == BCStringGetTypeID();
}

// Replaces prefix with replacement when it occurs within the first `within` characters.
void ReplaceNearStart(BCMutableStringRef text, BCStringRef prefix, BCStringRef replacement,
                      BCIndex within) {
    BCIndex length = std::min(BCStringGetLength(text), within);
    BCStringFindAndReplace(text, prefix, replacement, BCRange{0, length}, 0);
}

} // namespace

void TKelPrefs::AddRecentPath(const TKelNodeArray& path) const {
    if (!kel_prefs::MayWrite() || path.empty()) {
        return;
    }
    TNodePathHelper helper(path);
    TObjectRef url(helper.IsComplete() ? helper.CopyURL() : nullptr, false);
    if (url.IsNil()) {
        return;
    }
    TObjectRef stored(kel_prefs::CopySharedValueFromDisk(RecentFoldersKey()), false);
    bool isArray = !stored.IsNil() && BCGetTypeID(stored.Get()) == BCArrayGetTypeID();
    auto storedArray = static_cast<BCArrayRef>(isArray ? stored.Get() : nullptr);
    BCIndex count = isArray ? BCArrayGetCount(storedArray) : 0;
    for (BCIndex i = 0; i < count; ++i) {
        BCTypeRef entry = BCArrayGetValueAtIndex(storedArray, i);
        if (IsString(entry) && LeafOfURLText(static_cast<BCStringRef>(entry)) == path.back()) {
            return;
        }
    }
    BCMutableArrayRef list = isArray ? BCArrayCreateMutableCopy(nullptr, 0, storedArray)
                                     : BCArrayCreateMutable(nullptr, 0, &kBCTypeArrayCallBacks);
    TObjectRef held(list, false);
    if (count > 0 && count >= BCIndex(maximumRecentFolders)) {
        BCArrayRemoveValueAtIndex(list, count - 1);
    }
    BCArrayInsertValueAtIndex(list, 0, BCURLGetString(AsURL(url)));
    kel_prefs::SetSharedValue(RecentFoldersKey(), list);
}

bool TKelPrefs::CopyPathWithKey(const TStringRef& key, TKelNodeArray& out) const {
    TObjectRef stored(kel_prefs::CopyAppValue(key), false);
    if (!IsString(stored.Get())) {
        return false;
    }
    BCMutableStringRef text =
        BCStringCreateMutableCopy(nullptr, 0, static_cast<BCStringRef>(stored.Get()));
    TObjectRef heldText(text, false);
    TObjectRef home(BCCopyHomeDirectoryURLForUser(nullptr), false);
    if (!home.IsNil()) {
        ReplaceNearStart(text, BCSTR("file://~/"), BCURLGetString(AsURL(home)), 9);
        ReplaceNearStart(text, BCSTR("file://localhost/private/"), BCSTR("file://localhost/"), 25);
    }
    TObjectRef url(BCURLCreateWithString(nullptr, text, nullptr), false);
    if (url.IsNil()) {
        return false;
    }
    TNodePathHelper helper(AsURL(url));
    if (!helper.IsComplete()) {
        return false;
    }
    out = helper.NodePath();
    return true;
}

bool TKelPrefs::CopyDefaultPath(TKelNodeArray& out) const {
    out.clear();
    return CopyPathWithKey(CreateKey(kKelPrefDialogHomeDirectoryPath), out) ||
           CopyPathWithKey(CreateKey(kKelPrefDialogPath), out);
}
