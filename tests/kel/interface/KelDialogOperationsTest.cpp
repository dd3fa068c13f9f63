#include "basalt/backend/headless/HeadlessDriver.h"
#include "kel/interface/__KelDialog.h"
#include "tests/kel/interface/EventRecorder.h"
#include "tests/kel/interface/FakeDialog.h"
#include "tests/kel/interface/PackedField.h"

#include <cstring>
#include <gtest/gtest.h>
#include <kel/KelServices.h>

namespace {

using basalt::headless::HeadlessDriver;
using keltest::EventRecorder;

void NoEvents(long, KelCBRec*, void*) {}

KelDialogRef MakeOpenDialog(const KelDialogCreationOptions* options = nullptr,
                            KelEventProc eventProc = NoEvents) {
    KelDialogRef dialog = nullptr;
    KelCreateGetFileDialog(options, nullptr, eventProc, nullptr, nullptr, nullptr, &dialog);
    return dialog;
}

KelDialogRef MakeAskDialog() {
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    KelDialogRef dialog = nullptr;
    KelCreateAskSaveChangesDialog(&options, 1, NoEvents, nullptr, &dialog);
    return dialog;
}

KelDialogRef MakeSaveDialog(uint32_t flags) {
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.optionFlags = flags;
    KelDialogRef dialog = nullptr;
    KelCreatePutFileDialog(&options, 0, 0, NoEvents, nullptr, &dialog);
    return dialog;
}

TEST(KelDialogOperations, DefaultsLeaveReservedAloneAndRefuseNull) {
    KelDialogCreationOptions options;
    std::memset(&options, 0x77, sizeof options);
    ASSERT_EQ(KelGetDefaultDialogCreationOptions(&options), noErr);
    EXPECT_EQ(keltest::ValueOf(options.optionFlags), 0xE4u);
    EXPECT_EQ(keltest::ValueOf(options.modality), 2u);
    EXPECT_EQ(keltest::ValueOf(options.location.v), -1);
    EXPECT_EQ(keltest::ValueOf(options.message), nullptr);
    EXPECT_EQ(keltest::ValueOf(options.reserved[0]), 0x77);

    KelDialogOptions older;
    std::memset(&older, 0x77, sizeof older);
    ASSERT_EQ(KelGetDefaultDialogOptions(&older), noErr);
    EXPECT_EQ(keltest::ValueOf(older.windowTitle[0]), 0);
    EXPECT_EQ(keltest::ValueOf(older.popupExtension), nullptr);
    EXPECT_EQ(keltest::ValueOf(older.reserved[493]), 0x77);

    EXPECT_EQ(KelGetDefaultDialogCreationOptions(nullptr), paramErr);
    EXPECT_EQ(KelGetDefaultDialogOptions(nullptr), paramErr);
    EXPECT_EQ(KelLibraryVersion(), 0x03108000u);
    EXPECT_EQ(KelTranslateFile(nullptr, nullptr, -1, nullptr, nullptr, 0xFFFFFFFF), -4);
}

TEST(KelDialogOperations, RunChecksTheSheetParentFirstAndOtherwiseReportsTheMissingWindow) {
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.modality = kKelModalitySheet;

    KelDialogRef sheet = MakeOpenDialog(&options);
    EXPECT_EQ(KelDialogRun(sheet), paramErr);
    KelDialogDispose(sheet);

    // Without an event callback the same record makes a modal dialog, which needs no parent.
    KelDialogRef modal = MakeOpenDialog(&options, nullptr);
    EXPECT_EQ(modal->Modality(), uint32_t{kKelModalityAppModal});
    HeadlessDriver::Soon([modal] { HeadlessDriver::Click(KelDialogGetWindow(modal), "kels", 2); });
    EXPECT_EQ(KelDialogRun(modal), noErr);
    EXPECT_FALSE(modal->IsRunning());
    EXPECT_EQ(KelDialogGetUserAction(modal), uint32_t{kKelUserActionCancel});
    KelDialogDispose(modal);
}

TEST(KelDialogOperations, ReplyIsClearedFirstAndOnlyBrowseDialogsGiveOne) {
    KelReplyRecord reply;
    std::memset(&reply, 0xAB, sizeof reply);
    KelDialogRef ask = MakeAskDialog();
    EXPECT_EQ(KelDialogGetReply(ask, &reply), kKelWrongDialogClassErr);
    EXPECT_EQ(keltest::ValueOf(reply.version), 2);
    EXPECT_EQ(keltest::ValueOf(reply.validRecord), 0);
    BEDesc selection = reply.selection;
    EXPECT_EQ(selection.descriptorType, FourCharCode{typeNull});
    EXPECT_EQ(selection.dataHandle, nullptr);
    EXPECT_EQ(keltest::ValueOf(reply.saveFileName), nullptr);
    EXPECT_EQ(keltest::ValueOf(reply.reserved[225]), 0);
    EXPECT_EQ(KelDialogGetReply(ask, nullptr), paramErr);
    KelDialogDispose(ask);

    // A browse dialog that never ran has ended with no action to report.
    KelDialogRef open = MakeOpenDialog();
    EXPECT_EQ(KelDialogGetReply(open, &reply), kKelWrongStateErr);
    EXPECT_EQ(keltest::ValueOf(reply.validRecord), 0);
    KelDialogDispose(open);
}

TEST(KelDialogOperations, DisposeReplyFreesWhatTheRecordOwnsAndMayBeRepeated) {
    KelReplyRecord reply;
    std::memset(&reply, 0, sizeof reply);
    reply.version = 2;
    reply.validRecord = 1;
    BEDescList list;
    ASSERT_EQ(BECreateList(nullptr, 0, 0, &list), noErr);
    const char item[80] = {};
    ASSERT_EQ(BEPutPtr(&list, 0, typeBFRef, item, sizeof item), noErr);
    reply.selection = list;
    BCStringRef name =
        BCStringCreateWithCString(kBCAllocatorDefault, "a.txt", kBCStringEncodingUTF8);
    BCRetain(name);
    reply.saveFileName = name;
    reply.fileTranslation = NewHandle(16);

    EXPECT_EQ(KelDisposeReply(&reply), noErr);
    EXPECT_EQ(keltest::ValueOf(reply.validRecord), 0);
    EXPECT_EQ(keltest::ValueOf(reply.fileTranslation), nullptr);
    EXPECT_EQ(keltest::ValueOf(reply.saveFileName), nullptr);
    EXPECT_EQ(BCGetRetainCount(name), 1);
    BEDesc selection = reply.selection;
    EXPECT_EQ(selection.descriptorType, FourCharCode{typeNull});
    EXPECT_EQ(KelDisposeReply(&reply), noErr);
    EXPECT_EQ(KelDisposeReply(nullptr), paramErr);

    // A record of the first version has no save name: whatever is there is left alone.
    reply.version = 0;
    reply.saveFileName = name;
    EXPECT_EQ(KelDisposeReply(&reply), noErr);
    EXPECT_EQ(keltest::ValueOf(reply.saveFileName), name);
    EXPECT_EQ(BCGetRetainCount(name), 1);
    BCRelease(name);
}

TEST(KelDialogOperations, SaveNameIsKeptByEveryDialogAsItsOwnCopy) {
    BCMutableStringRef name = BCStringCreateMutable(kBCAllocatorDefault, 0);
    BCStringAppendCString(name, "Draft", kBCStringEncodingUTF8);
    for (KelDialogRef dialog : {MakeAskDialog(), MakeOpenDialog(), MakeSaveDialog(0)}) {
        EXPECT_EQ(KelDialogSetSaveFileName(dialog, name), noErr);
        BCStringRef kept = KelDialogGetSaveFileName(dialog);
        EXPECT_NE(kept, name);
        EXPECT_EQ(BCStringCompare(kept, BCSTR("Draft"), 0), kBCCompareEqualTo);
        EXPECT_EQ(KelDialogSetSaveFileName(dialog, nullptr), noErr);
        KelDialogDispose(dialog);
    }
    // No name: none at all, except in the save dialog, whose name field is then empty.
    for (KelDialogRef dialog : {MakeAskDialog(), MakeOpenDialog()}) {
        KelDialogSetSaveFileName(dialog, name);
        KelDialogSetSaveFileName(dialog, nullptr);
        EXPECT_EQ(KelDialogGetSaveFileName(dialog), nullptr);
        KelDialogDispose(dialog);
    }
    KelDialogRef save = MakeSaveDialog(0);
    KelDialogSetSaveFileName(save, name);
    KelDialogSetSaveFileName(save, nullptr);
    EXPECT_EQ(BCStringGetLength(KelDialogGetSaveFileName(save)), 0);
    KelDialogDispose(save);
    BCRelease(name);
}

TEST(KelDialogOperations, ExtensionAndTypeIdentifierCallsAnswerByDialogClass) {
    KelDialogRef ask = MakeAskDialog();
    KelDialogRef open = MakeOpenDialog();
    KelDialogRef save = MakeSaveDialog(0);
    BCArrayRef identifiers = BCArrayCreate(kBCAllocatorDefault, nullptr, 0, &kBCTypeArrayCallBacks);

    EXPECT_EQ(KelDialogSetSaveFileExtensionHidden(ask, 1), kKelWrongDialogClassErr);
    EXPECT_EQ(KelDialogSetSaveFileExtensionHidden(open, 1), kKelWrongDialogClassErr);
    EXPECT_EQ(KelDialogSetSaveFileExtensionHidden(save, 1), kKelWrongDialogClassErr);
    EXPECT_EQ(KelDialogGetSaveFileExtensionHidden(save), 0);

    EXPECT_EQ(KelDialogSetFilterTypeIdentifiers(ask, identifiers), kKelWrongDialogClassErr);
    EXPECT_EQ(KelDialogSetFilterTypeIdentifiers(open, identifiers), noErr);
    EXPECT_GT(BCGetRetainCount(identifiers), 1); // kept while the dialog lives

    for (KelDialogRef dialog : {ask, open, save}) {
        KelDialogDispose(dialog);
    }
    EXPECT_EQ(BCGetRetainCount(identifiers), 1);
    BCRelease(identifiers);
}

TEST(KelDialogOperations, NullAndDisposedDialogsAreRefused) {
    KelDialogRef gone = MakeOpenDialog();
    KelDialogDispose(gone);
    for (KelDialogRef dialog : {KelDialogRef{nullptr}, gone}) {
        EXPECT_EQ(KelDialogRun(dialog), paramErr);
        EXPECT_EQ(KelDialogGetUserAction(dialog), 0u);
        KelReplyRecord reply;
        EXPECT_EQ(KelDialogGetReply(dialog, &reply), paramErr);
        EXPECT_EQ(keltest::ValueOf(reply.validRecord), 0);
        EXPECT_EQ(KelDialogGetWindow(dialog), nullptr);
        EXPECT_EQ(KelCustomControl(dialog, kKelCtlTerminate, nullptr), paramErr);
        EXPECT_EQ(KelDialogGetSaveFileName(dialog), nullptr);
        EXPECT_EQ(KelDialogSetSaveFileName(dialog, BCSTR("x")), paramErr);
        EXPECT_EQ(KelDialogGetSaveFileExtensionHidden(dialog), 0);
        EXPECT_EQ(KelDialogSetSaveFileExtensionHidden(dialog, 1), paramErr);
        EXPECT_EQ(KelDialogSetFilterTypeIdentifiers(dialog, nullptr), paramErr);
        KelDialogDispose(dialog);
    }
}

TEST(KelDialogOperations, ClientMayDisposeTheDialogFromInsideACallback) {
    EventRecorder recorder;
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.modality = kKelModalityModeless;
    TDialogConfiguration configuration(&options, EventRecorder::Record, nullptr, nullptr,
                                       &recorder);
    KelDialogRef dialog = new keltest::FakeDialog(configuration);
    recorder.onEvent = [dialog](long selector, KelCBRec*) {
        if (selector == kKelCBStart) {
            KelDialogDispose(dialog);
        }
    };

    // The run holds its own reference, so the dialog outlives the dispose until the run ends.
    EXPECT_EQ(KelDialogRun(dialog), noErr);
    EXPECT_EQ(recorder.selectors,
              (std::vector<long>{kKelCBStart, kKelCBUserAction, kKelCBTerminate}));
    EXPECT_EQ(recorder.userActions[1], uint32_t{kKelUserActionNone});
    EXPECT_FALSE(__KelDialog::IsLive(dialog));
}

} // namespace
