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
    Size capacity; // bytes allocated; shrinking keeps them so the block does not move
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
    *block = Block{data, byteCount, byteCount, false};
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
    gMemError = noErr;
    if (newSize <= block->capacity) {
        block->size = newSize;
        return;
    }
    // A locked block must not move, and growing may move it.
    auto* data = block->locked ? nullptr
                               : static_cast<Ptr>(std::realloc(block->master, size_t(newSize) + 1));
    if (data == nullptr) {
        gMemError = memFullErr;
        return;
    }
    block->master = data;
    block->size = block->capacity = newSize;
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

StatusCode HandToHand(Handle* theHndl) {
    if (theHndl == nullptr || *theHndl == nullptr)
        return gMemError = nilHandleErr;
    Handle copy = nullptr;
    StatusCode status = PtrToHand(**theHndl, &copy, GetHandleSize(*theHndl));
    if (status == noErr)
        *theHndl = copy;
    return status;
}

Ptr NewPtr(Size byteCount) {
    if (byteCount < 0) {
        gMemError = paramErr;
        return nullptr;
    }
    auto p = static_cast<Ptr>(std::malloc(size_t(byteCount) + 1));
    gMemError = p != nullptr ? noErr : memFullErr;
    return p;
}

Ptr NewPtrClear(Size byteCount) {
    Ptr p = NewPtr(byteCount);
    if (p != nullptr)
        std::memset(p, 0, size_t(byteCount));
    return p;
}

void DisposePtr(Ptr p) {
    std::free(p);
    gMemError = noErr;
}

} // extern "C"
