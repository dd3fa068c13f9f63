#pragma once

// Finding and comparing UTF-16 text under the BCStringFind / BCStringCompare options.

#include "basalt/BasaltCore.h"

#include <string>
#include <vector>

namespace basalt {

// The first match (the last with kBCCompareBackwards) within range; {kBCNotFound, 0} if none.
BCRange FindOne(const std::u16string& text, const std::u16string& pattern, BCRange range,
                BCOptionFlags options);

// Every non-overlapping match within range, in order.
std::vector<BCRange> FindAll(const std::u16string& text, const std::u16string& pattern,
                             BCRange range, BCOptionFlags options);

BCComparisonResult CompareText(const std::u16string& a, const std::u16string& b,
                               BCOptionFlags options);

} // namespace basalt
