#pragma once

// The folders a search has walked, watched through an inotify descriptor of the search's own,
// so that its hits follow the changes that come after the walk. Used by the walk's thread only.
// Bounded: a search over a very large tree follows the first kMostQueryWatches folders it
// entered and not the rest, leaving the process's share of watches to the file browser.

#include "basalt/files/BFLongPath.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace basalt::nodes {

constexpr size_t kMostQueryWatches = 8192;

class QueryWatch {
public:
    struct Change {
        std::string folder; // the path of the folder that changed
        std::string name;
        bool added;    // created or moved in; else deleted or moved away
        bool isFolder; // as the event tells
    };
    using FileID = std::pair<uint64_t, uint64_t>; // device and inode

    QueryWatch();
    // False when the system gave no inotify descriptor: no change can be followed.
    bool Valid() const { return fd_.Valid(); }
    void Add(const std::string& path, FileID id);
    // The changes that arrive within timeoutMs, the first of them waited for; none on timeout
    // or as soon as wake (a descriptor, -1 for none) becomes readable.
    std::vector<Change> Wait(int timeoutMs, int wake);
    // Stops following the folder at path and those under it, which moved away or went; gives
    // their ids, so that they can be entered again where they turn up.
    std::vector<FileID> Drop(const std::string& path);

private:
    struct Watched {
        std::string path;
        FileID id;
    };
    void Read(std::vector<Change>& changes);

    files::UniqueFd fd_;
    std::unordered_map<int, Watched> byWd_;
};

} // namespace basalt::nodes
