// Saved searches. A saved search is a file whose name ends in ".kelsearch" (any case) holding
// one JSON object in UTF-8:
//
//     {
//       "query": "(kBMItemDisplayName == \"report*\"cdw) && (kBMItemContentType == text/plain)",
//       "scope": ["/home/ann/Documents", "/srv/shared"]
//     }
//
// "query" (required) is a query expression as BMQueryValidateQueryString accepts; "scope"
// (optional) lists absolute folder paths, and when it is absent or null the search runs on
// every local volume. Other members are ignored, so later versions can add some. A file that
// is larger than 1 MB, is no JSON object or has members of the wrong kind is refused whole.

#include "basalt/files/BFLongPath.h"
#include "basalt/nodes/NodeQueries.h"
#include "basalt/nodes/NodeTable.h"
#include "basalt/types/BUTypes.h"

#include <nlohmann/json.hpp>

namespace {

constexpr size_t kLargestFile = 1 << 20;

bool ReadSmallFile(const std::string& path, std::string& text) {
    basalt::files::UniqueFd fd = basalt::files::OpenPath(path, O_RDONLY);
    char buffer[8192];
    ssize_t got = 0;
    while (fd.Valid() && (got = ::read(fd.Get(), buffer, sizeof buffer)) > 0) {
        text.append(buffer, static_cast<size_t>(got));
        if (text.size() > kLargestFile)
            return false;
    }
    return fd.Valid() && got == 0;
}

// The scope member as an array of strings; null for everywhere. False when it is malformed.
bool ScopeArray(const nlohmann::json& document, BCArrayRef& scope) {
    scope = nullptr;
    auto member = document.find("scope");
    if (member == document.end() || member->is_null())
        return true;
    if (!member->is_array())
        return false;
    BCMutableArrayRef paths = BCArrayCreateMutable(nullptr, 0, &kBCTypeArrayCallBacks);
    for (const nlohmann::json& path : *member) {
        if (!path.is_string() || path.get_ref<const std::string&>().empty() ||
            path.get_ref<const std::string&>().front() != '/') {
            BCRelease(paths);
            return false;
        }
        BCStringRef text = basalt::types::MakeString(path.get_ref<const std::string&>());
        BCArrayAppendValue(paths, text);
        BCRelease(text);
    }
    scope = paths;
    return true;
}

} // namespace

StatusCode NodeCopyQueryDictionaries(NodeRef savedNode, BCDictionaryRef* dictionary,
                                     uint32_t flags) {
    if (savedNode == nullptr || dictionary == nullptr || flags != 0)
        return paramErr;
    if (!NodeIsSavedQuery(savedNode))
        return kNodeNotSavedQueryErr;
    std::string text;
    if (!ReadSmallFile(basalt::nodes::PathOf(savedNode), text))
        return kNodeNotSavedQueryErr;
    nlohmann::json document = nlohmann::json::parse(text, nullptr, false);
    if (document.is_discarded() || !document.is_object())
        return kNodeNotSavedQueryErr;
    auto query = document.find("query");
    BCArrayRef scope = nullptr;
    if (query == document.end() || !query->is_string() || !ScopeArray(document, scope))
        return kNodeNotSavedQueryErr;
    BCMutableDictionaryRef made = BCDictionaryCreateMutable(nullptr, 0);
    BCStringRef queryText = basalt::types::MakeString(query->get_ref<const std::string&>());
    BCDictionarySetValue(made, kNodeQueryStringKey, queryText);
    BCRelease(queryText);
    if (scope != nullptr) {
        BCDictionarySetValue(made, kNodeQueryScopeArrayKey, scope);
        BCRelease(scope);
    }
    *dictionary = made;
    return noErr;
}
