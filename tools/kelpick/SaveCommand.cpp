#include "tools/kelpick/SaveCommand.h"

#include "tools/kelpick/ReplyPaths.h"

#include <cstdio>

namespace {

// A save dialog of kelpick has no type and creator of its own to offer.
constexpr FourCharCode kAnyCode = 0x2A2A2A2A; // "****"

std::string CurrentName(KelDialogRef dialog) {
    BCStringRef name = KelDialogGetSaveFileName(dialog);
    return name != nullptr ? NameBytes(name) : std::string();
}

} // namespace

StatusCode CreateSaveDialog(KelDialogCreationOptions& creation, BrowseRun& run,
                            KelEventProc eventProc, KelDialogRef* dialog) {
    const KelpickOptions& options = run.options;
    creation.optionFlags |= kKelOptExtensionHandling;
    creation.optionFlags |= options.noConfirm ? uint32_t(kKelOptNoReplaceConfirm) : 0;
    BCStringRef name = options.name ? CreateNameString(*options.name) : nullptr;
    creation.saveFileName = name;
    const StatusCode status =
        KelCreatePutFileDialog(&creation, kAnyCode, kAnyCode, eventProc, &run, dialog);
    creation.saveFileName = nullptr;
    if (name != nullptr) {
        BCRelease(name);
    }
    return status;
}

void StartSaveDialog(BrowseRun& run) {
    if (!run.popup.Empty()) {
        KelMenuItemSpec spec{};
        spec.menuCreator = kKelExtensionCreator;
        spec.menuType = FourCharCode(run.popup.ItemForName(CurrentName(run.dialog)));
        KelCustomControl(run.dialog, kKelCtlSelectCustomType, &spec);
    }
    if (run.options.hideExtension) {
        if (StatusCode status = KelDialogSetSaveFileExtensionHidden(run.dialog, true);
            status != noErr) {
            std::fprintf(stderr, "kelpick: the name has no extension to hide (status %d)\n",
                         static_cast<int>(status));
        }
    }
}

void SaveTypeChosen(BrowseRun& run) {
    const std::string name = CurrentName(run.dialog);
    const std::string wanted = WithExtension(name, run.popup.Extension());
    if (wanted == name) {
        return;
    }
    BCStringRef text = CreateNameString(wanted);
    KelDialogSetSaveFileName(run.dialog, text);
    BCRelease(text);
}
