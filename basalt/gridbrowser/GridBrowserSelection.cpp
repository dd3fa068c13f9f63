// The selection: which rows are selected, where a shift-range starts (the anchor) and where the
// keys move from (the lead). In column view the selected rows all lie in one column; a selected
// container is shown by the path instead, as the column opened right of it.

#include "basalt/gridbrowser/GridBrowserView.h"

#include <algorithm>

namespace basalt::gridbrowser {

bool GridBrowserView::Selectable(GridBrowserItemID item) {
    return AskBool(item, kGridBrowserItemIsSelectableProperty, true);
}

void GridBrowserView::ChangeSelection(std::unordered_set<GridBrowserItemID> selection) {
    if (selection == selected_)
        return;
    selected_ = std::move(selection);
    SetNeedsDisplay();
    Send(0, kGridBrowserSelectionChanged);
}

void GridBrowserView::SelectOnly(GridBrowserItemID item) {
    anchor_ = lead_ = item;
    ChangeSelection({item});
}

void GridBrowserView::SelectRange(const std::vector<GridBrowserItemID>& sequence,
                                  GridBrowserItemID to) {
    auto from = std::find(sequence.begin(), sequence.end(), anchor_);
    auto end = std::find(sequence.begin(), sequence.end(), to);
    if (from == sequence.end() || end == sequence.end()) {
        SelectOnly(to);
        return;
    }
    if (from > end)
        std::swap(from, end);
    std::unordered_set<GridBrowserItemID> range;
    for (auto it = from; it <= end; ++it)
        if (Selectable(*it))
            range.insert(*it);
    lead_ = to;
    ChangeSelection(std::move(range));
}

bool GridBrowserView::ForgetRemoved() {
    auto gone =
        std::erase_if(selected_, [&](GridBrowserItemID item) { return !tree_.IsListed(item); });
    if (!tree_.IsListed(anchor_))
        anchor_ = 0;
    if (!tree_.IsListed(lead_))
        lead_ = 0;
    return gone > 0;
}

size_t GridBrowserView::FocusColumn() const {
    if (!selected_.empty()) {
        GridBrowserItemID container = tree_.ContainerOf(*selected_.begin());
        auto it = std::find(path_.begin(), path_.end(), container);
        if (it != path_.end())
            return size_t(it - path_.begin());
    }
    return path_.size() >= 2 ? path_.size() - 2 : 0;
}

// A click (or key) on an item of a column: the columns right of it close, and a container
// opens its own column. The container whose column is open already keeps it, with what it
// shows, and only the columns beyond it close.
void GridBrowserView::SelectInColumn(size_t column, GridBrowserItemID item) {
    if (column >= path_.size())
        return;
    bool open = item != 0 && column + 1 < path_.size() && path_[column + 1] == item;
    bool alreadyFile =
        selected_.size() == 1 && selected_.contains(item) && column + 1 == path_.size();
    bool alreadyOpen = open && selected_.empty() && column + 2 == path_.size();
    if (alreadyFile || alreadyOpen)
        return;
    auto keep = Shared();
    GridBrowserItemID oldTarget = Target();
    bool hadSelection = !selected_.empty() || path_.size() > column + 1;
    TrimPath(column + (open ? 2 : 1));
    bool container = !open && item != 0 &&
                     AskBool(item, kGridBrowserItemIsContainerProperty, false) &&
                     AskBool(item, kGridBrowserContainerIsOpenableProperty, true);
    selected_.clear();
    anchor_ = lead_ = item;
    if (container) {
        path_.push_back(item);
        columnScroll_.push_back(0);
        tree_.Open(item);
        Send(item, kGridBrowserContainerOpened);
    } else if (item != 0 && !open) {
        selected_.insert(item);
    }
    RevealColumn(ColumnCount() - 1);
    SetNeedsDisplay();
    if (Target() != oldTarget)
        Send(Target(), kGridBrowserTargetChanged);
    if (hadSelection || item != 0)
        Send(0, kGridBrowserSelectionChanged);
}

StatusCode GridBrowserView::SetSelection(std::span<const GridBrowserItemID> items,
                                         GridBrowserSetOption operation) {
    std::unordered_set<GridBrowserItemID> selection =
        operation == kGridBrowserItemsAssign ? std::unordered_set<GridBrowserItemID>{} : selected_;
    for (GridBrowserItemID item : items) {
        if (!tree_.IsListed(item))
            continue;
        switch (operation) {
        case kGridBrowserItemsAssign:
        case kGridBrowserItemsAdd:
            selection.insert(item);
            break;
        case kGridBrowserItemsRemove:
            selection.erase(item);
            break;
        case kGridBrowserItemsToggle:
            if (!selection.erase(item))
                selection.insert(item);
            break;
        default:
            return paramErr;
        }
        if (selectionFlags & kGridBrowserSelectOnlyOne) {
            if (selection.contains(item))
                selection = {item};
        }
    }
    if (!items.empty() && tree_.IsListed(items.back()))
        anchor_ = lead_ = items.back();
    auto keep = Shared();
    ChangeSelection(std::move(selection));
    return noErr;
}

} // namespace basalt::gridbrowser
