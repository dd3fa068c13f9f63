/*
 * Special folders. "desk", "docs", "down" come from the XDG user dirs
 * ($XDG_CONFIG_HOME/user-dirs.dirs), "cusr" is the home folder, "apps" the system's
 * applications folder, "favs" the user's favourites folder of this system.
 */
#ifndef BASALT_FILES_BFFINDFOLDER_H
#define BASALT_FILES_BFFINDFOLDER_H

#include "basalt/files/BFRef.h"

#ifdef __cplusplus
extern "C" {
#endif

enum { kBFUserDomain = -32763, kBFOnSystemDisk = -32768 };

/* fnfErr when the folder does not exist and create is false or making it failed. */
BASALT_EXPORT StatusCode BFFindFolder(int16_t domain, OSType folderType, Boolean create,
                                      BFRef* folder);

#ifdef __cplusplus
}

#include <optional>
#include <string>
#include <string_view>

namespace basalt::files {

std::string HomePath();
std::string ConfigHome();
// The path of an XDG user dir by its key ("DESKTOP", "DOCUMENTS" ...), if the user has one.
std::optional<std::string> UserDir(const std::string& key);
// The same from the text of a user-dirs.dirs file.
std::optional<std::string> UserDirFromText(std::string_view text, std::string_view key,
                                           const std::string& home);
// The folder of a folder type, whether or not it exists.
std::optional<std::string> FolderPathForType(OSType folderType);

} // namespace basalt::files
#endif

#endif /* BASALT_FILES_BFFINDFOLDER_H */
