// Node properties. Names come from the node itself; types from the name through the type
// database; dates, sizes and flags from one lazy statx and the extended attributes.

#include "basalt/nodes/NodeProperties.h"

#include "basalt/files/BFFindFolder.h"
#include "basalt/files/BFLongPath.h"
#include "basalt/files/BFNameCodec.h"
#include "basalt/nodes/NodeBookmarks.h"
#include "basalt/nodes/NodeQueryState.h"
#include "basalt/nodes/NodeStat.h"
#include "basalt/nodes/NodeTable.h"
#include "basalt/nodes/NodeVolumes.h"
#include "basalt/types/BUTypes.h"
#include "basalt/types/MimeDatabase.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <linux/fs.h>
#include <sys/ioctl.h>

namespace basalt::nodes {
namespace {

using types::MimeDatabase;

constexpr int64_t kUnixEpochFrom1904 = 2082844800;

std::u16string Utf16(std::string_view utf8) {
    return files::DecodeName(utf8);
}

std::u16string VolumeName(NodeRef node) {
    if (node == Special().boot)
        return Utf16(BootVolumeName());
    auto volume = VolumeAtPath(PathOf(node));
    return volume ? Utf16(VolumeDisplayName(*volume)) : files::DisplayName(node->Name());
}

std::u16string CutExtension(std::u16string name) {
    size_t dot = name.rfind(u'.');
    if (dot != std::u16string::npos && dot > 0 && dot + 1 < name.size())
        name.resize(dot);
    return name;
}

std::string TypeOfFileSystemNode(NodeRef node) {
    switch (SettledKind(node)) {
    case NodeKind::Folder:
        if (IsVolumeNode(node))
            return "inode/mount-point";
        return NodeIsPackage(node) ? "inode/x-kel-package" : "inode/directory";
    case NodeKind::Symlink:
        return "inode/symlink";
    case NodeKind::Other: {
        uint32_t mode = StatOf(node).mode;
        return S_ISCHR(mode)    ? "inode/chardevice"
               : S_ISBLK(mode)  ? "inode/blockdevice"
               : S_ISFIFO(mode) ? "inode/fifo"
                                : "inode/socket";
    }
    default:
        return MimeDatabase::Shared().TypeForName(node->Name());
    }
}

std::string TypeOf(NodeRef node) {
    switch (node->kind.load()) {
    case NodeKind::Root:
        return "inode/x-kel-computer";
    case NodeKind::Network:
        return "inode/x-kel-network";
    case NodeKind::VolumeAlias:
    case NodeKind::Bookmark:
        return "inode/symlink";
    case NodeKind::VolumesFolder:
    case NodeKind::Sidebar:
    case NodeKind::QueryHits:
        return "inode/directory";
    case NodeKind::Query:
        return "inode/x-kel-query";
    default:
        return TypeOfFileSystemNode(node);
    }
}

// The name as shown, its extension cut when the file asks for it; a name without an extension
// spares the attribute read, which is most of the cost of a large folder's display names.
std::u16string DisplayedFileName(NodeRef node) {
    std::u16string shown = files::DisplayName(node->Name());
    std::u16string cut = CutExtension(shown);
    if (cut.size() != shown.size() && SettledKind(node) != NodeKind::Folder &&
        ExtrasOf(node).hideExtension)
        return cut;
    return shown;
}

StatusCode StringProperty(NodeRef node, FourCharCode code, std::u16string& out) {
    bool fileSystem = node->IsFileSystem();
    NodeKind kind = node->kind.load();
    if ((kind == NodeKind::Query || kind == NodeKind::QueryHits) &&
        (code == NodeCode("pnam") || code == NodeCode("dnam"))) {
        out = QueryName(node);
        return noErr;
    }
    if (node->kind == NodeKind::Bookmark &&
        (code == NodeCode("pnam") || code == NodeCode("dnam"))) {
        out = BookmarkDisplayName(node);
    } else if (code == NodeCode("pnam")) {
        out = node == Special().boot ? VolumeName(node)
              : fileSystem           ? files::DecodeName(node->Name())
                                     : Utf16(node->Name());
    } else if (code == NodeCode("dnam")) {
        if (!fileSystem)
            out = Utf16(node->Name());
        else if (IsVolumeNode(node))
            out = VolumeName(node);
        else
            out = DisplayedFileName(node);
    } else if (code == NodeCode("utid")) {
        // A name alone would still give a type; a node that is gone has none.
        if (fileSystem && SettledKind(node) == NodeKind::Unknown)
            return fnfErr;
        out = Utf16(TypeOf(node));
    } else {
        return kNodePropertyNotSupportedErr;
    }
    return noErr;
}

// The key of text, which ends in its only zero byte; a lone zero when the collator fails.
std::unique_ptr<uint8_t[]> CollationKey(const std::u16string& text) {
    const auto* chars = reinterpret_cast<const UniChar*>(text.data());
    auto count = static_cast<BCIndex>(text.size());
    uint8_t buffer[1024];
    BCIndex needed =
        UCGetCollationKey(kUCCollateStandardOptions, chars, count, buffer, BCIndex(sizeof buffer));
    if (needed <= 0)
        return std::make_unique<uint8_t[]>(1);
    auto made = std::make_unique_for_overwrite<uint8_t[]>(static_cast<size_t>(needed));
    if (needed <= BCIndex(sizeof buffer))
        std::memcpy(made.get(), buffer, static_cast<size_t>(needed));
    else
        UCGetCollationKey(kUCCollateStandardOptions, chars, count, made.get(), needed);
    return made;
}

StatusCode AliasType(NodeRef node, FourCharCode& value) {
    NodeHolder original;
    NodeRef out = nullptr;
    if (StatusCode status = NodeFollowAlias(node, false, &out))
        return status;
    original = NodeHolder(out);
    NodeRef target = original.Get();
    if (NodeIsVolume(target)) {
        value = VolumeIsLocal(target) ? NodeCode("hdsk") : NodeCode("srvr");
    } else if (NodeIsApplication(target)) {
        value = NodeCode("fapa");
    } else if (NodeIsPackage(target)) {
        value = NodeCode("fpka");
    } else if (NodeIsContainer(target)) {
        value = NodeCode("fdrp");
    } else if (GetNodePropertyAsFourCharCode(target, NodeCode("asty"), &value, 0) != noErr) {
        // Most types have no code; the link still leads somewhere, so it is not broken.
        value = 0;
    }
    return noErr;
}

StatusCode TypeCode(NodeRef node, FourCharCode& value) {
    if (!node->IsFileSystem())
        return NodeIsAlias(node) ? AliasType(node, value) : kNodePropertyNotSupportedErr;
    if (auto stored = ExtrasOf(node).type) {
        value = *stored;
        return noErr;
    }
    if (SettledKind(node) == NodeKind::Symlink)
        return AliasType(node, value);
    if (IsVolumeNode(node)) {
        value = NodeCode("disk");
        return noErr;
    }
    uint32_t code = types::FourCharCodeForType(TypeOf(node));
    if (code == 0)
        return kNodePropertyNotSupportedErr;
    value = code;
    return noErr;
}

StatusCode StatFor(NodeRef node, NodeStat& stat) {
    if (!node->IsFileSystem())
        return kNodePropertyNotSupportedErr;
    stat = StatOf(node);
    if (!stat.exists)
        return stat.error == EACCES ? StatusCode(permErr) : StatusCode(fnfErr);
    return noErr;
}

StatusCode DateSeconds(NodeRef node, FourCharCode code, int64_t& seconds) {
    if (code != NodeCode("modd") && code != NodeCode("ascd"))
        return kNodePropertyNotSupportedErr;
    NodeStat stat;
    if (StatusCode status = StatFor(node, stat))
        return status;
    seconds = code == NodeCode("modd") ? stat.modified : stat.created;
    return noErr;
}

bool CanAccess(const std::string& path, int mode) {
    files::ParentAndLeaf at = files::OpenParent(path);
    if (path == "/")
        return ::faccessat(AT_FDCWD, "/", mode, AT_EACCESS) == 0;
    return at.parent.Valid() &&
           ::faccessat(at.parent.Get(), at.leaf.c_str(), mode, AT_EACCESS) == 0;
}

bool FoldsCase(NodeRef node) {
    static const std::vector<std::string> kFoldingTypes = {
        "vfat", "msdos", "exfat", "ntfs", "ntfs3", "hfsplus", "cifs", "smb3", "smbfs"};
    std::string path = PathOf(node);
    std::string type = FileSystemTypeHolding(path);
    if (std::find(kFoldingTypes.begin(), kFoldingTypes.end(), type) != kFoldingTypes.end())
        return true;
    // ext4 and f2fs can fold case per folder.
    files::UniqueFd fd = files::OpenPath(path, O_RDONLY | O_DIRECTORY | O_NONBLOCK);
    int flags = 0;
    return fd.Valid() && ::ioctl(fd.Get(), FS_IOC_GETFLAGS, &flags) == 0 &&
           (flags & FS_CASEFOLD_FL) != 0;
}

} // namespace
} // namespace basalt::nodes

using namespace basalt::nodes;

StatusCode GetNodePropertyAsStringNew(NodeRef node, FourCharCode code, BCIndex capacity,
                                      BCIndex* length, UniChar* chars, uint32_t) {
    if (node == nullptr || capacity < 0 || (capacity > 0 && chars == nullptr))
        return paramErr;
    node = PropertySubject(node);
    std::u16string text;
    if (StatusCode status = StringProperty(node, code, text))
        return status;
    std::copy_n(text.begin(), std::min<size_t>(text.size(), static_cast<size_t>(capacity)), chars);
    if (length != nullptr)
        *length = static_cast<BCIndex>(text.size());
    return noErr;
}

StatusCode GetNodePropertyAsFourCharCode(NodeRef node, FourCharCode code, FourCharCode* value,
                                         uint32_t) {
    if (node == nullptr || value == nullptr)
        return paramErr;
    node = PropertySubject(node);
    FourCharCode result = 0;
    StatusCode status = kNodePropertyNotSupportedErr;
    if (code == NodeCode("asty")) {
        status = TypeCode(node, result);
    } else if (code == NodeCode("fcrt")) {
        auto creator = node->IsFileSystem() ? ExtrasOf(node).creator : std::nullopt;
        if (creator) {
            result = *creator;
            status = noErr;
        }
    }
    if (status == noErr)
        *value = result;
    return status;
}

StatusCode GetNodePropertyAsInt16(NodeRef node, FourCharCode code, int16_t* value, uint32_t) {
    if (node == nullptr || value == nullptr)
        return paramErr;
    node = PropertySubject(node);
    if (code == NodeCode("fflg")) {
        *value = static_cast<int16_t>((NodeIsAlias(node) ? 0x8000 : 0) |
                                      (NodeIsVisible(node) ? 0 : 0x4000));
        return noErr;
    }
    if (!node->IsFileSystem())
        return kNodePropertyNotSupportedErr;
    if (code == NodeCode("labl")) {
        *value = ExtrasOf(node).label;
        return noErr;
    }
    if (code == NodeCode("attr")) {
        NodeStat stat;
        if (StatusCode status = StatFor(node, stat))
            return status;
        *value =
            static_cast<int16_t>((IsLocked(node) ? 0x01 : 0) | (S_ISDIR(stat.mode) ? 0x10 : 0));
        return noErr;
    }
    return kNodePropertyNotSupportedErr;
}

StatusCode GetNodePropertyAsInt64(NodeRef node, FourCharCode code, int64_t* value, uint32_t) {
    if (node == nullptr || value == nullptr)
        return paramErr;
    node = PropertySubject(node);
    NodeStat stat;
    if (code == NodeCode("dats")) {
        if (StatusCode status = StatFor(node, stat))
            return status;
        *value = S_ISDIR(stat.mode) ? 0 : static_cast<int64_t>(stat.size);
        return noErr;
    }
    if (code == NodeCode("ress") && node->IsFileSystem()) {
        *value = static_cast<int64_t>(ExtrasOf(node).resourceSize);
        return noErr;
    }
    return kNodePropertyNotSupportedErr;
}

StatusCode GetNodePropertyAsDateTime(NodeRef node, FourCharCode code, uint32_t* value, uint32_t) {
    int64_t seconds = 0;
    if (node == nullptr || value == nullptr)
        return paramErr;
    node = PropertySubject(node);
    if (StatusCode status = DateSeconds(node, code, seconds))
        return status;
    std::time_t at = static_cast<std::time_t>(seconds);
    std::tm local{};
    localtime_r(&at, &local);
    *value = static_cast<uint32_t>(seconds + local.tm_gmtoff + kUnixEpochFrom1904);
    return noErr;
}

StatusCode GetNodePropertyAsUTCDateTime(NodeRef node, FourCharCode code, UTCDateTime* value,
                                        uint32_t) {
    int64_t seconds = 0;
    if (node == nullptr || value == nullptr)
        return paramErr;
    node = PropertySubject(node);
    if (StatusCode status = DateSeconds(node, code, seconds))
        return status;
    *value = basalt::files::UTCDateTimeFromUnix(seconds, 0);
    return noErr;
}

StatusCode GetNodePropertyAsBoolean(NodeRef node, FourCharCode code, Boolean* value, uint32_t) {
    if (node == nullptr || value == nullptr)
        return paramErr;
    node = PropertySubject(node);
    if (!node->IsFileSystem())
        return kNodePropertyNotSupportedErr;
    if (code == NodeCode("aslk"))
        *value = IsLocked(node);
    else if (code == NodeCode("hext"))
        *value = ExtrasOf(node).hideExtension;
    else
        return kNodePropertyNotSupportedErr;
    return noErr;
}

StatusCode NodeGetPermissions(NodeRef node, uint32_t* bits) {
    if (node == nullptr || bits == nullptr)
        return paramErr;
    node = PropertySubject(node);
    if (!node->IsFileSystem()) {
        *bits &= kNodePermissionRead;
        return noErr;
    }
    std::string path = PathOf(node);
    bool folder = SettledKind(node) == NodeKind::Folder;
    uint32_t granted = 0;
    if (CanAccess(path, folder ? R_OK | X_OK : R_OK))
        granted |= kNodePermissionRead;
    if (CanAccess(path, W_OK))
        granted |= kNodePermissionWrite;
    if (folder && CanAccess(path, W_OK | X_OK))
        granted |= kNodePermissionAddChild;
    if (!IsLocked(node))
        granted |= kNodePermissionUnlocked;
    *bits &= granted;
    return noErr;
}

StatusCode NodeGetNameSyntaxHint(NodeRef node, uint32_t* hint) {
    if (node == nullptr || hint == nullptr)
        return paramErr;
    *hint = node->IsFileSystem() && FoldsCase(node) ? 0 : 1;
    return noErr;
}

int16_t NodeStringCompare(NodeRef a, NodeRef b, FourCharCode code, NodeStringCompareProc compare) {
    a = PropertySubject(a);
    b = PropertySubject(b);
    std::u16string textA, textB;
    if (a != nullptr)
        StringProperty(a, code, textA);
    if (b != nullptr)
        StringProperty(b, code, textB);
    if (compare == nullptr)
        return textA < textB ? -1 : textA > textB ? 1 : 0;
    return compare(textA.size(), reinterpret_cast<const UniChar*>(textA.data()), textB.size(),
                   reinterpret_cast<const UniChar*>(textB.data()));
}

StatusCode NodeGetSortKey(NodeRef node, FourCharCode code, const uint8_t** key, BCIndex* length) {
    if (node == nullptr || key == nullptr || length == nullptr)
        return paramErr;
    node = PropertySubject(node);
    if (code != NodeCode("pnam") && code != NodeCode("dnam"))
        return kNodePropertyNotSupportedErr;
    NodeSortKey& slot = code == NodeCode("pnam") ? node->sortKeys.name : node->sortKeys.displayName;
    const uint8_t* ready = slot.Get();
    if (ready == nullptr) {
        std::u16string text;
        if (StatusCode status = StringProperty(node, code, text))
            return status;
        ready = slot.Publish(CollationKey(text));
    }
    *key = ready;
    // The length counts the closing zero, as the collator's does.
    *length = ready[0] == 0
                  ? 0
                  : static_cast<BCIndex>(std::strlen(reinterpret_cast<const char*>(ready)) + 1);
    return noErr;
}
