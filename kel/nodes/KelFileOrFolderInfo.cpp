// The record a client's filter callback receives. Only bytes 0 to 61 are filled: the common
// head, then the file form or the folder form. An alias that leads to a folder is reported with
// isFolder set but in the file form, the form clients read for it.

#include "kel/nodes/TNodeFilter.h"

namespace {

constexpr uint16_t kAttrLocked = 0x01;
constexpr uint16_t kAttrResourceOpen = 0x04;
constexpr uint16_t kAttrShareable = 0x04;
constexpr uint16_t kAttrDataOpen = 0x08;
constexpr uint16_t kAttrMounted = 0x08;
constexpr uint16_t kAttrSharePoint = 0x20;
constexpr unsigned kFolderishSpecies =
    kNodeSpeciesFolder | kNodeSpeciesPackage | kNodeSpeciesVolume | kNodeSpeciesRoot;

template <class Value>
Value Read(const TKelNode& node, const char (&code)[5]) {
    Value value = 0;
    if constexpr (sizeof(Value) == 2) {
        GetNodePropertyAsInt16(node.PeekNodeRef(), NodeCode(code), &value, 0);
    } else {
        GetNodePropertyAsInt64(node.PeekNodeRef(), NodeCode(code), &value, 0);
    }
    return value;
}

uint32_t ReadDate(const TKelNode& node, const char (&code)[5]) {
    uint32_t date = 0;
    GetNodePropertyAsDateTime(node.PeekNodeRef(), NodeCode(code), &date, 0);
    return date;
}

void FillFolder(const TKelNode& node, uint16_t attributes, uint32_t creator, uint32_t type,
                KelFolderInfo& folder) {
    uint32_t permissions = kNodePermissionRead | kNodePermissionWrite;
    NodeGetPermissions(node.PeekNodeRef(), &permissions);
    folder.shareable = (attributes & kAttrShareable) != 0;
    folder.sharePoint = (attributes & kAttrSharePoint) != 0;
    folder.mounted = (attributes & kAttrMounted) != 0;
    folder.readable = (permissions & kNodePermissionRead) != 0;
    folder.writeable = (permissions & kNodePermissionWrite) != 0;
    folder.flags = uint16_t(Read<int16_t>(node, "fflg"));
    const bool package = NodeIsPackage(node.PeekNodeRef());
    folder.folderType = package ? type : NodeCode("????");
    folder.folderCreator = package ? creator : NodeCode("????");
}

void FillFile(const TKelNode& node, uint16_t attributes, uint32_t creator, uint32_t type,
              KelFileInfo& file) {
    file.locked = (attributes & kAttrLocked) != 0;
    file.resourceOpen = (attributes & kAttrResourceOpen) != 0;
    file.dataOpen = (attributes & kAttrDataOpen) != 0;
    file.dataSize = uint32_t(Read<int64_t>(node, "dats"));
    file.resourceSize = uint32_t(Read<int64_t>(node, "ress"));
    file.type = type;
    file.creator = creator;
    file.flags = uint16_t(Read<int16_t>(node, "fflg"));
}

} // namespace

void FillFileOrFolderInfo(const TKelNode& node, NodeSpecies species, uint32_t creator,
                          uint32_t type, KelFileOrFolderInfo& info) {
    info.version = 1;
    info.visible = node.IsVisible();
    info.creationDate = ReadDate(node, "ascd");
    info.modificationDate = ReadDate(node, "modd");
    const auto attributes = uint16_t(Read<int16_t>(node, "attr"));
    if (node.IsContainer()) {
        info.isFolder = 1;
        FillFolder(node, attributes, creator, type, info.fileAndFolder.folder);
        return;
    }
    info.isFolder = NodeIsAlias(node.PeekNodeRef()) && (species & kFolderishSpecies) != 0;
    FillFile(node, attributes, creator, type, info.fileAndFolder.file);
}
