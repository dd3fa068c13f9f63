#include "kel/nodes/TKelNodeArray.h"

#include "kel/foundation/TSystemLocaleCollator.h"

#include <algorithm>
#include <cstdlib>

int16_t CompareStrings(unsigned long lengthA, const UniChar* charsA, unsigned long lengthB,
                       const UniChar* charsB) {
    static const TSystemLocaleCollator collator;
    int result = collator(uint32_t(lengthA), charsA, uint32_t(lengthB), charsB);
    return static_cast<int16_t>((result > 0) - (result < 0));
}

bool NodeStringPropertyLessThan::operator()(const TKelNode& a, const TKelNode& b) const {
    int16_t result =
        NodeStringCompare(a.PeekNodeRef(), b.PeekNodeRef(), FourCharCode(property), CompareStrings);
    if (result != 0) {
        return result < 0;
    }
    if (property == NodeCode("dnam")) {
        return NodeStringCompare(a.PeekNodeRef(), b.PeekNodeRef(), NodeCode("pnam"),
                                 CompareStrings) < 0;
    }
    return false;
}

bool TKelNodePathLeafStringPropertyLess::operator()(const TKelNodeArray* a,
                                                    const TKelNodeArray* b) const {
    return NodeStringCompare(a->back().PeekNodeRef(), b->back().PeekNodeRef(),
                             FourCharCode(property), CompareStrings) != 0;
}

void SortPathsByLeaf(std::vector<TKelNodeArray*>& paths, unsigned long property) {
    const TKelNodePathLeafStringPropertyLess less(property);
    for (size_t i = 1; i < paths.size(); ++i) {
        for (size_t j = i; j > 0 && less(paths[j], paths[j - 1]); --j) {
            std::swap(paths[j], paths[j - 1]);
        }
    }
}

TKelNodeArray::~TKelNodeArray() {
    while (!empty()) {
        pop_back();
    }
}

OpaqueNodeRef** TKelNodeArray::MallocItems() const {
    auto* items = static_cast<OpaqueNodeRef**>(std::malloc(size() * sizeof(OpaqueNodeRef*)));
    if (items != nullptr) {
        std::transform(begin(), end(), items, [](const TKelNode& n) { return n.PeekNodeRef(); });
    }
    return items;
}

void TKelNodeArray::RemoveNode(const TKelNode& node) {
    auto found = std::find(begin(), end(), node);
    if (found != end()) {
        erase(found);
    }
}

void TKelNodeArray::Sort(unsigned long property) {
    std::sort(begin(), end(), NodeStringPropertyLessThan(property));
}

void TKelNodeArray::CopyItems(unsigned long count, const unsigned long* items) {
    clear();
    for (unsigned long i = 0; i < count; ++i) {
        emplace_back(uintptr_t(items[i]));
    }
}
