// Theme text calls: core strings measured and drawn through the theme's text layout.

#include "basalt/graphics/BGContextObject.h"
#include "basalt/graphics/TextLayout.h"
#include "basalt/graphics/ThemeCanvas.h"

#include <cmath>
#include <string>
#include <vector>

using namespace basalt::graphics;

namespace {

// Unpaired surrogates become "?" rather than failing the whole text.
std::string Utf8Of(BCStringRef string) {
    const BCIndex length = BCStringGetLength(string);
    std::vector<uint8_t> bytes(
        static_cast<size_t>(BCStringGetMaximumSizeForEncoding(length, kBCStringEncodingUTF8)) + 1);
    BCIndex used = 0;
    BCStringGetBytes(string, BCRangeMake(0, length), kBCStringEncodingUTF8, '?', false,
                     bytes.data(), static_cast<BCIndex>(bytes.size()), &used);
    return std::string(reinterpret_cast<const char*>(bytes.data()), static_cast<size_t>(used));
}

TextBoxStyle StyleOf(const BTThemeTextInfo& info) {
    return {info.fontID, info.horizontalFlush, info.verticalFlush, info.truncationPosition,
            info.truncationMaxLines};
}

} // namespace

extern "C" {

StatusCode BTThemeGetTextDimensions(BCStringRef string, BGFloat width, const BTThemeTextInfo* info,
                                    BGFloat* outWidth, BGFloat* outHeight, BGFloat* outBaseline) {
    if (string == nullptr || info == nullptr)
        return paramErr;
    const auto measure = MeasureText(Utf8Of(string), StyleOf(*info), width);
    if (!measure)
        return kBTThemeFontErr;
    if (outWidth != nullptr)
        *outWidth = measure->size.width;
    if (outHeight != nullptr)
        *outHeight = measure->size.height;
    if (outBaseline != nullptr)
        *outBaseline = measure->baseline;
    return noErr;
}

StatusCode BTThemeDrawTextBox(BCStringRef string, const BGRect* bounds, BTThemeTextInfo* info,
                              BGContextRef context) {
    if (string == nullptr || bounds == nullptr || info == nullptr || context == nullptr ||
        !context->Valid() || BGRectIsNull(*bounds))
        return paramErr;
    const BGColor& fill = context->state.fill;
    const double dim = IsUnavailable(info->state) ? kUnavailableAlpha : 1;
    cairo_set_source_rgba(context->cr, fill.red, fill.green, fill.blue,
                          fill.alpha * context->state.alpha * dim);
    const auto truncated = DrawText(context->cr, Utf8Of(string), StyleOf(*info), *bounds);
    if (!truncated)
        return kBTThemeFontErr;
    info->truncationHappened = *truncated;
    return noErr;
}

StatusCode GetThemeTextDimensions(BCStringRef string, BTThemeFontID fontID, BTThemeDrawState state,
                                  Boolean wrapToWidth, Point* ioBounds, int16_t* outBaseline) {
    if (string == nullptr || ioBounds == nullptr)
        return paramErr;
    BTThemeTextInfo info = {};
    info.state = state;
    info.fontID = fontID;
    BGFloat width = 0, height = 0, baseline = 0;
    const StatusCode status = BTThemeGetTextDimensions(string, wrapToWidth ? ioBounds->h : 0, &info,
                                                       &width, &height, &baseline);
    if (status != noErr)
        return status;
    ioBounds->h = static_cast<int16_t>(std::min(width, 32767.0));
    ioBounds->v = static_cast<int16_t>(std::min(height, 32767.0));
    if (outBaseline != nullptr)
        *outBaseline = static_cast<int16_t>(std::lround(baseline));
    return noErr;
}

} // extern "C"
