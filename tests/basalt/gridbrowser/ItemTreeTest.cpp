#include "basalt/gridbrowser/ItemTree.h"

#include <gtest/gtest.h>

using basalt::gridbrowser::ItemTree;

namespace {

const ItemTree::Less kById = [](GridBrowserItemID a, GridBrowserItemID b) { return a < b; };

std::vector<GridBrowserItemID> V(std::initializer_list<GridBrowserItemID> ids) {
    return ids;
}

} // namespace

TEST(ItemTreeTest, RowsGoToTheirPlacesWhetherAddedOneByOneOrInBulk) {
    ItemTree tree;
    tree.Open(100);
    auto bulk = V({9, 3, 12, 1, 7, 5, 11, 2, 10});
    ASSERT_EQ(tree.Add(100, bulk, false, kById), noErr);
    EXPECT_EQ(tree.Children(100), V({1, 2, 3, 5, 7, 9, 10, 11, 12}));
    auto single = V({6});
    tree.Add(100, single, false, kById);
    auto again = V({6, 4});
    tree.Add(100, again, false, kById);
    EXPECT_EQ(tree.Children(100), V({1, 2, 3, 4, 5, 6, 7, 9, 10, 11, 12}));
    EXPECT_EQ(tree.ContainerOf(4), 100u);
    EXPECT_EQ(tree.Add(200, single, false, kById), paramErr) << "a container not open";
}

// Rows that arrive in order, or are sorted again by an order they already follow (a switch of
// view), are checked with one comparison each, not sorted again; equal rows keep their arrival
// order either way, and later rows still merge into their places.
TEST(ItemTreeTest, RowsInOrderCostOneComparisonEachAndEqualRowsKeepTheirOrder) {
    int comparisons = 0;
    const ItemTree::Less byTens = [&](GridBrowserItemID a, GridBrowserItemID b) {
        ++comparisons;
        return a / 10 < b / 10;
    };
    ItemTree tree;
    tree.Open(100);
    std::vector<GridBrowserItemID> ordered; // 19, 18 ... 10, 29, 28 ... 20, ...
    for (GridBrowserItemID tens = 1; tens <= 100; ++tens)
        for (GridBrowserItemID unit = 10; unit-- > 0;)
            ordered.push_back(tens * 10 + unit);
    ASSERT_EQ(tree.Add(100, ordered, false, byTens), noErr);
    EXPECT_EQ(comparisons, 999);
    EXPECT_EQ(tree.Children(100), ordered);
    comparisons = 0;
    tree.Sort(100, byTens);
    EXPECT_EQ(comparisons, 999);
    EXPECT_EQ(tree.Children(100), ordered);

    tree.CloseAll();
    tree.Open(200);
    auto unordered = V({35, 12, 31, 18, 7, 33, 14, 2, 39});
    tree.Add(200, unordered, false, byTens);
    EXPECT_EQ(tree.Children(200), V({7, 2, 12, 18, 14, 35, 31, 33, 39}));
    auto later = V({11, 30, 5, 22, 50, 1, 36, 9});
    tree.Add(200, later, false, byTens);
    EXPECT_EQ(tree.Children(200),
              V({7, 2, 5, 1, 9, 12, 18, 14, 11, 22, 35, 31, 33, 39, 30, 36, 50}));
}

TEST(ItemTreeTest, PresortedRowsKeepTheirOrderThroughSorting) {
    ItemTree tree;
    tree.Open(100);
    auto hits = V({9, 3, 12});
    tree.Add(100, hits, true, kById);
    tree.Sort(100, kById);
    auto more = V({1});
    tree.Add(100, more, false, kById);
    EXPECT_EQ(tree.Children(100), V({9, 3, 12, 1}));
    EXPECT_TRUE(tree.IsPresorted(100));
}

TEST(ItemTreeTest, RemovingAnOpenRowClosesWhatIsOpenBelowItDeepestFirst) {
    ItemTree tree;
    tree.Open(100);
    auto top = V({1, 2});
    tree.Add(100, top, false, kById);
    tree.Open(1);
    auto nested = V({11, 12});
    tree.Add(1, nested, false, kById);
    tree.Open(12);
    auto deeper = V({121});
    tree.Add(12, deeper, false, kById);

    auto gone = V({1});
    EXPECT_EQ(tree.Remove(100, gone), V({12, 1}));
    EXPECT_FALSE(tree.IsOpen(1));
    EXPECT_FALSE(tree.IsListed(121));
    EXPECT_FALSE(tree.IsListed(11));
    EXPECT_EQ(tree.Children(100), V({2}));
}

TEST(ItemTreeTest, RemovingNothingNamedEmptiesTheContainerAndIgnoresStrangers) {
    ItemTree tree;
    tree.Open(100);
    tree.Open(200);
    auto mine = V({1, 2});
    auto theirs = V({3});
    tree.Add(100, mine, false, kById);
    tree.Add(200, theirs, false, kById);
    EXPECT_TRUE(tree.Remove(100, theirs).empty());
    EXPECT_TRUE(tree.IsListed(3)) << "a row of another container stays";
    tree.Remove(100, {});
    EXPECT_TRUE(tree.Children(100).empty());
    EXPECT_FALSE(tree.IsListed(1));
}

// A search's population: every row named and removed, then the new hits in their order.
TEST(ItemTreeTest, ReplacingEveryRowOfAPresortedContainerTakesTheNewOrder) {
    ItemTree tree;
    tree.Open(100);
    tree.Open(200);
    auto old = V({9, 3, 12});
    auto other = V({7});
    tree.Add(100, old, true, kById);
    tree.Add(200, other, false, kById);
    tree.Open(3);
    auto inside = V({31});
    tree.Add(3, inside, false, kById);

    auto named = V({12, 3, 7, 9, 3});
    EXPECT_EQ(tree.Remove(100, named), V({3}));
    EXPECT_TRUE(tree.Children(100).empty());
    EXPECT_FALSE(tree.IsListed(31));
    EXPECT_EQ(tree.ContainerOf(7), 200u) << "a row of another container stays";

    auto fresh = V({12, 5, 9});
    tree.Add(100, fresh, true, kById);
    EXPECT_EQ(tree.Children(100), V({12, 5, 9}));
    EXPECT_EQ(tree.ContainerOf(5), 100u);
}

TEST(ItemTreeTest, ResortMovesAChangedRowToItsNewPlace) {
    ItemTree tree;
    tree.Open(100);
    auto rows = V({1, 2, 3, 4});
    tree.Add(100, rows, false, kById);
    // Row 1 now sorts last, as if renamed.
    ItemTree::Less renamed = [](GridBrowserItemID a, GridBrowserItemID b) {
        auto key = [](GridBrowserItemID id) { return id == 1 ? 99 : id; };
        return key(a) < key(b);
    };
    auto changed = V({1});
    tree.Resort(100, changed, renamed);
    EXPECT_EQ(tree.Children(100), V({2, 3, 4, 1}));
}
