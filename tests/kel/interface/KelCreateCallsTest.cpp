#include "kel/dialogs/KelSaveDocumentDialog.h"
#include "kel/dialogs/TBrowseDialog.h"
#include "kel/foundation/KelBundle.h"
#include "kel/interface/KelAskSaveDialog.h"

#include <functional>
#include <gtest/gtest.h>
#include <kel/KelServices.h>

namespace {

void NoEvents(long, KelCBRec*, void*) {}

using Create =
    std::function<StatusCode(const KelDialogCreationOptions*, KelEventProc, KelDialogRef*)>;

// Every browse dialog's create call, with the arguments a test does not care about left null.
struct BrowseKind {
    const char* name;
    Create create;
    uint32_t flagMask;
    uint32_t forcedFlags;
    NodeFilterMaskSet masks;
};

std::vector<BrowseKind> BrowseKinds() {
    return {
        {"GetFile",
         [](auto options, auto eventProc, auto out) {
             return KelCreateGetFileDialog(options, nullptr, eventProc, nullptr, nullptr, nullptr,
                                           out);
         },
         0xFFD7,
         0,
         {0x15, 0x14, 0x01, 0x15}},
        {"PutFile",
         [](auto options, auto eventProc, auto out) {
             return KelCreatePutFileDialog(options, 0, 0, eventProc, nullptr, out);
         },
         0x3B525,
         0,
         {0x14, 0x14, 0x14, 0}},
        {"ChooseFile",
         [](auto options, auto eventProc, auto out) {
             return KelCreateChooseFileDialog(options, nullptr, eventProc, nullptr, nullptr,
                                              nullptr, out);
         },
         0xF7C0,
         0,
         {0x15, 0x14, 0x01, 0x15}},
        {"ChooseFolder",
         [](auto options, auto eventProc, auto out) {
             return KelCreateChooseFolderDialog(options, eventProc, nullptr, nullptr, out);
         },
         0xF780,
         0,
         {0x14, 0x14, 0x14, 0x14}},
        {"ChooseVolume",
         [](auto options, auto eventProc, auto out) {
             return KelCreateChooseVolumeDialog(options, eventProc, nullptr, nullptr, out);
         },
         0xF380,
         kKelOptSelectDefault,
         {0x14, 0x14, 0x10, 0x14}},
        {"ChooseObject",
         [](auto options, auto eventProc, auto out) {
             return KelCreateChooseObjectDialog(options, eventProc, nullptr, nullptr, nullptr, out);
         },
         0xF7C0,
         0,
         {0x15, 0x14, 0x15, 0x15}},
        {"NewFolder",
         [](auto options, auto eventProc, auto out) {
             return KelCreateNewFolderDialog(options, eventProc, nullptr, out);
         },
         0xF500,
         0,
         {0x14, 0x14, 0x14, 0}},
    };
}

KelDialogCreationOptions AllFlags() {
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.optionFlags = 0xFFFFFFFF & ~uint32_t{kKelOptKeepAliases};
    return options;
}

TEST(KelCreateCalls, EachBrowseKindKeepsItsFlagsAndInstallsItsFilterMasks) {
    const KelDialogCreationOptions options = AllFlags();
    for (const BrowseKind& kind : BrowseKinds()) {
        SCOPED_TRACE(kind.name);
        KelDialogRef dialog = nullptr;
        ASSERT_EQ(kind.create(&options, NoEvents, &dialog), noErr);
        auto* browse = dynamic_cast<TBrowseDialog*>(dialog);
        ASSERT_NE(browse, nullptr);
        EXPECT_EQ(browse->OptionFlags(),
                  ((0xFFFFFFFF & ~uint32_t{kKelOptKeepAliases}) & kind.flagMask) |
                      kind.forcedFlags);
        EXPECT_EQ(browse->FilterMasks(), kind.masks);
        EXPECT_EQ(browse->Client().SelectionType(), FourCharCode{typeBFRef});
        KelDialogDispose(dialog);
    }
}

TEST(KelCreateCalls, OnlyTheOpenAndSaveCallsRefuseAPopupWithoutEventCallback) {
    BCArrayRef popup = BCArrayCreate(kBCAllocatorDefault, nullptr, 0, &kBCTypeArrayCallBacks);
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.popupExtension = popup;
    for (const BrowseKind& kind : BrowseKinds()) {
        SCOPED_TRACE(kind.name);
        const bool refuses =
            std::string(kind.name) == "GetFile" || std::string(kind.name) == "PutFile";
        KelDialogRef dialog = reinterpret_cast<KelDialogRef>(&options);
        EXPECT_EQ(kind.create(&options, nullptr, &dialog), refuses ? paramErr : noErr);
        if (refuses) {
            EXPECT_EQ(dialog, nullptr);
        } else {
            KelDialogDispose(dialog);
        }
        EXPECT_EQ(kind.create(&options, NoEvents, &dialog), noErr);
        KelDialogDispose(dialog);
        EXPECT_EQ(kind.create(&options, NoEvents, nullptr), paramErr);
    }
    EXPECT_EQ(BCGetRetainCount(popup), 1);
    BCRelease(popup);
}

TEST(KelCreateCalls, SaveDialogRefusesToKeepAliases) {
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.optionFlags |= kKelOptKeepAliases;
    KelDialogRef dialog = nullptr;
    EXPECT_EQ(KelCreatePutFileDialog(&options, 0, 0, NoEvents, nullptr, &dialog), paramErr);
    EXPECT_EQ(dialog, nullptr);

    EXPECT_EQ(KelCreatePutFileDialog(nullptr, 0x54455854, 0x74747874, nullptr, nullptr, &dialog),
              noErr);
    auto* save = dynamic_cast<KelSaveDocumentDialog*>(dialog);
    ASSERT_NE(save, nullptr);
    EXPECT_EQ(save->FileType(), 0x54455854u);
    EXPECT_EQ(save->Modality(), uint32_t{kKelModalityAppModal});
    KelDialogDispose(dialog);
}

TEST(KelCreateCalls, CreatorFilterIsAnyForChooseFileAndForOpenWithTypesButNoPopup) {
    Handle typeList = NewHandleClear(sizeof(KelTypeList));
    auto** types = reinterpret_cast<KelTypeList**>(typeList);
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);

    auto creatorOfOpen = [&](uint32_t flags, KelTypeList** list) {
        options.optionFlags = flags;
        KelDialogRef dialog = nullptr;
        KelCreateGetFileDialog(&options, list, NoEvents, nullptr, nullptr, nullptr, &dialog);
        const FourCharCode creator = dynamic_cast<TBrowseDialog*>(dialog)->FileCreatorFilter();
        KelDialogDispose(dialog);
        return creator;
    };
    EXPECT_EQ(creatorOfOpen(kKelOptNoTypePopup, types), FourCharCode{typeWildCard});
    EXPECT_EQ(creatorOfOpen(kKelOptNoTypePopup, nullptr), 0u);
    EXPECT_EQ(creatorOfOpen(0, types), 0u);

    KelDialogRef dialog = nullptr;
    ASSERT_EQ(
        KelCreateChooseFileDialog(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &dialog),
        noErr);
    EXPECT_EQ(dynamic_cast<TBrowseDialog*>(dialog)->FileCreatorFilter(),
              FourCharCode{typeWildCard});
    KelDialogDispose(dialog);
    DisposeHandle(typeList);
}

TEST(KelCreateCalls, DefaultTitleNeedsAnEventCallbackButTheDefaultLabelDoesNot) {
    KelDialogRef dialog = nullptr;
    ASSERT_EQ(KelCreateChooseVolumeDialog(nullptr, nullptr, nullptr, nullptr, &dialog), noErr);
    EXPECT_TRUE(dialog->WindowTitle().IsNil());
    EXPECT_FALSE(dialog->ActionButtonLabel().IsNil());
    KelDialogDispose(dialog);

    ASSERT_EQ(KelCreateChooseVolumeDialog(nullptr, NoEvents, nullptr, nullptr, &dialog), noErr);
    BCStringRef bundleTitle = BCBundleCopyLocalizedString(
        KelBundle::KelGetBundle(), BCSTR("Choose Volume Title"), nullptr, BCSTR("Localized"));
    ASSERT_NE(bundleTitle, nullptr);
    EXPECT_EQ(BCStringCompare(dialog->WindowTitle().AsBCStringRef(), bundleTitle, 0),
              kBCCompareEqualTo);
    BCRelease(bundleTitle);
    KelDialogDispose(dialog);

    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.windowTitle = BCSTR("Pick a Disk");
    ASSERT_EQ(KelCreateChooseVolumeDialog(&options, NoEvents, nullptr, nullptr, &dialog), noErr);
    EXPECT_EQ(BCStringCompare(dialog->WindowTitle().AsBCStringRef(), BCSTR("Pick a Disk"), 0),
              kBCCompareEqualTo);
    KelDialogDispose(dialog);

    // The open and save dialogs have no default title of their own.
    ASSERT_EQ(
        KelCreateGetFileDialog(nullptr, nullptr, NoEvents, nullptr, nullptr, nullptr, &dialog),
        noErr);
    EXPECT_TRUE(dialog->WindowTitle().IsNil());
    EXPECT_TRUE(dialog->ActionButtonLabel().IsNil());
    KelDialogDispose(dialog);
}

TEST(KelCreateCalls, AskCallsNeedTheirRecordAndDiscardNeedsTheDocumentName) {
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    KelDialogRef dialog = nullptr;

    EXPECT_EQ(KelCreateAskSaveChangesDialog(nullptr, 1, NoEvents, nullptr, &dialog), paramErr);
    EXPECT_EQ(KelCreateAskSaveChangesDialog(&options, 1, NoEvents, nullptr, nullptr), paramErr);
    EXPECT_EQ(KelCreateAskReviewDocumentsDialog(nullptr, 2, NoEvents, nullptr, &dialog), paramErr);
    EXPECT_EQ(KelCreateAskDiscardChangesDialog(&options, NoEvents, nullptr, &dialog), paramErr);
    EXPECT_EQ(dialog, nullptr);

    options.saveFileName = BCSTR("Notes");
    ASSERT_EQ(KelCreateAskDiscardChangesDialog(&options, NoEvents, nullptr, &dialog), noErr);
    KelDialogDispose(dialog);

    ASSERT_EQ(KelCreateAskSaveChangesDialog(&options, 2, NoEvents, nullptr, &dialog), noErr);
    auto* ask = dynamic_cast<KelAskSaveDialog*>(dialog);
    ASSERT_NE(ask, nullptr);
    EXPECT_EQ(ask->Action(), 2u);
    // Ask dialogs keep every flag they were given.
    EXPECT_EQ(ask->OptionFlags(), uint32_t{kKelOptDefaults});
    KelDialogDispose(dialog);
}

} // namespace
