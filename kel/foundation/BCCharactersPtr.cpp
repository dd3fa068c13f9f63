#include "kel/foundation/BCCharactersPtr.h"

BCCharactersPtr::BCCharactersPtr(BCStringRef source)
    : string(source == nullptr ? nullptr : static_cast<BCStringRef>(BCRetain(source))) {
    Reset();
}

BCCharactersPtr::~BCCharactersPtr() {
    delete[] ownBuffer;
    if (string != nullptr) {
        BCRelease(string);
    }
}

void BCCharactersPtr::Reset() {
    characters = nullptr;
    if (string != nullptr) {
        characters = BCStringGetCharactersPtr(string);
        if (characters == nullptr) {
            auto length = static_cast<int32_t>(BCStringGetLength(string));
            if (length > capacity) {
                delete[] ownBuffer;
                ownBuffer = new UniChar[length];
                capacity = length;
            }
            if (length > 0) {
                BCStringGetCharacters(string, BCRangeMake(0, length), ownBuffer);
            }
            characters = ownBuffer;
        }
    }
    // Characters read in place make our own copy pointless.
    if (characters != ownBuffer && ownBuffer != nullptr) {
        delete[] ownBuffer;
        ownBuffer = nullptr;
        capacity = 0;
    }
}
