// The GridBrowser's frame cost: one frame after a jump to a random row, at 100,000 rows
// against 100 rows, over a source that answers every cell at once. It prints
// "frame ratio: F" (goal at most 1.5).

#include "GridBrowserFrame.h"

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

double FrameAt(uint32_t rows) {
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
    AddGridBrowserItems(control, kRoot, rows, ids.data(), 0);
    double seconds = kelbench::MedianFrameAfterJump(window, control, 21, 7);
    DisposeWindow(window);
    return seconds;
}

} // namespace

int main() {
    // Twice over, so that fonts and caches are warm for the measured pass.
    FrameAt(100);
    double small = FrameAt(100);
    double large = FrameAt(100000);
    std::printf("frame at 100 rows: %.3f ms\n", small * 1000);
    std::printf("frame at 100000 rows: %.3f ms\n", large * 1000);
    std::printf("frame ratio: %.2f\n", small > 0 ? large / small : 0.0);
    return 0;
}
