#include "kel/interface/KelLinkage.h"

#include "basalt/linkage/Linkage.h"

#include <cstdio>

void* LookupSymbol(const char* name) {
    if (name == nullptr || !TKIsSymbolNameDefined(name)) {
        return nullptr;
    }
    return TKLookupAndBindSymbol(name);
}

void* LookupOrNullSymbol(const char* name) {
    void* address = LookupSymbol(name);
    if (address == nullptr) {
        std::fprintf(stderr, "Could not resolve dynamic linkage \"%s\"\n", name);
    }
    return address;
}
