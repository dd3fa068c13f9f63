#pragma once

// Texts of the bundle for one use, as the dialogs show them.

#include "kel/foundation/KelBundle.h"

// The localised text of key, held by the caller alone.
inline TStringRef LocalizedText(const char* key) {
    TStringRef text = KelBundle::GetStringResource(TStringRef::Create(key, kBCStringEncodingUTF8));
    // The bundle hands its texts out with a count for process-wide keeping; this one is not.
    BCRelease(text.AsBCStringRef());
    return text;
}
