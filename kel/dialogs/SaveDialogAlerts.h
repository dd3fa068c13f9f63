#pragma once

// The alerts the save dialog puts up over its window: each runs modally and answers the item
// of the button the user pressed. Whatever their type, all show the caution icon: each stands
// between the user and a file that could be lost or hidden.

#include "kel/foundation/TStringRef.h"

#include <basalt/BasaltToolbox.h>
#include <initializer_list>

enum : AlertType { kSaveStopAlert = 0, kSaveNoteAlert = 1, kSaveCautionAlert = 2 };

struct SaveAlert {
    AlertType kind = kSaveNoteAlert;
    TStringRef text;
    TStringRef explanation;
    // The title of item 1; the system's own when nil.
    TStringRef defaultText;
    // A third button, item 3, when not nil.
    TStringRef otherText;
    int16_t cancelButton = 0;
    int16_t defaultButton = 1;
    uint16_t position = 0;
    ModalFilterUPP filter = nullptr;
};

int16_t RunSaveAlert(const SaveAlert& alert);

// The bundle's text of key with ^0, ^1, ... filled from params in order; a nil param leaves
// its mark out.
TStringRef BundleTextWith(const char* key, std::initializer_list<TStringRef> params);
