#include "kel/foundation/TUniString.h"

StatusCode TextToUniString(ScriptCode script, const char* text, uint32_t byteLength,
                           TUniString& destination) {
    if (text == nullptr || byteLength == 0) {
        destination.length = 0;
        return noErr;
    }
    TextEncoding encoding = 0;
    StatusCode status = UpgradeScriptInfoToTextEncoding(script, kTextLanguageDontCare,
                                                        kTextRegionDontCare, nullptr, &encoding);
    if (status != noErr) {
        return status;
    }
    TextToUnicodeInfo converter = nullptr;
    status = CreateTextToUnicodeInfoByEncoding(encoding, &converter);
    if (status != noErr) {
        return status;
    }
    destination.AllocateBuffer();
    BCIndex bytesRead = 0;
    BCIndex bytesWritten = 0;
    status = ConvertFromTextToUnicode(converter, byteLength, text, 0, 0, nullptr, nullptr, nullptr,
                                      destination.capacity * sizeof(uint16_t), &bytesRead,
                                      &bytesWritten, destination.Text());
    destination.length = static_cast<uint32_t>(bytesWritten / 2);
    DisposeTextToUnicodeInfo(&converter);
    return status;
}
