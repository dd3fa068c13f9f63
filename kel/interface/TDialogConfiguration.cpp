#include "kel/interface/TDialogConfiguration.h"

#include <basalt/files/BEDesc.h>
#include <cstring>

namespace {

// Visits the six strings of the record by name: they sit at unaligned offsets, so they are never
// reached through pointers.
template <class Visit>
void ForEachString(KelDialogCreationOptions& options, Visit visit) {
    options.clientName = visit(options.clientName);
    options.windowTitle = visit(options.windowTitle);
    options.actionButtonLabel = visit(options.actionButtonLabel);
    options.cancelButtonLabel = visit(options.cancelButtonLabel);
    options.saveFileName = visit(options.saveFileName);
    options.message = visit(options.message);
}

BCStringRef CreateFromPascalString(const unsigned char* text) {
    if (text[0] == 0) {
        return nullptr;
    }
    return BCStringCreateWithPascalString(kBCAllocatorDefault, text, GetApplicationTextEncoding());
}

} // namespace

TDialogConfiguration::TDialogConfiguration(const KelDialogOptions* options, KelEventProc eventProc,
                                           KelPreviewProc previewProc,
                                           KelObjectFilterProc filterProc, void* clientData)
    : eventProc(eventProc), previewProc(previewProc), filterProc(filterProc),
      clientData(clientData), selectionType(typeFileSpec) {
    SetDefaults();
    if (options != nullptr) {
        optionFlags = options->optionFlags;
        location = options->location;
        clientName = CreateFromPascalString(options->clientName);
        windowTitle = CreateFromPascalString(options->windowTitle);
        actionButtonLabel = CreateFromPascalString(options->actionButtonLabel);
        cancelButtonLabel = CreateFromPascalString(options->cancelButtonLabel);
        saveFileName = CreateFromPascalString(options->savedFileName);
        message = CreateFromPascalString(options->message);
        preferenceKey = options->preferenceKey;
        parentWindow = nullptr;
        legacyPopupExtension = options->popupExtension;
    }
    modality = eventProc != nullptr ? kKelModalityModal : kKelModalityAppModal;
}

TDialogConfiguration::TDialogConfiguration(const KelDialogCreationOptions* options,
                                           KelEventProc eventProc, KelPreviewProc previewProc,
                                           KelObjectFilterProc filterProc, void* clientData)
    : eventProc(eventProc), previewProc(previewProc), filterProc(filterProc),
      clientData(clientData), selectionType(typeBFRef) {
    SetDefaults();
    if (options != nullptr) {
        static_cast<KelDialogCreationOptions&>(*this) = *options;
        ForEachString(*this, [](BCStringRef string) {
            return string != nullptr ? static_cast<BCStringRef>(BCRetain(string)) : nullptr;
        });
        if (popupExtension != nullptr) {
            BCRetain(popupExtension);
        }
    }
    // Without an event callback the client cannot run a loop of its own, so the dialog is modal.
    if (eventProc == nullptr) {
        modality = kKelModalityAppModal;
    }
}

TDialogConfiguration::~TDialogConfiguration() {
    ForEachString(*this, [](BCStringRef string) -> BCStringRef {
        if (string != nullptr) {
            BCRelease(string);
        }
        return nullptr;
    });
    if (popupExtension != nullptr) {
        BCRelease(popupExtension);
    }
}

void TDialogConfiguration::SetDefaults() {
    KelDialogCreationOptions& options = *this;
    std::memset(&options, 0, sizeof options);
    optionFlags = kKelOptDefaults;
    location = Point{-1, -1};
    modality = kKelModalityModal;
}
