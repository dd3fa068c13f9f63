// BCSTR strings: one immortal string per distinct text, shared by every caller and never freed.

#include "basalt/core/BCString.h"

#include <map>
#include <mutex>

extern "C" BCStringRef __BCStringMakeConstantString(const char* cString) {
    // Never destroyed: constants stay valid for code that runs during process exit.
    static auto* mutex = new std::mutex;
    static auto* constants = new std::map<std::string, BCStringRef>;
    if (cString == nullptr)
        return nullptr;
    std::lock_guard lock(*mutex);
    BCStringRef& slot = (*constants)[cString];
    if (slot == nullptr) {
        // Literals are UTF-8 source text; a bad sequence still gives a string, never null.
        auto* string = new basalt::String(basalt::FromUTF8(cString));
        string->MakeImmortal();
        slot = reinterpret_cast<BCStringRef>(static_cast<basalt::BCObject*>(string));
    }
    return slot;
}
