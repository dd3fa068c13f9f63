#pragma once

// The volumes that people care about: "/", a separately mounted /home, whatever is mounted
// under /media, /run/media and /mnt, and network file systems anywhere (those are listed by
// the Network node). Pseudo file systems are left out. The table is read from mountinfo and
// read again when the watcher sees the mounts change.

#include "basalt/nodes/OpaqueNodeRef.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace basalt::nodes {

struct Volume {
    std::string mountPoint;
    std::string fsType;
    std::string source;
    uint64_t device = 0;
    bool network = false;
    bool removable = false;
};

std::vector<Volume> Volumes();
void RefreshVolumes();
std::optional<Volume> VolumeAtPath(const std::string& path);
// The volume that holds a path (for name rules), from all mounts, not only the cared ones.
std::string FileSystemTypeHolding(const std::string& path);
// True when every change to the folder at path is made through this kernel, so inotify sees it:
// not so for network file systems, nor for FUSE ones, which may be fed from anywhere.
bool ChangesSeenLocally(const std::string& path);
// The name of a link in /dev/disk/by-label as the label itself: udev writes bytes such as the
// space as "\x20".
std::string DecodeDeviceLinkName(std::string_view name);
// The name shown for a volume: its label, else the host name for "/", else the mount point's
// last component.
std::string VolumeDisplayName(const Volume& volume);
// Counted volume nodes; network ones or local ones.
std::vector<NodeRef> VolumeNodes(bool network);
// True for the boot node and the nodes of the mount points of the volumes.
bool IsVolumeNode(NodeRef node);
// The display name of the boot volume.
std::string BootVolumeName();

} // namespace basalt::nodes
