#include "kel/interface/KelRecordConversion.h"

#include "kel/interface/KelRouting.h"

#include <initializer_list>

namespace {

BCStringRef StringFromPascal(const unsigned char* text) {
    if (text[0] == 0) {
        return nullptr;
    }
    return BCStringCreateWithPascalString(kBCAllocatorDefault, text, GetApplicationTextEncoding());
}

} // namespace

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
