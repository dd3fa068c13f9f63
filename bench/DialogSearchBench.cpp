#include "DialogSearchBench.h"

#include "QueryBench.h"
#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/nodes/NodeProperties.h"
#include "basalt/types/BUTypes.h"
#include "kel/foundation/TKelPrefs.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <kel/KelServices.h>
#include <string>
#include <vector>

using basalt::headless::HeadlessDriver;

namespace kelbench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kRuns = 5;
constexpr double kQueryPause = 0.2;
// The dialog's controls: the search field, the count of hits, the arrows.
constexpr int32_t kSearchField = 12, kCountText = 15, kArrows = 32;

ControlRef ControlOf(WindowRef window, int32_t id) {
    ControlRef control = nullptr;
    const ControlID controlID{NodeCode("kels"), id};
    GetControlByID(window, &controlID, &control);
    return control;
}

// The number the count text shows, 0 while it shows none.
long ShownCount(ControlRef countText) {
    BCStringRef text = BTViewCopyText(countText);
    if (text == nullptr)
        return 0;
    const std::string utf8 = basalt::types::Utf8(text);
    BCRelease(text);
    const size_t digits = utf8.find_first_of("0123456789");
    return digits == std::string::npos ? 0 : std::strtol(utf8.c_str() + digits, nullptr, 10);
}

bool Turning(ControlRef arrows) {
    Boolean animating = false;
    GetControlData(arrows, 0, kControlChasingArrowsAnimatingTag, sizeof animating, &animating,
                   nullptr);
    return animating;
}

// Runs the loop in short steps, each ending with the window drawn, until the condition holds;
// the seconds since start, or a negative value after a minute.
double SecondsUntil(Clock::time_point start, const std::function<bool()>& condition) {
    while (!condition()) {
        if (Clock::now() - start > std::chrono::seconds(60))
            return -1;
        HeadlessDriver::RunFor(0.001);
    }
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void ClickCancelMark(WindowRef window, ControlRef field) {
    BGRect frame = BGRectZero;
    BTViewGetBounds(field, &frame);
    BTViewConvertRect(&frame, field, nullptr);
    HeadlessDriver::ClickAt(window, BGPoint{BGRectGetMaxX(frame) - 12, BGRectGetMidY(frame)});
    HeadlessDriver::RunUntilIdle();
}

// A modeless dialog needs a client that hears its events; this one needs none of them.
void IgnoreEvent(long, KelCBRec*, void*) {}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int MeasureDialogSearch(const std::string& home) {
    TKelPrefs prefs;
    prefs.SetQueryScope(TKelPrefs::kQueryScopeHome);
    prefs.SetView(TKelPrefs::kListView, BCSTR("KelPanelFileListModeForOpenMode"));
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.modality = kKelModalityModeless;
    KelDialogRef dialog = nullptr;
    if (KelCreateGetFileDialog(&options, nullptr, IgnoreEvent, nullptr, nullptr, nullptr,
                               &dialog) != noErr ||
        KelDialogRun(dialog) != noErr) {
        std::fprintf(stderr, "search: the open dialog did not come up\n");
        return 1;
    }
    HeadlessDriver::RunUntilIdle();
    WindowRef window = KelDialogGetWindow(dialog);
    ControlRef field = ControlOf(window, kSearchField);
    ControlRef count = ControlOf(window, kCountText);
    ControlRef arrows = ControlOf(window, kArrows);
    RawWalkMs(home); // warms the caches for both
    std::vector<double> first, ratios;
    for (int run = 1; run <= kRuns; ++run) {
        const double rawMs = RawWalkMs(home);
        HeadlessDriver::Click(field);
        HeadlessDriver::TypeText("report");
        HeadlessDriver::RunUntilIdle();
        const auto typed = Clock::now();
        const double firstSeconds = SecondsUntil(typed, [&] { return ShownCount(count) > 0; });
        const double wholeSeconds = SecondsUntil(typed, [&] { return !Turning(arrows); });
        if (firstSeconds < 0 || wholeSeconds < 0) {
            std::fprintf(stderr, "search run %d: no hits within a minute\n", run);
            return 1;
        }
        const double firstMs = (firstSeconds - kQueryPause) * 1e3;
        const double wholeMs = (wholeSeconds - kQueryPause) * 1e3;
        std::printf("search run %d: first hits painted %.1f ms after the pause, whole search "
                    "%.1f ms (%ld hits), raw walk %.1f ms\n",
                    run, firstMs, wholeMs, ShownCount(count), rawMs);
        first.push_back(firstMs);
        ratios.push_back(wholeMs / rawMs);
        ClickCancelMark(window, field);
    }
    std::printf("dialog first hits ms: %.1f\n", Median(first));
    std::printf("dialog search ratio: %.2f\n", Median(ratios));
    std::fflush(stdout);
    KelCustomControl(dialog, kKelCtlTerminate, nullptr);
    KelDialogDispose(dialog);
    HeadlessDriver::RunUntilIdle();
    return 0;
}

} // namespace kelbench
