#pragma once

// The open containers of a GridBrowser and the ids of their rows in display order.
//
// Only ids are kept: a container holds the ids that were added to it, sorted by the order the
// control is given, and every listed id remembers its container so that removal and reveal
// need no search. A container that was given its rows pre-sorted keeps their order.

#include "basalt/gridbrowser/GridBrowser.h"

#include <functional>
#include <span>
#include <unordered_map>
#include <vector>

namespace basalt::gridbrowser {

class ItemTree {
public:
    using Less = std::function<bool(GridBrowserItemID, GridBrowserItemID)>;

    bool IsOpen(GridBrowserItemID container) const { return open_.contains(container); }
    // Starts an empty container; nothing happens if it is open already.
    void Open(GridBrowserItemID container);
    // Forgets the container, its rows and the open containers below it. The answer is every
    // container closed, deepest first, this one last.
    std::vector<GridBrowserItemID> Close(GridBrowserItemID container);
    void CloseAll();

    // The rows of an open container, empty for one that isn't.
    const std::vector<GridBrowserItemID>& Children(GridBrowserItemID container) const;
    // The container that lists the item, 0 if none does.
    GridBrowserItemID ContainerOf(GridBrowserItemID item) const;
    bool IsListed(GridBrowserItemID item) const { return parents_.contains(item); }
    bool IsPresorted(GridBrowserItemID container) const;
    std::vector<GridBrowserItemID> OpenContainers() const;

    // Adds rows to an open container: in the given order if presorted, otherwise each at its
    // place by less. Ids listed already are skipped. paramErr for a container not open.
    StatusCode Add(GridBrowserItemID container, std::span<const GridBrowserItemID> items,
                   bool presorted, const Less& less);
    // Removes rows (all of them for an empty span). The answer is the open containers that went
    // with them, deepest first.
    std::vector<GridBrowserItemID> Remove(GridBrowserItemID container,
                                          std::span<const GridBrowserItemID> items);
    // Sorts one container's rows, or moves the given ones to their places; presorted
    // containers keep their order.
    void Sort(GridBrowserItemID container, const Less& less);
    void Resort(GridBrowserItemID container, std::span<const GridBrowserItemID> items,
                const Less& less);

private:
    struct Container {
        std::vector<GridBrowserItemID> children;
        bool presorted = false;
    };
    void CloseInto(GridBrowserItemID container, std::vector<GridBrowserItemID>& closed);
    void InsertSorted(Container& container, GridBrowserItemID item, const Less& less);

    std::unordered_map<GridBrowserItemID, Container> open_;
    std::unordered_map<GridBrowserItemID, GridBrowserItemID> parents_;
};

} // namespace basalt::gridbrowser
