// Where a browse dialog opens: the client's location, else the one saved for this client, cut
// back to the nearest folder the filter lets the user enter; with nothing left, the documents
// folder, the home folder or the root, so that a dialog always opens somewhere.

#include "kel/dialogs/TBrowseDialog.h"
#include "kel/nodes/TNodePathHelper.h"

namespace {

constexpr int16_t kUserDomain = -32763;
constexpr int16_t kLocalDomain = -32767;
constexpr uint32_t kDocumentsFolder = NodeCode("docs");

TKelNode LastResortNode() {
    TKelNode node;
    if (TKelNode::FindContainer(kLocalDomain, kDocumentsFolder, 1, node) == noErr &&
        !node.IsEmpty()) {
        return node;
    }
    node = TKelNode::GetHomeNode();
    if (!node.IsEmpty()) {
        return node;
    }
    return TKelNode(TKelNode::GetRootNodeRef(), true);
}

} // namespace

StatusCode TBrowseDialog::InitBrowserTarget() {
    TKelNodeArray path;
    CopyDefaultTargetPath(path);
    if (path.empty()) {
        CopyLastResortTargetPath(path);
    }
    const StatusCode status = browser->SetTargetPath(path, TKelNode());
    if (!initialSelection.empty()) {
        browser->SetSelection(initialSelection, 1);
    }
    return status;
}

void TBrowseDialog::CopyDefaultTargetPath(TKelNodeArray& path) {
    if (!defaultLocation.IsEmpty()) {
        TNodePathHelper helper(defaultLocation.PeekNodeRef());
        path = helper.NodePath();
    } else {
        prefs.CopyDefaultPath(path);
    }
    while (!path.empty() && !filter.CanTarget(path.back())) {
        path.pop_back();
    }
}

void TBrowseDialog::CopyLastResortTargetPath(TKelNodeArray& path) {
    const TKelNode node = LastResortNode();
    TNodePathHelper helper(node.PeekNodeRef());
    if (BCURLRef url = helper.CopyURL()) {
        helper.SetURL(url);
        BCRelease(url);
    }
    if (!helper.IsComplete() || helper.NodePath().empty()) {
        helper.SetTargetNode(TKelNode::GetRootNodeRef());
    }
    path = helper.NodePath();
}

bool TBrowseDialog::IsLocationDesktop() {
    TKelNode target;
    TKelNode desktop;
    if (Target(target) != noErr ||
        TKelNode::FindContainer(kUserDomain, NodeCode("desk"), 0, desktop) != noErr) {
        return false;
    }
    return target == desktop;
}
