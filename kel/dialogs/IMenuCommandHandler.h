#pragma once

// Who gets the first say over an edit command: asked whether a command may run and offered it
// before the field does the default thing.

#include <cstdint>

class IMenuCommandHandler {
public:
    virtual bool IsBTCommandAllowed(uint32_t command) = 0;
    virtual bool ExecuteBTCommand(uint32_t command) = 0;

protected:
    ~IMenuCommandHandler() = default;
};
