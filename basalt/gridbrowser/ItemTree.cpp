#include "basalt/gridbrowser/ItemTree.h"

#include <algorithm>

namespace basalt::gridbrowser {

void ItemTree::Open(GridBrowserItemID container) {
    open_.try_emplace(container);
}

std::vector<GridBrowserItemID> ItemTree::Close(GridBrowserItemID container) {
    std::vector<GridBrowserItemID> closed;
    if (IsOpen(container))
        CloseInto(container, closed);
    return closed;
}

void ItemTree::CloseInto(GridBrowserItemID container, std::vector<GridBrowserItemID>& closed) {
    auto it = open_.find(container);
    std::vector<GridBrowserItemID> children = std::move(it->second.children);
    open_.erase(it);
    for (GridBrowserItemID child : children) {
        if (auto parent = parents_.find(child);
            parent != parents_.end() && parent->second == container)
            parents_.erase(parent);
        if (IsOpen(child))
            CloseInto(child, closed);
    }
    closed.push_back(container);
}

void ItemTree::CloseAll() {
    open_.clear();
    parents_.clear();
}

const std::vector<GridBrowserItemID>& ItemTree::Children(GridBrowserItemID container) const {
    static const std::vector<GridBrowserItemID> kNone;
    auto it = open_.find(container);
    return it != open_.end() ? it->second.children : kNone;
}

GridBrowserItemID ItemTree::ContainerOf(GridBrowserItemID item) const {
    auto it = parents_.find(item);
    return it != parents_.end() ? it->second : 0;
}

bool ItemTree::IsPresorted(GridBrowserItemID container) const {
    auto it = open_.find(container);
    return it != open_.end() && it->second.presorted;
}

std::vector<GridBrowserItemID> ItemTree::OpenContainers() const {
    std::vector<GridBrowserItemID> containers;
    containers.reserve(open_.size());
    for (const auto& [id, container] : open_)
        containers.push_back(id);
    return containers;
}

void ItemTree::InsertSorted(Container& container, GridBrowserItemID item, const Less& less) {
    auto& children = container.children;
    children.insert(std::upper_bound(children.begin(), children.end(), item, less), item);
}

StatusCode ItemTree::Add(GridBrowserItemID container, std::span<const GridBrowserItemID> items,
                         bool presorted, const Less& less) {
    auto it = open_.find(container);
    if (it == open_.end())
        return paramErr;
    Container& target = it->second;
    if (target.children.empty())
        target.presorted = presorted;
    std::vector<GridBrowserItemID> fresh;
    fresh.reserve(items.size());
    parents_.reserve(parents_.size() + items.size());
    for (GridBrowserItemID item : items)
        if (item != 0 && parents_.try_emplace(item, container).second)
            fresh.push_back(item);
    if (target.presorted || !less) {
        target.children.insert(target.children.end(), fresh.begin(), fresh.end());
    } else if (fresh.size() < 8) {
        for (GridBrowserItemID item : fresh)
            InsertSorted(target, item, less);
    } else {
        // Sort the newcomers once and merge: many rows at a time cost one sort, not a search each.
        // A client that hands them over in order spares the sort.
        if (!std::is_sorted(fresh.begin(), fresh.end(), less))
            std::stable_sort(fresh.begin(), fresh.end(), less);
        auto middle = target.children.insert(target.children.end(), fresh.begin(), fresh.end());
        std::inplace_merge(target.children.begin(), middle, target.children.end(), less);
    }
    return noErr;
}

std::vector<GridBrowserItemID> ItemTree::Remove(GridBrowserItemID container,
                                                std::span<const GridBrowserItemID> items) {
    std::vector<GridBrowserItemID> closed;
    auto it = open_.find(container);
    if (it == open_.end())
        return closed;
    std::vector<GridBrowserItemID>& children = it->second.children;
    // A search replaces all its rows with each batch: taking rows out of parents_ marks them,
    // so that a thousand go in one pass with nothing allocated per row.
    std::vector<GridBrowserItemID> gone;
    if (items.empty()) {
        gone.swap(children);
        for (GridBrowserItemID item : gone)
            parents_.erase(item);
    } else {
        for (GridBrowserItemID item : items) {
            if (ContainerOf(item) == container) {
                parents_.erase(item);
                gone.push_back(item);
            }
        }
        std::erase_if(children, [&](GridBrowserItemID id) { return !parents_.contains(id); });
    }
    for (GridBrowserItemID item : gone) {
        if (IsOpen(item))
            CloseInto(item, closed);
    }
    return closed;
}

void ItemTree::Sort(GridBrowserItemID container, const Less& less) {
    auto it = open_.find(container);
    if (it == open_.end() || it->second.presorted || !less)
        return;
    // A new sort property often keeps the order (list view's name after column view's own):
    // one pass over a large folder then spares a sort of it through the client's callback.
    auto& children = it->second.children;
    if (!std::is_sorted(children.begin(), children.end(), less))
        std::stable_sort(children.begin(), children.end(), less);
}

void ItemTree::Resort(GridBrowserItemID container, std::span<const GridBrowserItemID> items,
                      const Less& less) {
    auto it = open_.find(container);
    if (it == open_.end() || it->second.presorted || !less)
        return;
    if (items.empty() || items.size() > 8) {
        Sort(container, less);
        return;
    }
    auto& children = it->second.children;
    for (GridBrowserItemID item : items) {
        auto at = std::find(children.begin(), children.end(), item);
        if (at == children.end())
            continue;
        children.erase(at);
        InsertSorted(it->second, item, less);
    }
}

} // namespace basalt::gridbrowser
