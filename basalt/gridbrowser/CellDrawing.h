#pragma once

// Drawing one cell that the data source answered: an icon and a name, a text or a date, in
// the views font, one line, cut with an ellipsis where it does not fit.

#include "basalt/gridbrowser/CellData.h"

#include <string>

namespace basalt::gridbrowser {

struct CellLook {
    BTThemeDrawState state = kBTThemeStateActive; // unavailable: dimmed
    uint32_t textColor = kBTThemeTextColorPlain;
    bool selected = false;
};

void DrawCell(BGContextRef context, const CellData& cell, GridBrowserPropertyType type,
              GridBrowserPropertyFlags flags, BGRect rect, const CellLook& look);
void DrawCellText(BGContextRef context, BCStringRef text, BGRect rect,
                  GridBrowserPropertyFlags flags, const CellLook& look);
void DrawOwnedText(BGContextRef context, const std::u16string& text, BGRect rect,
                   GridBrowserPropertyFlags flags, const CellLook& look);
void DrawCellIcon(BGContextRef context, IconRef icon, BGRect rect, const CellLook& look);

} // namespace basalt::gridbrowser
