// The theme's sizes, in points.

#include <basalt/BasaltGraphics.h>

namespace {

struct Metric {
    BTThemeMetric metric;
    int32_t value;
};

constexpr Metric kMetrics[] = {
    {kBTThemeMetricScrollBarWidth, 14},
    {kBTThemeMetricSmallScrollBarWidth, 11},
    {kBTThemeMetricCheckBoxHeight, 16},
    {kBTThemeMetricRadioButtonHeight, 16},
    {kBTThemeMetricEditTextWhitespace, 4},
    {kBTThemeMetricEditTextFrameOutset, 1},
    {kBTThemeMetricListBoxFrameOutset, 1},
    {kBTThemeMetricFocusRectOutset, 3},
    {kBTThemeMetricPushButtonHeight, 24},
    {kBTThemeMetricListHeaderHeight, 22},
    {kBTThemeMetricDisclosureTriangleHeight, 12},
    {kBTThemeMetricDisclosureTriangleWidth, 12},
    {kBTThemeMetricPopupButtonHeight, 24},
    {kBTThemeMetricSeparatorSize, 1},
    {kBTThemeMetricCheckBoxWidth, 16},
    {kBTThemeMetricDisclosureButtonHeight, 20},
    {kBTThemeMetricDisclosureButtonWidth, 20},
    {kBTThemeMetricPushButtonMinWidth, 72},
    {kBTThemeMetricEditTextHeight, 22},
    {kBTThemeMetricSmallIconSize, 16},
    {kBTThemeMetricLargeIconSize, 32},
};

} // namespace

extern "C" StatusCode GetThemeMetric(BTThemeMetric metric, int32_t* outMetric) {
    if (outMetric == nullptr)
        return paramErr;
    for (const Metric& entry : kMetrics) {
        if (entry.metric == metric) {
            *outMetric = entry.value;
            return noErr;
        }
    }
    return paramErr;
}
