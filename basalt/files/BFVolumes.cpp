#include "basalt/files/BFVolumes.h"

#include <cstdio>
#include <fstream>
#include <sstream>
#include <sys/sysmacros.h>

namespace basalt::files {
namespace {

// mountinfo escapes space, tab, newline and backslash as three octal digits.
std::string Unescape(const std::string& field) {
    std::string out;
    for (size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size()) {
            int value = 0;
            bool octal = true;
            for (size_t k = 1; k <= 3 && octal; ++k) {
                char c = field[i + k];
                octal = c >= '0' && c <= '7';
                value = value * 8 + (c - '0');
            }
            if (octal) {
                out.push_back(static_cast<char>(value));
                i += 3;
                continue;
            }
        }
        out.push_back(field[i]);
    }
    return out;
}

std::optional<MountInfo> ParseLine(const std::string& line) {
    std::istringstream in(line);
    std::string id, parent, majorMinor, root, mountPoint, field;
    if (!(in >> id >> parent >> majorMinor >> root >> mountPoint))
        return std::nullopt;
    while (in >> field && field != "-") {
    }
    MountInfo info;
    if (field != "-" || !(in >> info.fsType >> info.source))
        return std::nullopt;
    unsigned major = 0, minor = 0;
    if (std::sscanf(majorMinor.c_str(), "%u:%u", &major, &minor) != 2)
        return std::nullopt;
    info.device = makedev(major, minor);
    info.mountPoint = Unescape(mountPoint);
    info.source = Unescape(info.source);
    return info;
}

} // namespace

std::vector<MountInfo> ParseMountTable(const std::string& text) {
    std::vector<MountInfo> mounts;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line)) {
        if (auto info = ParseLine(line))
            mounts.push_back(std::move(*info));
    }
    return mounts;
}

std::vector<MountInfo> ReadMountTable() {
    std::ifstream file("/proc/self/mountinfo");
    std::stringstream text;
    text << file.rdbuf();
    return ParseMountTable(text.str());
}

std::optional<std::string> MountPointOfDevice(uint64_t device) {
    std::optional<std::string> found;
    for (const MountInfo& mount : ReadMountTable()) {
        if (mount.device == device)
            found = mount.mountPoint;
    }
    return found;
}

std::optional<MountInfo> MountHolding(const std::string& path) {
    std::optional<MountInfo> best;
    for (MountInfo& mount : ReadMountTable()) {
        const std::string& point = mount.mountPoint;
        bool holds = point == "/" || path == point ||
                     (path.compare(0, point.size(), point) == 0 && path.size() > point.size() &&
                      path[point.size()] == '/');
        if (holds && (!best || point.size() >= best->mountPoint.size()))
            best = std::move(mount);
    }
    return best;
}

} // namespace basalt::files
