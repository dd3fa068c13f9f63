// Relocatable memory handles. A Handle points at the first field of a block record, the master
// pointer, so the record can be found again from the handle. Blocks never move while locked;
// unlocked blocks may move when resized.

#include "basalt/BasaltCore.h"

#include <cstdlib>
#include <cstring>

namespace {

struct Block {
    Ptr master; // must stay first: a Handle is &master
    Size size;
    bool locked;
};

thread_local StatusCode gMemError = noErr;

Block* BlockOf(Handle h) {
    return reinterpret_cast<Block*>(h);
}

Handle Allocate(Size byteCount, bool clear) {
    if (byteCount < 0) {
        gMemError = paramErr;
        return nullptr;
    }
    auto* block = static_cast<Block*>(std::malloc(sizeof(Block)));
    // One spare byte keeps malloc(0) distinct from a failure.
    Ptr data = static_cast<Ptr>(clear ? std::calloc(1, size_t(byteCount) + 1)
                                      : std::malloc(size_t(byteCount) + 1));
    if (block == nullptr || data == nullptr) {
        std::free(block);
        std::free(data);
        gMemError = memFullErr;
        return nullptr;
    }
    *block = Block{data, byteCount, false};
    gMemError = noErr;
    return &block->master;
}

} // namespace

extern "C" {

Handle NewHandle(Size byteCount) {
    return Allocate(byteCount, false);
}

Handle NewHandleClear(Size byteCount) {
    return Allocate(byteCount, true);
}

void DisposeHandle(Handle h) {
    if (h == nullptr) {
        gMemError = nilHandleErr;
        return;
    }
    std::free(BlockOf(h)->master);
    std::free(BlockOf(h));
    gMemError = noErr;
}

Size GetHandleSize(Handle h) {
    if (h == nullptr) {
        gMemError = nilHandleErr;
        return 0;
    }
    gMemError = noErr;
    return BlockOf(h)->size;
}

void SetHandleSize(Handle h, Size newSize) {
    if (h == nullptr || newSize < 0) {
        gMemError = h == nullptr ? nilHandleErr : paramErr;
        return;
    }
    Block* block = BlockOf(h);
    if (block->locked && newSize > block->size) {
        // A locked block must not move, and growing may move it.
        gMemError = memFullErr;
        return;
    }
    auto* data = static_cast<Ptr>(std::realloc(block->master, size_t(newSize) + 1));
    if (data == nullptr) {
        gMemError = memFullErr;
        return;
    }
    block->master = data;
    block->size = newSize;
    gMemError = noErr;
}

void HLock(Handle h) {
    if (h != nullptr)
        BlockOf(h)->locked = true;
    gMemError = h != nullptr ? noErr : nilHandleErr;
}

void HUnlock(Handle h) {
    if (h != nullptr)
        BlockOf(h)->locked = false;
    gMemError = h != nullptr ? noErr : nilHandleErr;
}

StatusCode MemError(void) {
    return gMemError;
}

StatusCode PtrToHand(const void* srcPtr, Handle* dstHndl, long size) {
    if (dstHndl == nullptr || size < 0 || (srcPtr == nullptr && size > 0))
        return gMemError = paramErr;
    *dstHndl = NewHandle(size);
    if (*dstHndl == nullptr)
        return gMemError;
    if (size > 0)
        std::memcpy(**dstHndl, srcPtr, size_t(size));
    return noErr;
}

} // extern "C"
