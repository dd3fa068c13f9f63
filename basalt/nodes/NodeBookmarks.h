#pragma once

// The user's bookmarks as rows of the places list (virtual node 12). A row is a node of its
// own, an alias whose name is the bookmark's line, so that two bookmarks of one folder are two
// rows and each shows its own label. Its original is looked up whenever it is asked for: a
// folder that is missing, or a remote place that is not mounted, makes it a broken alias,
// which is how the row shows that it cannot be reached. Internal to the node service.

#include "basalt/files/BFBookmarks.h"
#include "basalt/nodes/NodeVolumes.h"

#include <optional>
#include <string>
#include <vector>

namespace basalt::nodes {

// Counted rows, one per bookmark, in the file's order.
std::vector<NodeRef> BookmarkNodes();
// The name the row shows: the label, else the folder's name, else the remote host.
std::u16string BookmarkDisplayName(NodeRef bookmark);
// The node of the bookmarked folder; fnfErr while it cannot be reached.
StatusCode BookmarkOriginal(NodeRef bookmark, NodeRef* out);
// Takes the bookmark's line out of the bookmarks file, every other line kept as it was; the
// places list follows through the file's change. fnfErr if the file no longer has it.
StatusCode RemoveBookmark(NodeRef bookmark);

// Where a bookmark's folder is on this machine: its path, or for a remote place the folder of
// a mount of it (a network volume, or a folder in the user's gvfs folder).
std::optional<std::string> LocalPathOf(const files::Bookmark& bookmark,
                                       const std::vector<Volume>& volumes,
                                       const std::string& gvfsFolder);

} // namespace basalt::nodes
