// The calls on a reply record. They never forward: whoever filled the reply, this library frees
// it.

#include "basalt/nodes/NodeService.h"
#include "basalt/types/BLRegistry.h"
#include "kel/interface/KelRecordConversion.h"

#include <algorithm>
#include <basalt/files/BEDesc.h>
#include <basalt/files/BFCatalogInfo.h>
#include <basalt/files/BFRef.h>
#include <climits>
#include <kel/KelServices.h>
#include <vector>

namespace {

constexpr BCIndex kMaxNameCharacters = 255;
constexpr size_t kRecentPathSize = 1024;
constexpr int32_t kRecentDocument = 2;
constexpr uint32_t kFolderChanged = 1;

} // namespace

StatusCode KelDisposeReply(KelReplyRecord* reply) {
    if (reply == nullptr) {
        return paramErr;
    }
    // The selection sits at an unaligned offset in the record, so it is worked on in a copy.
    BEDesc selection = reply->selection;
    BEDisposeDesc(&selection);
    reply->selection = BEDesc{typeNull, nullptr};
    if (reply->fileTranslation != nullptr) {
        HUnlock(reply->fileTranslation);
        DisposeHandle(reply->fileTranslation);
        reply->fileTranslation = nullptr;
    }
    // Records of version 0 predate the save name and may hold anything there.
    if (reply->version != 0 && reply->saveFileName != nullptr) {
        BCRelease(reply->saveFileName);
        reply->saveFileName = nullptr;
    }
    reply->validRecord = 0;
    return noErr;
}

StatusCode AddFileToRecents(const BFRef& file) {
    uint8_t path[kRecentPathSize];
    if (const StatusCode status = BFRefMakePath(&file, path, sizeof path); status != noErr) {
        return status;
    }
    return _BLAddRecentItem(reinterpret_cast<const char*>(path), kRecentDocument);
}

// The client has written the file the reply names: the file gets its extension state, its
// folder is looked at again and the file goes on the recent list.
StatusCode KelCompleteSave(KelReplyRecord* reply, uint32_t) {
    if (reply == nullptr) {
        return paramErr;
    }
    BEDesc selection = reply->selection;
    BFRef parent{};
    DescType type = 0;
    Size size = 0;
    StatusCode status =
        BEGetNthPtr(&selection, 1, typeBFRef, nullptr, &type, &parent, sizeof parent, &size);
    BFRef file{};
    if (status == noErr && reply->saveFileName != nullptr) {
        const BCStringRef name = reply->saveFileName;
        const BCIndex length = std::min<BCIndex>(BCStringGetLength(name), kMaxNameCharacters);
        std::vector<UniChar> characters(static_cast<size_t>(length));
        BCStringGetCharacters(name, BCRangeMake(0, length), characters.data());
        status = BFMakeBFRefUnicode(&parent, length, characters.data(), kTextEncodingUnicodeDefault,
                                    &file);
    } else if (status == noErr) {
        file = parent;
        status = BFGetCatalogInfo(&file, 0, nullptr, nullptr, nullptr, &parent);
    }
    if (status == noErr) {
        status = BLSetExtensionHiddenForRef(&file, reply->saveFileExtensionHidden != 0);
    }
    if (status == noErr) {
        status = FNNotify(&parent, kFolderChanged, 0);
    }
    if (status == noErr) {
        status = AddFileToRecents(file);
    }
    return status;
}

StatusCode KelTranslateFile(const void*, const void*, int32_t, const void*, void*, uint32_t) {
    return kBCUnimpErr;
}
