// Guessing the encoding of text bytes with ICU's charset detector.

#include "basalt/BasaltCore.h"
#include "basalt/core/EncodingConverter.h"

#include <memory>
#include <unicode/ucsdet.h>

namespace {

struct DetectorCloser {
    void operator()(UCharsetDetector* detector) const { ucsdet_close(detector); }
};

// The longest prefix that decodes cleanly: a sample cut from a file may end inside a
// character. Characters are at most four bytes, so only the last three can be partial.
size_t WholeCharacterLength(const uint8_t* bytes, size_t length, TextEncoding encoding) {
    for (size_t cut = 0; cut < 4 && cut < length; ++cut)
        if (basalt::DecodeBytes(bytes, length - cut, encoding))
            return length - cut;
    return length;
}

} // namespace

extern "C" {

uint32_t GetTextEncodingFormat(TextEncoding encoding) {
    return (encoding >> 26) & 0x3F;
}

StatusCode TECSniffEncodingAndLanguage(const void* bytes, BCIndex byteCount, TextEncoding* encoding,
                                       float* confidence, BCIndex* usableLength) {
    if (bytes == nullptr || byteCount <= 0 || encoding == nullptr)
        return paramErr;
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<UCharsetDetector, DetectorCloser> detector(ucsdet_open(&status));
    ucsdet_setText(detector.get(), static_cast<const char*>(bytes), static_cast<int32_t>(byteCount),
                   &status);
    const UCharsetMatch* match = ucsdet_detect(detector.get(), &status);
    if (U_FAILURE(status) || match == nullptr)
        return kTextUnsupportedEncodingErr;
    const char* name = ucsdet_getName(match, &status);
    auto guessed = name != nullptr ? basalt::EncodingNamed(name) : std::nullopt;
    if (U_FAILURE(status) || !guessed)
        return kTextUnsupportedEncodingErr;
    *encoding = *guessed;
    if (confidence != nullptr)
        *confidence = static_cast<float>(ucsdet_getConfidence(match, &status)) / 100.0f;
    if (usableLength != nullptr)
        *usableLength = static_cast<BCIndex>(
            WholeCharacterLength(static_cast<const uint8_t*>(bytes), size_t(byteCount), *guessed));
    return noErr;
}

} // extern "C"
