// The rubber band of list view: a press in the rows that moves a few points becomes a band,
// and every selectable row it crosses is selected. Shift adds the band to the selection held
// before the press, command toggles the rows it crosses. While the mouse is above or below
// the rows a timer keeps scrolling, so a band can reach rows out of sight.

#include "basalt/gridbrowser/GridBrowserView.h"

#include <algorithm>
#include <cmath>

namespace basalt::gridbrowser {
namespace {

constexpr BGFloat kBandThreshold = 3;
constexpr EventTimerInterval kAutoScrollInterval = 0.03;

} // namespace

GridBrowserView::~GridBrowserView() {
    if (autoScroll_ != nullptr)
        RemoveEventLoopTimer(autoScroll_);
}

void GridBrowserView::BeginBand(BGPoint local, uint32_t modifiers,
                                std::unordered_set<GridBrowserItemID> before) {
    if (selectionFlags & kGridBrowserSelectOnlyOne)
        return;
    Band band;
    BGRect area = RowArea();
    band.start = {local.x + scroll_.x, local.y - area.origin.y + scroll_.y};
    band.last = local;
    band.toggle = (modifiers & cmdKey) != 0;
    if (modifiers & (cmdKey | shiftKey))
        band.base = std::move(before);
    band_ = std::move(band);
    drag_ = DragKind::Band;
}

bool GridBrowserView::DragBand(BGPoint local) {
    if (!band_)
        return false;
    auto keep = Shared();
    band_->last = local;
    BGRect area = RowArea();
    BGPoint content = {local.x + scroll_.x, local.y - area.origin.y + scroll_.y};
    if (!band_->moved &&
        std::hypot(content.x - band_->start.x, content.y - band_->start.y) < kBandThreshold)
        return true;
    band_->moved = true;
    lastClickItem_ = 0; // a band is no first click of a double click
    AutoScroll(local.y < area.origin.y || local.y >= BGRectGetMaxY(area));
    ApplyBand();
    return true;
}

void GridBrowserView::ApplyBand() {
    if (!band_ || !band_->moved)
        return;
    BGRect area = RowArea();
    BGFloat y = std::clamp<BGFloat>(band_->last.y, area.origin.y, BGRectGetMaxY(area)) -
                area.origin.y + scroll_.y;
    BGFloat top = std::min(band_->start.y, y);
    BGFloat bottom = std::max(band_->start.y, y);
    const std::vector<Row>& rows = Rows();
    auto first = size_t(std::max<BGFloat>(0, std::floor(top / rowHeight)));
    size_t end = std::min(rows.size(), std::max(first + 1, size_t(std::ceil(bottom / rowHeight))));
    std::vector<GridBrowserItemID> crossed;
    for (size_t index = first; index < end; ++index)
        crossed.push_back(rows[index].id);
    std::unordered_set<GridBrowserItemID> selection = band_->base;
    for (GridBrowserItemID item : crossed) {
        if (!Selectable(item))
            continue;
        if (band_->toggle && band_->base.contains(item))
            selection.erase(item);
        else
            selection.insert(item);
    }
    if (!crossed.empty()) {
        // The band's far end is where the keys and the next shift-click go on from.
        bool down = y >= band_->start.y;
        anchor_ = down ? crossed.front() : crossed.back();
        lead_ = down ? crossed.back() : crossed.front();
    }
    SetNeedsDisplay();
    ChangeSelection(std::move(selection));
}

void GridBrowserView::EndBand() {
    AutoScroll(false);
    if (band_ && band_->moved)
        SetNeedsDisplay();
    band_.reset();
}

void GridBrowserView::AutoScroll(bool wanted) {
    if (wanted && autoScroll_ == nullptr)
        InstallEventLoopTimer(GetMainEventLoop(), kAutoScrollInterval, kAutoScrollInterval,
                              AutoScrollTick, this, &autoScroll_);
    if (!wanted && autoScroll_ != nullptr) {
        RemoveEventLoopTimer(autoScroll_);
        autoScroll_ = nullptr;
    }
}

// Scrolls faster the farther the mouse is from the rows, up to a few rows a tick.
void GridBrowserView::AutoScrollTick(EventLoopTimerRef, void* data) {
    auto* view = static_cast<GridBrowserView*>(data);
    if (!view->band_) {
        view->AutoScroll(false);
        return;
    }
    auto keep = view->Shared();
    BGRect area = view->RowArea();
    BGFloat y = view->band_->last.y;
    BGFloat beyond = y < area.origin.y ? y - area.origin.y : y - BGRectGetMaxY(area);
    BGFloat step = std::clamp<BGFloat>(beyond, -3 * view->rowHeight, 3 * view->rowHeight);
    if (std::abs(step) < 2)
        step = step < 0 ? -2 : 2;
    view->ScrollTo({view->scroll_.x, view->scroll_.y + step});
    view->ApplyBand();
}

void GridBrowserView::DrawBand(BGContextRef context) {
    if (!band_ || !band_->moved)
        return;
    BGRect area = RowArea();
    BGPoint start = {band_->start.x - scroll_.x, band_->start.y + area.origin.y - scroll_.y};
    BGPoint end = band_->last;
    BGRect band = BGRectMake(std::min(start.x, end.x), std::min(start.y, end.y),
                             std::abs(end.x - start.x), std::abs(end.y - start.y));
    band = BGRectIntersection(band, area);
    if (BGRectIsEmpty(band))
        return;
    BGContextSaveGState(context);
    BTThemeApplyBackground(&band, kBTThemeBackgroundSelection, kBTThemeStateActive, context);
    BGContextSetAlpha(context, 0.2);
    BGContextFillRect(context, band);
    // A grey outline shows over selected rows as well as over plain ones; thin fills keep it
    // crisp at 2x.
    BTThemeSetTextColor(kBTThemeTextColorSecondary, kBTThemeStateActive, context);
    BGContextSetAlpha(context, 0.9);
    BGFloat x = band.origin.x, y = band.origin.y, w = band.size.width, h = band.size.height;
    BGContextFillRect(context, BGRectMake(x, y, w, 1));
    BGContextFillRect(context, BGRectMake(x, y + h - 1, w, 1));
    BGContextFillRect(context, BGRectMake(x, y, 1, h));
    BGContextFillRect(context, BGRectMake(x + w - 1, y, 1, h));
    BGContextRestoreGState(context);
}

} // namespace basalt::gridbrowser
