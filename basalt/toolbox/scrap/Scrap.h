#pragma once

// The scrap: the process's clipboard, kept in step with the backend's clipboard for text.

#include <basalt/BasaltToolbox.h>
#include <string>

namespace basalt::toolbox::scrap {

void PutText(const std::u16string& text);
// The clipboard's text; false when it holds none.
bool GetText(std::u16string* text);
void Clear();

} // namespace basalt::toolbox::scrap
