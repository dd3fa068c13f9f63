/*
 * The application registry: which application claims a type (from the .desktop files and
 * mimeinfo.cache of the XDG application folders), kind strings, hidden extensions, and the
 * recent items list (the freedesktop recently-used.xbel in $XDG_DATA_HOME).
 */
#ifndef BASALT_TYPES_BLREGISTRY_H
#define BASALT_TYPES_BLREGISTRY_H

#include "basalt/files/BFRef.h"

#include <basalt/BasaltCore.h>

#ifdef __cplusplus
extern "C" {
#endif

enum { kBLApplicationNotFoundErr = -10814, kBLRoleAll = 0xFFFFFFFFu };

/* A kind description for a type and creator (or an extension); -10814 if there is none. */
BASALT_EXPORT StatusCode BLCopyKindStringForInfo(OSType type, OSType creator, BCStringRef extension,
                                                 BCStringRef* outKind);
/* 0 if some application claims the type or extension; outURL (may be null) gets its
   .desktop file. outApp is not filled: applications are not file references here. */
BASALT_EXPORT StatusCode BLGetApplicationForInfo(OSType type, OSType creator, BCStringRef extension,
                                                 uint32_t roleMask, BFRef* outApp,
                                                 BCURLRef* outURL);
BASALT_EXPORT StatusCode BLSetExtensionHiddenForRef(const BFRef* ref, Boolean hide);
/* Adds the file at path (bytes, NUL-terminated) to the recent items; kind 2 is a document. */
BASALT_EXPORT StatusCode _BLAddRecentItem(const char* path, int32_t kind);

#ifdef __cplusplus
}

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace basalt::types {

// The .desktop file of an application that handles the MIME type, if any.
std::optional<std::string> ApplicationForType(std::string_view type);
// The types a .desktop file claims (MimeType of its [Desktop Entry]; none if Hidden).
std::vector<std::string> DesktopFileTypes(std::string_view text);
// The first application of each type in a mimeinfo.cache, as (type, .desktop file name).
std::vector<std::pair<std::string, std::string>> MimeInfoCacheClaims(std::string_view text);
// Adds or refreshes the entry of path in the recently-used file; false on failure.
bool AddRecentItem(const std::string& path, const std::string& mimeType,
                   const std::string& application);
std::string RecentItemsPath();

} // namespace basalt::types
#endif

#endif /* BASALT_TYPES_BLREGISTRY_H */
