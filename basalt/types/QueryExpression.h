#pragma once

// A parsed query expression and its evaluation against one item. Parsing never throws: text
// that is no expression gives a status. A parsed expression is immutable, so the threads of
// a search share it.

#include "basalt/types/QueryPattern.h"

#include <basalt/BasaltCore.h>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace basalt::types {

// What an expression may ask about an item. ContentType is asked only when a test needs it,
// so a search that tests names alone never looks a type up.
class QueryItem {
public:
    virtual ~QueryItem() = default;
    // The legible name, UTF-8.
    virtual std::string_view Name() const = 0;
    // The type identifier (a MIME type name).
    virtual std::string ContentType() const = 0;
};

enum class QueryAttribute { DisplayName, FSName, ContentType, ContentTypeTree, Unknown };

class QueryExpression {
public:
    static StatusCode Parse(std::string_view text, std::unique_ptr<QueryExpression>& out);

    bool Matches(const QueryItem& item) const;
    // True when no item can match: the expression is the constant false.
    bool IsFalse() const;

    struct Node;

private:
    std::unique_ptr<Node> root_;
};

struct QueryExpression::Node {
    struct Constant {
        bool value;
    };
    struct Not {
        std::unique_ptr<Node> operand;
    };
    struct All { // &&
        std::vector<std::unique_ptr<Node>> operands;
    };
    struct Any { // ||
        std::vector<std::unique_ptr<Node>> operands;
    };
    struct Compare {
        QueryAttribute attribute;
        bool equal; // == rather than !=
        QueryPattern value;
        std::string type; // for the type tests: the value as a MIME type
    };
    std::variant<Constant, Not, All, Any, Compare> form;
};

// The type identifiers of other systems that searches are written with, as this system's
// MIME types ("public.folder" is "inode/directory"); any other text is returned unchanged.
std::string TypeForQueryIdentifier(std::string_view identifier);

} // namespace basalt::types
