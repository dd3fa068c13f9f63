// What the toolbox costs: a million events through a chain of handlers, and drawing a whole
// window with every kind of control.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/toolbox/views/UnicodeText.h"
#include "basalt/toolbox/windows/Window.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <string>

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

} // namespace

int main(int argc, char** argv) {
    setenv("KEL_BACKEND", "headless", 1);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
