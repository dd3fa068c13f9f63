#include "FakeSource.h"

#include "basalt/toolbox/windows/Window.h"

#include <algorithm>
#include <cairo.h>
#include <cmath>

namespace gridtest {
namespace {

BCStringRef MakeString(const std::string& text) {
    return BCStringCreateWithCString(nullptr, text.c_str(), kBCStringEncodingUTF8);
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return char(std::tolower(c)); });
    return text;
}

} // namespace

FakeSource::FakeSource() {
    GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, kBTIconGenericFolder, &folderIcon);
    GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, kBTIconGenericDocument, &fileIcon);
}

FakeSource::~FakeSource() {
    ReleaseIconRef(folderIcon);
    ReleaseIconRef(fileIcon);
}

GridBrowserItemID FakeSource::Add(GridBrowserItemID parent, const std::string& name, bool folder) {
    GridBrowserItemID id = next_++;
    items[id] = {name, parent, folder, true, true, LongDateTime(3'000'000'000) + LongDateTime(id)};
    return id;
}

GridBrowserItemID FakeSource::Find(const std::string& name) const {
    for (const auto& [id, item] : items)
        if (item.name == name)
            return id;
    return 0;
}

std::vector<GridBrowserItemID> FakeSource::ChildrenOf(GridBrowserItemID parent) const {
    std::vector<GridBrowserItemID> children;
    for (const auto& [id, item] : items)
        if (item.parent == parent)
            children.push_back(id);
    return children;
}

void FakeSource::Attach(ControlRef attached) {
    control = attached;
    SetControlReference(control, long(this));
    GridBrowserCallbacks callbacks;
    InitGridBrowserCallbacks(&callbacks);
    callbacks.itemDataCallback = ItemData;
    callbacks.itemCompareCallback = Compare;
    callbacks.itemNotificationCallback = Notify;
    SetGridBrowserCallbacks(control, &callbacks);
    GridBrowserCustomCallbacks custom;
    InitGridBrowserCustomCallbacks(&custom);
    custom.drawItemCallback = DrawPreview;
    SetGridBrowserCustomCallbacks(control, &custom);
}

void FakeSource::AddFileColumns() {
    BCStringRef name = MakeString("Name");
    BCStringRef date = MakeString("Date Modified");
    GridBrowserListViewColumnDesc column;
    column.propertyID = kGridBrowserNameProperty;
    column.propertyType = kGridBrowserIconAndTextType;
    column.propertyFlags = 0xF0000;
    column.minimumWidth = 150;
    column.maximumWidth = 1000;
    column.titleString = name;
    AddGridBrowserListViewColumn(control, &column, 0);
    column.propertyID = kGridBrowserDateProperty;
    column.propertyType = kGridBrowserDateTimeType;
    column.propertyFlags = 0xE0100;
    column.minimumWidth = 100;
    column.titleString = date;
    AddGridBrowserListViewColumn(control, &column, 1);
    SetGridBrowserTableViewNamedColumnWidth(control, kGridBrowserNameProperty, 228);
    SetGridBrowserTableViewNamedColumnWidth(control, kGridBrowserDateProperty, 200);
    // Callers set the column with expandableRows false; the triangles must show all the same.
    SetGridBrowserListViewDisclosureColumn(control, kGridBrowserNameProperty, false);
    BCRelease(name);
    BCRelease(date);
}

std::string FakeSource::MessageLog() const {
    std::string log;
    for (const auto& [id, message] : messages) {
        auto it = items.find(id);
        std::string who = id == 0             ? "-"
                          : id == kRoot       ? "root"
                          : it != items.end() ? it->second.name
                                              : "?";
        log += (log.empty() ? "" : " ") + std::to_string(message) + ":" + who;
    }
    return log;
}

FakeSource& FakeSource::Of(ControlRef control) {
    return *reinterpret_cast<FakeSource*>(GetControlReference(control));
}

StatusCode FakeSource::ItemData(ControlRef control, GridBrowserItemID id,
                                GridBrowserPropertyID property, GridBrowserItemDataRef data,
                                bool setValue) {
    FakeSource& source = Of(control);
    auto it = source.items.find(id);
    if (setValue || it == source.items.end())
        return kGridBrowserPropertyNotSupported;
    const Item& item = it->second;
    switch (property) {
    case kGridBrowserItemIsActiveProperty:
        return SetGridBrowserItemDataBooleanValue(data, item.active);
    case kGridBrowserItemIsSelectableProperty:
        return SetGridBrowserItemDataBooleanValue(data, item.selectable);
    case kGridBrowserItemIsContainerProperty:
        return SetGridBrowserItemDataBooleanValue(data, item.folder);
    case kGridBrowserContainerIsOpenableProperty:
        return SetGridBrowserItemDataBooleanValue(data, true);
    case kGridBrowserItemSelfIdentityProperty:
    case kGridBrowserNameProperty: {
        source.cellsAsked.insert(id);
        SetGridBrowserItemDataIcon(data, item.folder ? source.folderIcon : source.fileIcon);
        [[fallthrough]];
    }
    case kGridBrowserNameTextProperty: {
        BCStringRef name = MakeString(item.name);
        SetGridBrowserItemDataText(data, name);
        BCRelease(name);
        return noErr;
    }
    case kGridBrowserDateProperty:
        return SetGridBrowserItemDataLongDateTime(data, &item.date);
    default:
        return kGridBrowserPropertyNotSupported;
    }
}

bool FakeSource::Compare(ControlRef control, GridBrowserItemID a, GridBrowserItemID b,
                         GridBrowserPropertyID property) {
    FakeSource& source = Of(control);
    ++source.compares;
    const Item& first = source.items.at(a);
    const Item& second = source.items.at(b);
    if (property == kGridBrowserDateProperty)
        return first.date > second.date; // newest first
    return Lower(first.name) < Lower(second.name);
}

void FakeSource::Notify(ControlRef control, GridBrowserItemID id,
                        GridBrowserItemNotification message) {
    FakeSource& source = Of(control);
    source.messages.emplace_back(id, message);
    if (message == kGridBrowserContainerOpened && source.fillOnOpen) {
        std::vector<GridBrowserItemID> children = source.ChildrenOf(id);
        AddGridBrowserItems(control, id, uint32_t(children.size()), children.data(), 0);
    }
}

void FakeSource::DrawPreview(ControlRef control, GridBrowserItemID id, GridBrowserPropertyID,
                             GridBrowserItemState, const Rect* rect, short, bool) {
    FakeSource& source = Of(control);
    source.previewsDrawn.emplace_back(id, *rect);
    BGContextRef context = nullptr;
    if (GetGridBrowserDrawContext(control, &context) != noErr)
        return;
    // A large icon in the middle of the slot stands for the preview.
    BGFloat width = rect->right - rect->left;
    BGRect icon = BGRectMake(rect->left + (width - 64) / 2, rect->top + 30, 64, 64);
    PlotIconRefInContext(context, &icon, kBTIconAlignCenter, kBTIconTransformNone, nullptr,
                         kBTPlotIconNormal, source.fileIcon);
}

BrowserWindow::BrowserWindow(GridBrowserViewStyle style, int16_t width, int16_t height) {
    Rect bounds = {100, 100, int16_t(100 + height), int16_t(100 + width)};
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
    Rect frame = {0, 0, height, width};
    CreateGridBrowserControl(window, &frame, style, &control);
    ShowWindow(window);
}

BrowserWindow::~BrowserWindow() {
    if (IsValidWindowPtr(window)) // a test's source may have disposed of it
        DisposeWindow(window);
}

std::vector<GridBrowserItemID> TakeIds(Handle handle) {
    std::vector<GridBrowserItemID> ids(size_t(GetHandleSize(handle)) / sizeof(GridBrowserItemID));
    std::copy_n(reinterpret_cast<GridBrowserItemID*>(*handle), ids.size(), ids.data());
    DisposeHandle(handle);
    return ids;
}

std::vector<GridBrowserItemID> ItemsOf(ControlRef control, GridBrowserItemID container,
                                       bool recurse, GridBrowserItemState state) {
    Handle handle = NewHandle(0);
    GetGridBrowserItems(control, container, recurse, state, handle);
    return TakeIds(handle);
}

BGFloat HeaderHeight() {
    int32_t height = 20;
    GetThemeMetric(kBTThemeMetricListHeaderHeight, &height);
    return height;
}

uint32_t PixelAt(WindowRef window, BGPoint local) {
    auto* live = basalt::toolbox::Window::From(window);
    live->Flush();
    cairo_surface_t* surface = live->Surface()->Surface();
    cairo_surface_flush(surface);
    double scale = live->Surface()->Scale();
    int stride = cairo_image_surface_get_stride(surface);
    const unsigned char* data = cairo_image_surface_get_data(surface);
    auto x = int(std::floor(local.x * scale));
    auto y = int(std::floor(local.y * scale));
    return reinterpret_cast<const uint32_t*>(data + y * stride)[x];
}

void PostMouse(WindowRef window, EventKind kind, BGPoint local, uint32_t modifiers,
               int32_t wheelLines, EventMouseWheelAxis axis) {
    Rect content{};
    GetWindowBounds(window, kWindowContentRgn, &content);
    BGPoint global = {local.x + content.left, local.y + content.top};
    EventRef event = nullptr;
    CreateEvent(nullptr, kEventClassMouse, kind, GetCurrentEventTime(), 0, &event);
    SetEventParameter(event, kEventParamMouseLocation, typeBTPoint, sizeof global, &global);
    SetEventParameter(event, kEventParamKeyModifiers, typeUInt32, sizeof modifiers, &modifiers);
    SetEventParameter(event, kEventParamWindowRef, typeWindowRef, sizeof window, &window);
    uint16_t button = 1;
    SetEventParameter(event, kEventParamMouseButton, typeMouseButton, sizeof button, &button);
    if (kind == kEventMouseWheelMoved) {
        SetEventParameter(event, kEventParamMouseWheelDelta, typeSInt32, sizeof wheelLines,
                          &wheelLines);
        SetEventParameter(event, kEventParamMouseWheelAxis, typeMouseWheelAxis, sizeof axis, &axis);
    }
    PostEventToQueue(GetMainEventQueue(), event, kEventPriorityStandard);
    ReleaseEvent(event);
}

bool RunUntil(const std::function<bool()>& condition) {
    for (int i = 0; i < 200 && !condition(); ++i)
        basalt::headless::HeadlessDriver::RunFor(0.025);
    return condition();
}

} // namespace gridtest
