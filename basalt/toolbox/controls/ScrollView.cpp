#include "basalt/toolbox/controls/ScrollView.h"

#include "basalt/toolbox/controls/ControlDrawing.h"

#include <algorithm>

namespace basalt::toolbox {

View* ScrollView::Content() const {
    return Subviews().empty() ? nullptr : Subviews().front().get();
}

ScrollView::Info ScrollView::Query() {
    Info info;
    View* content = Content();
    if (content == nullptr)
        return info;
    info.view = content->Frame().size;
    info.image = info.view;
    EventHolder event(kEventClassScrollable, kEventScrollableGetInfo);
    if (SendEventToEventTargetWithOptions(event.get(), content->Target(),
                                          kEventTargetDontPropagate) == noErr) {
        GetParam(event.get(), kEventParamImageSize, typeBTSize, &info.image);
        GetParam(event.get(), kEventParamViewSize, typeBTSize, &info.view);
        GetParam(event.get(), kEventParamLineSize, typeBTSize, &info.line);
        GetParam(event.get(), kEventParamOrigin, typeBTPoint, &info.origin);
    }
    return info;
}

void ScrollView::ScrollTo(BGPoint origin) {
    View* content = Content();
    if (content == nullptr)
        return;
    Info info = Query();
    origin.x = std::clamp(origin.x, 0.0, std::max(0.0, info.image.width - info.view.width));
    origin.y = std::clamp(origin.y, 0.0, std::max(0.0, info.image.height - info.view.height));
    EventHolder event(kEventClassScrollable, kEventScrollableScrollTo);
    SetParam(event.get(), kEventParamOrigin, typeBTPoint, origin);
    SendEventToEventTargetWithOptions(event.get(), content->Target(), kEventTargetDontPropagate);
    SetNeedsDisplay();
}

void ScrollView::ScrollBy(BGFloat dx, BGFloat dy) {
    Info info = Query();
    ScrollTo({info.origin.x + dx, info.origin.y + dy});
}

StatusCode ScrollView::GoTo(uint32_t action) {
    Info info = Query();
    switch (action) {
    case kBTScrollViewScrollToTop:
        ScrollTo({info.origin.x, 0});
        return noErr;
    case kBTScrollViewScrollToBottom:
        ScrollTo({info.origin.x, info.image.height});
        return noErr;
    case kBTScrollViewPageUp:
        ScrollBy(0, -info.view.height);
        return noErr;
    case kBTScrollViewPageDown:
        ScrollBy(0, info.view.height);
        return noErr;
    default:
        return paramErr;
    }
}

bool ScrollView::BarShown(const Info& info) const {
    return !autoHide || info.image.height > info.view.height;
}

void ScrollView::Arrange() {
    View* content = Content();
    if (content == nullptr)
        return;
    BGRect bounds = Bounds();
    Info info = Query();
    double width = bounds.size.width - (BarShown(info) ? kBarWidth : 0);
    content->SetFrame(BGRectMake(0, 0, std::max(0.0, width), bounds.size.height));
}

void ScrollView::Draw(BGContextRef context) {
    Info info = Query();
    if (!BarShown(info))
        return;
    BGRect bounds = Bounds();
    BGRect track = BGRectMake(BGRectGetMaxX(bounds) - kBarWidth, bounds.origin.y, kBarWidth,
                              bounds.size.height);
    BGContextSetGrayFillColor(context, 0.96, 1.0);
    BGContextFillRect(context, track);
    if (info.image.height <= 0)
        return;
    double visible = std::min(1.0, info.view.height / info.image.height);
    double thumbHeight = std::max(20.0, track.size.height * visible);
    double range = std::max(1.0, info.image.height - info.view.height);
    double thumbTop = track.origin.y + (track.size.height - thumbHeight) * (info.origin.y / range);
    BGContextSetGrayFillColor(context, IsActive() ? 0.62 : 0.78, 1.0);
    BGContextAddRoundedRect(
        context, BGRectMake(track.origin.x + 2, thumbTop + 2, kBarWidth - 4, thumbHeight - 4),
        (kBarWidth - 4) / 2);
    BGContextFillPath(context);
}

StatusCode ScrollView::HandleStandardEvent(EventHandlerCallRef call, EventRef event) {
    if (event->eventClass == kEventClassScrollable && event->kind == kEventScrollableInfoChanged) {
        Arrange();
        SetNeedsDisplay();
        return noErr;
    }
    return View::HandleStandardEvent(call, event);
}

} // namespace basalt::toolbox
