#include "basalt/core/StringsTable.h"

#include <gtest/gtest.h>

namespace {

using basalt::ParseStringsTable;

TEST(StringsTable, EscapesCommentsAndBadLines) {
    auto table = ParseStringsTable("\xEF\xBB\xBF/* header\n comment */\n"
                                   "\"plain\" = \"Plain\";\n"
                                   "// a line comment with \"quotes\" = \"no\";\n"
                                   "\"quote \\\"me\\\"\"=\"say \\\"hi\\\"\\n\\\\done\";\n"
                                   "\"broken\" \"missing equals\";\n"
                                   "\"caf\xC3\xA9\" = \"/* not a comment */\"; // tail\n"
                                   "\"unterminated\" = \"never closed");
    EXPECT_EQ(table.size(), 3u);
    EXPECT_EQ(table[u"plain"], u"Plain");
    EXPECT_EQ(table[u"quote \"me\""], u"say \"hi\"\n\\done");
    EXPECT_EQ(table[u"caf\u00E9"], u"/* not a comment */");
    EXPECT_FALSE(table.contains(u"broken"));
}

TEST(StringsTable, EmptyAndGarbageInputGiveEmptyTables) {
    EXPECT_TRUE(ParseStringsTable("").empty());
    EXPECT_TRUE(ParseStringsTable("/* never closed").empty());
    EXPECT_TRUE(ParseStringsTable("\x01\x02 = ;;; \"").empty());
}

} // namespace
