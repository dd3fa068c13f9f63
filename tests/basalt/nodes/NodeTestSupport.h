#pragma once

// Small helpers shared by the node service tests.

#include "basalt/files/BFNameCodec.h"
#include "basalt/nodes/NodeIterator.h"
#include "basalt/nodes/NodeProperties.h"
#include "basalt/nodes/NodeService.h"

#include <filesystem>
#include <string>
#include <vector>

namespace nodetest {

// A node owned by the test.
class Held {
public:
    explicit Held(NodeRef node = nullptr) : node_(node) {}
    Held(Held&& other) noexcept : node_(other.node_) { other.node_ = nullptr; }
    Held& operator=(Held&& other) noexcept {
        std::swap(node_, other.node_);
        return *this;
    }
    ~Held() { DisposeNode(node_); }
    NodeRef get() const { return node_; }
    explicit operator bool() const { return node_ != nullptr; }

private:
    NodeRef node_;
};

inline Held NodeAt(const std::filesystem::path& path) {
    std::u16string text = basalt::files::DecodeName(path.string());
    return Held(GetPathNameAsNode(static_cast<BCIndex>(text.size()),
                                  reinterpret_cast<const UniChar*>(text.data())));
}

inline Held Child(NodeRef parent, const std::u16string& name, StatusCode* status = nullptr) {
    NodeRef child = nullptr;
    StatusCode result = NodeFindChildNew(parent, static_cast<BCIndex>(name.size()),
                                         reinterpret_cast<const UniChar*>(name.data()), &child);
    if (status != nullptr)
        *status = result;
    return Held(child);
}

inline std::u16string StringProperty(NodeRef node, const char (&code)[5]) {
    UniChar buffer[1024];
    BCIndex length = 0;
    if (GetNodePropertyAsStringNew(node, NodeCode(code), 1024, &length, buffer, 0) != noErr)
        return u"<error>";
    return std::u16string(reinterpret_cast<char16_t*>(buffer), static_cast<size_t>(length));
}

inline std::vector<Held> Children(NodeRef container) {
    std::vector<Held> children;
    NodeIteratorRef iterator = nullptr;
    if (NewNodeIterator(container, &iterator, 0, false) != noErr)
        return children;
    for (NodeRef child = NodeIteratorFirst(iterator); child != nullptr;
         child = NodeIteratorNext(iterator))
        children.emplace_back(child);
    DisposeNodeIterator(iterator);
    return children;
}

inline std::vector<std::u16string> ChildNames(NodeRef container) {
    std::vector<std::u16string> names;
    for (const Held& child : Children(container))
        names.push_back(StringProperty(child.get(), "pnam"));
    return names;
}

} // namespace nodetest
