// Any bytes as the bookmarks file: each bookmark is matched against network volumes and a
// gvfs folder, and the places list is read through the node service with its rows' names and
// originals.

#include "FuzzScratch.h"
#include "basalt/nodes/NodeBookmarks.h"
#include "basalt/nodes/NodeIterator.h"
#include "basalt/nodes/NodeProperties.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string_view>

namespace {

const std::vector<basalt::nodes::Volume> kVolumes = {
    {"/mnt/ssh", "fuse.sshfs", "bob@host:/data", 0, true, false},
    {"/mnt/team", "cifs", "//server/team", 0, true, false},
    {"/mnt/nfs", "nfs4", "nas:/export", 0, true, false},
};

void ReadPlaces() {
    NodeRef places = GetVirtualNode(kVirtualNodePlaces);
    NodeIteratorRef iterator = nullptr;
    if (NewNodeIterator(places, &iterator, 0, false) == noErr) {
        for (NodeRef row = NodeIteratorFirst(iterator); row != nullptr;
             row = NodeIteratorNext(iterator)) {
            UniChar name[256];
            BCIndex length = 0;
            GetNodePropertyAsStringNew(row, NodeCode("dnam"), 256, &length, name, 0);
            NodeRef original = nullptr;
            if (NodeFollowAlias(row, false, &original) == noErr)
                DisposeNode(original);
            DisposeNode(row);
        }
        DisposeNodeIterator(iterator);
    }
    DisposeNode(places);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::string home = [] {
        std::string folder = fuzz::ScratchFolder();
        setenv("HOME", folder.c_str(), 1);
        setenv("XDG_CONFIG_HOME", (folder + "/config").c_str(), 1);
        setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
        std::filesystem::create_directories(folder + "/gvfs/sftp:host=host,user=bob");
        std::filesystem::create_directories(folder + "/gvfs/smb-share:server=fs,share=pub");
        return folder;
    }();
    std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const basalt::files::Bookmark& bookmark : basalt::files::ParseBookmarks(text))
        basalt::nodes::LocalPathOf(bookmark, kVolumes, home + "/gvfs");
    fuzz::WriteFile(home + "/config/gtk-3.0/bookmarks", data, size);
    ReadPlaces();
    return 0;
}
