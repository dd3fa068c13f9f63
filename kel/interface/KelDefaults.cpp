// The version and the defaults of the options records. None of these looks at routing.

#include <initializer_list>
#include <kel/KelServices.h>

namespace {

// Writes the defaults into every field the two records share.
template <class Options>
void SetSharedDefaults(Options& options) {
    options.version = 0;
    options.optionFlags = kKelOptDefaults;
    options.location = Point{-1, -1};
    options.preferenceKey = 0;
    options.popupExtension = nullptr;
}

} // namespace

uint32_t KelLibraryVersion(void) {
    return kKelLibraryVersion;
}

StatusCode KelGetDefaultDialogOptions(KelDialogOptions* options) {
    if (options == nullptr) {
        return paramErr;
    }
    SetSharedDefaults(*options);
    for (unsigned char* text :
         {options->clientName, options->windowTitle, options->actionButtonLabel,
          options->cancelButtonLabel, options->savedFileName, options->message}) {
        text[0] = 0;
    }
    return noErr;
}

StatusCode KelGetDefaultDialogCreationOptions(KelDialogCreationOptions* options) {
    if (options == nullptr) {
        return paramErr;
    }
    SetSharedDefaults(*options);
    options->clientName = nullptr;
    options->windowTitle = nullptr;
    options->actionButtonLabel = nullptr;
    options->cancelButtonLabel = nullptr;
    options->saveFileName = nullptr;
    options->message = nullptr;
    options->modality = kKelModalityModal;
    options->parentWindow = nullptr;
    return noErr;
}
