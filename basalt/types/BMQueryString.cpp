// The search field's text as a query: each word the user typed (or phrase in double quotes)
// must begin a word of the shown name, ignoring case and diacritics.

#include "basalt/types/BMQuery.h"
#include "basalt/types/BUTypes.h"
#include "basalt/types/QueryExpression.h"

#include <vector>

namespace {

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

std::vector<std::string> TypedWords(const std::string& text) {
    std::vector<std::string> words;
    for (size_t at = 0; at < text.size();) {
        if (IsSpace(text[at])) {
            ++at;
        } else if (text[at] == '"') {
            size_t close = text.find('"', at + 1);
            size_t end = close == std::string::npos ? text.size() : close;
            std::string phrase = text.substr(at + 1, end - at - 1);
            if (phrase.find_first_not_of(" \t\n\r\f\v") != std::string::npos)
                words.push_back(phrase);
            at = end + 1;
        } else {
            size_t end = at;
            while (end < text.size() && !IsSpace(text[end]) && text[end] != '"')
                ++end;
            words.push_back(text.substr(at, end - at));
            at = end;
        }
    }
    return words;
}

// What the user typed stands for itself: wildcards, quotes and backslashes are escaped.
std::string Escaped(const std::string& word) {
    std::string out;
    for (char c : word) {
        if (c == '\\' || c == '"' || c == '*' || c == '?')
            out.push_back('\\');
        out.push_back(c);
    }
    return out;
}

} // namespace

extern "C" {

BCStringRef BMQueryCreateQueryString(BMQueryStringOptions, BCStringRef text) {
    if (text == nullptr)
        return nullptr;
    std::string query;
    for (const std::string& word : TypedWords(basalt::types::Utf8(text))) {
        if (!query.empty())
            query += " && ";
        query += "(kBMItemDisplayName == \"" + Escaped(word) + "*\"cdw)";
    }
    return query.empty() ? nullptr : basalt::types::MakeString(query);
}

StatusCode BMQueryValidateQueryString(BCStringRef text) {
    if (text == nullptr)
        return paramErr;
    std::unique_ptr<basalt::types::QueryExpression> expression;
    return basalt::types::QueryExpression::Parse(basalt::types::Utf8(text), expression);
}

} // extern "C"
