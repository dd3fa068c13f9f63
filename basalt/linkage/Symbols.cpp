#include "basalt/linkage/Linkage.h"

#include <dlfcn.h>

extern "C" {

Boolean TKIsSymbolNameDefined(const char* symbolName) {
    return TKAddressOfSymbol(symbolName) != nullptr;
}

void* TKLookupAndBindSymbol(const char* symbolName) {
    // Modules are loaded with immediate binding, so finding a symbol also binds it.
    return TKAddressOfSymbol(symbolName);
}

void* TKAddressOfSymbol(const char* symbolName) {
    if (symbolName == nullptr || *symbolName == '\0')
        return nullptr;
    return dlsym(RTLD_DEFAULT, symbolName);
}

} // extern "C"
