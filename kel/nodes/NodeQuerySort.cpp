#include "kel/nodes/NodeQuerySort.h"

namespace {

constexpr BCOptionFlags kNameCompareOptions = kBCCompareCaseInsensitive | kBCCompareLocalized;

template <typename Compare>
BCComparisonResult CompareColumn(const BCTypeRef* rowA, const BCTypeRef* rowB, int column,
                                 Compare compare) {
    if (rowA == nullptr || rowB == nullptr || rowA[column] == nullptr || rowB[column] == nullptr)
        return kBCCompareEqualTo;
    return compare(rowA[column], rowB[column]);
}

BCComparisonResult Names(BCTypeRef a, BCTypeRef b) {
    return BCStringCompare(static_cast<BCStringRef>(a), static_cast<BCStringRef>(b),
                           kNameCompareOptions);
}

BCComparisonResult Dates(BCTypeRef a, BCTypeRef b) {
    return BCDateCompare(static_cast<BCDateRef>(a), static_cast<BCDateRef>(b), nullptr);
}

} // namespace

BCComparisonResult SortByName(const BCTypeRef* rowA, const BCTypeRef* rowB, void*) {
    return CompareColumn(rowA, rowB, 0, Names);
}

BCComparisonResult SortByNameReverse(const BCTypeRef* rowA, const BCTypeRef* rowB, void*) {
    return CompareColumn(rowB, rowA, 0, Names);
}

BCComparisonResult SortByDate(const BCTypeRef* rowA, const BCTypeRef* rowB, void*) {
    return CompareColumn(rowA, rowB, 1, Dates);
}

BCComparisonResult SortByDateReverse(const BCTypeRef* rowA, const BCTypeRef* rowB, void*) {
    return CompareColumn(rowB, rowA, 1, Dates);
}
