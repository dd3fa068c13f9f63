#include "basalt/gridbrowser/GridBrowserView.h"

#include "basalt/gridbrowser/CellData.h"
#include "basalt/toolbox/views/ViewFactory.h"

#include <algorithm>

namespace basalt::gridbrowser {
namespace {

// Makes the kind known to BTCreateControl and layout files when the library loads.
const bool kRegistered = [] {
    toolbox::RegisterViewKind(kControlKindGridBrowser, "grid-browser",
                              [] { return std::make_shared<GridBrowserView>(); });
    return true;
}();

} // namespace

GridBrowserView::GridBrowserView()
    : View(kControlKindGridBrowser), clock(GetCurrentEventTime), style_(kGridBrowserListView) {
    features = kBTControlSupportsFocus;
    (void)kRegistered;
}

GridBrowserView* GridBrowserView::FromControl(ControlRef control) {
    if (control == nullptr)
        return nullptr;
    return dynamic_cast<GridBrowserView*>(View::From(control));
}

// ---- Asking the data source ------------------------------------------------------------------

StatusCode GridBrowserView::AskCell(GridBrowserItemID item, CellData& cell) {
    if (callbacks.itemDataCallback == nullptr)
        return kGridBrowserPropertyNotSupported;
    return callbacks.itemDataCallback(Ref(), item, cell.Property(), cell.Ref(), false);
}

bool GridBrowserView::AskBool(GridBrowserItemID item, GridBrowserPropertyID property,
                              bool fallback) {
    CellData cell(property);
    if (AskCell(item, cell) != noErr || !cell.Boolean())
        return fallback;
    return *cell.Boolean();
}

std::u16string GridBrowserView::AskName(GridBrowserItemID item) {
    for (GridBrowserPropertyID property :
         {kGridBrowserNameTextProperty, kGridBrowserItemSelfIdentityProperty}) {
        CellData cell(property);
        if (AskCell(item, cell) == noErr && cell.Text() != nullptr) {
            std::u16string name(size_t(BCStringGetLength(cell.Text())), u'\0');
            BCStringGetCharacters(cell.Text(), {0, BCIndex(name.size())},
                                  reinterpret_cast<UniChar*>(name.data()));
            return name;
        }
    }
    return {};
}

void GridBrowserView::Send(GridBrowserItemID item, GridBrowserItemNotification message) {
    if (callbacks.itemNotificationCallback != nullptr)
        callbacks.itemNotificationCallback(Ref(), item, message);
}

// ---- Style -----------------------------------------------------------------------------------

StatusCode GridBrowserView::SetStyle(GridBrowserViewStyle style) {
    if (style != kGridBrowserListView && style != kGridBrowserColumnView)
        return kGridBrowserBadStyle;
    if (style == style_)
        return noErr;
    auto keep = Shared();
    GridBrowserItemID target = Target();
    // The old style's containers close as the user would see them close; the new style opens
    // the same target afresh.
    if (style_ == kGridBrowserListView)
        SetTarget(0);
    else
        TrimPath(0);
    selected_.clear();
    anchor_ = lead_ = 0;
    style_ = style;
    scroll_ = {};
    if (target == 0)
        return noErr;
    if (style == kGridBrowserListView)
        return SetTarget(target);
    return SetPath({&target, 1});
}

// ---- Items -----------------------------------------------------------------------------------

GridBrowserItemID GridBrowserView::Target() const {
    if (style_ == kGridBrowserListView)
        return target_;
    return path_.empty() ? 0 : path_.back();
}

void GridBrowserView::SendClosed(const std::vector<GridBrowserItemID>& closed) {
    for (GridBrowserItemID container : closed)
        Send(container, kGridBrowserContainerClosed);
}

void GridBrowserView::CloseAndNotify(GridBrowserItemID container) {
    SendClosed(tree_.Close(container));
}

StatusCode GridBrowserView::SetTarget(GridBrowserItemID target) {
    if (style_ == kGridBrowserColumnView)
        return target == 0 ? (TrimPath(0), noErr) : SetPath({&target, 1});
    if (target == target_)
        return noErr;
    auto keep = Shared();
    GridBrowserItemID old = target_;
    target_ = target;
    selected_.clear();
    anchor_ = lead_ = 0;
    scroll_ = {};
    if (old != 0)
        CloseAndNotify(old);
    RowsChanged();
    if (target != 0) {
        tree_.Open(target);
        Send(target, kGridBrowserContainerOpened);
    }
    Send(target, kGridBrowserTargetChanged);
    return noErr;
}

ItemTree::Less GridBrowserView::SortLess() {
    GridBrowserItemCompareProcPtr compare = callbacks.itemCompareCallback;
    if (compare == nullptr)
        return nullptr;
    ControlRef ref = Ref();
    GridBrowserPropertyID property = sortProperty_;
    if (sortOrder_ == kGridBrowserOrderDecreasing)
        return
            [=](GridBrowserItemID a, GridBrowserItemID b) { return compare(ref, b, a, property); };
    return [=](GridBrowserItemID a, GridBrowserItemID b) { return compare(ref, a, b, property); };
}

GridBrowserItemID GridBrowserView::ContainerOrTarget(GridBrowserItemID container) const {
    if (container != 0)
        return container;
    if (style_ == kGridBrowserListView)
        return target_;
    return path_.empty() ? 0 : path_.front();
}

StatusCode GridBrowserView::AddItems(GridBrowserItemID container,
                                     std::span<const GridBrowserItemID> items, bool presorted) {
    container = ContainerOrTarget(container);
    if (!tree_.IsOpen(container))
        return kGridBrowserItemNotFound;
    StatusCode status = tree_.Add(container, items, presorted, SortLess());
    RowsChanged();
    return status;
}

StatusCode GridBrowserView::RemoveItems(GridBrowserItemID container,
                                        std::span<const GridBrowserItemID> items) {
    container = ContainerOrTarget(container);
    if (!tree_.IsOpen(container))
        return kGridBrowserItemNotFound;
    auto keep = Shared();
    std::vector<GridBrowserItemID> closed = tree_.Remove(container, items);
    SendClosed(closed);
    bool deselected = ForgetRemoved();
    // A column whose container went closes with everything right of it.
    for (size_t i = 1; i < path_.size(); ++i)
        if (std::find(closed.begin(), closed.end(), path_[i]) != closed.end()) {
            TrimPath(i);
            Send(Target(), kGridBrowserTargetChanged);
            break;
        }
    RowsChanged();
    if (deselected)
        Send(0, kGridBrowserSelectionChanged);
    return noErr;
}

StatusCode GridBrowserView::UpdateItems(GridBrowserItemID container,
                                        std::span<const GridBrowserItemID> items, bool sort) {
    container = ContainerOrTarget(container);
    if (!tree_.IsOpen(container))
        return kGridBrowserItemNotFound;
    if (sort) {
        tree_.Resort(container, items, SortLess());
        RowsChanged();
    }
    SetNeedsDisplay();
    return noErr;
}

StatusCode GridBrowserView::OpenContainer(GridBrowserItemID container) {
    if (container == 0 || !tree_.IsListed(container))
        return kGridBrowserItemNotFound;
    if (tree_.IsOpen(container))
        return noErr;
    auto keep = Shared();
    tree_.Open(container);
    RowsChanged();
    Send(container, kGridBrowserContainerOpened);
    return noErr;
}

StatusCode GridBrowserView::CloseContainer(GridBrowserItemID container) {
    if (!tree_.IsOpen(container) || container == Target())
        return kGridBrowserItemNotFound;
    auto keep = Shared();
    CloseAndNotify(container);
    RowsChanged();
    if (ForgetRemoved())
        Send(0, kGridBrowserSelectionChanged);
    return noErr;
}

std::vector<GridBrowserItemID> GridBrowserView::Items(GridBrowserItemID container, bool recurse,
                                                      GridBrowserItemState state) {
    std::vector<GridBrowserItemID> found;
    auto matches = [&](GridBrowserItemID item) {
        switch (state) {
        case kGridBrowserItemIsSelected:
            return IsSelected(item);
        case kGridBrowserContainerIsOpen:
            return tree_.IsOpen(item);
        default:
            return true;
        }
    };
    auto walk = [&](auto& self, GridBrowserItemID from) -> void {
        for (GridBrowserItemID item : tree_.Children(from)) {
            if (matches(item))
                found.push_back(item);
            if (recurse && tree_.IsOpen(item))
                self(self, item);
        }
    };
    walk(walk, ContainerOrTarget(container));
    return found;
}

void GridBrowserView::RowsChanged() {
    rowsDirty_ = true;
    // List view clamps when it lists its rows again; columns hold their rows as they are.
    if (style_ == kGridBrowserColumnView)
        ClampScroll();
    SetNeedsDisplay();
}

const std::vector<Row>& GridBrowserView::Rows() {
    if (!rowsDirty_)
        return rows_;
    rows_.clear();
    auto walk = [&](auto& self, GridBrowserItemID container, uint16_t depth) -> void {
        for (GridBrowserItemID item : tree_.Children(container)) {
            rows_.push_back({item, depth});
            if (tree_.IsOpen(item))
                self(self, item, uint16_t(depth + 1));
        }
    };
    if (style_ == kGridBrowserListView && target_ != 0)
        walk(walk, target_, 0);
    rowsDirty_ = false;
    ClampScroll();
    return rows_;
}

// ---- Column view -----------------------------------------------------------------------------

void GridBrowserView::TrimPath(size_t length) {
    while (path_.size() > length) {
        GridBrowserItemID last = path_.back();
        path_.pop_back();
        CloseAndNotify(last);
    }
    columnScroll_.resize(path_.size(), 0);
    ForgetRemoved();
    SetNeedsDisplay();
}

StatusCode GridBrowserView::SetPath(std::span<const GridBrowserItemID> path) {
    if (style_ != kGridBrowserColumnView)
        return path.empty() ? kGridBrowserItemNotFound : SetTarget(path.back());
    if (std::find(path.begin(), path.end(), GridBrowserItemID(0)) != path.end())
        return paramErr;
    auto keep = Shared();
    GridBrowserItemID oldTarget = Target();
    GridBrowserItemID file = 0;
    if (path.size() > 1 && !AskBool(path.back(), kGridBrowserItemIsContainerProperty, true)) {
        file = path.back();
        path = path.first(path.size() - 1);
    }
    size_t common = 0;
    while (common < path.size() && common < path_.size() && path[common] == path_[common])
        ++common;
    TrimPath(common);
    for (size_t i = common; i < path.size(); ++i) {
        path_.push_back(path[i]);
        columnScroll_.push_back(0);
        tree_.Open(path[i]);
        Send(path[i], kGridBrowserContainerOpened);
    }
    selected_.clear();
    if (file != 0 && tree_.ContainerOf(file) == path_.back())
        selected_.insert(file);
    anchor_ = lead_ = file;
    // Each column shows the row that leads on, and the last the file chosen in it.
    for (size_t i = std::max<size_t>(common, 1); i < path_.size(); ++i)
        RevealRowInColumn(i - 1, path_[i], true);
    if (file != 0)
        RevealRowInColumn(path_.size() - 1, file, true);
    RevealColumn(ColumnCount() - 1);
    SetNeedsDisplay();
    if (Target() != oldTarget)
        Send(Target(), kGridBrowserTargetChanged);
    return noErr;
}

std::vector<GridBrowserItemID> GridBrowserView::ReportedPath() const {
    std::vector<GridBrowserItemID> path = path_;
    if (style_ == kGridBrowserListView && target_ != 0)
        path.push_back(target_);
    if (style_ == kGridBrowserColumnView && selected_.size() == 1 && !path_.empty() &&
        tree_.ContainerOf(*selected_.begin()) == path_.back())
        path.push_back(*selected_.begin());
    return path;
}

// ---- Sorting and columns ---------------------------------------------------------------------

void GridBrowserView::SetSort(GridBrowserPropertyID property, GridBrowserSortOrder order) {
    if (property == sortProperty_ && order == sortOrder_)
        return;
    sortProperty_ = property;
    sortOrder_ = order;
    SortAll();
}

void GridBrowserView::SortAll() {
    ItemTree::Less less = SortLess();
    for (GridBrowserItemID container : tree_.OpenContainers())
        tree_.Sort(container, less);
    RowsChanged();
}

ListColumn* GridBrowserView::FindColumn(GridBrowserPropertyID property) {
    for (ListColumn& column : columns_)
        if (column.desc.propertyID == property)
            return &column;
    return nullptr;
}

void GridBrowserView::ColumnsChanged() {
    ClampScroll();
    SetNeedsDisplay();
}

} // namespace basalt::gridbrowser
