#include "basalt/toolbox/controls/ControlDrawing.h"

#include "basalt/toolbox/views/UnicodeText.h"

namespace basalt::toolbox {

BTThemeDrawState ThemeState(const View& view) {
    bool active = view.IsActive();
    if (!view.IsEnabledInTree())
        return active ? kBTThemeStateUnavailable : kBTThemeStateUnavailableInactive;
    if (view.Hilite() != kControlNoPart)
        return kBTThemeStatePressed;
    return active ? kBTThemeStateActive : kBTThemeStateInactive;
}

void DrawText(BGContextRef context, const std::u16string& text, const BGRect& rect,
              BTThemeFontID font, uint32_t flush, BTThemeDrawState state, uint32_t verticalFlush,
              uint32_t colorKind) {
    if (text.empty())
        return;
    BTThemeSetTextColor(colorKind, state, context);
    StringHolder string(MakeBCString(text));
    BTThemeTextInfo info{};
    info.state = state;
    info.fontID = font;
    info.horizontalFlush = flush;
    info.verticalFlush = verticalFlush;
    info.truncationPosition = kBTThemeTextTruncationEnd;
    // A box with room for one line truncates; a taller one wraps. Wrapped lines sit a little
    // closer than a single line's height, so two lines need less than twice that height.
    info.truncationMaxLines =
        rect.size.height < 1.5 * MeasureText(u" ", font, nullptr).height ? 1 : 0;
    BTThemeDrawTextBox(string.get(), &rect, &info, context);
}

BGSize MeasureText(const std::u16string& text, BTThemeFontID font, BGFloat* baseline) {
    StringHolder string(MakeBCString(text.empty() ? u" " : text));
    BTThemeTextInfo info{};
    info.fontID = font;
    BGFloat width = 0, height = 0, base = 0;
    BTThemeGetTextDimensions(string.get(), 0, &info, &width, &height, &base);
    if (baseline != nullptr)
        *baseline = base;
    return {text.empty() ? 0 : width, height};
}

} // namespace basalt::toolbox
