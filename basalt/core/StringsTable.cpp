#include "basalt/core/StringsTable.h"

#include "basalt/core/BCString.h"

#include <cctype>
#include <optional>

namespace basalt {
namespace {

class Reader {
public:
    explicit Reader(std::string_view text) : text_(text) {
        if (text_.starts_with("\xEF\xBB\xBF"))
            at_ = 3;
    }

    bool AtEnd() {
        SkipBlanks();
        return at_ >= text_.size();
    }

    bool Take(char c) {
        SkipBlanks();
        if (at_ < text_.size() && text_[at_] == c) {
            ++at_;
            return true;
        }
        return false;
    }

    std::optional<std::string> Quoted() {
        if (!Take('"'))
            return std::nullopt;
        std::string out;
        while (at_ < text_.size()) {
            char c = text_[at_++];
            if (c == '"')
                return out;
            if (c == '\\' && at_ < text_.size())
                c = Escaped(text_[at_++]);
            out += c;
        }
        return std::nullopt;
    }

    void SkipPast(char c) {
        while (at_ < text_.size() && text_[at_++] != c) {
        }
    }

private:
    static char Escaped(char c) {
        switch (c) {
        case 'n':
            return '\n';
        case 't':
            return '\t';
        case 'r':
            return '\r';
        default:
            return c; // \" and \\ stand for themselves
        }
    }

    void SkipBlanks() {
        while (at_ < text_.size()) {
            if (std::isspace(static_cast<unsigned char>(text_[at_]))) {
                ++at_;
            } else if (text_.substr(at_, 2) == "//") {
                SkipPast('\n');
            } else if (text_.substr(at_, 2) == "/*") {
                size_t end = text_.find("*/", at_ + 2);
                at_ = end == std::string_view::npos ? text_.size() : end + 2;
            } else {
                return;
            }
        }
    }

    std::string_view text_;
    size_t at_ = 0;
};

} // namespace

StringsTable ParseStringsTable(std::string_view text) {
    StringsTable table;
    Reader reader(text);
    while (!reader.AtEnd()) {
        auto key = reader.Quoted();
        std::optional<std::string> value;
        if (key && reader.Take('='))
            value = reader.Quoted();
        if (value && reader.Take(';')) {
            table[FromUTF8(*key)] = FromUTF8(*value);
            continue;
        }
        reader.SkipPast(';');
    }
    return table;
}

} // namespace basalt
