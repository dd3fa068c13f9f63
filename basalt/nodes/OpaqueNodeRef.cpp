#include "basalt/nodes/OpaqueNodeRef.h"

#include <new>

OpaqueNodeRef* OpaqueNodeRef::Make(NodeKind kind, std::string_view name, OpaqueNodeRef* parent) {
    void* block = ::operator new(sizeof(OpaqueNodeRef) + name.size() + 1);
    auto* node = new (block) OpaqueNodeRef(kind, static_cast<uint32_t>(name.size()), parent);
    auto* tail = reinterpret_cast<char*>(node + 1);
    name.copy(tail, name.size()); // an empty view may have no data to copy from
    tail[name.size()] = '\0';
    return node;
}

void OpaqueNodeRef::Destroy(OpaqueNodeRef* node) {
    if (node == nullptr)
        return;
    node->~OpaqueNodeRef();
    ::operator delete(node);
}
