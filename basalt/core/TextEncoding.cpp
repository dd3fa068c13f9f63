// Legacy text: the application's encoding and conversion of script text to UTF-16.

#include "basalt/BasaltCore.h"
#include "basalt/core/EncodingConverter.h"

#include <cstdlib>

struct OpaqueTextToUnicodeInfo {
    TextEncoding encoding;
};

namespace {

// Script codes below 33 are the Mac script encodings, whose numbers equal their scripts.
constexpr TextEncoding kLastScriptEncoding = 32;

} // namespace

extern "C" {

TextEncoding GetApplicationTextEncoding(void) {
    if (const char* name = std::getenv("KEL_TEXT_ENCODING"))
        if (auto encoding = basalt::EncodingNamed(name))
            return *encoding;
    return kTextEncodingMacRoman;
}

ScriptCode GetScriptManagerVariable(int16_t selector) {
    if (selector != smSysScript && selector != smKeyScript)
        return smRoman;
    TextEncoding encoding = GetApplicationTextEncoding();
    return encoding <= kLastScriptEncoding ? static_cast<ScriptCode>(encoding)
                                           : ScriptCode(smRoman);
}

StatusCode UpgradeScriptInfoToTextEncoding(ScriptCode script, int16_t, int16_t, ConstStr255Param,
                                           TextEncoding* encoding) {
    if (encoding == nullptr)
        return paramErr;
    TextEncoding chosen =
        script == smSystemScript ? GetApplicationTextEncoding() : static_cast<TextEncoding>(script);
    if (script < smSystemScript || basalt::ConverterNameFor(chosen) == nullptr)
        return kTextUnsupportedEncodingErr;
    *encoding = chosen;
    return noErr;
}

StatusCode CreateTextToUnicodeInfoByEncoding(TextEncoding encoding, TextToUnicodeInfo* info) {
    if (info == nullptr)
        return paramErr;
    *info = nullptr;
    if (basalt::ConverterNameFor(encoding) == nullptr)
        return kTextUnsupportedEncodingErr;
    *info = new OpaqueTextToUnicodeInfo{encoding};
    return noErr;
}

StatusCode ConvertFromTextToUnicode(TextToUnicodeInfo info, BCIndex sourceLen, const void* source,
                                    uint32_t, BCIndex, const BCIndex*, BCIndex* offsetOutCount,
                                    BCIndex*, BCIndex outputBufLen, BCIndex* sourceRead,
                                    BCIndex* outputLen, UniChar* output) {
    if (info == nullptr || sourceLen < 0 || (source == nullptr && sourceLen > 0) ||
        outputBufLen < 0 || (output == nullptr && outputBufLen > 0))
        return paramErr;
    // Offsets are not tracked; callers that pass them get none back.
    if (offsetOutCount != nullptr)
        *offsetOutCount = 0;
    size_t read = 0, written = 0;
    auto status = basalt::DecodePrefix(static_cast<const uint8_t*>(source), size_t(sourceLen),
                                       info->encoding, reinterpret_cast<char16_t*>(output),
                                       size_t(outputBufLen) / sizeof(UniChar), read, written);
    if (sourceRead != nullptr)
        *sourceRead = static_cast<BCIndex>(read);
    if (outputLen != nullptr)
        *outputLen = static_cast<BCIndex>(written * sizeof(UniChar));
    switch (status) {
    case basalt::DecodeStatus::Done:
        return noErr;
    case basalt::DecodeStatus::OutputFull:
        return kTECOutputBufferFullStatus;
    case basalt::DecodeStatus::Malformed:
        return kTextMalformedInputErr;
    case basalt::DecodeStatus::Unsupported:
        return kTextUnsupportedEncodingErr;
    }
    return paramErr;
}

StatusCode DisposeTextToUnicodeInfo(TextToUnicodeInfo* info) {
    if (info == nullptr)
        return paramErr;
    delete *info;
    *info = nullptr;
    return noErr;
}

} // extern "C"
