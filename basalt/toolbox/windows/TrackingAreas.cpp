#include "basalt/toolbox/windows/TrackingAreas.h"

#include "basalt/toolbox/windows/WindowList.h"

#include <algorithm>

namespace basalt::toolbox {
namespace {

void Collect(View& view, std::vector<std::shared_ptr<OpaqueTrackingAreaRef>>& out) {
    if (!view.IsVisible())
        return;
    out.insert(out.end(), view.trackingAreas.begin(), view.trackingAreas.end());
    for (const auto& child : view.Subviews())
        Collect(*child, out);
}

void Send(View& view, OpaqueTrackingAreaRef* area, EventKind kind) {
    EventHolder event(kEventClassControl, kind);
    SetParam(event.get(), kEventParamTrackingArea, typeTrackingAreaRef, area);
    SendEventToEventTargetWithOptions(event.get(), view.Target(), kEventTargetDontPropagate);
}

} // namespace

void UpdateTrackingAreas(View& root, BGPoint local) {
    std::vector<std::shared_ptr<OpaqueTrackingAreaRef>> areas;
    Collect(root, areas);
    for (const auto& area : areas) {
        auto view = area->view.lock();
        if (view == nullptr)
            continue;
        BGRect rect = area->wholeView ? view->Bounds() : area->rect;
        bool inside = BGRectContainsPoint(rect, view->FromWindow(local));
        if (inside == area->inside)
            continue;
        area->inside = inside;
        Send(*view, area.get(),
             inside ? kEventControlTrackingAreaEntered : kEventControlTrackingAreaExited);
    }
}

} // namespace basalt::toolbox

using namespace basalt::toolbox;

extern "C" {

BTShapeRef BTShapeCreateWithRect(const BGRect* inRect) {
    return inRect != nullptr ? new OpaqueShapeRef{*inRect} : nullptr;
}

void BTShapeRelease(BTShapeRef inShape) {
    delete inShape;
}

StatusCode BTViewNewTrackingArea(BTViewRef inView, BTShapeRef inShape, BTViewTrackingAreaID inID,
                                 BTViewTrackingAreaRef* outRef) {
    if (inView == nullptr || outRef == nullptr)
        return paramErr;
    View* view = View::From(inView);
    auto area = std::make_shared<OpaqueTrackingAreaRef>();
    area->view = view->Shared();
    area->rect = inShape != nullptr ? inShape->rect : view->Bounds();
    area->wholeView = inShape == nullptr;
    area->id = inID;
    view->trackingAreas.push_back(area);
    *outRef = area.get();
    return noErr;
}

StatusCode BTViewChangeTrackingArea(BTViewTrackingAreaRef inArea, BTShapeRef inShape) {
    if (inArea == nullptr || inShape == nullptr)
        return paramErr;
    inArea->rect = inShape->rect;
    inArea->wholeView = false;
    return noErr;
}

StatusCode BTViewGetTrackingAreaID(BTViewTrackingAreaRef inArea, BTViewTrackingAreaID* outID) {
    if (inArea == nullptr || outID == nullptr)
        return paramErr;
    *outID = inArea->id;
    return noErr;
}

StatusCode BTViewDisposeTrackingArea(BTViewTrackingAreaRef inArea) {
    if (inArea == nullptr)
        return paramErr;
    if (auto view = inArea->view.lock())
        std::erase_if(view->trackingAreas, [&](const auto& area) { return area.get() == inArea; });
    return noErr;
}

StatusCode TrackMouseLocation(GrafPtr inPort, Point* outPt, MouseTrackingResult* outResult) {
    static const EventTypeSpec kMouse[] = {{kEventClassMouse, kEventMouseDown},
                                           {kEventClassMouse, kEventMouseUp},
                                           {kEventClassMouse, kEventMouseMoved},
                                           {kEventClassMouse, kEventMouseDragged}};
    EventRef event = nullptr;
    StatusCode status = ReceiveNextEvent(4, kMouse, kEventDurationForever, true, &event);
    if (status != noErr)
        return status;
    BGPoint global{};
    GetParam(event, kEventParamMouseLocation, typeBTPoint, &global);
    Rect content{0, 0, 0, 0};
    WindowRef window = GetWindowFromPort(inPort);
    if (window != nullptr)
        GetWindowBounds(window, kWindowContentRgn, &content);
    if (outPt != nullptr)
        *outPt = {int16_t(global.y - content.top), int16_t(global.x - content.left)};
    if (outResult != nullptr)
        *outResult = MouseTrackingResult(GetEventKind(event));
    ReleaseEvent(event);
    return noErr;
}

} // extern "C"
