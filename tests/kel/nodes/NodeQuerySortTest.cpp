#include "kel/nodes/NodeQuerySort.h"

#include "basalt/types/BUTypes.h"

#include <gtest/gtest.h>

namespace {

// A row of a search's attribute values: name, then date.
class Row {
public:
    Row(const char* name, double date)
        : values_{name ? basalt::types::MakeString(name) : nullptr,
                  date >= 0 ? BCDateCreate(nullptr, date) : nullptr} {}
    ~Row() {
        for (BCTypeRef value : values_) {
            if (value != nullptr)
                BCRelease(value);
        }
    }
    const BCTypeRef* get() const { return values_; }

private:
    BCTypeRef values_[2];
};

TEST(NodeQuerySortTest, NamesCompareIgnoringCaseAndDatesByTime) {
    Row apple("apple", 200), banana("Banana", 100);
    EXPECT_EQ(SortByName(apple.get(), banana.get(), nullptr), kBCCompareLessThan);
    EXPECT_EQ(SortByNameReverse(apple.get(), banana.get(), nullptr), kBCCompareGreaterThan);
    EXPECT_EQ(SortByDate(apple.get(), banana.get(), nullptr), kBCCompareGreaterThan);
    EXPECT_EQ(SortByDateReverse(apple.get(), banana.get(), nullptr), kBCCompareLessThan);
    Row upper("APPLE", 200);
    EXPECT_EQ(SortByName(apple.get(), upper.get(), nullptr), kBCCompareEqualTo);
}

TEST(NodeQuerySortTest, AMissingRowOrValueComparesEqual) {
    Row full("a", 1), noName(nullptr, 5), noDate("b", -1);
    for (auto sort : {SortByName, SortByNameReverse, SortByDate, SortByDateReverse}) {
        EXPECT_EQ(sort(nullptr, full.get(), nullptr), kBCCompareEqualTo);
        EXPECT_EQ(sort(full.get(), nullptr, nullptr), kBCCompareEqualTo);
    }
    EXPECT_EQ(SortByName(full.get(), noName.get(), nullptr), kBCCompareEqualTo);
    EXPECT_EQ(SortByDate(noDate.get(), full.get(), nullptr), kBCCompareEqualTo);
    EXPECT_EQ(SortByDate(noName.get(), full.get(), nullptr), kBCCompareGreaterThan);
}

} // namespace
