#include "NodeTestSupport.h"
#include "basalt/nodes/NodeEvents.h"
#include "tests/support/TestEnvironment.h"
#include "tests/support/WaitUntil.h"

#include <algorithm>
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
        Unregister();
        NodeEventDisposeEventQueue(queue_);
    }

    void Unregister() {
        if (registered_)
            NodeUnRegisterChildChangedNotification(container_, this);
        registered_ = false;
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

    // Drains until what has come satisfies done, or a generous deadline passes.
    template <class Done>
    std::vector<Event> DrainUntil(Done done) {
        std::vector<Event> events;
        auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!done(events) && std::chrono::steady_clock::now() < deadline) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            for (Event& event : Drain())
                events.push_back(std::move(event));
        }
        return events;
    }

private:
    NodeRef container_;
    NodeEventQueueRef queue_ = nullptr;
    bool registered_ = true;
};

// Waits, with a generous deadline, until the watcher has tickled since `before`.
bool WaitForTickle(int before) {
    return keltest::WaitUntil([before] { return gTickles.load() != before; });
}

bool Has(const std::vector<Event>& events, uint32_t kind, NodeRef child) {
    for (const Event& e : events) {
        if (e.kind == kind && e.child.get() == child)
            return true;
    }
    return false;
}

auto Having(uint32_t kind, NodeRef child) {
    return [=](const std::vector<Event>& events) { return Has(events, kind, child); };
}

// Tells the service that the folder changed, as a client that wrote into it does.
StatusCode Notify(NodeRef folder) {
    BFRef ref;
    StatusCode status = GetNodeAsBFRef(folder, &ref);
    return status != noErr ? status : FNNotify(&ref, 1, 0);
}

// The additions and deletions of one child, in order.
std::vector<uint32_t> ListChanges(const std::vector<Event>& events, NodeRef child) {
    std::vector<uint32_t> kinds;
    for (const Event& e : events) {
        if (e.child.get() == child &&
            (e.kind == kNodeEventChildAdded || e.kind == kNodeEventDeleted))
            kinds.push_back(e.kind);
    }
    return kinds;
}

TEST(NodeWatcherTest, RealChangesBecomeEvents) {
    auto folder = keltest::MakeScratchFolder("watch");
    keltest::WriteFile(folder / "existing", "x");
    Held parent = NodeAt(folder);
    Held existing = Child(parent.get(), u"existing");
    int64_t size = 0;
    GetNodePropertyAsInt64(existing.get(), NodeCode("dats"), &size, 0);
    Client client(parent.get());

    keltest::WriteFile(folder / "new", "x");
    keltest::WriteFile(folder / "existing", "longer");
    Held added = Child(parent.get(), u"new");
    std::vector<Event> events = client.DrainUntil([&](const std::vector<Event>& seen) {
        return Has(seen, kNodeEventChildAdded, added.get()) &&
               Has(seen, kNodeEventPropertyChanged, existing.get());
    });
    EXPECT_TRUE(Has(events, kNodeEventChildAdded, added.get()));
    EXPECT_TRUE(Has(events, kNodeEventPropertyChanged, existing.get()));
    GetNodePropertyAsInt64(existing.get(), NodeCode("dats"), &size, 0);
    EXPECT_EQ(size, 6) << "the change dropped the cached size";

    fs::remove(folder / "new");
    EXPECT_TRUE(Has(client.DrainUntil(Having(kNodeEventDeleted, added.get())), kNodeEventDeleted,
                    added.get()));
}

TEST(NodeWatcherTest, TwentyQuickChangesGiveOneWakeUpAndOneDrain) {
    auto folder = keltest::MakeScratchFolder("burst");
    Held parent = NodeAt(folder);
    Client client(parent.get());
    int before = gTickles.load();
    for (int i = 0; i < 20; ++i)
        keltest::WriteFile(folder / ("f" + std::to_string(i)), "x");
    auto additions = [](const std::vector<Event>& events) {
        return std::count_if(events.begin(), events.end(),
                             [](const Event& e) { return e.kind == kNodeEventChildAdded; });
    };
    std::vector<Event> events =
        client.DrainUntil([&](const std::vector<Event>& seen) { return additions(seen) >= 20; });
    EXPECT_EQ(additions(events), 20);
    // The watcher wakes its client once for each batch it reads, not once for each change; on a
    // loaded machine a burst may come in more than one batch.
    const int tickles = gTickles.load() - before;
    EXPECT_GE(tickles, 1);
    EXPECT_LT(tickles, 20);
    EXPECT_TRUE(client.Drain().empty());
}

TEST(NodeWatcherTest, UnregisteringDropsWhatIsWaitingForTheClient) {
    auto folder = keltest::MakeScratchFolder("gone");
    Held parent = NodeAt(folder);
    Client client(parent.get());
    Client other(parent.get());
    int before = gTickles.load();
    keltest::WriteFile(folder / "a", "x");
    ASSERT_TRUE(WaitForTickle(before));
    client.Unregister();
    EXPECT_TRUE(client.Drain().empty()) << "nothing may reach a client that has gone";
    Held added = Child(parent.get(), u"a");
    EXPECT_TRUE(Has(other.DrainUntil(Having(kNodeEventChildAdded, added.get())),
                    kNodeEventChildAdded, added.get()))
        << "another client on the same folder keeps its events";
}

// Created, deleted and created again before anyone looks: all three facts arrive, in order,
// and the child ends up in the list.
TEST(NodeWatcherTest, OnlyIdenticalRepeatsMerge) {
    auto folder = keltest::MakeScratchFolder("again");
    Held parent = NodeAt(folder);
    Client client(parent.get());
    keltest::WriteFile(folder / "x", "1");
    fs::remove(folder / "x");
    keltest::WriteFile(folder / "x", "2");
    Held x = Child(parent.get(), u"x");
    std::vector<Event> events = client.DrainUntil(
        [&](const std::vector<Event>& seen) { return ListChanges(seen, x.get()).size() >= 3; });
    EXPECT_EQ(
        ListChanges(events, x.get()),
        (std::vector<uint32_t>{kNodeEventChildAdded, kNodeEventDeleted, kNodeEventChildAdded}));
}

// A client's word that a folder changed rescans it against the children that are held: a
// visible child that nobody holds cannot be in any list, so it is announced again; an
// invisible one is not.
TEST(NodeWatcherTest, RescanAnnouncesWhatNoListCanHold) {
    auto folder = keltest::MakeScratchFolder("rescan");
    keltest::WriteFile(folder / "kept", "x");
    keltest::WriteFile(folder / "lost", "x");
    keltest::WriteFile(folder / ".dot", "x");
    Held parent = NodeAt(folder);
    Held kept = Child(parent.get(), u"kept");
    Client client(parent.get());
    ASSERT_EQ(Notify(parent.get()), noErr);
    std::vector<Event> events = client.Drain();
    EXPECT_TRUE(Has(events, kNodeEventSyncComplete, parent.get()));
    EXPECT_FALSE(Has(events, kNodeEventChildAdded, kept.get()));
    Held lost = Child(parent.get(), u"lost");
    EXPECT_TRUE(Has(events, kNodeEventChildAdded, lost.get()));
    Held dot = Child(parent.get(), u".dot");
    EXPECT_FALSE(Has(events, kNodeEventChildAdded, dot.get()));
}

// A watched local folder is not read again by a sync, yet a change made just before one
// arrives before its completion, whether the watcher has sent it yet or not.
TEST(NodeWatcherTest, SyncOfAWatchedFolderCompletesAfterWhatIsOnTheWay) {
    auto folder = keltest::MakeScratchFolder("quick sync");
    keltest::WriteFile(folder / "unheld", "x");
    Held parent = NodeAt(folder);
    Client client(parent.get());
    for (int round = 0; round < 20; ++round) {
        std::string name = "new " + std::to_string(round);
        keltest::WriteFile(folder / name, "x");
        ASSERT_EQ(NodeSync(parent.get()), noErr);
        std::vector<Event> events = client.DrainUntil(Having(kNodeEventSyncComplete, parent.get()));
        Held fresh = Child(parent.get(), std::u16string(name.begin(), name.end()));
        auto added = std::find_if(events.begin(), events.end(), [&](const Event& e) {
            return e.kind == kNodeEventChildAdded && e.child.get() == fresh.get();
        });
        auto done = std::find_if(events.begin(), events.end(),
                                 [&](const Event& e) { return e.kind == kNodeEventSyncComplete; });
        ASSERT_NE(done, events.end());
        EXPECT_LT(added, done) << name;
    }
    // Once the watcher is idle a sync reads nothing, so the unheld child is not announced.
    Held unheld = Child(parent.get(), u"unheld");
    EXPECT_TRUE(keltest::WaitUntil([&] {
        NodeSync(parent.get());
        std::vector<Event> events = client.DrainUntil(Having(kNodeEventSyncComplete, parent.get()));
        return !Has(events, kNodeEventChildAdded, unheld.get());
    }));
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
    ASSERT_EQ(Notify(parent.get()), noErr);
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
    keltest::WriteFile(folder / ".hidden", "secret\n");
    std::vector<Event> events = client.DrainUntil(Having(kNodeEventPropertyChanged, secret.get()));
    EXPECT_TRUE(Has(events, kNodeEventPropertyChanged, secret.get()));
    EXPECT_FALSE(NodeIsVisible(secret.get()));

    fs::remove_all(folder);
    EXPECT_TRUE(Has(client.DrainUntil(Having(kNodeEventDeleted, parent.get())), kNodeEventDeleted,
                    parent.get()));
}

TEST(NodeWatcherTest, BookmarkChangesReachThePlacesList) {
    Held places(GetVirtualNode(kVirtualNodePlaces));
    Client client(places.get());
    keltest::WriteFile(keltest::ScratchHome() / ".config/gtk-3.0/bookmarks", "file:///tmp\n");
    EXPECT_TRUE(Has(client.DrainUntil(Having(kNodeEventVirtualChildListChanged, places.get())),
                    kNodeEventVirtualChildListChanged, places.get()));
}

} // namespace
