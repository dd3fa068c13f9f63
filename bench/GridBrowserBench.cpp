// The GridBrowser's frame cost: one frame after a jump to a random row, at 100,000 rows
// against 100 rows, over a source that answers every cell at once. It prints
// "frame ratio: F" (goal at most 1.5).

#include "GridBrowserFrame.h"

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr GridBrowserItemID kRoot = ~GridBrowserItemID(0);

StatusCode Cell(ControlRef, GridBrowserItemID item, GridBrowserPropertyID property,
                GridBrowserItemDataRef data, bool) {
    switch (property) {
    case kGridBrowserItemIsActiveProperty:
        return SetGridBrowserItemDataBooleanValue(data, true);
    case kGridBrowserNameProperty: {
        std::string name = "file " + std::to_string(item);
        BCStringRef text = BCStringCreateWithCString(nullptr, name.c_str(), kBCStringEncodingUTF8);
        SetGridBrowserItemDataText(data, text);
        BCRelease(text);
        return noErr;
    }
    case kGridBrowserDateProperty: {
        LongDateTime date = 3'000'000'000 + LongDateTime(item);
        return SetGridBrowserItemDataLongDateTime(data, &date);
    }
    default:
        return kGridBrowserPropertyNotSupported;
    }
}

bool Compare(ControlRef, GridBrowserItemID a, GridBrowserItemID b, GridBrowserPropertyID) {
    return a < b;
}

void AddColumn(ControlRef control, GridBrowserPropertyID property, GridBrowserPropertyType type) {
    GridBrowserListViewColumnDesc column;
    column.propertyID = property;
    column.propertyType = type;
    column.propertyFlags = kGridBrowserListViewSortableColumn;
    AddGridBrowserListViewColumn(control, &column, 99);
    SetGridBrowserTableViewNamedColumnWidth(control, property, 300);
}

struct Costs {
    double sort = 0;  // adding all rows in one call, sorted by the compare callback
    double frame = 0; // the median frame after a jump
};

Costs MeasureAt(uint32_t rows) {
    Rect bounds = {0, 0, 600, 800};
    WindowRef window = nullptr;
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
    ControlRef control = nullptr;
    Rect frame = {0, 0, 600, 800};
    CreateGridBrowserControl(window, &frame, kGridBrowserListView, &control);
    GridBrowserCallbacks callbacks;
    InitGridBrowserCallbacks(&callbacks);
    callbacks.itemDataCallback = Cell;
    callbacks.itemCompareCallback = Compare;
    SetGridBrowserCallbacks(control, &callbacks);
    AddColumn(control, kGridBrowserNameProperty, kGridBrowserIconAndTextType);
    AddColumn(control, kGridBrowserDateProperty, kGridBrowserDateTimeType);
    ShowWindow(window);
    SetGridBrowserTarget(control, kRoot);
    std::vector<GridBrowserItemID> ids(rows);
    for (uint32_t i = 0; i < rows; ++i)
        ids[i] = rows - i;
    Costs costs;
    auto start = std::chrono::steady_clock::now();
    AddGridBrowserItems(control, kRoot, rows, ids.data(), 0);
    costs.sort = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    costs.frame = kelbench::MedianFrameAfterJump(window, control, 21, 7);
    DisposeWindow(window);
    return costs;
}

} // namespace

int main() {
    // Twice over, so that fonts and caches are warm for the measured pass.
    MeasureAt(100);
    double small = MeasureAt(100).frame;
    Costs large = MeasureAt(100000);
    std::printf("sort of 100000 rows: %.1f ms\n", large.sort * 1000);
    std::printf("frame at 100 rows: %.3f ms\n", small * 1000);
    std::printf("frame at 100000 rows: %.3f ms\n", large.frame * 1000);
    std::printf("frame ratio: %.2f\n", small > 0 ? large.frame / small : 0.0);
    return 0;
}
