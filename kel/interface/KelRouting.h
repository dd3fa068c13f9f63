#pragma once

// Whether the second implementation of the panels serves this process, and its entry points.
//
// The decision is cached for the process: the preference is read once; a call from any thread but
// the main one turns routing off for good; a missing bundle or entry point leaves it on, so the
// next call looks again. Once every entry point is found, every routed call forwards.

#include <kel/KelServices.h>

// The entry points, in the order they are looked up.
enum class TKKelEntry {
    GetDefaultDialogCreationOptions,
    CreateGetFileDialog,
    CreatePutFileDialog,
    CreateAskReviewDocumentsDialog,
    CreateAskSaveChangesDialog,
    CreateAskDiscardChangesDialog,
    CreateChooseFileDialog,
    CreateChooseFolderDialog,
    CreateChooseVolumeDialog,
    CreateChooseObjectDialog,
    CreateNewFolderDialog,
    DialogRun,
    CompleteSave,
    DialogDispose,
    DialogGetWindow,
    DialogGetUserAction,
    DialogGetReply,
    DisposeReply,
    CustomControl,
    DialogGetSaveFileName,
    DialogSetSaveFileName,
    DialogGetSaveFileExtensionHidden,
    DialogSetSaveFileExtensionHidden,
    DialogSetFilterTypeIdentifiers,
    Count
};

// True when the call at hand is to be forwarded. Every routed call starts with it.
bool LoadTKKelRoutines();
// True when this process must not use the second implementation.
bool ShouldNotUseTKKel();
// The loaded entry point; valid once LoadTKKelRoutines has answered true.
void* TKKelRoutine(TKKelEntry entry);

// The entry point typed like the exported function it stands in for.
template <auto Function>
auto TKKel(TKKelEntry entry) {
    return reinterpret_cast<decltype(Function)>(TKKelRoutine(entry));
}
