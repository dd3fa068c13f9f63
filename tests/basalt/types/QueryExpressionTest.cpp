#include "basalt/types/QueryExpression.h"

#include "basalt/types/BMQuery.h"
#include "basalt/types/BUTypes.h"

#include <gtest/gtest.h>

using basalt::types::QueryExpression;
using basalt::types::QueryItem;

namespace {

class Item final : public QueryItem {
public:
    Item(std::string name, std::string type) : name_(std::move(name)), type_(std::move(type)) {}
    std::string_view Name() const override { return name_; }
    std::string ContentType() const override {
        ++typeLookups;
        return type_;
    }
    mutable int typeLookups = 0;

private:
    std::string name_;
    std::string type_;
};

bool Matches(const std::string& text, const Item& item) {
    std::unique_ptr<QueryExpression> expression;
    EXPECT_EQ(QueryExpression::Parse(text, expression), noErr) << text;
    return expression != nullptr && expression->Matches(item);
}

TEST(QueryExpressionTest, CombinesTestsWithAndOrNotAndBrackets) {
    Item notes("notes.txt", "text/plain");
    EXPECT_TRUE(Matches(R"(kBMItemDisplayName == "notes*")", notes));
    EXPECT_FALSE(Matches(R"(kBMItemDisplayName != "notes*")", notes));
    EXPECT_TRUE(Matches(R"(kBMItemDisplayName == "x*" || kBMItemFSName == "*.txt")", notes));
    EXPECT_FALSE(Matches(R"(kBMItemDisplayName == "x*" || true && false)", notes));
    EXPECT_TRUE(Matches(R"((kBMItemDisplayName == "x*" || true) && !false)", notes));
    EXPECT_TRUE(Matches(R"(!(kBMItemDisplayName == "x*"))", notes));
    EXPECT_FALSE(Matches("unknownAttribute == \"notes.txt\"", notes));
    EXPECT_TRUE(Matches("unknownAttribute != \"notes.txt\"", notes));
}

TEST(QueryExpressionTest, TypeTestsUseConformanceForTheTreeAndSkipLookupsWhenNamesFail) {
    Item notes("notes.txt", "text/plain");
    EXPECT_TRUE(Matches("kBMItemContentType == text/plain", notes));
    EXPECT_TRUE(Matches("kBMItemContentTypeTree == application/octet-stream", notes));
    EXPECT_FALSE(Matches("kBMItemContentType == application/octet-stream", notes));
    EXPECT_TRUE(Matches("kBMItemContentType == \"text/*\"", notes));
    Item folder("Plans", "inode/directory");
    EXPECT_TRUE(Matches("kBMItemContentTypeTree == public.folder", folder));
    EXPECT_TRUE(Matches("kBMItemContentType != public.vcard", folder));
    Item lookups("a.txt", "text/plain");
    EXPECT_FALSE(
        Matches(R"(kBMItemDisplayName == "b*" && kBMItemContentType == text/plain)", lookups));
    EXPECT_EQ(lookups.typeLookups, 0);
}

TEST(QueryExpressionTest, BadTextGivesAStatusNeverACrash) {
    for (const char* text : {"", " ", "(", ")", "!", "true false", "kBMItemDisplayName",
                             "kBMItemDisplayName ==", "kBMItemDisplayName == \"x",
                             "kBMItemDisplayName == \"x\"cz", "== \"x\"", "a & b", "a | b", "a = b",
                             "a == b ||", "&& a == b", "\"x\" == a", "a == (b)", "\\"}) {
        std::unique_ptr<QueryExpression> expression;
        EXPECT_EQ(QueryExpression::Parse(text, expression), kBMQuerySyntaxErr) << text;
        EXPECT_EQ(expression, nullptr) << text;
    }
    std::unique_ptr<QueryExpression> expression;
    EXPECT_EQ(QueryExpression::Parse(std::string(100000, '!') + "true", expression),
              kBMQueryTooDeepErr);
}

TEST(BMQueryCreateQueryStringTest, EachTypedWordMustBeginAWordOfTheName) {
    auto query = [](const char* typed) {
        BCStringRef text = basalt::types::MakeString(typed);
        BCStringRef made = BMQueryCreateQueryString(kBMQueryStringMatchAllMetadata, text);
        BCRelease(text);
        std::string result = made ? basalt::types::Utf8(made) : "<null>";
        if (made)
            BCRelease(made);
        return result;
    };
    EXPECT_EQ(query("  "), "<null>");
    EXPECT_EQ(query("annual rep"),
              "(kBMItemDisplayName == \"annual*\"cdw) && (kBMItemDisplayName == \"rep*\"cdw)");
    EXPECT_EQ(query("\"annual rep\""), "(kBMItemDisplayName == \"annual rep*\"cdw)");
    EXPECT_EQ(query("a*b\"c\\"),
              "(kBMItemDisplayName == \"a\\*b*\"cdw) && (kBMItemDisplayName == \"c\\\\*\"cdw)");
    // What it makes always parses and the user's characters match themselves.
    Item starry("a*b notes", "text/plain");
    EXPECT_TRUE(Matches(query("a*b"), starry));
    EXPECT_FALSE(Matches(query("a*b"), Item("axxb", "text/plain")));
}

} // namespace
