#pragma once

// The localised string tables of bundles: UTF-8 text of `"key" = "value";` entries with the
// escapes \" \\ \n \t \r, and comments in /* */ or after //. A malformed entry is skipped up to
// its ';' so one bad line does not lose the rest of the table.

#include <map>
#include <string>
#include <string_view>

namespace basalt {

using StringsTable = std::map<std::u16string, std::u16string>;

StringsTable ParseStringsTable(std::string_view text);

} // namespace basalt
