// The calls on a reply record. They never forward: whoever filled the reply, this library frees
// it.

#include <basalt/files/BEDesc.h>
#include <kel/KelServices.h>

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

StatusCode KelCompleteSave(KelReplyRecord* reply, uint32_t) {
    if (reply == nullptr) {
        return paramErr;
    }
    // Completing a save marks the saved file in the node service, which the library does not
    // reach yet.
    return kBCUnimpErr;
}

StatusCode KelTranslateFile(const void*, const void*, int32_t, const void*, void*, uint32_t) {
    return kBCUnimpErr;
}
