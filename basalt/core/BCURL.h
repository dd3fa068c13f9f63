#pragma once

// A URL is its absolute string. File URLs keep the path percent-escaped byte by byte, so a path
// that is not valid UTF-8 still round-trips exactly.

#include "basalt/core/BCObject.h"

#include <atomic>
#include <optional>
#include <string>

namespace basalt {

class URL final : public BCObject {
public:
    static constexpr TypeID kType = TypeID::URL;

    explicit URL(std::string text);
    ~URL() override;

    const std::string& Text() const { return text_; }
    const std::string& Scheme() const { return scheme_; }
    // The escaped path, and the text before and after it.
    const std::string& Path() const { return path_; }
    std::string WithPath(const std::string& escapedPath) const;
    // The URL's text as a core string, made on first use and owned by the URL.
    BCStringRef AsString() const;

    bool Equals(const BCObject& other) const override {
        return text_ == static_cast<const URL&>(other).text_;
    }
    BCHashCode Hash() const override { return std::hash<std::string>{}(text_); }
    std::string Describe() const override { return text_; }

private:
    std::string text_;
    std::string scheme_;
    std::string prefix_; // scheme and authority
    std::string path_;
    std::string suffix_; // query and fragment
    mutable std::atomic<BCStringRef> string_{nullptr};
};

// A new URL from absolute text, owned by the caller.
BCURLRef MakeURL(std::string text);
// The file URL of a byte path, made absolute against the working directory.
BCURLRef MakeFileURL(std::string path, bool isDirectory);
// Whether text begins with "scheme:".
bool HasScheme(const std::string& text);
// A relative reference resolved against a base URL's folder.
std::string ResolveReference(const std::string& relative, const URL& base);
// The path with its "." and ".." steps removed.
std::string RemoveDotSegments(const std::string& path);

// Percent-escapes every byte outside the unreserved set and '/'.
std::string EscapePath(const std::string& bytes);
// Undoes percent escapes; nothing for a malformed escape.
std::optional<std::string> UnescapePath(const std::string& escaped);

} // namespace basalt
