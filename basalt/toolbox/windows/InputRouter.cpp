#include "basalt/toolbox/events/ApplicationTarget.h"

namespace basalt::toolbox {

StatusCode RouteDispatchedEvent(EventHandlerCallRef, EventRef event) {
    return SendEventToEventTarget(event, GetApplicationEventTarget());
}

} // namespace basalt::toolbox
