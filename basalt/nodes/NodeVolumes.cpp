#include "basalt/nodes/NodeVolumes.h"

#include "basalt/files/BFLongPath.h"
#include "basalt/files/BFObjectTable.h"
#include "basalt/files/BFVolumes.h"
#include "basalt/nodes/NodeStat.h"
#include "basalt/nodes/NodeTable.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <climits>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <poll.h>
#include <spawn.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace basalt::nodes {
namespace {

const std::vector<std::string> kNetworkTypes = {"nfs",   "nfs4",       "cifs",     "smb3",
                                                "smbfs", "fuse.sshfs", "9p",       "davfs",
                                                "afs",   "ceph",       "glusterfs"};

bool StartsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

bool IsCared(const files::MountInfo& mount, bool network) {
    if (network)
        return true;
    const std::string& point = mount.mountPoint;
    return point == "/" || point == "/home" || StartsWith(point, "/media/") ||
           StartsWith(point, "/run/media/") || StartsWith(point, "/mnt/");
}

bool IsRemovable(const files::MountInfo& mount) {
    if (StartsWith(mount.mountPoint, "/media/") || StartsWith(mount.mountPoint, "/run/media/"))
        return true;
    std::string sys = "/sys/dev/block/" + std::to_string(major(mount.device)) + ":" +
                      std::to_string(minor(mount.device));
    for (const char* file : {"/removable", "/../removable"}) {
        std::ifstream flag(sys + file);
        int value = 0;
        if (flag >> value)
            return value == 1;
    }
    return false;
}

// The table is read again when the mounts change. The watcher says so when it runs; without
// it, mountinfo is polled here, at most every kRecheck, since the table is asked per node.
constexpr auto kRecheck = std::chrono::milliseconds(500);

std::vector<Volume> ReadVolumes();

struct VolumeCache {
    std::mutex mutex;
    bool loaded = false;
    std::vector<Volume> volumes;
    int mountInfo = -1;
    std::chrono::steady_clock::time_point checked;

    void EnsureLoaded() {
        auto now = std::chrono::steady_clock::now();
        if (loaded && now - checked > kRecheck) {
            checked = now;
            pollfd changed{mountInfo, POLLPRI, 0};
            if (mountInfo >= 0 && ::poll(&changed, 1, 0) > 0)
                loaded = false;
        }
        if (!loaded) {
            if (mountInfo < 0)
                mountInfo = ::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC);
            // Reading the file to its end is what clears its change mark.
            char buffer[4096];
            ::lseek(mountInfo, 0, SEEK_SET);
            while (mountInfo >= 0 && ::read(mountInfo, buffer, sizeof buffer) > 0) {
            }
            volumes = ReadVolumes();
            loaded = true;
            checked = now;
        }
    }
};

VolumeCache& Cache() {
    static VolumeCache* cache = new VolumeCache;
    return *cache;
}

std::vector<Volume> ReadVolumes() {
    std::vector<Volume> volumes;
    for (const files::MountInfo& mount : files::ReadMountTable()) {
        bool network = std::find(kNetworkTypes.begin(), kNetworkTypes.end(), mount.fsType) !=
                       kNetworkTypes.end();
        if (!IsCared(mount, network))
            continue;
        Volume volume{mount.mountPoint, mount.fsType,
                      mount.source,     mount.device,
                      network,          !network && mount.mountPoint != "/" && IsRemovable(mount)};
        // A later mount on the same point hides the earlier one.
        std::erase_if(volumes, [&](const Volume& v) { return v.mountPoint == volume.mountPoint; });
        volumes.push_back(std::move(volume));
    }
    if (std::none_of(volumes.begin(), volumes.end(),
                     [](const Volume& v) { return v.mountPoint == "/"; }))
        volumes.insert(volumes.begin(), Volume{"/", "", "", 0, false, false});
    std::stable_partition(volumes.begin(), volumes.end(),
                          [](const Volume& v) { return v.mountPoint == "/"; });
    return volumes;
}

std::string LabelOf(const std::string& source) {
    std::error_code error;
    // Stepped with error codes: a throwing iterator must not leave the service.
    for (std::filesystem::directory_iterator entry("/dev/disk/by-label", error), end;
         !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (std::filesystem::canonical(entry->path(), ignored) == source)
            return DecodeDeviceLinkName(entry->path().filename().string());
    }
    return {};
}

} // namespace

std::string DecodeDeviceLinkName(std::string_view name) {
    auto hex = [](char c) {
        return std::isxdigit(static_cast<unsigned char>(c))
                   ? (std::isdigit(static_cast<unsigned char>(c)) ? c - '0' : (c | 0x20) - 'a' + 10)
                   : -1;
    };
    std::string decoded;
    for (size_t at = 0; at < name.size(); ++at) {
        if (name[at] == '\\' && at + 3 < name.size() && name[at + 1] == 'x' &&
            hex(name[at + 2]) >= 0 && hex(name[at + 3]) >= 0) {
            decoded += static_cast<char>(hex(name[at + 2]) << 4 | hex(name[at + 3]));
            at += 3;
        } else {
            decoded += name[at];
        }
    }
    return decoded;
}

std::vector<Volume> Volumes() {
    VolumeCache& cache = Cache();
    std::lock_guard lock(cache.mutex);
    cache.EnsureLoaded();
    return cache.volumes;
}

void RefreshVolumes() {
    VolumeCache& cache = Cache();
    std::lock_guard lock(cache.mutex);
    cache.loaded = false;
}

std::optional<Volume> VolumeAtPath(const std::string& path) {
    for (Volume& volume : Volumes()) {
        if (volume.mountPoint == path)
            return volume;
    }
    return std::nullopt;
}

std::string FileSystemTypeHolding(const std::string& path) {
    auto mount = files::MountHolding(path);
    return mount ? mount->fsType : std::string();
}

bool ChangesSeenLocally(const std::string& path) {
    std::string type = FileSystemTypeHolding(path);
    bool network =
        std::find(kNetworkTypes.begin(), kNetworkTypes.end(), type) != kNetworkTypes.end();
    return !type.empty() && !network && !StartsWith(type, "fuse");
}

std::string VolumeDisplayName(const Volume& volume) {
    std::string label = StartsWith(volume.source, "/dev/") ? LabelOf(volume.source) : "";
    if (!label.empty())
        return label;
    if (volume.mountPoint == "/") {
        char host[HOST_NAME_MAX + 1] = {};
        ::gethostname(host, sizeof host - 1);
        return host[0] != '\0' ? host : "Computer";
    }
    return volume.mountPoint.substr(volume.mountPoint.rfind('/') + 1);
}

bool IsVolumeNode(NodeRef node) {
    if (node == Special().boot)
        return true;
    if (node->kind.load() != NodeKind::Folder && node->kind.load() != NodeKind::Unknown)
        return false;
    VolumeCache& cache = Cache();
    {
        // Most nodes are no mount point: compare names first, paths only on a match.
        std::lock_guard lock(cache.mutex);
        cache.EnsureLoaded();
        bool named = std::any_of(cache.volumes.begin(), cache.volumes.end(), [&](const Volume& v) {
            return v.mountPoint.size() > node->nameLength &&
                   v.mountPoint.ends_with("/" + std::string(node->Name()));
        });
        if (!named)
            return false;
    }
    return VolumeAtPath(PathOf(node)).has_value();
}

std::string BootVolumeName() {
    static const std::string name = [] {
        auto boot = VolumeAtPath("/");
        return VolumeDisplayName(boot ? *boot : Volume{"/", "", "", 0, false, false});
    }();
    return name;
}

std::vector<NodeRef> VolumeNodes(bool network) {
    std::vector<NodeRef> nodes;
    for (const Volume& volume : Volumes()) {
        if (volume.network == network)
            nodes.push_back(NodeForPath(volume.mountPoint));
    }
    return nodes;
}

} // namespace basalt::nodes

using namespace basalt::nodes;

namespace {

std::optional<Volume> VolumeOfNode(NodeRef node) {
    if (node == nullptr || !node->IsFileSystem())
        return std::nullopt;
    return VolumeAtPath(PathOf(node));
}

} // namespace

Boolean VolumeIsLocal(NodeRef volume) {
    auto found = VolumeOfNode(volume);
    return found && !found->network;
}

Boolean VolumeIsEjectable(NodeRef volume) {
    auto found = VolumeOfNode(volume);
    return found && (found->removable || found->network);
}

StatusCode VolumeEject(NodeRef volume) {
    auto found = VolumeOfNode(volume);
    if (!found || found->mountPoint == "/")
        return paramErr;
    std::string point = found->mountPoint;
    char umount[] = "umount";
    char* argv[] = {umount, point.data(), nullptr};
    pid_t child = 0;
    if (posix_spawnp(&child, "umount", nullptr, nullptr, argv, environ) != 0)
        return permErr;
    int status = 0;
    ::waitpid(child, &status, 0);
    RefreshVolumes();
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? StatusCode(noErr) : StatusCode(permErr);
}

NodeRef GetVolumeNode(int16_t volume) {
    auto device = basalt::files::ObjectTable::Shared().DeviceForVolumeRefNum(volume);
    if (!device)
        return nullptr;
    for (const Volume& candidate : Volumes()) {
        struct statx info {};
        if (basalt::files::StatxPath(candidate.mountPoint, STATX_INO, info) == 0 &&
            makedev(info.stx_dev_major, info.stx_dev_minor) == *device)
            return NodeForPath(candidate.mountPoint);
    }
    return nullptr;
}
