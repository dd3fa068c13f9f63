#include "basalt/nodes/NodeBookmarks.h"

#include "basalt/files/BFLongPath.h"
#include "basalt/files/BFNameCodec.h"
#include "basalt/nodes/NodeStat.h"
#include "basalt/nodes/NodeTable.h"

#include <cstdlib>
#include <filesystem>
#include <glib.h>
#include <memory>
#include <unistd.h>

namespace basalt::nodes {
namespace {

struct RemotePlace {
    std::string scheme;
    std::string user;
    std::string host;
    int port = -1;
    std::string path; // decoded, starts with "/"
};

struct GFree {
    void operator()(gchar* text) const { g_free(text); }
};
using GText = std::unique_ptr<gchar, GFree>;

std::optional<RemotePlace> ParseRemote(const std::string& uri) {
    gchar *scheme = nullptr, *user = nullptr, *host = nullptr, *path = nullptr;
    RemotePlace place;
    if (!g_uri_split(uri.c_str(), G_URI_FLAGS_NONE, &scheme, &user, &host, &place.port, &path,
                     nullptr, nullptr, nullptr))
        return std::nullopt;
    GText ownedScheme(scheme), ownedUser(user), ownedHost(host), ownedPath(path);
    if (scheme == nullptr || host == nullptr || *host == '\0')
        return std::nullopt;
    place.scheme = GText(g_ascii_strdown(scheme, -1)).get();
    place.user = user != nullptr ? user : "";
    place.host = host;
    place.path = path != nullptr && *path == '/' ? path : "/" + std::string(path ? path : "");
    return place;
}

std::string StripSlashes(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

// "/a/b" under "/a" is "/b"; nothing if path is not inside root.
std::optional<std::string> Below(const std::string& path, const std::string& root) {
    std::string base = StripSlashes(root.empty() ? "/" : root);
    if (base == "/")
        return path;
    if (path == base)
        return std::string("/");
    if (path.starts_with(base + "/"))
        return path.substr(base.size());
    return std::nullopt;
}

std::string Join(const std::string& folder, const std::string& rest) {
    return StripSlashes(rest == "/" ? folder : StripSlashes(folder) + rest);
}

bool EqualFolded(const std::string& a, const std::string& b) {
    return g_ascii_strcasecmp(a.c_str(), b.c_str()) == 0;
}

// A network volume's source names the place: "[user@]host:/path" for sshfs and NFS,
// "//host/share" for SMB.
std::optional<std::string> InVolume(const RemotePlace& place, const Volume& volume) {
    std::string source = volume.source;
    if (volume.fsType == "cifs" || volume.fsType == "smb3" || volume.fsType == "smbfs") {
        if (place.scheme != "smb" || !source.starts_with("//"))
            return std::nullopt;
        size_t slash = source.find('/', 2);
        std::string host = source.substr(2, slash == std::string::npos ? slash : slash - 2);
        std::string root = slash == std::string::npos ? "/" : source.substr(slash);
        auto rest = EqualFolded(host, place.host) ? Below(place.path, root) : std::nullopt;
        return rest ? std::optional(Join(volume.mountPoint, *rest)) : std::nullopt;
    }
    bool ssh = volume.fsType == "fuse.sshfs" && (place.scheme == "sftp" || place.scheme == "ssh");
    bool nfs = volume.fsType.starts_with("nfs") && place.scheme == "nfs";
    size_t colon = source.find(':');
    if ((!ssh && !nfs) || colon == std::string::npos)
        return std::nullopt;
    std::string host = source.substr(0, colon);
    if (size_t at = host.find('@'); at != std::string::npos) {
        if (!place.user.empty() && host.substr(0, at) != place.user)
            return std::nullopt;
        host = host.substr(at + 1);
    }
    std::string root = source.substr(colon + 1);
    // sshfs starts in the user's home when no folder is given; only "/" paths are comparable.
    if (!EqualFolded(host, place.host) || (!root.empty() && root.front() != '/'))
        return std::nullopt;
    auto rest = Below(place.path, root.empty() ? "/" : root);
    return rest ? std::optional(Join(volume.mountPoint, *rest)) : std::nullopt;
}

// gvfs names its mounts "sftp:host=h,user=u" or "smb-share:server=h,share=s".
std::optional<std::string> InGvfs(const RemotePlace& place, const std::string& gvfsFolder) {
    std::error_code error;
    bool smb = place.scheme == "smb";
    std::string share, inside = place.path;
    if (smb) {
        size_t slash = place.path.find('/', 1);
        share = place.path.substr(1, slash == std::string::npos ? slash : slash - 1);
        inside = slash == std::string::npos ? "/" : place.path.substr(slash);
    }
    for (std::filesystem::directory_iterator entry(gvfsFolder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::string name = entry->path().filename().string();
        size_t colon = name.find(':');
        std::string kind = name.substr(0, colon);
        if (colon == std::string::npos || kind != (smb ? "smb-share" : place.scheme))
            continue;
        std::string keys = "," + name.substr(colon + 1) + ",";
        auto has = [&](const std::string& key, const std::string& value) {
            return keys.find("," + key + "=" + value + ",") != std::string::npos;
        };
        bool matches = smb ? has("server", place.host) && has("share", share)
                           : has("host", place.host) &&
                                 (place.user.empty() || has("user", place.user)) &&
                                 (place.port < 0 || has("port", std::to_string(place.port)));
        if (matches)
            return Join(entry->path().string(), inside);
    }
    return std::nullopt;
}

std::string GvfsFolder() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime != nullptr && *runtime == '/')
        return std::string(runtime) + "/gvfs";
    return "/run/user/" + std::to_string(::getuid()) + "/gvfs";
}

files::Bookmark BookmarkOf(NodeRef node) {
    std::vector<files::Bookmark> parsed = files::ParseBookmarks(node->Name());
    return parsed.empty() ? files::Bookmark{} : parsed.front();
}

} // namespace

std::optional<std::string> LocalPathOf(const files::Bookmark& bookmark,
                                       const std::vector<Volume>& volumes,
                                       const std::string& gvfsFolder) {
    if (bookmark.path)
        return bookmark.path;
    auto place = ParseRemote(bookmark.uri);
    if (!place)
        return std::nullopt;
    for (const Volume& volume : volumes) {
        if (auto path = volume.network ? InVolume(*place, volume) : std::nullopt)
            return path;
    }
    return InGvfs(*place, gvfsFolder);
}

std::vector<NodeRef> BookmarkNodes() {
    std::vector<NodeRef> nodes;
    for (const files::Bookmark& bookmark : files::ReadBookmarks()) {
        std::string line =
            bookmark.label.empty() ? bookmark.uri : bookmark.uri + " " + bookmark.label;
        nodes.push_back(Intern(Special().places, line, NodeKind::Bookmark));
    }
    return nodes;
}

std::u16string BookmarkDisplayName(NodeRef bookmark) {
    files::Bookmark mark = BookmarkOf(bookmark);
    if (!mark.label.empty())
        return files::DecodeName(mark.label);
    if (mark.path && *mark.path == "/")
        return files::DecodeName(BootVolumeName());
    if (mark.path)
        return files::DisplayName(files::LeafName(*mark.path));
    auto place = ParseRemote(mark.uri);
    if (!place)
        return files::DecodeName(mark.uri);
    std::string leaf = files::LeafName(StripSlashes(place->path));
    return files::DecodeName(leaf.empty() || leaf == "/" ? place->host
                                                         : leaf + " on " + place->host);
}

StatusCode RemoveBookmark(NodeRef bookmark) {
    const files::Bookmark mark = BookmarkOf(bookmark);
    const std::string path = files::BookmarksFilePath();
    gchar* contents = nullptr;
    gsize length = 0;
    if (!g_file_get_contents(path.c_str(), &contents, &length, nullptr))
        return fnfErr;
    std::string text(contents, length);
    g_free(contents);
    for (size_t at = 0; at < text.size();) {
        size_t end = std::min(text.find('\n', at), text.size());
        std::vector<files::Bookmark> line =
            files::ParseBookmarks(std::string_view(text).substr(at, end - at));
        if (!line.empty() && line.front().uri == mark.uri && line.front().label == mark.label) {
            text.erase(at, end + 1 - at);
            // Written beside the file and renamed over it: no reader sees half a file.
            return g_file_set_contents(path.c_str(), text.data(), gssize(text.size()), nullptr)
                       ? StatusCode(noErr)
                       : StatusCode(permErr);
        }
        at = end + 1;
    }
    return fnfErr;
}

StatusCode BookmarkOriginal(NodeRef bookmark, NodeRef* out) {
    auto path = LocalPathOf(BookmarkOf(bookmark), Volumes(), GvfsFolder());
    NodeHolder target(path ? NodeForPath(*path) : nullptr);
    if (!target || !NodeValidate(target.Get()))
        return fnfErr;
    *out = target.Release();
    return noErr;
}

} // namespace basalt::nodes
