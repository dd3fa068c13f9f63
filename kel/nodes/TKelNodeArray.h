#pragma once

// A list of nodes with value semantics: a selection, the items of a reply, or a path whose
// first element is the root node and whose last is the leaf.

#include "kel/nodes/TKelNode.h"

#include <vector>

// The comparison handed to NodeStringCompare: the current locale's order, as -1, 0 or 1.
int16_t CompareStrings(unsigned long lengthA, const UniChar* charsA, unsigned long lengthB,
                       const UniChar* charsB);

// Orders nodes by a string property; equal display names fall back to the file-system names
// so that the order is stable.
struct NodeStringPropertyLessThan {
    explicit NodeStringPropertyLessThan(unsigned long property) : property(property) {}
    bool operator()(const TKelNode& a, const TKelNode& b) const;
    unsigned long property;
};

class TKelNodeArray;

// Compares the leaves of two paths. Any two leaves that differ count as smaller both ways, so
// this is no strict weak ordering: std::sort and friends may run off the range with it. Use it
// only through SortPathsByLeaf.
struct TKelNodePathLeafStringPropertyLess {
    explicit TKelNodePathLeafStringPropertyLess(unsigned long property) : property(property) {}
    bool operator()(const TKelNodeArray* a, const TKelNodeArray* b) const;
    unsigned long property;
};

// Sorts paths with the leaf comparison above by moving each one back past every path it is
// "smaller" than, bounded by the start: safe with any answer. Paths whose leaves are equal end
// up together; there is no alphabetical order.
void SortPathsByLeaf(std::vector<TKelNodeArray*>& paths, unsigned long property);

class TKelNodeArray : public std::vector<TKelNode> {
public:
    TKelNodeArray() = default;
    TKelNodeArray(const TKelNodeArray& other) = default;
    TKelNodeArray& operator=(const TKelNodeArray& other) = default;
    ~TKelNodeArray();

    // The references of the elements, not counted up, in a block the caller frees with free().
    OpaqueNodeRef** MallocItems() const;
    // Removes the first element with the same reference.
    void RemoveNode(const TKelNode& node);
    void Sort(unsigned long property);
    // Replaces the contents with the nodes of browser item ids.
    void CopyItems(unsigned long count, const unsigned long* items);
};
