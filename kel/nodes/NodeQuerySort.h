#pragma once

// The orders a search can ask for its hits. Each receives two rows of the search's attribute
// values, the display name at index 0 and the content change date at index 1, and gives 0
// when a row or the value it compares is missing.

#include <basalt/BasaltCore.h>

BCComparisonResult SortByName(const BCTypeRef* rowA, const BCTypeRef* rowB, void* context);
BCComparisonResult SortByNameReverse(const BCTypeRef* rowA, const BCTypeRef* rowB, void* context);
BCComparisonResult SortByDate(const BCTypeRef* rowA, const BCTypeRef* rowB, void* context);
BCComparisonResult SortByDateReverse(const BCTypeRef* rowA, const BCTypeRef* rowB, void* context);
