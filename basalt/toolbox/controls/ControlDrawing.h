#pragma once

// What every control's drawing shares: its theme state and its text.

#include "basalt/toolbox/views/View.h"

#include <string>

namespace basalt::toolbox {

// Unavailable when disabled, pressed while hilited, inactive in a background window.
BTThemeDrawState ThemeState(const View& view);
void DrawText(BGContextRef context, const std::u16string& text, const BGRect& rect,
              BTThemeFontID font, uint32_t flush, BTThemeDrawState state,
              uint32_t verticalFlush = 1, uint32_t colorKind = kBTThemeTextColorPlain);
BGSize MeasureText(const std::u16string& text, BTThemeFontID font, BGFloat* baseline = nullptr);

} // namespace basalt::toolbox
