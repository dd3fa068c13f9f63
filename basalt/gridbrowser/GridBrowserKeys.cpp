// Keys: arrows, home, end and the page keys move the selection and scroll it into sight, with
// shift extending it in list view; right and left open and close a row's disclosure or move
// across columns; command-A selects all; other characters select by name as they are typed.

#include "basalt/gridbrowser/GridBrowserView.h"
#include "basalt/toolbox/events/Event.h"

#include <algorithm>
#include <functional>
#include <optional>

namespace basalt::gridbrowser {
namespace {

char16_t TypedCharacter(EventRef textEvent) {
    char16_t text[4] = {};
    size_t size = 0;
    if (GetEventParameter(textEvent, kEventParamTextInputSendText, typeUnicodeText, nullptr,
                          sizeof text, &size, text) != noErr ||
        size < sizeof(char16_t))
        return 0;
    return text[0];
}

// Steps from the lead over rows that can't be selected, stopping at the ends.
std::optional<size_t> Step(size_t from, int delta, bool toEnd, size_t count,
                           const std::function<bool(size_t)>& selectable) {
    if (count == 0)
        return std::nullopt;
    long target = toEnd ? (delta < 0 ? 0 : long(count) - 1) : long(from) + delta;
    target = std::clamp<long>(target, 0, long(count) - 1);
    int direction = toEnd ? -delta : delta;
    direction = direction < 0 ? -1 : 1;
    for (long i = target; i >= 0 && i < long(count); i += direction)
        if (selectable(size_t(i)))
            return size_t(i);
    for (long i = target - direction; i >= 0 && i < long(count); i -= direction)
        if (selectable(size_t(i)))
            return size_t(i);
    return std::nullopt;
}

} // namespace

bool GridBrowserView::HandleText(EventRef textEvent) {
    EventRef raw = nullptr;
    uint32_t code = 0, modifiers = 0;
    if (toolbox::GetParam(textEvent, kEventParamTextInputSendKeyboardEvent, typeEventRef, &raw)) {
        toolbox::GetParam(raw, kEventParamKeyCode, typeUInt32, &code);
        toolbox::GetParam(raw, kEventParamKeyModifiers, typeUInt32, &modifiers);
    } else {
        code = 0xFFFF; // text without a key: only type-to-select applies
    }
    auto keep = Shared();
    return HandleKey(code, modifiers, TypedCharacter(textEvent));
}

bool GridBrowserView::HandleKey(uint32_t code, uint32_t modifiers, char16_t typed) {
    bool column = style_ == kGridBrowserColumnView;
    bool jump = (modifiers & optionKey) != 0; // option-arrows go to the first or last row
    switch (code) {
    case kVK_UpArrow:
        return column ? MoveInColumn(-1, jump) : MoveInList(-1, jump, modifiers);
    case kVK_DownArrow:
        return column ? MoveInColumn(1, jump) : MoveInList(1, jump, modifiers);
    case kVK_Home:
        return column ? MoveInColumn(-1, true) : MoveInList(-1, true, modifiers);
    case kVK_End:
        return column ? MoveInColumn(1, true) : MoveInList(1, true, modifiers);
    case kVK_PageUp:
        return column ? MoveInColumn(-int(PageRows()), false)
                      : MoveInList(-int(PageRows()), false, modifiers);
    case kVK_PageDown:
        return column ? MoveInColumn(int(PageRows()), false)
                      : MoveInList(int(PageRows()), false, modifiers);
    case kVK_RightArrow:
        return KeyRight();
    case kVK_LeftArrow:
        return KeyLeft();
    default:
        break;
    }
    if ((modifiers & cmdKey) && (typed == u'a' || typed == u'A' || code == kVK_ANSI_A)) {
        SelectAll();
        return true;
    }
    if ((modifiers & cmdKey) || typed < 0x20 || typed == 0x7F)
        return false;
    TypeToSelect(typed);
    return true;
}

bool GridBrowserView::MoveInList(int delta, bool toEnd, uint32_t modifiers) {
    const std::vector<Row>& rows = Rows();
    auto lead = std::find_if(rows.begin(), rows.end(), [&](const Row& r) { return r.id == lead_; });
    size_t from = lead != rows.end() ? size_t(lead - rows.begin())
                                     : (delta > 0 ? size_t(0) - 1 : rows.size());
    std::optional<size_t> to =
        Step(from, delta, toEnd, rows.size(), [&](size_t i) { return Selectable(Rows()[i].id); });
    if (!to)
        return true;
    GridBrowserItemID item = Rows()[*to].id;
    if ((modifiers & shiftKey) && anchor_ != 0 && !(selectionFlags & kGridBrowserSelectOnlyOne))
        SelectRange(Items(0, true, kGridBrowserItemAnyState), item);
    else
        SelectOnly(item);
    if (Rows().size() > *to)
        RevealRow(*to, false);
    return true;
}

bool GridBrowserView::MoveInColumn(int delta, bool toEnd) {
    if (path_.empty())
        return true;
    size_t column = FocusColumn();
    const std::vector<GridBrowserItemID>& items = tree_.Children(path_[column]);
    GridBrowserItemID current =
        selected_.empty() && column + 1 < path_.size() ? path_[column + 1] : lead_;
    auto at = std::find(items.begin(), items.end(), current);
    size_t from =
        at != items.end() ? size_t(at - items.begin()) : (delta > 0 ? size_t(0) - 1 : items.size());
    std::optional<size_t> to = Step(from, delta, toEnd, items.size(), [&](size_t i) {
        return Selectable(tree_.Children(path_[column])[i]);
    });
    if (!to)
        return true;
    GridBrowserItemID item = items[*to];
    SelectInColumn(column, item);
    RevealInColumn(column, item, false);
    return true;
}

bool GridBrowserView::KeyRight() {
    if (style_ == kGridBrowserColumnView) {
        // Into the column of the selected container, at its first row.
        if (!selected_.empty() || path_.size() < 2)
            return true;
        const std::vector<GridBrowserItemID>& items = tree_.Children(path_.back());
        auto first = std::find_if(items.begin(), items.end(),
                                  [&](GridBrowserItemID item) { return Selectable(item); });
        if (first != items.end()) {
            GridBrowserItemID item = *first;
            SelectInColumn(path_.size() - 1, item);
        }
        return true;
    }
    if (lead_ == 0 || !IsSelected(lead_))
        return true;
    if (!tree_.IsOpen(lead_)) {
        if (disclosureColumn != 0 && AskBool(lead_, kGridBrowserItemIsContainerProperty, false) &&
            AskBool(lead_, kGridBrowserContainerIsOpenableProperty, true))
            OpenContainer(lead_);
        return true;
    }
    // Into the open row's first child; an empty one has none to go to.
    return tree_.Children(lead_).empty() || MoveInList(1, false, 0);
}

bool GridBrowserView::KeyLeft() {
    if (style_ == kGridBrowserColumnView) {
        // To the container of the focused column, selected in the column left of it.
        size_t column = FocusColumn();
        if (column > 0) {
            SelectInColumn(column - 1, path_[column]);
            RevealColumn(column - 1);
        }
        return true;
    }
    if (lead_ == 0 || !IsSelected(lead_))
        return true;
    if (tree_.IsOpen(lead_)) {
        CloseContainer(lead_);
        return true;
    }
    GridBrowserItemID parent = tree_.ContainerOf(lead_);
    if (parent != 0 && parent != target_) {
        SelectOnly(parent);
        Reveal(parent, 0, false);
    }
    return true;
}

void GridBrowserView::SelectAll() {
    if (selectionFlags & kGridBrowserSelectOnlyOne)
        return;
    std::vector<GridBrowserItemID> candidates =
        style_ == kGridBrowserListView ? Items(0, true, kGridBrowserItemAnyState)
                                       : tree_.Children(path_.empty() ? 0 : path_[FocusColumn()]);
    if (style_ == kGridBrowserColumnView && !path_.empty())
        TrimPath(FocusColumn() + 1);
    std::unordered_set<GridBrowserItemID> all;
    for (GridBrowserItemID item : candidates)
        if (Selectable(item))
            all.insert(item);
    ChangeSelection(std::move(all));
}

void GridBrowserView::TypeToSelect(char16_t character) {
    const std::u16string& prefix = typeSelect_.Type(character, clock());
    std::vector<GridBrowserItemID> candidates;
    if (style_ == kGridBrowserListView)
        candidates = tree_.Children(lead_ != 0 ? tree_.ContainerOf(lead_) : target_);
    else if (!path_.empty())
        candidates = tree_.Children(path_[FocusColumn()]);
    std::optional<size_t> found =
        TypeSelect::Find(prefix, candidates.size(), [&](size_t i) -> std::optional<std::u16string> {
            if (!Selectable(candidates[i]))
                return std::nullopt;
            return AskName(candidates[i]);
        });
    if (!found)
        return;
    GridBrowserItemID item = candidates[*found];
    if (style_ == kGridBrowserColumnView) {
        size_t column = FocusColumn();
        SelectInColumn(column, item);
        RevealInColumn(column, item, true);
    } else {
        SelectOnly(item);
        Reveal(item, 0, true);
    }
}

} // namespace basalt::gridbrowser
