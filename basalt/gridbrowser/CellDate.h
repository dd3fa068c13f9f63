#pragma once

// The text of a date cell: a short date and time in the user's locale ("11/22/26, 10:52 AM"),
// or the short date alone when the time would not fit the column.

#include "basalt/gridbrowser/GridBrowser.h"

#include <string>

namespace basalt::gridbrowser {

// width is the room for the text in the views font, padding taken off already.
std::u16string FormatDate(LongDateTime date, BGFloat width);

// The width the text takes in the views font.
BGFloat ViewsTextWidth(const std::u16string& text);

} // namespace basalt::gridbrowser
