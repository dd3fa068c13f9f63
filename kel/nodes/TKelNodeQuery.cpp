// Searches: TKelNode::PerformQuery and PerformSavedQuery start or renew the query node that
// this value holds, and give its hits container.

#include "kel/nodes/TKelNodeQuery.h"

#include "basalt/files/BFRef.h"
#include "basalt/nodes/NodeQueries.h"
#include "basalt/types/BMQuery.h"
#include "kel/foundation/TObjectRef.h"
#include "kel/nodes/NodeQuerySort.h"
#include "kel/nodes/TKelNode.h"

#include <cstdio>
#include <vector>

namespace {

// Kinds of item a search leaves out unless the client asks for them by name, in this order.
constexpr const char* kExcludedTypes[] = {
    "com.velmo.mail.msgx",
    "public.vcard",
    "com.velmo.contacts.person",
    "com.velmo.parley.parley",
};

// The batches of a search: first, progress and update, each as at most hits and milliseconds.
constexpr uint32_t kFirstCount = 25, kFirstMs = 100;
constexpr uint32_t kProgressCount = 1000000, kProgressMs = 500;
constexpr uint32_t kUpdateCount = 25, kUpdateMs = 500;

void Append(BCMutableStringRef string, const char* text) {
    BCStringAppendCString(string, text, kBCStringEncodingUTF8);
}

bool ContainsIdentifier(BCArrayRef identifiers, const char* identifier) {
    TObjectRef wanted(BCStringCreateWithCString(nullptr, identifier, kBCStringEncodingUTF8), false);
    for (BCIndex i = 0; i < BCArrayGetCount(identifiers); ++i) {
        auto value = static_cast<BCStringRef>(BCArrayGetValueAtIndex(identifiers, i));
        if (value != nullptr && BCGetTypeID(value) == BCStringGetTypeID() &&
            BCStringCompare(value, static_cast<BCStringRef>(wanted.Get()), 0) == kBCCompareEqualTo)
            return true;
    }
    return false;
}

void AppendTypeRestriction(BCMutableStringRef query, BCArrayRef identifiers) {
    Append(query, " && (");
    for (BCIndex i = 0; i < BCArrayGetCount(identifiers); ++i) {
        auto identifier = static_cast<BCStringRef>(BCArrayGetValueAtIndex(identifiers, i));
        if (identifier == nullptr || BCGetTypeID(identifier) != BCStringGetTypeID())
            continue;
        Append(query, "kBMItemContentTypeTree == ");
        BCStringAppend(query, identifier);
        Append(query, " || kBMItemContentType == ");
        BCStringAppend(query, identifier);
        Append(query, " || ");
    }
    Append(query, " kBMItemContentTypeTree == public.folder)");
}

BCComparisonResult (*SortFor(unsigned long property, bool ascending))(const BCTypeRef*,
                                                                      const BCTypeRef*, void*) {
    if (property == NodeCode("modd"))
        return ascending ? SortByDate : SortByDateReverse;
    if (property == NodeCode("dnam"))
        return ascending ? SortByName : SortByNameReverse;
    return nullptr;
}

// The one path of the scope node, or null for everywhere.
BCArrayRef CreateScope(const TKelNode& scope) {
    BFRef ref;
    if (scope.IsEmpty() || scope.GetAsBFRef(ref) != noErr)
        return nullptr;
    TObjectRef url(BCURLCreateFromBFRef(nullptr, &ref), false);
    if (url.IsNil())
        return nullptr;
    TObjectRef path(BCURLCopyFileSystemPath(static_cast<BCURLRef>(url.Get()), kBCURLPOSIXPathStyle),
                    false);
    if (path.IsNil())
        return nullptr;
    const void* values[] = {path.Get()};
    return BCArrayCreate(nullptr, values, 1, &kBCTypeArrayCallBacks);
}

struct QueryRequest {
    std::vector<UniChar> name;
    BCStringRef query;
    NodeQuerySortProc sort;
    BCArrayRef scope;
};

// Creates the query node in an empty holder or renews the one it holds; the hits container.
TKelNode RunQuery(TKelNode& holder, const QueryRequest& request) {
    TObjectRef attributes;
    {
        const void* names[] = {kBMItemDisplayName, kBMItemFSContentChangeDate};
        attributes = TObjectRef(BCArrayCreate(nullptr, names, 2, &kBCTypeArrayCallBacks), false);
    }
    auto array = static_cast<BCArrayRef>(attributes.Get());
    auto length = static_cast<BCIndex>(request.name.size());
    if (holder.IsEmpty()) {
        OpaqueNodeRef* made = nullptr;
        if (NodeCreateNewVirtualQueryNode(length, request.name.data(), request.query, array,
                                          request.sort, kFirstCount, kFirstMs, kProgressCount,
                                          kProgressMs, kUpdateCount, kUpdateMs, request.scope, 0,
                                          &made) == noErr)
            holder = TKelNode(made, false);
    } else if (NodeIsQuery(holder.PeekNodeRef())) {
        NodeSetVirtualQuery(holder.PeekNodeRef(), length, request.name.data(), request.query, array,
                            request.sort, kFirstCount, kFirstMs, kProgressCount, kProgressMs,
                            kUpdateCount, kUpdateMs, request.scope, 0);
    } else {
        std::printf("Queries can only be performed on Empty nodes or existing query nodes\n");
        std::fflush(stdout);
    }
    TKelNode hits;
    if (NodeIsQuery(holder.PeekNodeRef()))
        holder.FollowAlias(false, hits);
    hits.savedQueryRef = nullptr;
    return hits;
}

std::vector<UniChar> Characters(BCStringRef text) {
    if (text == nullptr)
        return {};
    std::vector<UniChar> chars(static_cast<size_t>(BCStringGetLength(text)));
    BCStringGetCharacters(text, BCRangeMake(0, BCStringGetLength(text)), chars.data());
    return chars;
}

} // namespace

BCStringRef CreateSearchQueryString(BCStringRef text, BCArrayRef typeIdentifiers) {
    TObjectRef expression(BMQueryCreateQueryString(kBMQueryStringMatchAllMetadata, text), false);
    auto expressionText = static_cast<BCStringRef>(expression.Get());
    if (expressionText == nullptr || BCStringGetLength(expressionText) == 0)
        return BCStringCreateWithCString(nullptr, "false", kBCStringEncodingUTF8);
    BCMutableStringRef query = BCStringCreateMutable(nullptr, 0);
    Append(query, "(");
    BCStringAppend(query, expressionText);
    Append(query, ")");
    if (typeIdentifiers != nullptr)
        AppendTypeRestriction(query, typeIdentifiers);
    for (const char* type : kExcludedTypes) {
        if (typeIdentifiers != nullptr && ContainsIdentifier(typeIdentifiers, type))
            continue;
        Append(query, " && (kBMItemContentType != ");
        Append(query, type);
        Append(query, ")");
    }
    return query;
}

TKelNode TKelNode::PerformQuery(BCStringRef text, unsigned long sortProperty, bool ascending,
                                TKelNode scope, BCArrayRef typeIdentifiers) {
    TObjectRef query(CreateSearchQueryString(text, typeIdentifiers), false);
    TObjectRef scopeArray(CreateScope(scope), false);
    QueryRequest request{Characters(text), static_cast<BCStringRef>(query.Get()),
                         SortFor(sortProperty, ascending),
                         static_cast<BCArrayRef>(scopeArray.Get())};
    return RunQuery(*this, request);
}

TKelNode TKelNode::PerformSavedQuery(TKelNode savedQuery, unsigned long sortProperty,
                                     bool ascending) {
    BCDictionaryRef saved = nullptr;
    NodeCopyQueryDictionaries(savedQuery.PeekNodeRef(), &saved, 0);
    TObjectRef dictionary(saved, false);
    auto query = saved != nullptr
                     ? static_cast<BCStringRef>(BCDictionaryGetValue(saved, kNodeQueryStringKey))
                     : nullptr;
    auto scope = saved != nullptr
                     ? static_cast<BCArrayRef>(BCDictionaryGetValue(saved, kNodeQueryScopeArrayKey))
                     : nullptr;
    // A saved search that cannot be read finds nothing, as an unusable typed text does.
    TObjectRef nothing(BCStringCreateWithCString(nullptr, "false", kBCStringEncodingUTF8), false);
    TObjectRef name(
        BCStringCreateWithCString(nullptr, "PerformedSavedQuery", kBCStringEncodingUTF8), false);
    QueryRequest request{Characters(static_cast<BCStringRef>(name.Get())),
                         query != nullptr ? query : static_cast<BCStringRef>(nothing.Get()),
                         SortFor(sortProperty, ascending), scope};
    TKelNode hits = RunQuery(*this, request);
    hits.savedQueryRef = savedQuery.PeekNodeRef();
    return hits;
}
