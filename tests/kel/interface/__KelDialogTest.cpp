#include "kel/interface/__KelDialog.h"

#include "tests/kel/interface/EventRecorder.h"
#include "tests/kel/interface/FakeDialog.h"
#include "tests/kel/interface/PackedField.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

using keltest::EventRecorder;

using keltest::FakeDialog;

KelDialogCreationOptions Options(uint32_t modality) {
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.modality = modality;
    return options;
}

Boolean DrawsPreview(KelCBRec*, void*) {
    return 1;
}

Boolean RefuseAll(BEDesc*, void*, void*, int16_t) {
    return 0;
}

TEST(KelDialogLifecycle, RunSendsStartAndTerminateSendsUserActionThenTerminateLast) {
    EventRecorder recorder;
    const KelDialogCreationOptions options = Options(kKelModalityModeless);
    TDialogConfiguration configuration(&options, EventRecorder::Record, DrawsPreview, RefuseAll,
                                       &recorder);
    FakeDialog dialog(configuration);

    ASSERT_EQ(dialog.Run(), noErr);
    EXPECT_TRUE(dialog.IsRunning());
    TKelClient running = dialog.Client();
    EXPECT_TRUE(running.Preview(&running.record));
    EXPECT_FALSE(running.Filter(nullptr, nullptr, 0));
    ASSERT_EQ(dialog.TerminateWithUserAction(kKelUserActionCancel), noErr);

    EXPECT_EQ(recorder.selectors,
              (std::vector<long>{kKelCBStart, kKelCBUserAction, kKelCBTerminate}));
    EXPECT_EQ(recorder.userActions[1], uint32_t{kKelUserActionCancel});
    EXPECT_EQ(dialog.actionSeenByTerminate, uint32_t{kKelUserActionCancel});
    EXPECT_FALSE(dialog.IsRunning());
    EXPECT_EQ(dialog.UserAction(), uint32_t{kKelUserActionCancel});

    // After selector 3 the client is never reached again: callbacks answer their defaults.
    EXPECT_EQ(dialog.Terminate(), kKelWrongStateErr);
    TKelClient client = dialog.Client();
    EXPECT_FALSE(client.Preview(&client.record));
    EXPECT_TRUE(client.Filter(nullptr, nullptr, 0));
    EXPECT_EQ(recorder.selectors.size(), 3u);
}

TEST(KelDialogLifecycle, SecondRunOfARunningDialogIsRefusedWithoutCreatingAgain) {
    EventRecorder recorder;
    const KelDialogCreationOptions options = Options(kKelModalityModeless);
    TDialogConfiguration configuration(&options, EventRecorder::Record, nullptr, nullptr,
                                       &recorder);
    FakeDialog dialog(configuration);

    ASSERT_EQ(dialog.Run(), noErr);
    EXPECT_EQ(dialog.Run(), kKelWrongStateErr);
    EXPECT_EQ(dialog.createCount, 1);
    EXPECT_EQ(recorder.selectors, std::vector<long>{kKelCBStart});
    dialog.Terminate();
}

TEST(KelDialogLifecycle, SheetWithoutParentIsRefusedBeforeAnyWindowIsMade) {
    EventRecorder recorder;
    const KelDialogCreationOptions options = Options(kKelModalitySheet);
    TDialogConfiguration configuration(&options, EventRecorder::Record, nullptr, nullptr,
                                       &recorder);
    FakeDialog dialog(configuration);

    EXPECT_EQ(dialog.Run(), paramErr);
    EXPECT_EQ(dialog.createCount, 0);
    EXPECT_TRUE(recorder.selectors.empty());
}

TEST(KelDialogLifecycle, FailedCreationLeavesTheDialogIdleAndRunnableAgain) {
    EventRecorder recorder;
    const KelDialogCreationOptions options = Options(kKelModalityModeless);
    TDialogConfiguration configuration(&options, EventRecorder::Record, nullptr, nullptr,
                                       &recorder);
    FakeDialog dialog(configuration);
    dialog.createStatus = memFullErr;

    EXPECT_EQ(dialog.Run(), memFullErr);
    EXPECT_FALSE(dialog.IsRunning());
    EXPECT_TRUE(recorder.selectors.empty());

    dialog.createStatus = noErr;
    EXPECT_EQ(dialog.Run(), noErr);
    EXPECT_EQ(recorder.selectors, std::vector<long>{kKelCBStart});
    dialog.Terminate();
}

TEST(KelDialogLifecycle, TerminateSelectorEndsTheDialogOnceAndOtherSelectorsAreNotForThisClass) {
    EventRecorder recorder;
    const KelDialogCreationOptions options = Options(kKelModalityModeless);
    TDialogConfiguration configuration(&options, EventRecorder::Record, nullptr, nullptr,
                                       &recorder);
    FakeDialog dialog(configuration);
    ASSERT_EQ(dialog.Run(), noErr);

    EXPECT_EQ(dialog.CustomControl(0, nullptr), kKelWrongDialogClassErr);
    EXPECT_EQ(dialog.CustomControl(kKelCtlTerminate, nullptr), noErr);
    EXPECT_EQ(dialog.UserAction(), uint32_t{kKelUserActionNone});
    EXPECT_EQ(dialog.CustomControl(kKelCtlTerminate, nullptr), kKelWrongStateErr);
}

TEST(KelDialogLifecycle, ClientRecordStartsWithTheDialogAndNoHit) {
    const KelDialogCreationOptions options = Options(kKelModalityModal);
    TDialogConfiguration configuration(&options, nullptr, nullptr, nullptr, nullptr);
    FakeDialog dialog(configuration);

    const KelCBRec& record = dialog.Client().record;
    EXPECT_EQ(keltest::ValueOf(record.version), 1);
    EXPECT_EQ(keltest::ValueOf(record.context), &dialog);
    EXPECT_EQ(keltest::ValueOf(record.window), nullptr);
    EXPECT_EQ(keltest::ValueOf(record.itemHit), -1);
    EXPECT_EQ(keltest::ValueOf(record.userAction), 0u);
    EXPECT_EQ(dialog.RetainCount(), 1u);
}

class TypeMenuItems : public ::testing::Test {
protected:
    TypeMenuItems()
        : configuration(static_cast<KelDialogCreationOptions*>(nullptr), nullptr, nullptr, nullptr,
                        nullptr),
          dialog(configuration) {}

    TDialogConfiguration configuration;
    FakeDialog dialog;
};

TEST_F(TypeMenuItems, SeparatorIsNeverTheFirstItem) {
    dialog.AddPopupMenuItemSeperator();
    EXPECT_TRUE(dialog.TypeMenuItems().empty());

    TTypeMenuItem item;
    item.kind = TTypeMenuItem::kNoFilter;
    dialog.AddTypeMenuItem(item);
    dialog.AddPopupMenuItemSeperator();
    ASSERT_EQ(dialog.TypeMenuItems().size(), 2u);
    EXPECT_EQ(dialog.TypeMenuItems()[1].kind, TTypeMenuItem::kSeparator);
    EXPECT_TRUE(dialog.TypeMenuItems()[1].title.IsNil());
}

TEST_F(TypeMenuItems, ArrayItemsKeepTheirIndexAndANonStringHasNoTitle) {
    const int32_t number = 7;
    BCNumberRef notAString = BCNumberCreate(kBCAllocatorDefault, kBCNumberSInt32Type, &number);
    const void* values[] = {BCSTR("Plain Text"), notAString, BCSTR("Rich Text")};
    BCArrayRef array = BCArrayCreate(kBCAllocatorDefault, values, 3, &kBCTypeArrayCallBacks);
    BCRelease(notAString);

    dialog.SetTypeMenuExtension(TArrayRef(array, false));

    const auto& items = dialog.TypeMenuItems();
    ASSERT_EQ(items.size(), 3u);
    for (uint32_t index = 0; index < items.size(); ++index) {
        EXPECT_EQ(items[index].kind, TTypeMenuItem::kClientItem);
        EXPECT_EQ(items[index].creator, FourCharCode{kKelExtensionCreator});
        EXPECT_EQ(items[index].fileType, index);
    }
    EXPECT_EQ(BCStringCompare(items[0].title.AsBCStringRef(), BCSTR("Plain Text"), 0),
              kBCCompareEqualTo);
    EXPECT_TRUE(items[1].title.IsNil());
}

TEST_F(TypeMenuItems, HandleOfSpecsGivesOneItemPerWholeRecord) {
    Handle handle = NewHandleClear(1000); // one record and a remainder that is ignored
    auto* spec = reinterpret_cast<KelMenuItemSpec*>(*handle);
    spec->menuCreator = 0x74747874; // "ttxt"
    spec->menuType = 0x54455854;    // "TEXT"
    const char name[] = "Text File";
    spec->menuItemName[0] = sizeof name - 1;
    std::memcpy(spec->menuItemName + 1, name, sizeof name - 1);

    dialog.SetTypeMenuExtension(reinterpret_cast<KelMenuItemSpec**>(handle));
    DisposeHandle(handle);

    const auto& items = dialog.TypeMenuItems();
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items[0].kind, TTypeMenuItem::kClientItem);
    EXPECT_EQ(items[0].creator, 0x74747874u);
    EXPECT_EQ(items[0].fileType, 0x54455854u);
    EXPECT_EQ(BCStringCompare(items[0].title.AsBCStringRef(), BCSTR("Text File"), 0),
              kBCCompareEqualTo);
}

} // namespace
