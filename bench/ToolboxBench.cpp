// What the toolbox costs: a million events through a chain of handlers, drawing a whole
// window with every kind of control, and on an X display (KEL_BACKEND=x11 with DISPLAY set)
// the time from an input event arriving from the server to the repainted window reaching it:
// a key typed into a field, and a notch of the wheel over a list of 100,000 rows.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/backend/x11/X11Backend.h"
#include "basalt/gridbrowser/GridBrowser.h"
#include "basalt/toolbox/views/UnicodeText.h"
#include "basalt/toolbox/windows/Window.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

using namespace basalt::toolbox;

namespace {

StatusCode PassOn(EventHandlerCallRef call, EventRef event, void* count) {
    ++*static_cast<long*>(count);
    return CallNextEventHandler(call, event);
}

void DispatchThroughHandlerChain(benchmark::State& state) {
    Rect bounds = {0, 0, 100, 100};
    WindowRef window = nullptr;
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
    long calls = 0;
    const EventTypeSpec hit = {kEventClassControl, kEventControlHit};
    for (int64_t i = 0; i < state.range(0); ++i)
        InstallEventHandler(GetWindowEventTarget(window), PassOn, 1, &hit, &calls, nullptr);
    EventRef event = nullptr;
    CreateEvent(nullptr, kEventClassControl, kEventControlHit, 0, 0, &event);
    ControlPartCode part = kControlButtonPart;
    SetEventParameter(event, kEventParamControlPart, typeControlPartCode, sizeof part, &part);
    for (auto _ : state)
        benchmark::DoNotOptimize(SendEventToEventTarget(event, GetWindowEventTarget(window)));
    state.counters["handlers"] = double(state.range(0));
    state.SetItemsProcessed(state.iterations());
    ReleaseEvent(event);
    DisposeWindow(window);
}
BENCHMARK(DispatchThroughHandlerChain)->Arg(1)->Arg(8)->Iterations(1000000);

void RenderFullWindow(benchmark::State& state) {
    basalt::headless::HeadlessDriver::SetScale(double(state.range(0)));
    std::string path =
        std::string(KEL_BUILD_BUNDLE_DIR) + "/KelServices.bundle/Resources/Dialogs.json";
    LayoutRef layout = nullptr;
    WindowRef window = nullptr;
    StringHolder name(MakeBCString(u"Toolbox Sampler"));
    if (CreateLayoutReferenceWithPath(path.c_str(), &layout) != noErr ||
        CreateWindowFromLayout(layout, name.get(), &window) != noErr) {
        state.SkipWithError("the layout file cannot be read");
        return;
    }
    DisposeLayoutReference(layout);
    ShowWindow(window);
    Window* live = Window::From(window);
    for (auto _ : state) {
        live->Invalidate();
        live->Flush();
    }
    state.counters["scale"] = double(state.range(0));
    DisposeWindow(window);
}
BENCHMARK(RenderFullWindow)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

// The running X11 backend, or null with the benchmark skipped.
basalt::x11::X11Backend* DisplayBackend(benchmark::State& state) {
    basalt::x11::X11Backend* backend = basalt::x11::ActiveX11Backend();
    if (backend == nullptr)
        state.SkipWithError("needs an X display: run with KEL_BACKEND=x11 and DISPLAY set");
    return backend;
}

// Draws what changed and waits for a round trip, so the server has the frame.
void PresentAndSync(Window& window, xcb_connection_t* xcb) {
    window.Flush();
    std::free(xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
}

// Waits for events and dispatches them until `done`; false if the server went quiet.
bool DispatchUntil(const std::function<bool()>& done) {
    while (!done()) {
        EventRef event = nullptr;
        if (ReceiveNextEvent(0, nullptr, 5.0, true, &event) != noErr)
            return false;
        SendEventToEventTarget(event, GetEventDispatcherTarget());
        ReleaseEvent(event);
    }
    return true;
}

// The server sends a key event to the window, as a keyboard would (the "a" key); the loop
// takes it, the field inserts the character and repaints, and a round trip makes sure the
// server has the new frame.
double TypeOneKey(xcb_connection_t* xcb, xcb_window_t id, Window& window, ControlRef field) {
    xcb_key_press_event_t key{};
    key.response_type = XCB_KEY_PRESS;
    key.detail = 38;
    key.event = id;
    key.same_screen = 1;
    auto start = std::chrono::steady_clock::now();
    xcb_send_event(xcb, 0, id, XCB_EVENT_MASK_KEY_PRESS, reinterpret_cast<const char*>(&key));
    key.response_type = XCB_KEY_RELEASE;
    xcb_send_event(xcb, 0, id, XCB_EVENT_MASK_KEY_RELEASE, reinterpret_cast<const char*>(&key));
    xcb_flush(xcb);
    size_t before = View::From(field)->Text().size();
    if (!DispatchUntil([&] { return View::From(field)->Text().size() != before; }))
        return -1;
    PresentAndSync(window, xcb);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void X11KeyToRepaint(benchmark::State& state) {
    basalt::x11::X11Backend* backend = DisplayBackend(state);
    if (backend == nullptr)
        return;
    Rect bounds = {100, 100, 200, 500};
    WindowRef window = nullptr;
    ControlRef field = nullptr;
    Rect fieldBounds = {30, 20, 52, 380};
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
    BTCreateControl(window, &fieldBounds, kControlKindEditUnicodeText, nullptr, &field);
    ShowWindow(window);
    SetKeyboardFocus(window, field, kControlEditTextPart);
    Window::From(window)->Flush();
    xcb_window_t id = backend->XWindowFor(window);
    for (auto _ : state) {
        if (View::From(field)->Text().size() > 40)
            View::From(field)->SetText(u"");
        double seconds = TypeOneKey(backend->Connection().get(), id, *Window::From(window), field);
        if (seconds < 0) {
            state.SkipWithError("the key event did not come back from the server");
            break;
        }
        state.SetIterationTime(seconds);
    }
    DisposeWindow(window);
}
BENCHMARK(X11KeyToRepaint)->UseManualTime()->Iterations(300)->Unit(benchmark::kMillisecond);

StatusCode RowCell(ControlRef, GridBrowserItemID item, GridBrowserPropertyID property,
                   GridBrowserItemDataRef data, bool) {
    if (property == kGridBrowserItemIsActiveProperty)
        return SetGridBrowserItemDataBooleanValue(data, true);
    if (property != kGridBrowserNameProperty)
        return kGridBrowserPropertyNotSupported;
    std::string name = "file " + std::to_string(item);
    BCStringRef text = BCStringCreateWithCString(nullptr, name.c_str(), kBCStringEncodingUTF8);
    SetGridBrowserItemDataText(data, text);
    BCRelease(text);
    return noErr;
}

ControlRef MakeLongList(WindowRef window, uint32_t rows) {
    Rect frame = {0, 0, 500, 600};
    ControlRef list = nullptr;
    CreateGridBrowserControl(window, &frame, kGridBrowserListView, &list);
    GridBrowserCallbacks callbacks;
    InitGridBrowserCallbacks(&callbacks);
    callbacks.itemDataCallback = RowCell;
    SetGridBrowserCallbacks(list, &callbacks);
    GridBrowserListViewColumnDesc column;
    column.propertyID = kGridBrowserNameProperty;
    column.propertyType = kGridBrowserIconAndTextType;
    AddGridBrowserListViewColumn(list, &column, 0);
    const GridBrowserItemID root = ~GridBrowserItemID(0);
    SetGridBrowserTarget(list, root);
    std::vector<GridBrowserItemID> ids(rows);
    for (uint32_t i = 0; i < rows; ++i)
        ids[i] = i + 1;
    AddGridBrowserItems(list, root, rows, ids.data(), 0);
    return list;
}

// The server sends a notch of the wheel down over the list, as a mouse would; the loop takes
// it, the list scrolls and repaints, and a round trip makes sure the server has the frame.
void X11WheelToRepaint(benchmark::State& state) {
    basalt::x11::X11Backend* backend = DisplayBackend(state);
    if (backend == nullptr)
        return;
    Rect bounds = {100, 100, 600, 700};
    WindowRef window = nullptr;
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
    ControlRef list = MakeLongList(window, 100000);
    ShowWindow(window);
    Window::From(window)->Flush();
    xcb_connection_t* xcb = backend->Connection().get();
    xcb_window_t id = backend->XWindowFor(window);
    xcb_button_press_event_t wheel{};
    wheel.event = id;
    wheel.root_x = int16_t(300 * backend->Scale());
    wheel.root_y = int16_t(300 * backend->Scale());
    wheel.same_screen = 1;
    wheel.detail = 5; // down a notch
    for (auto _ : state) {
        uint32_t before = 0, now = 0, left = 0;
        GetGridBrowserScrollPosition(list, &before, &left);
        auto start = std::chrono::steady_clock::now();
        for (uint8_t type : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE}) {
            wheel.response_type = type;
            xcb_send_event(xcb, 0, id, XCB_EVENT_MASK_NO_EVENT,
                           reinterpret_cast<const char*>(&wheel));
        }
        xcb_flush(xcb);
        if (!DispatchUntil([&] {
                GetGridBrowserScrollPosition(list, &now, &left);
                return now != before;
            })) {
            state.SkipWithError("the wheel event did not come back from the server");
            break;
        }
        PresentAndSync(*Window::From(window), xcb);
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    state.counters["rows"] = 100000;
    DisposeWindow(window);
}
BENCHMARK(X11WheelToRepaint)->UseManualTime()->Iterations(300)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    // Headless unless the caller asks for a display backend.
    setenv("KEL_BACKEND", "headless", 0);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
