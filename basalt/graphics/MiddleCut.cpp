#include "basalt/graphics/MiddleCut.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace basalt::graphics {

namespace {

constexpr std::string_view kEllipsis = "\u2026";

struct Cluster {
    int index; // of its first byte in the text
    int width;
};

// The line's glyph clusters in the text's order (the layout gives them in visual order, which
// differs for right-to-left runs); cutting between clusters never splits a character's marks.
std::vector<Cluster> ClustersOf(PangoLayout* layout, int textLength) {
    std::vector<Cluster> clusters;
    PangoLayoutIter* iter = pango_layout_get_iter(layout);
    do {
        const int index = pango_layout_iter_get_index(iter);
        if (index < textLength) {
            PangoRectangle logical;
            pango_layout_iter_get_cluster_extents(iter, nullptr, &logical);
            clusters.push_back({index, logical.width});
        }
    } while (pango_layout_iter_next_cluster(iter));
    pango_layout_iter_free(iter);
    std::sort(clusters.begin(), clusters.end(),
              [](const Cluster& a, const Cluster& b) { return a.index < b.index; });
    return clusters;
}

int EllipsisWidth(PangoLayout* like) {
    PangoLayout* layout = pango_layout_copy(like);
    pango_layout_set_text(layout, kEllipsis.data(), static_cast<int>(kEllipsis.size()));
    int width = 0;
    pango_layout_get_size(layout, &width, nullptr);
    g_object_unref(layout);
    return width;
}

} // namespace

std::optional<std::string> CutInTheMiddle(PangoLayout* whole, int width) {
    int wholeWidth = 0;
    pango_layout_get_size(whole, &wholeWidth, nullptr);
    if (wholeWidth <= width)
        return std::nullopt;
    const std::string_view text = pango_layout_get_text(whole);
    const std::vector<Cluster> clusters = ClustersOf(whole, static_cast<int>(text.size()));
    const int budget = width - EllipsisWidth(whole);
    // Take clusters from both ends, the lighter end first, so the halves stay about even.
    size_t head = 0;
    size_t tail = clusters.size();
    int taken = 0;
    int headWidth = 0;
    while (head < tail) {
        const bool front = headWidth <= taken - headWidth;
        const int next = front ? clusters[head].width : clusters[tail - 1].width;
        if (taken + next > budget)
            break;
        taken += next;
        if (front) {
            headWidth += next;
            ++head;
        } else {
            --tail;
        }
    }
    const size_t headEnd = head < clusters.size() ? size_t(clusters[head].index) : text.size();
    const size_t tailStart = tail < clusters.size() ? size_t(clusters[tail].index) : text.size();
    return std::string(text.substr(0, headEnd)).append(kEllipsis).append(text.substr(tailStart));
}

} // namespace basalt::graphics
