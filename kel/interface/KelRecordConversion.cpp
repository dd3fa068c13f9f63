#include "kel/interface/KelRecordConversion.h"

#include "kel/interface/KelRouting.h"

#include <basalt/files/BEDesc.h>
#include <basalt/files/BFCatalogInfo.h>
#include <initializer_list>

namespace {

BCStringRef StringFromPascal(const unsigned char* text) {
    if (text[0] == 0) {
        return nullptr;
    }
    return BCStringCreateWithPascalString(kBCAllocatorDefault, text, GetApplicationTextEncoding());
}

// The name as a length-prefixed UTF-8 string of at most 63 bytes, cut between characters.
void SetSpecName(BFSpec& spec, BCStringRef name) {
    BCIndex used = 0;
    BCStringGetBytes(name, BCRangeMake(0, BCStringGetLength(name)), kBCStringEncodingUTF8, 0, false,
                     spec.name + 1, sizeof spec.name - 1, &used);
    spec.name[0] = static_cast<unsigned char>(used);
}

// The item as a file spec: a folder's spec names something inside it.
StatusCode ConvertReplyItem(KelReplyRecord* reply, BEDescList& selection, long index) {
    BFRef ref;
    DescType type = 0;
    Size size = 0;
    StatusCode status =
        BEGetNthPtr(&selection, index, typeBFRef, nullptr, &type, &ref, sizeof ref, &size);
    BFCatalogInfo info{};
    if (status == noErr) {
        status = BFGetCatalogInfo(&ref, kBFCatInfoNodeFlags, &info, nullptr, nullptr, nullptr);
    }
    if (status != noErr || (info.nodeFlags & kBFNodeIsDirectoryMask) == 0) {
        return status;
    }
    BFSpec spec{};
    status = MakeChildSpec(ref, reply->saveFileName, spec);
    if (status != noErr) {
        return status;
    }
    if (reply->saveFileName != nullptr) {
        BCRelease(reply->saveFileName);
        reply->saveFileName = nullptr;
    }
    return BEPutPtr(&selection, index, typeFileSpec, &spec, sizeof spec);
}

} // namespace

StatusCode MakeChildSpec(const BFRef& folder, BCStringRef name, BFSpec& spec) {
    BFCatalogInfo info{};
    const StatusCode status =
        BFGetCatalogInfo(&folder, kBFCatInfoNodeID, &info, nullptr, &spec, nullptr);
    if (status != noErr) {
        return status;
    }
    spec.parID = static_cast<int32_t>(info.nodeID);
    spec.name[0] = 0;
    if (name != nullptr) {
        SetSpecName(spec, name);
    }
    return noErr;
}

StatusCode ConvertDialogOptions(const KelDialogOptions* from, KelDialogCreationOptions* to) {
    const StatusCode status =
        TKKel<&KelGetDefaultDialogCreationOptions>(TKKelEntry::GetDefaultDialogCreationOptions)(to);
    if (from == nullptr) {
        return status;
    }
    to->optionFlags = from->optionFlags | kKelOptConverted;
    to->location = from->location;
    to->clientName = StringFromPascal(from->clientName);
    to->windowTitle = StringFromPascal(from->windowTitle);
    to->actionButtonLabel = StringFromPascal(from->actionButtonLabel);
    to->cancelButtonLabel = StringFromPascal(from->cancelButtonLabel);
    to->saveFileName = StringFromPascal(from->savedFileName);
    to->message = StringFromPascal(from->message);
    to->preferenceKey = from->preferenceKey;
    if (from->popupExtension != nullptr) {
        // A handle where an array belongs: the flag tells the two apart.
        to->popupExtension = reinterpret_cast<BCArrayRef>(from->popupExtension);
        to->optionFlags |= kKelOptPopupIsHandle;
    }
    return status;
}

void ReleaseConvertedDialogOptions(KelDialogCreationOptions* options) {
    for (BCStringRef string :
         {options->clientName, options->windowTitle, options->actionButtonLabel,
          options->cancelButtonLabel, options->saveFileName, options->message}) {
        if (string != nullptr) {
            BCRelease(string);
        }
    }
    if (options->popupExtension != nullptr && (options->optionFlags & kKelOptPopupIsHandle) == 0) {
        BCRelease(options->popupExtension);
    }
}

StatusCode ConvertReply(KelReplyRecord* reply) {
    if (reply->validRecord == 0) {
        return noErr;
    }
    // The selection sits at an unaligned offset in the record, so it is worked on in a copy.
    BEDescList selection = reply->selection;
    long count = 0;
    StatusCode status = BECountItems(&selection, &count);
    for (long index = 1; status == noErr && index <= count; ++index) {
        status = ConvertReplyItem(reply, selection, index);
    }
    reply->selection = selection; // putting an item may have moved the list's data
    return status;
}
