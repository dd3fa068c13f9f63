// Searches as targets: the browser's query node runs the search and its hits container becomes
// the whole target path. A refined search keeps the folder that the first search started from.

#include "kel/browser/BrowserNodes.h"
#include "kel/browser/TNodeBrowserControl.h"
#include "kel/foundation/TKelPrefs.h"

void TNodeBrowserControl::UpdateQueryScope() {
    TKelNode target;
    GetTarget(target);
    target = OriginalOfHit(target);
    const bool container = NodeIsContainer(target.PeekNodeRef());
    if (container && !IsHitsContainer(target)) {
        queryScopeNode = target;
        return;
    }
    TKelNode parent = target.GetParent();
    if (parent.IsContainer() && !IsHitsContainer(parent)) {
        queryScopeNode = container ? target : parent;
    }
}

TKelNode TNodeBrowserControl::QueryScope() const {
    TKelPrefs prefs;
    switch (prefs.GetQueryScope()) {
    case TKelPrefs::kQueryScopeHome:
        return TKelNode::GetHomeNode();
    case TKelPrefs::kQueryScopeCurrentFolder:
        return queryScopeNode;
    default:
        return TKelNode(); // everywhere
    }
}

void TNodeBrowserControl::QuerySortOrder(unsigned long& property, bool& ascending) const {
    GridBrowserPropertyID sortProperty = 0;
    GridBrowserSortOrder order = kGridBrowserOrderIncreasing;
    GetGridBrowserSortProperty(control, &sortProperty);
    GetGridBrowserSortOrder(control, &order);
    property = sortProperty == kDateProperty ? NodeCode("modd") : NodeCode("dnam");
    ascending = order == kGridBrowserOrderIncreasing;
}

StatusCode TNodeBrowserControl::SetQueryTarget(BCStringRef text) {
    UpdateQueryScope();
    const TKelNode scope = QueryScope();
    unsigned long property = 0;
    bool ascending = true;
    QuerySortOrder(property, ascending);
    BCMutableArrayRef identifiers = filter->CopyCurrentFilterIdentifiers();
    TKelNode hits = queryNode.PerformQuery(text, property, ascending, scope, identifiers);
    if (identifiers != nullptr) {
        BCRelease(identifiers);
    }
    SetTarget(hits, hits, queryNode);
    return noErr;
}

StatusCode TNodeBrowserControl::SetSavedQueryTarget(TKelNode saved) {
    unsigned long property = 0;
    bool ascending = true;
    QuerySortOrder(property, ascending);
    TKelNode hits = queryNode.PerformSavedQuery(saved, property, ascending);
    SetTarget(hits, hits, queryNode);
    return noErr;
}

// The rows of a search are to be ordered anew: the search runs again in the new order.
void TNodeBrowserControl::ReorderQuery() {
    TKelNode target;
    GetTarget(target);
    if (!IsHitsContainer(target)) {
        return;
    }
    TUniString text;
    if (target.GetPropertyAsString(NodeCode("dnam"), text) == noErr) {
        TStringRef string(
            BCStringCreateWithCharacters(nullptr, text.Characters(), BCIndex(text.Length())),
            false);
        SetQueryTarget(string.AsBCStringRef());
    }
}
