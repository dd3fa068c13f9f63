#include "basalt/toolbox/events/EventTarget.h"

#include <gtest/gtest.h>
#include <string>

using namespace basalt::toolbox;

namespace {

struct Node : TargetOwner {
    std::string* log = nullptr;
    EventTargetRef parent = nullptr;
    StatusCode HandleStandardEvent(EventHandlerCallRef, EventRef) override {
        *log += "std ";
        return noErr;
    }
    EventTargetRef PropagationParent() override { return parent; }
};

struct Probe {
    explicit Probe(std::string n) : name(std::move(n)) {}
    std::string name;
    std::string* log = nullptr;
    StatusCode result = eventNotHandledErr;
    bool callNext = false;
    EventHandlerRef self = nullptr;
    EventHandlerRef removeOther = nullptr;
    std::shared_ptr<Node>* disposeOwner = nullptr;
};

StatusCode ProbeHandler(EventHandlerCallRef call, EventRef event, void* data) {
    auto* probe = static_cast<Probe*>(data);
    *probe->log += probe->name + " ";
    if (probe->removeOther != nullptr)
        RemoveEventHandler(probe->removeOther);
    if (probe->disposeOwner != nullptr)
        probe->disposeOwner->reset();
    if (probe->callNext)
        return CallNextEventHandler(call, event);
    return probe->result;
}

const EventTypeSpec kClose = {kEventClassWindow, kEventWindowClose};

class EventTargetTest : public ::testing::Test {
protected:
    std::string log;
    std::shared_ptr<Node> node = std::make_shared<Node>();
    void SetUp() override { node->log = &log; }
    EventHandlerRef Install(Probe& probe, EventTargetRef target = nullptr) {
        probe.log = &log;
        InstallEventHandler(target ? target : node->Target(), ProbeHandler, 1, &kClose, &probe,
                            &probe.self);
        return probe.self;
    }
    StatusCode Send(OptionBits options = 0) {
        EventHolder event(kEventClassWindow, kEventWindowClose);
        return SendEventToEventTargetWithOptions(event.get(), node->Target(), options);
    }
};

} // namespace

TEST_F(EventTargetTest, LaterHandlersRunFirstAndChainDownToTheStandardBehaviour) {
    Probe first("first"), second("second");
    second.callNext = true;
    first.callNext = true;
    Install(first);
    Install(second);
    EXPECT_EQ(Send(), noErr);
    EXPECT_EQ(log, "second first std ");
}

TEST_F(EventTargetTest, HandlersOnlySeeTheirTypes) {
    Probe probe("probe");
    Install(probe);
    EventHolder other(kEventClassWindow, kEventWindowActivated);
    EXPECT_EQ(SendEventToEventTarget(other.get(), node->Target()), noErr);
    EXPECT_EQ(log, "std ");
    const EventTypeSpec activated = {kEventClassWindow, kEventWindowActivated};
    AddEventTypesToHandler(probe.self, 1, &activated);
    log.clear();
    SendEventToEventTarget(other.get(), node->Target());
    EXPECT_EQ(log, "probe std ");
}

TEST_F(EventTargetTest, RemovingHandlersDuringDispatchIsSafe) {
    Probe bottom("bottom"), middle("middle"), top("top");
    middle.callNext = bottom.callNext = top.callNext = true;
    Install(bottom);
    Install(middle);
    Install(top);
    top.removeOther = top.self;       // removes itself
    middle.removeOther = bottom.self; // removes the one it would call next
    EXPECT_EQ(Send(), noErr);
    EXPECT_EQ(log, "top middle std ");
    log.clear();
    top.removeOther = middle.removeOther = nullptr;
    Send();
    EXPECT_EQ(log, "middle std ");
}

TEST_F(EventTargetTest, OwnerDisposedByItsHandlerStaysValidUntilTheDispatchEnds) {
    Probe probe("probe");
    probe.callNext = true;
    probe.disposeOwner = &node;
    Install(probe);
    EventTargetRef target = node->Target();
    EventHolder event(kEventClassWindow, kEventWindowClose);
    EXPECT_EQ(SendEventToEventTarget(event.get(), target), noErr);
    EXPECT_EQ(node, nullptr);
    EXPECT_EQ(log, "probe std ");
}

TEST_F(EventTargetTest, UnhandledEventsPropagateUnlessAskedNot) {
    auto child = std::make_shared<Node>();
    child->log = &log;
    child->parent = node->Target();
    Probe declines("child"), parentProbe("parent");
    parentProbe.result = noErr;
    Install(declines, child->Target());
    Install(parentProbe);

    struct Quiet : TargetOwner {
        EventTargetRef parent;
        EventTargetRef PropagationParent() override { return parent; }
    };
    auto quiet = std::make_shared<Quiet>();
    quiet->parent = node->Target();
    Probe onQuiet("quiet");
    Install(onQuiet, quiet->Target());
    EventHolder event(kEventClassWindow, kEventWindowClose);
    EXPECT_EQ(SendEventToEventTarget(event.get(), quiet->Target()), noErr);
    EXPECT_EQ(log, "quiet parent ");
    log.clear();
    EXPECT_EQ(
        SendEventToEventTargetWithOptions(event.get(), quiet->Target(), kEventTargetDontPropagate),
        eventNotHandledErr);
    EXPECT_EQ(log, "quiet ");
}

TEST_F(EventTargetTest, SendToAllHandlersCallsEveryOne) {
    Probe a("a"), b("b");
    a.result = b.result = noErr;
    Install(a);
    Install(b);
    EXPECT_EQ(Send(kEventTargetSendToAllHandlers | kEventTargetDontPropagate), noErr);
    EXPECT_EQ(log, "b a ");
}

TEST_F(EventTargetTest, BadArgumentsAreRefused) {
    EXPECT_EQ(InstallEventHandler(nullptr, ProbeHandler, 1, &kClose, nullptr, nullptr), paramErr);
    EXPECT_EQ(InstallEventHandler(node->Target(), nullptr, 1, &kClose, nullptr, nullptr), paramErr);
    Probe probe("p");
    Install(probe);
    EXPECT_EQ(RemoveEventHandler(probe.self), noErr);
    EXPECT_EQ(SendEventToEventTarget(nullptr, node->Target()), paramErr);
}
