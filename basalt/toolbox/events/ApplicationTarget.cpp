#include "basalt/toolbox/events/ApplicationTarget.h"

namespace basalt::toolbox {
namespace {

class Application final : public TargetOwner {};

class Dispatcher final : public TargetOwner {
public:
    StatusCode HandleStandardEvent(EventHandlerCallRef call, EventRef event) override {
        return RouteDispatchedEvent(call, event);
    }
};

// Both live as long as the process; they are not shared, so dispatches need not keep them.
Application& TheApplication() {
    static auto* application = new Application;
    return *application;
}

Dispatcher& TheDispatcher() {
    static auto* dispatcher = new Dispatcher;
    return *dispatcher;
}

} // namespace
} // namespace basalt::toolbox

extern "C" {

EventTargetRef GetApplicationEventTarget(void) {
    return basalt::toolbox::TheApplication().Target();
}

EventTargetRef GetEventDispatcherTarget(void) {
    return basalt::toolbox::TheDispatcher().Target();
}

} // extern "C"
