#include "QueryTestSupport.h"
#include "tests/support/WaitUntil.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>

using namespace querytest;
namespace fs = std::filesystem;

namespace {

class NodeQueryTest : public ::testing::Test {
protected:
    void SetUp() override { root_ = keltest::MakeScratchFolder("query"); }
    void TearDown() override { EXPECT_TRUE(WaitForWalksToEnd()); }

    void Touch(const std::string& relative) { keltest::WriteFile(root_ / relative, "x"); }

    Search Typed(const std::string& words) const {
        Search search;
        search.query = querytest::Typed(words);
        search.scope = {root_.string()};
        return search;
    }

    static std::vector<std::u16string> Sorted(std::vector<std::u16string> names) {
        std::sort(names.begin(), names.end());
        return names;
    }

    fs::path root_;
};

BCComparisonResult NameDescending(const BCTypeRef* a, const BCTypeRef* b, void*) {
    return BCStringCompare(static_cast<BCStringRef>(b[0]), static_cast<BCStringRef>(a[0]), 0);
}

TEST_F(NodeQueryTest, FindsWordsThatBeginNamesInNestedFoldersAndNothingElse) {
    Touch("report-1.txt");
    Touch("a/b/Annual Report.pdf");
    Touch("a/b/c/Reporter.doc");
    Touch("a/prepare.txt");
    Touch("a/b/notes.txt");
    NodeRef query = nullptr;
    ASSERT_EQ(StartSearch(Typed("rep"), &query), noErr);
    Held held(query);
    ASSERT_TRUE(WaitForEnd(query));
    Held hits = HitsOf(query);
    EXPECT_EQ(
        Sorted(HitNames(hits.get())),
        (std::vector<std::u16string>{u"Annual Report.pdf", u"Reporter.doc", u"report-1.txt"}));
}

TEST_F(NodeQueryTest, LeavesOutWhatListingHidesAndNeverEntersLinks) {
    Touch("report-seen.txt");
    Touch(".report-dot.txt");
    Touch(".cache/report-in-dot-folder.txt");
    Touch("listed/report-listed.txt");
    keltest::WriteFile(root_ / "listed/.hidden", "report-listed.txt\n");
    Touch("deep/report-deep.txt");
    fs::create_directory_symlink(root_, root_ / "deep/report-loop"); // back to the top
    fs::create_directory_symlink(root_ / "deep", root_ / "report-deep-link");
    NodeRef query = nullptr;
    ASSERT_EQ(StartSearch(Typed("report"), &query), noErr);
    Held held(query);
    ASSERT_TRUE(WaitForEnd(query));
    Held hits = HitsOf(query);
    // The links are found by their own names, once each, and what they lead to is not walked.
    EXPECT_EQ(Sorted(HitNames(hits.get())),
              (std::vector<std::u16string>{u"report-deep-link", u"report-deep.txt", u"report-loop",
                                           u"report-seen.txt"}));
}

TEST_F(NodeQueryTest, DeliversTheFirstBatchAtItsCountAndTheRestAtTheEnd) {
    for (int i = 0; i < 60; ++i)
        Touch("f" + std::to_string(i % 3) + "/match-" + std::to_string(i));
    Search search = Typed("match");
    search.batching = {25, 60000, 60000};
    Held held = IdleQuery();
    NodeRef query = held.get();
    Held hits = HitsOf(query);
    HitsObserver observer(hits.get());
    ASSERT_EQ(StartSearch(search, nullptr, query), noErr);
    ASSERT_TRUE(WaitForEnd(query));
    ASSERT_TRUE(observer.WaitForDeliveries(2));
    EXPECT_EQ(observer.Deliveries(), (std::vector<BCIndex>{25, 60}));
    auto events = observer.Events();
    ASSERT_EQ(events.size(), 2u);
    for (auto [kind, child] : events) {
        EXPECT_EQ(kind, kNodeEventVirtualChildListChanged);
        EXPECT_EQ(child, hits.get());
    }
}

// A client learns from the last delivery that the search has walked its scope, even when the
// search found nothing to deliver.
TEST_F(NodeQueryTest, ASearchThatFindsNothingStillDeliversWhenItsWalkEnds) {
    Touch("f/other.txt");
    Held held = IdleQuery();
    NodeRef query = held.get();
    Held hits = HitsOf(query);
    std::atomic<int> gatheringAtDelivery{-1}; // not delivered yet
    HitsObserver observer(hits.get(),
                          [&](size_t) { gatheringAtDelivery = NodeQueryIsGathering(query); });
    ASSERT_EQ(StartSearch(Typed("match"), nullptr, query), noErr);
    ASSERT_TRUE(keltest::WaitUntil([&] { return gatheringAtDelivery != -1; }));
    EXPECT_EQ(gatheringAtDelivery.load(), 0);
    EXPECT_EQ(observer.Deliveries(), std::vector<BCIndex>{0});
}

TEST_F(NodeQueryTest, DeliversTheFirstBatchWhenItsTimeHasComeWithFewerHits) {
    Touch("match-top-1");
    Touch("match-top-2");
    Touch("below/match-3");
    Touch("below/further/match-4");
    Search search = Typed("match");
    search.batching = {1000, 0, 60000};
    Held held = IdleQuery();
    NodeRef query = held.get();
    Held hits = HitsOf(query);
    HitsObserver observer(hits.get());
    ASSERT_EQ(StartSearch(search, nullptr, query), noErr);
    ASSERT_TRUE(WaitForEnd(query));
    // The top folder is walked first and its two hits are due at once; the rest come at the end.
    EXPECT_EQ(observer.Deliveries(), (std::vector<BCIndex>{2, 4}));
}

TEST_F(NodeQueryTest, SortedSearchesListHitsInTheComparatorsOrder) {
    Touch("x/b-rep.txt");
    Touch("a-rep.txt");
    Touch("x/y/c-rep.txt");
    Search search = Typed("rep");
    search.sort = NameDescending;
    search.batching = {1, 0, 0}; // every hit its own delivery, merged into place
    NodeRef query = nullptr;
    ASSERT_EQ(StartSearch(search, &query), noErr);
    Held held(query);
    ASSERT_TRUE(WaitForEnd(query));
    Held hits = HitsOf(query);
    EXPECT_EQ(HitNames(hits.get()),
              (std::vector<std::u16string>{u"c-rep.txt", u"b-rep.txt", u"a-rep.txt"}));
}

TEST_F(NodeQueryTest, HitsLeadToTheItemsFoundAndShowTheirProperties) {
    Touch("sub/report.txt");
    NodeRef query = nullptr;
    ASSERT_EQ(StartSearch(Typed("report"), &query), noErr);
    Held held(query);
    ASSERT_TRUE(WaitForEnd(query));
    Held hits = HitsOf(query);
    EXPECT_TRUE(NodeIsQuery(query));
    EXPECT_TRUE(NodeIsQueryHitsContainer(hits.get()));
    EXPECT_TRUE(NodeIsContainer(hits.get()));
    EXPECT_EQ(nodetest::StringProperty(hits.get(), "dnam"), u"rep");
    std::vector<Held> found = nodetest::Children(hits.get());
    ASSERT_EQ(found.size(), 1u);
    NodeRef hit = found[0].get();
    EXPECT_TRUE(NodeIsQueryHit(hit));
    EXPECT_FALSE(NodeIsQueryHit(hits.get()));
    Held item = nodetest::NodeAt(root_ / "sub/report.txt");
    NodeRef original = nullptr;
    ASSERT_EQ(NodeGetOriginal(hit, false, &original), noErr);
    Held heldOriginal(original);
    EXPECT_EQ(original, item.get());
    EXPECT_EQ(nodetest::StringProperty(hit, "pnam"), u"report.txt");
    EXPECT_EQ(nodetest::StringProperty(hit, "utid"), u"text/plain");
    Held parent(GetNodeParent(hit));
    EXPECT_EQ(parent.get(), hits.get());
    // Conversions give the item's own reference, so a chosen hit works like the item.
    BFRef fromHit, fromItem;
    ASSERT_EQ(GetNodeAsBFRef(hit, &fromHit), noErr);
    ASSERT_EQ(GetNodeAsBFRef(item.get(), &fromItem), noErr);
    EXPECT_EQ(std::memcmp(&fromHit, &fromItem, sizeof fromHit), 0);
    EXPECT_TRUE(NodeValidate(hit));
    fs::remove(root_ / "sub/report.txt");
    EXPECT_FALSE(NodeValidate(hit));
}

TEST_F(NodeQueryTest, CancellingStopsTheWalkAndKeepsWhatWasFound) {
    for (int i = 0; i < 30; ++i)
        Touch("d" + std::to_string(i) + "/match-" + std::to_string(i));
    Search search = Typed("match");
    search.batching = {1, 60000, 60000};
    Held held = IdleQuery();
    NodeRef query = held.get();
    Held hits = HitsOf(query);
    // The worker waits in its first delivery until it has been told to stop.
    HitsObserver observer(hits.get(), [query](size_t) {
        WaitUntil([query] { return !NodeQueryIsGathering(query); });
    });
    ASSERT_EQ(StartSearch(search, nullptr, query), noErr);
    ASSERT_TRUE(observer.WaitForDeliveries(1));
    EXPECT_EQ(NodeCancelQuery(query), noErr);
    EXPECT_FALSE(NodeQueryIsGathering(query));
    EXPECT_EQ(HitNames(hits.get()).size(), 1u);
    ASSERT_TRUE(WaitForWalksToEnd());
    EXPECT_EQ(HitNames(hits.get()).size(), 1u);
    EXPECT_EQ(observer.Deliveries().size(), 1u);
}

TEST_F(NodeQueryTest, ADeliveryMayCancelItsOwnSearch) {
    for (int i = 0; i < 30; ++i)
        Touch("d" + std::to_string(i) + "/match-" + std::to_string(i));
    Search search = Typed("match");
    search.batching = {1, 60000, 60000};
    Held held = IdleQuery();
    NodeRef query = held.get();
    Held hits = HitsOf(query);
    std::atomic<StatusCode> cancelled{1};
    HitsObserver observer(hits.get(), [&](size_t) { cancelled = NodeCancelQuery(query); });
    ASSERT_EQ(StartSearch(search, nullptr, query), noErr);
    ASSERT_TRUE(WaitForEnd(query));
    EXPECT_EQ(cancelled.load(), noErr);
    EXPECT_EQ(observer.Deliveries().size(), 1u);
    EXPECT_EQ(HitNames(hits.get()).size(), 1u);
}

TEST_F(NodeQueryTest, ANewQueryReplacesTheRunningOneAndItsHits) {
    for (int i = 0; i < 30; ++i)
        Touch("d" + std::to_string(i) + "/old-" + std::to_string(i));
    Touch("new-one");
    Search search = Typed("old");
    search.batching = {1, 60000, 60000};
    Held held = IdleQuery();
    NodeRef query = held.get();
    Held hits = HitsOf(query);
    std::atomic<bool> replaced{false};
    HitsObserver observer(hits.get(), [&](size_t delivery) {
        if (delivery == 1)
            WaitUntil([&] { return replaced.load(); });
    });
    ASSERT_EQ(StartSearch(search, nullptr, query), noErr);
    ASSERT_TRUE(observer.WaitForDeliveries(1));
    std::thread replacer([&] {
        // Replacing waits for the old walk, which the first delivery holds until the stop.
        EXPECT_EQ(StartSearch(Typed("new"), nullptr, query), noErr);
    });
    ASSERT_TRUE(
        WaitUntil([&] { return !NodeQueryIsGathering(query) || HitNames(hits.get()).empty(); }));
    replaced = true;
    replacer.join();
    ASSERT_TRUE(WaitForEnd(query));
    EXPECT_EQ(HitNames(hits.get()), (std::vector<std::u16string>{u"new-one"}));
}

TEST_F(NodeQueryTest, ReleasingTheQueryNodeStopsItsWalkAndEmptiesItsHits) {
    for (int i = 0; i < 30; ++i)
        Touch("d" + std::to_string(i) + "/match-" + std::to_string(i));
    Search search = Typed("match");
    search.batching = {1, 60000, 60000};
    Held idle = IdleQuery();
    NodeRef query = idle.get();
    Held hits = HitsOf(query);
    std::atomic<bool> released{false};
    {
        HitsObserver observer(hits.get(),
                              [&](size_t) { WaitUntil([&] { return released.load(); }); });
        ASSERT_EQ(StartSearch(search, nullptr, query), noErr);
        ASSERT_TRUE(observer.WaitForDeliveries(1));
        idle = Held(); // the last reference to the query node goes
        released = true;
        ASSERT_TRUE(WaitForWalksToEnd());
        EXPECT_EQ(observer.Deliveries().size(), 1u);
    }
    EXPECT_TRUE(HitNames(hits.get()).empty());
}

TEST_F(NodeQueryTest, BadQueryTextGivesAStatusAndNoNode) {
    for (const char* text : {"", "(", "kBMItemDisplayName ==", "kBMItemDisplayName == \"x",
                             "kBMItemDisplayName == \"x\"q", "&& ||", "a = b", "(true", "true)",
                             "kBMItemDisplayName \"x\""}) {
        Search search;
        search.query = text;
        search.scope = {root_.string()};
        NodeRef query = nullptr;
        EXPECT_NE(StartSearch(search, &query), noErr) << text;
        EXPECT_EQ(query, nullptr) << text;
    }
    Search deep;
    deep.query = std::string(5000, '(') + "true" + std::string(5000, ')');
    NodeRef query = nullptr;
    EXPECT_EQ(StartSearch(deep, &query), kBMQueryTooDeepErr);
}

TEST_F(NodeQueryTest, ABadNewQueryLeavesTheOldResults) {
    Touch("kept-hit");
    NodeRef query = nullptr;
    ASSERT_EQ(StartSearch(Typed("kept"), &query), noErr);
    Held held(query);
    ASSERT_TRUE(WaitForEnd(query));
    Search bad;
    bad.query = "kBMItemDisplayName == ";
    EXPECT_EQ(StartSearch(bad, nullptr, query), kBMQuerySyntaxErr);
    Held hits = HitsOf(query);
    EXPECT_EQ(HitNames(hits.get()), (std::vector<std::u16string>{u"kept-hit"}));
    Held plain = nodetest::NodeAt(root_);
    EXPECT_EQ(StartSearch(Typed("kept"), nullptr, plain.get()), kNodeNotQueryErr);
    EXPECT_EQ(NodeCancelQuery(plain.get()), kNodeNotQueryErr);
}

TEST_F(NodeQueryTest, TypeTestsNarrowTheHitsAndFoldersAlwaysPass) {
    Touch("plan.txt");
    Touch("plan.png");
    fs::create_directories(root_ / "plans");
    Search search;
    search.scope = {root_.string()};
    search.query = "(" + querytest::Typed("plan") +
                   ") && (kBMItemContentTypeTree == text/plain || "
                   "kBMItemContentTypeTree == public.folder) && (kBMItemContentType != image/png)";
    NodeRef query = nullptr;
    ASSERT_EQ(StartSearch(search, &query), noErr);
    Held held(query);
    ASSERT_TRUE(WaitForEnd(query));
    Held hits = HitsOf(query);
    EXPECT_EQ(Sorted(HitNames(hits.get())), (std::vector<std::u16string>{u"plan.txt", u"plans"}));
}

} // namespace

namespace {

// After the walk the hits follow the scope: what comes in and matches is added, what goes or
// is renamed away is withdrawn, and a folder moved in or out brings or takes its hits along.
class NodeQueryLiveTest : public NodeQueryTest {
protected:
    void SetUp() override {
        NodeQueryTest::SetUp();
        outside_ = keltest::MakeScratchFolder("query outside");
        Touch("a/report-old.txt");
        Touch("a/b/notes.txt");
        NodeRef query = nullptr;
        ASSERT_EQ(StartSearch(Typed("rep"), &query), noErr);
        query_ = Held(query);
        ASSERT_TRUE(WaitForEnd(query));
        hits_ = HitsOf(query);
    }
    void TearDown() override {
        hits_ = Held();
        query_ = Held();
        NodeQueryTest::TearDown();
    }

    std::vector<std::u16string> Names() { return Sorted(HitNames(hits_.get())); }
    // Waits, with a generous deadline, until the hits are exactly these.
    bool HitsBecome(std::vector<std::u16string> expected) {
        std::sort(expected.begin(), expected.end());
        return WaitUntil([&] { return Names() == expected; });
    }

    fs::path outside_;
    Held query_;
    Held hits_;
};

TEST_F(NodeQueryLiveTest, CreatedAndRenamedItemsThatMatchArriveAndDeletedOnesGo) {
    ASSERT_EQ(Names(), std::vector<std::u16string>{u"report-old.txt"});
    Touch("report-new.txt");
    Touch("a/b/report-deep.txt");
    Touch("a/unrelated.txt");
    Touch(".report-dot.txt");
    fs::create_directory(root_ / "a/reports");
    EXPECT_TRUE(HitsBecome({u"report-old.txt", u"report-new.txt", u"report-deep.txt", u"reports"}));
    EXPECT_FALSE(NodeQueryIsGathering(query_.get())) << "following changes is no gathering";

    fs::rename(root_ / "a/report-old.txt", root_ / "a/renamed.txt");
    fs::rename(root_ / "a/b/notes.txt", root_ / "a/b/report-notes.txt");
    fs::remove(root_ / "report-new.txt");
    Touch("a/reports/report-inside.txt"); // in a folder made after the walk
    EXPECT_TRUE(
        HitsBecome({u"report-deep.txt", u"report-notes.txt", u"reports", u"report-inside.txt"}));
}

TEST_F(NodeQueryLiveTest, FoldersMovedInAreWalkedAndFoldersMovedOutTakeTheirHits) {
    keltest::WriteFile(outside_ / "incoming/deeper/report-moved.txt", "x");
    fs::rename(outside_ / "incoming", root_ / "a/incoming");
    EXPECT_TRUE(HitsBecome({u"report-old.txt", u"report-moved.txt"}));

    fs::rename(root_ / "a", outside_ / "a");
    EXPECT_TRUE(HitsBecome({}));
    // Moved back, the folder is walked again though it was entered before.
    fs::rename(outside_ / "a", root_ / "back");
    EXPECT_TRUE(HitsBecome({u"report-old.txt", u"report-moved.txt"}));
}

TEST_F(NodeQueryLiveTest, ManyChangesAtOnceArriveInFewDeliveries) {
    HitsObserver observer(hits_.get());
    for (int i = 0; i < 300; ++i)
        Touch("a/b/report-" + std::to_string(i));
    EXPECT_TRUE(WaitUntil([&] { return HitNames(hits_.get()).size() == 301; }));
    // At most 25 changes or 500 ms to a batch; the files come far faster than that.
    EXPECT_LE(observer.Deliveries().size(), 300u / 25 + 2);
}

} // namespace
