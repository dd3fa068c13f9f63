#pragma once

// What the location popups ask of the dialog that shows them.

#include "kel/nodes/TKelNode.h"

class IFavoritesCommandHandler {
public:
    // Go to this location; the popups pass the chosen folder as both arguments.
    virtual StatusCode SetTargetCommand(const TKelNode& target, const TKelNode& selection) = 0;
    // Shows that a slow look-up runs (one that may mount a volume or ask the user).
    virtual void SetBusyState(unsigned char busy) = 0;

protected:
    ~IFavoritesCommandHandler() = default;
};
