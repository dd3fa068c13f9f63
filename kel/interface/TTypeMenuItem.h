#pragma once

// One line of a dialog's type popup.

#include "kel/foundation/TStringRef.h"

#include <cstdint>
#include <kel/KelServices.h>

struct TTypeMenuItem {
    enum Kind : uint16_t {
        kFilterByTypeList = 0,
        kFilterByTypeListAnyCreator = 1,
        kNoFilter = 2,
        kSeparator = 0x0400,
        kOneType = 0x0402,
        kClientItem = 0x0404,
    };

    uint16_t kind = kNoFilter;
    TStringRef title;
    // Not retained: the identifier array that a kOneType item was made from keeps it alive.
    BCStringRef typeIdentifier = nullptr;
    // "extn" for an item of a client's string array.
    FourCharCode creator = 0;
    // The index, for an item of a client's string array.
    FourCharCode fileType = 0;
};
