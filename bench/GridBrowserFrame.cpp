#include "GridBrowserFrame.h"

#include "basalt/toolbox/windows/Window.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <vector>

namespace kelbench {

double MedianFrameAfterJump(WindowRef window, ControlRef control, int samples, uint32_t seed) {
    uint32_t rows = 0;
    uint16_t rowHeight = 18;
    GetGridBrowserItemCount(control, 0, true, kGridBrowserItemAnyState, &rows);
    GetGridBrowserTableViewRowHeight(control, &rowHeight);
    std::mt19937 random(seed);
    std::uniform_int_distribution<uint32_t> row(0, std::max<uint32_t>(rows, 1) - 1);
    auto* live = basalt::toolbox::Window::From(window);
    live->Flush();
    std::vector<double> times;
    for (int i = 0; i < samples; ++i) {
        SetGridBrowserScrollPosition(control, row(random) * rowHeight, 0);
        auto start = std::chrono::steady_clock::now();
        live->Flush();
        times.push_back(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    std::sort(times.begin(), times.end());
    return times.empty() ? 0 : times[times.size() / 2];
}

} // namespace kelbench
