// How the controls of a browse window follow each other when rows come and go and the window
// changes size. Each rule binds one side of a control to an edge of another control or of its
// superview; sides a rule does not name keep what the layout file gave them, which is how this
// window layer lets a control stretch with the window. The top block (control 25) is kept
// centred, and the rows bound to its left edge move with it.

#include "kel/dialogs/TBrowseDialog.h"

#include <cmath>
#include <vector>

namespace {

enum class Side { top, left, bottom, right };
// An edge of the leader: its top or left (min), its bottom or right (max).
enum class Edge : uint32_t { min = kBTLayoutBindMin, max = kBTLayoutBindMax };
constexpr int16_t kSuperview = 0;

struct Rule {
    int16_t view;
    Side side;
    int16_t leader;
    Edge edge;
};

BTSideBinding& SideOf(BTLayoutInfo& info, Side side) {
    switch (side) {
    case Side::top:
        return info.binding.top;
    case Side::left:
        return info.binding.left;
    case Side::bottom:
        return info.binding.bottom;
    case Side::right:
        break;
    }
    return info.binding.right;
}

} // namespace

void TBrowseDialog::SetUpViewLayouts() {
    const bool hasSaveName = Control(kBrowseSaveName) != nullptr;
    const int16_t aboveType = hasSaveName ? kBrowseWherePopup : kBrowseMessage;
    const int16_t aboveRow =
        Control(kBrowseTypePopup) != nullptr ? int16_t(kBrowseTypePopup) : aboveType;
    std::vector<Rule> rules = {
        {kBrowsePathArrows, Side::left, kBrowsePathPopup, Edge::max},
        {kBrowseCountText, Side::left, kBrowsePathArrows, Edge::max},
        {kBrowseSearchField, Side::left, kBrowseCountText, Edge::max},
        {kBrowseSearchField, Side::right, kSuperview, Edge::max},
        {kBrowsePane, Side::left, kSuperview, Edge::min},
        {kBrowsePane, Side::right, kSuperview, Edge::max},
        {kBrowsePane, Side::bottom, kBrowseBottomGroup, Edge::min},
        {kBrowsePathPopup, Side::left, kBrowseTopBlock, Edge::min},
        {kBrowseScopeHome, Side::left, kBrowseScopeEverywhere, Edge::max},
        {kBrowseScopeFolder, Side::left, kBrowseScopeHome, Edge::max},
    };
    // In a save window the top row is part of the pane, which goes away when the window
    // collapses: the pane follows the where row instead.
    ControlRef topRow = Control(kBrowseTopRow);
    if (topRow != nullptr && BTViewGetSuperview(topRow) == Control(kBrowsePane)) {
        rules.push_back({kBrowsePane, Side::top, kBrowseWherePopup, Edge::max});
    } else {
        rules.push_back({kBrowseTopRow, Side::top, aboveRow, Edge::max});
        rules.push_back({kBrowsePane, Side::top, kBrowseTopRow, Edge::max});
    }
    for (int16_t view : {kBrowseSaveName, kBrowseSaveNameLabel}) {
        rules.push_back({view, Side::top, kBrowseMessage, Edge::max});
        rules.push_back({view, Side::left, kBrowseTopBlock, Edge::min});
    }
    for (int16_t view :
         {kBrowseWherePopupLabel, kBrowseWherePopup, kBrowseDisclosure, kBrowseSimpleSaveArrows}) {
        if (hasSaveName) {
            rules.push_back({view, Side::top, kBrowseSaveName, Edge::max});
            rules.push_back({view, Side::left, kBrowseTopBlock, Edge::min});
        }
    }
    for (int16_t view : {kBrowseTypePopupLabel, kBrowseTypePopup}) {
        rules.push_back({view, Side::top, aboveType, Edge::max});
        rules.push_back({view, Side::left, kBrowseTopBlock, Edge::min});
    }
    for (int16_t view : {kBrowseFormatPopup, kBrowseFormatPopupLabel}) {
        rules.push_back({view, Side::left, kBrowseTopBlock, Edge::min});
    }
    if (Control(kBrowseHideExtension) != nullptr) {
        rules.push_back({kBrowseNewFolder, Side::left, kBrowseHideExtension, Edge::max});
        rules.push_back({kBrowseNewFolder, Side::bottom, kSuperview, Edge::max});
    }
    for (const Rule& rule : rules) {
        ControlRef view = Control(rule.view);
        ControlRef leader = rule.leader == kSuperview ? nullptr : Control(rule.leader);
        if (view == nullptr || (rule.leader != kSuperview && leader == nullptr)) {
            continue;
        }
        BTLayoutInfo info{};
        BTViewGetLayoutInfo(view, &info);
        SideOf(info, rule.side) = BTSideBinding{leader, uint32_t(rule.edge), 0};
        BTViewSetLayoutInfo(view, &info);
    }
    CentreTopBlock();
}

void TBrowseDialog::CentreTopBlock() {
    ControlRef block = Control(kBrowseTopBlock);
    if (block == nullptr) {
        return;
    }
    BGRect parent = BGRectZero;
    BTViewGetBounds(BTViewGetSuperview(block), &parent);
    BGRect frame = BGRectZero;
    BTViewGetFrame(block, &frame);
    frame.origin.x = std::floor((parent.size.width - frame.size.width) / 2);
    BTViewSetFrame(block, &frame);
}
