#include "basalt/toolbox/drag/Drag.h"

#include "basalt/toolbox/windows/WindowList.h"

#include <algorithm>
#include <cstring>

namespace basalt::toolbox::drag {
namespace {

template <typename Proc>
struct Handler {
    Proc proc;
    WindowRef window;
    void* refCon;
};

std::vector<Handler<DragTrackingHandlerUPP>>& TrackingHandlers() {
    static std::vector<Handler<DragTrackingHandlerUPP>> handlers;
    return handlers;
}

std::vector<Handler<DragReceiveHandlerUPP>>& ReceiveHandlers() {
    static std::vector<Handler<DragReceiveHandlerUPP>> handlers;
    return handlers;
}

template <typename Proc>
StatusCode Install(std::vector<Handler<Proc>>& handlers, Proc proc, WindowRef window,
                   void* refCon) {
    if (proc == nullptr)
        return paramErr;
    for (const auto& handler : handlers)
        if (handler.proc == proc && handler.window == window)
            return duplicateHandlerErr;
    handlers.push_back({proc, window, refCon});
    return noErr;
}

template <typename Proc>
StatusCode Remove(std::vector<Handler<Proc>>& handlers, Proc proc, WindowRef window) {
    auto it = std::find_if(handlers.begin(), handlers.end(), [&](const Handler<Proc>& handler) {
        return handler.proc == proc && handler.window == window;
    });
    if (it == handlers.end())
        return handlerNotFoundErr;
    handlers.erase(it);
    return noErr;
}

// The window's own handlers, else those installed for every window. A copy, so that a
// handler may remove itself while it runs.
template <typename Proc>
std::vector<Handler<Proc>> HandlersFor(const std::vector<Handler<Proc>>& handlers,
                                       WindowRef window) {
    std::vector<Handler<Proc>> own, shared;
    for (const auto& handler : handlers) {
        if (handler.window == window)
            own.push_back(handler);
        else if (handler.window == nullptr)
            shared.push_back(handler);
    }
    return own.empty() ? shared : own;
}

const OpaqueDragRef::Item* ItemOf(DragRef drag, DragItemRef item) {
    return drag != nullptr && item >= 1 && item <= drag->items.size() ? &drag->items[item - 1]
                                                                      : nullptr;
}

const std::vector<uint8_t>* FlavorOf(DragRef drag, DragItemRef item, FlavorType type,
                                     StatusCode* status) {
    const OpaqueDragRef::Item* found = ItemOf(drag, item);
    if (found == nullptr) {
        *status = drag == nullptr ? badDragRefErr : badDragItemErr;
        return nullptr;
    }
    auto it = found->flavors.find(type);
    *status = it == found->flavors.end() ? StatusCode(badDragFlavorErr) : StatusCode(noErr);
    return it == found->flavors.end() ? nullptr : &it->second;
}

} // namespace

IncomingDrag::IncomingDrag(WindowRef window, const std::vector<std::string>& fileURLs)
    : window_(window) {
    for (const std::string& url : fileURLs)
        drag_.items.push_back({{{kDragFlavorTypeFileURL, {url.begin(), url.end()}}}});
}

IncomingDrag::~IncomingDrag() {
    Leave();
}

void IncomingDrag::Track(DragTrackingMessage message, bool* refused) {
    for (const auto& handler : HandlersFor(TrackingHandlers(), window_))
        if (windows::IsValid(window_) &&
            handler.proc(message, window_, handler.refCon, &drag_) != noErr && refused != nullptr)
            *refused = true;
}

bool IncomingDrag::Move(Point globalMouse) {
    if (!windows::IsValid(window_))
        return false;
    drag_.mouse = globalMouse;
    bool refused = false;
    if (!entered_) {
        entered_ = true;
        Track(kDragTrackingEnterHandler, &refused);
        Track(kDragTrackingEnterWindow, &refused);
    }
    Track(kDragTrackingInWindow, &refused);
    return !refused && !HandlersFor(ReceiveHandlers(), window_).empty();
}

StatusCode IncomingDrag::Drop(Point globalMouse) {
    if (!windows::IsValid(window_))
        return errInvalidWindowRef;
    if (!entered_)
        Move(globalMouse);
    drag_.mouse = globalMouse;
    StatusCode status = dragNotAcceptedErr;
    for (const auto& handler : HandlersFor(ReceiveHandlers(), window_))
        if (windows::IsValid(window_) &&
            (status = handler.proc(window_, handler.refCon, &drag_)) == noErr)
            break;
    Leave();
    return status == noErr ? StatusCode(noErr) : StatusCode(dragNotAcceptedErr);
}

void IncomingDrag::Leave() {
    if (!entered_)
        return;
    entered_ = false;
    Track(kDragTrackingLeaveWindow);
    Track(kDragTrackingLeaveHandler);
}

StatusCode DeliverFileDrop(WindowRef window, Point globalMouse,
                           const std::vector<std::string>& fileURLs) {
    if (!windows::IsValid(window))
        return errInvalidWindowRef;
    IncomingDrag drag(window, fileURLs);
    drag.Move(globalMouse);
    return drag.Drop(globalMouse);
}

} // namespace basalt::toolbox::drag

using namespace basalt::toolbox::drag;

extern "C" {

StatusCode InstallTrackingHandler(DragTrackingHandlerUPP handler, WindowRef window, void* refCon) {
    return Install(TrackingHandlers(), handler, window, refCon);
}

StatusCode InstallReceiveHandler(DragReceiveHandlerUPP handler, WindowRef window, void* refCon) {
    return Install(ReceiveHandlers(), handler, window, refCon);
}

StatusCode RemoveTrackingHandler(DragTrackingHandlerUPP handler, WindowRef window) {
    return Remove(TrackingHandlers(), handler, window);
}

StatusCode RemoveReceiveHandler(DragReceiveHandlerUPP handler, WindowRef window) {
    return Remove(ReceiveHandlers(), handler, window);
}

StatusCode CountDragItems(DragRef drag, uint16_t* numItems) {
    if (drag == nullptr || numItems == nullptr)
        return drag == nullptr ? StatusCode(badDragRefErr) : StatusCode(paramErr);
    *numItems = uint16_t(drag->items.size());
    return noErr;
}

StatusCode GetDragItemReferenceNumber(DragRef drag, uint16_t index, DragItemRef* item) {
    if (drag == nullptr)
        return badDragRefErr;
    if (item == nullptr || index < 1 || index > drag->items.size())
        return badDragItemErr;
    *item = index;
    return noErr;
}

StatusCode GetFlavorFlags(DragRef drag, DragItemRef item, FlavorType type, FlavorFlags* flags) {
    StatusCode status = noErr;
    if (FlavorOf(drag, item, type, &status) != nullptr && flags != nullptr)
        *flags = 0;
    return status;
}

StatusCode GetFlavorDataSize(DragRef drag, DragItemRef item, FlavorType type, Size* dataSize) {
    StatusCode status = noErr;
    const std::vector<uint8_t>* data = FlavorOf(drag, item, type, &status);
    if (data != nullptr && dataSize != nullptr)
        *dataSize = Size(data->size());
    return status;
}

StatusCode GetFlavorData(DragRef drag, DragItemRef item, FlavorType type, void* dataPtr,
                         Size* dataSize, uint32_t dataOffset) {
    StatusCode status = noErr;
    const std::vector<uint8_t>* data = FlavorOf(drag, item, type, &status);
    if (data == nullptr)
        return status;
    if (dataPtr == nullptr || dataSize == nullptr || *dataSize < 0)
        return paramErr;
    if (dataOffset > data->size())
        return cantGetFlavorErr;
    size_t count = std::min(size_t(*dataSize), data->size() - dataOffset);
    std::memcpy(dataPtr, data->data() + dataOffset, count);
    *dataSize = Size(count);
    return noErr;
}

StatusCode GetDragAttributes(DragRef drag, DragAttributes* attributes) {
    if (drag == nullptr)
        return badDragRefErr;
    if (attributes == nullptr)
        return paramErr;
    *attributes = drag->attributes;
    return noErr;
}

StatusCode GetDragMouse(DragRef drag, Point* mouse, Point* globalPinnedMouse) {
    if (drag == nullptr)
        return badDragRefErr;
    if (mouse != nullptr)
        *mouse = drag->mouse;
    if (globalPinnedMouse != nullptr)
        *globalPinnedMouse = drag->mouse;
    return noErr;
}

StatusCode ShowDragHilite(DragRef drag, RgnHandle, Boolean) {
    if (drag == nullptr)
        return badDragRefErr;
    drag->hilited = true;
    return noErr;
}

StatusCode HideDragHilite(DragRef drag) {
    if (drag == nullptr)
        return badDragRefErr;
    drag->hilited = false;
    return noErr;
}

} // extern "C"
