#pragma once

// The shared-mime-info database: globs2, subclasses, aliases and generic-icons from each
// mime folder of the XDG data dirs (the user's own first), read once on first use; comments
// are read from the per-type XML files when first asked for. Type identifiers on this system
// are MIME type names. Thread-safe after construction; comment lookups take a lock.

#include "basalt/types/MimeGlobs.h"

#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace basalt::types {

class MimeDatabase {
public:
    static MimeDatabase& Shared();
    // A database over the given mime folders, for tests.
    explicit MimeDatabase(std::vector<std::string> mimeDirs);

    // The type a file name suggests, by glob only; application/octet-stream if none matches.
    std::string TypeForName(std::string_view name) const;
    std::string Canonical(std::string_view type) const;
    std::vector<std::string> Parents(std::string_view type) const;
    // True if type is parent or descends from it, following subclasses and aliases, with the
    // implicit parents text/plain (for text/*) and application/octet-stream (for all data).
    bool ConformsTo(std::string_view type, std::string_view parent) const;
    std::string GenericIcon(std::string_view type) const;
    // The English comment of the type, e.g. "plain text document"; empty if none.
    std::string Comment(std::string_view type) const;
    // The first glob extension of the type ("txt" for text/plain), empty if none.
    std::string PreferredExtension(std::string_view type) const;

private:
    void Load(const std::string& dir);
    void LoadPairs(const std::string& path, char separator,
                   std::unordered_map<std::string, std::vector<std::string>>& into);

    std::vector<std::string> dirs_;
    MimeGlobs globs_;
    std::unordered_map<std::string, std::vector<std::string>> parents_;
    std::unordered_map<std::string, std::vector<std::string>> aliases_;
    std::unordered_map<std::string, std::vector<std::string>> icons_;
    mutable std::mutex commentMutex_;
    mutable std::unordered_map<std::string, std::string> comments_;
};

} // namespace basalt::types
