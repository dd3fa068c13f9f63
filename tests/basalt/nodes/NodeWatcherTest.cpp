#include "NodeTestSupport.h"
#include "basalt/nodes/NodeEvents.h"
#include "tests/support/TestEnvironment.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <thread>

using namespace nodetest;
namespace fs = std::filesystem;

namespace {

std::atomic<int> gTickles{0};

void CountTickle(NodeEventQueueRef) {
    gTickles.fetch_add(1);
}

// Keeps the event's child, so that the node stays the same object while the test looks.
struct Event {
    uint32_t kind = 0;
    Held child;
    FourCharCode property = 0;
};

// A client of the service: its own queue, registered on one container.
class Client {
public:
    explicit Client(NodeRef container) : container_(container) {
        NodeEventNewEventQueue(CountTickle, &queue_);
        NodeNotificationClient client{this, queue_, CountTickle};
        EXPECT_EQ(NodeRegisterChildChangedNotification(container_, &client, 0), noErr);
    }
    ~Client() {
        NodeUnRegisterChildChangedNotification(container_, this);
        NodeEventDisposeEventQueue(queue_);
    }

    std::vector<Event> Drain() {
        std::vector<Event> events;
        NodeEventRef event = nullptr;
        while (NodeEventBlockUntilNextEventNew(&event, queue_)) {
            Event seen;
            void* client = nullptr;
            NodeEventGetKind(event, &seen.kind);
            NodeEventGetClientRef(event, &client);
            EXPECT_EQ(client, this);
            NodeRef child = nullptr;
            if (NodeEventGetChild(event, &child) == noErr)
                seen.child = Held(child);
            NodeEventGetProperty(event, &seen.property);
            events.push_back(std::move(seen));
            NodeEventRelease(event);
        }
        return events;
    }

    // Waits until a tickle has come and no more come for a while.
    void WaitQuiet(int before) {
        auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (gTickles.load() == before && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
    }

private:
    NodeRef container_;
    NodeEventQueueRef queue_ = nullptr;
};

bool Has(const std::vector<Event>& events, uint32_t kind, NodeRef child) {
    for (const Event& e : events) {
        if (e.kind == kind && e.child.get() == child)
            return true;
    }
    return false;
}

TEST(NodeWatcherTest, RealChangesBecomeEvents) {
    auto folder = keltest::MakeScratchFolder("watch");
    keltest::WriteFile(folder / "existing", "x");
    Held parent = NodeAt(folder);
    Held existing = Child(parent.get(), u"existing");
    int64_t size = 0;
    GetNodePropertyAsInt64(existing.get(), NodeCode("dats"), &size, 0);
    Client client(parent.get());

    int before = gTickles.load();
    keltest::WriteFile(folder / "new", "x");
    keltest::WriteFile(folder / "existing", "longer");
    client.WaitQuiet(before);
    std::vector<Event> events = client.Drain();
    Held added = Child(parent.get(), u"new");
    EXPECT_TRUE(Has(events, kNodeEventChildAdded, added.get()));
    EXPECT_TRUE(Has(events, kNodeEventPropertyChanged, existing.get()));
    GetNodePropertyAsInt64(existing.get(), NodeCode("dats"), &size, 0);
    EXPECT_EQ(size, 6) << "the change dropped the cached size";

    before = gTickles.load();
    fs::remove(folder / "new");
    client.WaitQuiet(before);
    EXPECT_TRUE(Has(client.Drain(), kNodeEventDeleted, added.get()));
}

TEST(NodeWatcherTest, TwentyQuickChangesGiveOneWakeUpAndOneDrain) {
    auto folder = keltest::MakeScratchFolder("burst");
    Held parent = NodeAt(folder);
    Client client(parent.get());
    int before = gTickles.load();
    for (int i = 0; i < 20; ++i)
        keltest::WriteFile(folder / ("f" + std::to_string(i)), "x");
    client.WaitQuiet(before);
    EXPECT_EQ(gTickles.load() - before, 1);
    std::vector<Event> events = client.Drain();
    size_t additions = 0;
    for (const Event& e : events)
        additions += e.kind == kNodeEventChildAdded;
    EXPECT_EQ(additions, 20u);
    EXPECT_TRUE(client.Drain().empty());
}

TEST(NodeWatcherTest, SyncSendsTheDifferencesThenCompletion) {
    auto folder = keltest::MakeScratchFolder("sync");
    keltest::WriteFile(folder / "old", "x");
    Held parent = NodeAt(folder);
    Held old = Child(parent.get(), u"old");
    Client client(parent.get());
    // Changes the watcher has not reported yet are found by the rescan.
    fs::remove(folder / "old");
    keltest::WriteFile(folder / "fresh", "x");
    BFRef ref;
    ASSERT_EQ(GetNodeAsBFRef(parent.get(), &ref), noErr);
    ASSERT_EQ(FNNotify(&ref, 1, 0), noErr);
    // The watcher may report the same changes itself; either way each arrives.
    std::vector<Event> events = client.Drain();
    EXPECT_TRUE(Has(events, kNodeEventDeleted, old.get()));
    EXPECT_TRUE(Has(events, kNodeEventChildAdded, Child(parent.get(), u"fresh").get()));
    EXPECT_TRUE(Has(events, kNodeEventSyncComplete, parent.get()));
}

TEST(NodeWatcherTest, HiddenListChangesAndDeletionOfTheFolderItself) {
    auto folder = keltest::MakeScratchFolder("self");
    keltest::WriteFile(folder / "secret", "x");
    Held parent = NodeAt(folder);
    Held secret = Child(parent.get(), u"secret");
    EXPECT_TRUE(NodeIsVisible(secret.get()));
    Client client(parent.get());
    int before = gTickles.load();
    keltest::WriteFile(folder / ".hidden", "secret\n");
    client.WaitQuiet(before);
    std::vector<Event> events = client.Drain();
    EXPECT_TRUE(Has(events, kNodeEventPropertyChanged, secret.get()));
    EXPECT_FALSE(NodeIsVisible(secret.get()));

    before = gTickles.load();
    fs::remove_all(folder);
    client.WaitQuiet(before);
    EXPECT_TRUE(Has(client.Drain(), kNodeEventDeleted, parent.get()));
}

TEST(NodeWatcherTest, BookmarkChangesReachThePlacesList) {
    Held places(GetVirtualNode(kVirtualNodePlaces));
    Client client(places.get());
    int before = gTickles.load();
    keltest::WriteFile(keltest::ScratchHome() / ".config/gtk-3.0/bookmarks", "file:///tmp\n");
    client.WaitQuiet(before);
    EXPECT_TRUE(Has(client.Drain(), kNodeEventVirtualChildListChanged, places.get()));
}

} // namespace
