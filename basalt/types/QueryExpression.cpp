#include "basalt/types/QueryExpression.h"

#include "basalt/types/BMQuery.h"
#include "basalt/types/MimeDatabase.h"

#include <unicode/utf8.h>

namespace basalt::types {
namespace {

// Deeper nesting than this is no search a person made; refusing it keeps the parser's
// recursion bounded whatever the text.
constexpr int kMaxDepth = 100;

using Node = QueryExpression::Node;

struct Token {
    enum Kind { End, Open, Close, And, Or, Not, Equal, NotEqual, Quoted, Word, Bad } kind = End;
    std::u32string text;
    std::vector<bool> escaped;
    PatternModifiers modifiers;
};

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

bool EndsWord(char c) {
    return IsSpace(c) || c == '(' || c == ')' || c == '&' || c == '|' || c == '!' || c == '=' ||
           c == '"';
}

std::u32string Decode(std::string_view utf8) {
    std::u32string out;
    const auto* bytes = reinterpret_cast<const uint8_t*>(utf8.data());
    int32_t length = static_cast<int32_t>(utf8.size());
    for (int32_t at = 0; at < length;) {
        UChar32 c;
        U8_NEXT(bytes, at, length, c);
        out.push_back(c < 0 ? U'\uFFFD' : static_cast<char32_t>(c));
    }
    return out;
}

std::string Encode(const std::u32string& text) {
    std::string out;
    for (char32_t c : text) {
        uint8_t buffer[4];
        int32_t length = 0;
        U8_APPEND_UNSAFE(buffer, length, static_cast<UChar32>(c));
        out.append(reinterpret_cast<char*>(buffer), static_cast<size_t>(length));
    }
    return out;
}

class Lexer {
public:
    explicit Lexer(std::string_view text) : text_(text) {}

    Token Next() {
        while (at_ < text_.size() && IsSpace(text_[at_]))
            ++at_;
        Token token;
        if (at_ >= text_.size())
            return token;
        char c = text_[at_];
        auto two = [&](char second) { return at_ + 1 < text_.size() && text_[at_ + 1] == second; };
        if (c == '(' || c == ')') {
            ++at_;
            token.kind = c == '(' ? Token::Open : Token::Close;
        } else if ((c == '&' && two('&')) || (c == '|' && two('|')) || (c == '=' && two('='))) {
            at_ += 2;
            token.kind = c == '&' ? Token::And : c == '|' ? Token::Or : Token::Equal;
        } else if (c == '!') {
            token.kind = two('=') ? Token::NotEqual : Token::Not;
            at_ += token.kind == Token::NotEqual ? 2 : 1;
        } else if (c == '"') {
            return Quoted();
        } else if (EndsWord(c)) {
            token.kind = Token::Bad;
        } else {
            size_t start = at_;
            while (at_ < text_.size() && !EndsWord(text_[at_]))
                ++at_;
            token.kind = Token::Word;
            token.text = Decode(text_.substr(start, at_ - start));
        }
        return token;
    }

private:
    Token Quoted() {
        Token token;
        std::string bytes;
        std::vector<size_t> escapedBytes;
        for (++at_; at_ < text_.size() && text_[at_] != '"'; ++at_) {
            if (text_[at_] == '\\' && at_ + 1 < text_.size()) {
                ++at_;
                escapedBytes.push_back(bytes.size());
            }
            bytes.push_back(text_[at_]);
        }
        if (at_ >= text_.size()) {
            token.kind = Token::Bad; // no closing quote
            return token;
        }
        ++at_;
        for (; at_ < text_.size() && !EndsWord(text_[at_]); ++at_) {
            switch (text_[at_]) {
            case 'c':
                token.modifiers.ignoreCase = true;
                break;
            case 'd':
                token.modifiers.ignoreDiacritics = true;
                break;
            case 'w':
                token.modifiers.words = true;
                break;
            default:
                token.kind = Token::Bad;
                return token;
            }
        }
        token.kind = Token::Quoted;
        // An escape always precedes an ASCII wildcard or quote, so byte positions of escaped
        // characters map to code point positions by counting the code points before them.
        token.text = Decode(bytes);
        token.escaped.assign(token.text.size(), false);
        for (size_t byte : escapedBytes)
            token.escaped[Decode(std::string_view(bytes).substr(0, byte)).size()] = true;
        return token;
    }

    std::string_view text_;
    size_t at_ = 0;
};

QueryAttribute AttributeNamed(const std::u32string& name) {
    if (name == U"kBMItemDisplayName")
        return QueryAttribute::DisplayName;
    if (name == U"kBMItemFSName")
        return QueryAttribute::FSName;
    if (name == U"kBMItemContentType")
        return QueryAttribute::ContentType;
    if (name == U"kBMItemContentTypeTree")
        return QueryAttribute::ContentTypeTree;
    return QueryAttribute::Unknown;
}

class Parser {
public:
    explicit Parser(std::string_view text) : lexer_(text) { Advance(); }

    StatusCode Parse(std::unique_ptr<Node>& out) {
        out = Disjunction(0);
        if (status_ == noErr && token_.kind != Token::End)
            status_ = kBMQuerySyntaxErr;
        return status_;
    }

private:
    void Advance() { token_ = lexer_.Next(); }

    std::unique_ptr<Node> Fail(StatusCode status) {
        if (status_ == noErr)
            status_ = status;
        return nullptr;
    }

    template <typename Form, typename Operand>
    std::unique_ptr<Node> Chain(Token::Kind joiner, int depth, Operand operand) {
        std::unique_ptr<Node> first = operand(depth);
        if (first == nullptr || token_.kind != joiner)
            return first;
        Form form;
        form.operands.push_back(std::move(first));
        while (token_.kind == joiner) {
            Advance();
            std::unique_ptr<Node> next = operand(depth);
            if (next == nullptr)
                return nullptr;
            form.operands.push_back(std::move(next));
        }
        return std::make_unique<Node>(Node{std::move(form)});
    }

    std::unique_ptr<Node> Disjunction(int depth) {
        if (depth > kMaxDepth)
            return Fail(kBMQueryTooDeepErr);
        return Chain<Node::Any>(Token::Or, depth, [this](int d) { return Conjunction(d); });
    }

    std::unique_ptr<Node> Conjunction(int depth) {
        return Chain<Node::All>(Token::And, depth, [this](int d) { return Unary(d); });
    }

    std::unique_ptr<Node> Unary(int depth) {
        if (depth > kMaxDepth)
            return Fail(kBMQueryTooDeepErr);
        if (token_.kind == Token::Not) {
            Advance();
            std::unique_ptr<Node> operand = Unary(depth + 1);
            if (operand == nullptr)
                return nullptr;
            return std::make_unique<Node>(Node{Node::Not{std::move(operand)}});
        }
        if (token_.kind == Token::Open) {
            Advance();
            std::unique_ptr<Node> inner = Disjunction(depth + 1);
            if (inner == nullptr)
                return nullptr;
            if (token_.kind != Token::Close)
                return Fail(kBMQuerySyntaxErr);
            Advance();
            return inner;
        }
        if (token_.kind != Token::Word)
            return Fail(kBMQuerySyntaxErr);
        if (token_.text == U"true" || token_.text == U"false") {
            bool value = token_.text == U"true";
            Advance();
            return std::make_unique<Node>(Node{Node::Constant{value}});
        }
        return Comparison();
    }

    std::unique_ptr<Node> Comparison() {
        QueryAttribute attribute = AttributeNamed(token_.text);
        Advance();
        if (token_.kind != Token::Equal && token_.kind != Token::NotEqual)
            return Fail(kBMQuerySyntaxErr);
        bool equal = token_.kind == Token::Equal;
        Advance();
        if (token_.kind != Token::Quoted && token_.kind != Token::Word)
            return Fail(kBMQuerySyntaxErr);
        Node::Compare compare{attribute, equal,
                              QueryPattern(token_.text, token_.escaped, token_.modifiers),
                              TypeForQueryIdentifier(Encode(token_.text))};
        Advance();
        return std::make_unique<Node>(Node{std::move(compare)});
    }

    Lexer lexer_;
    Token token_;
    StatusCode status_ = noErr;
};

bool ContentTypeMatches(const Node::Compare& compare, const QueryItem& item) {
    const MimeDatabase& types = MimeDatabase::Shared();
    std::string type = item.ContentType();
    if (compare.attribute == QueryAttribute::ContentTypeTree)
        return types.ConformsTo(type, compare.type);
    if (compare.value.HasWildcards())
        return compare.value.Matches(type);
    return types.Canonical(type) == types.Canonical(compare.type);
}

bool Evaluate(const Node& node, const QueryItem& item);

bool EvaluateCompare(const Node::Compare& compare, const QueryItem& item) {
    bool match = false;
    switch (compare.attribute) {
    case QueryAttribute::DisplayName:
    case QueryAttribute::FSName:
        match = compare.value.Matches(item.Name());
        break;
    case QueryAttribute::ContentType:
    case QueryAttribute::ContentTypeTree:
        match = ContentTypeMatches(compare, item);
        break;
    case QueryAttribute::Unknown:
        break; // an attribute items don't have: no value equals it
    }
    return match == compare.equal;
}

bool Evaluate(const Node& node, const QueryItem& item) {
    struct Visitor {
        const QueryItem& item;
        bool operator()(const Node::Constant& c) const { return c.value; }
        bool operator()(const Node::Not& n) const { return !Evaluate(*n.operand, item); }
        bool operator()(const Node::All& all) const {
            for (const auto& operand : all.operands) {
                if (!Evaluate(*operand, item))
                    return false;
            }
            return true;
        }
        bool operator()(const Node::Any& any) const {
            for (const auto& operand : any.operands) {
                if (Evaluate(*operand, item))
                    return true;
            }
            return false;
        }
        bool operator()(const Node::Compare& c) const { return EvaluateCompare(c, item); }
    };
    return std::visit(Visitor{item}, node.form);
}

} // namespace

StatusCode QueryExpression::Parse(std::string_view text, std::unique_ptr<QueryExpression>& out) {
    std::unique_ptr<Node> root;
    if (StatusCode status = Parser(text).Parse(root))
        return status;
    out.reset(new QueryExpression);
    out->root_ = std::move(root);
    return noErr;
}

bool QueryExpression::Matches(const QueryItem& item) const {
    return Evaluate(*root_, item);
}

bool QueryExpression::IsFalse() const {
    const auto* constant = std::get_if<Node::Constant>(&root_->form);
    return constant != nullptr && !constant->value;
}

std::string TypeForQueryIdentifier(std::string_view identifier) {
    static const std::pair<std::string_view, std::string_view> kKnown[] = {
        {"public.folder", "inode/directory"},
        {"public.directory", "inode/directory"},
        {"public.vcard", "text/vcard"},
        {"public.plain-text", "text/plain"},
        {"public.data", "application/octet-stream"},
    };
    for (const auto& [name, type] : kKnown) {
        if (identifier == name)
            return std::string(type);
    }
    return std::string(identifier);
}

} // namespace basalt::types
