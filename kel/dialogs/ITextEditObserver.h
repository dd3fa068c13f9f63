#pragma once

// What a text field tells the dialog that owns it.

#include "kel/foundation/TStringRef.h"

#include <cstdint>

class ITextEditObserver {
public:
    virtual void FocusChanged(unsigned char gained) = 0;
    // True consumes the key before the field sees it.
    virtual bool CharacterTyped(unsigned short) { return false; }
    virtual void TextChanged(const TStringRef& text) = 0;
    virtual void KeyError(TStringRef message) = 0;

protected:
    ~ITextEditObserver() = default;
};
