#include "kel/interface/TDialogConfiguration.h"

#include "tests/kel/interface/PackedField.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

void NoEvents(long, KelCBRec*, void*) {}

void SetPascal(unsigned char* field, const char* text) {
    field[0] = static_cast<unsigned char>(std::strlen(text));
    std::memcpy(field + 1, text, field[0]);
}

bool Same(BCStringRef string, const char* text) {
    BCStringRef expected =
        BCStringCreateWithCString(kBCAllocatorDefault, text, kBCStringEncodingUTF8);
    const bool same =
        string != nullptr && BCStringCompare(string, expected, 0) == kBCCompareEqualTo;
    BCRelease(expected);
    return same;
}

TEST(TDialogConfiguration, NoRecordGivesTheDefaults) {
    TDialogConfiguration configuration(static_cast<const KelDialogCreationOptions*>(nullptr),
                                       NoEvents, nullptr, nullptr, nullptr);
    EXPECT_EQ(keltest::ValueOf(configuration.optionFlags), uint32_t{kKelOptDefaults});
    EXPECT_EQ(keltest::ValueOf(configuration.location.v), -1);
    EXPECT_EQ(keltest::ValueOf(configuration.location.h), -1);
    EXPECT_EQ(keltest::ValueOf(configuration.modality), uint32_t{kKelModalityModal});
    EXPECT_EQ(keltest::ValueOf(configuration.windowTitle), nullptr);
    EXPECT_EQ(keltest::ValueOf(configuration.selectionType), FourCharCode{typeBFRef});
    EXPECT_EQ(keltest::ValueOf(configuration.filterMasks),
              (NodeFilterMaskSet{0x3F, 0x3F, 0x1F, 0x1F}));
    EXPECT_EQ(keltest::ValueOf(configuration.fileCreatorFilter), 0u);
}

TEST(TDialogConfiguration, CurrentRecordIsCopiedWholeAndItsStringsAreHeldForTheConstruction) {
    BCStringRef title =
        BCStringCreateWithCString(kBCAllocatorDefault, "Export", kBCStringEncodingUTF8);
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.optionFlags = 0x12345;
    options.windowTitle = title;
    options.preferenceKey = 9;
    options.modality = kKelModalitySheet;
    std::memset(options.reserved, 0x5A, sizeof options.reserved);
    {
        TDialogConfiguration configuration(&options, NoEvents, nullptr, nullptr, nullptr);
        EXPECT_EQ(keltest::ValueOf(configuration.optionFlags), 0x12345u);
        EXPECT_EQ(keltest::ValueOf(configuration.windowTitle), title);
        EXPECT_EQ(BCGetRetainCount(title), 2);
        EXPECT_EQ(keltest::ValueOf(configuration.preferenceKey), 9u);
        EXPECT_EQ(keltest::ValueOf(configuration.modality), uint32_t{kKelModalitySheet});
        EXPECT_EQ(keltest::ValueOf(configuration.reserved[15]), 0x5A);
    }
    EXPECT_EQ(BCGetRetainCount(title), 1);
    BCRelease(title);
}

TEST(TDialogConfiguration, WithoutAnEventCallbackTheDialogIsModalWhateverTheRecordSays) {
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.modality = kKelModalitySheet;
    TDialogConfiguration current(&options, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(keltest::ValueOf(current.modality), uint32_t{kKelModalityAppModal});

    KelDialogOptions older;
    KelGetDefaultDialogOptions(&older);
    TDialogConfiguration withoutEvents(&older, nullptr, nullptr, nullptr, nullptr);
    TDialogConfiguration withEvents(&older, NoEvents, nullptr, nullptr, nullptr);
    EXPECT_EQ(keltest::ValueOf(withoutEvents.modality), uint32_t{kKelModalityAppModal});
    EXPECT_EQ(keltest::ValueOf(withEvents.modality), uint32_t{kKelModalityModal});
}

TEST(TDialogConfiguration, OlderRecordTurnsItsNonEmptyTextsIntoStrings) {
    KelDialogOptions older;
    KelGetDefaultDialogOptions(&older);
    older.optionFlags = 0x80;
    older.location = Point{40, 50};
    SetPascal(older.windowTitle, "Open Report");
    SetPascal(older.savedFileName, "Q3.txt");
    older.preferenceKey = 3;
    Handle items = NewHandleClear(sizeof(KelMenuItemSpec));
    older.popupExtension = items;

    TDialogConfiguration configuration(&older, NoEvents, nullptr, nullptr, nullptr);
    EXPECT_EQ(keltest::ValueOf(configuration.optionFlags), 0x80u);
    EXPECT_EQ(keltest::ValueOf(configuration.location.h), 50);
    EXPECT_TRUE(Same(keltest::ValueOf(configuration.windowTitle), "Open Report"));
    EXPECT_TRUE(Same(keltest::ValueOf(configuration.saveFileName), "Q3.txt"));
    EXPECT_EQ(keltest::ValueOf(configuration.clientName), nullptr);
    EXPECT_EQ(keltest::ValueOf(configuration.message), nullptr);
    EXPECT_EQ(keltest::ValueOf(configuration.preferenceKey), 3u);
    EXPECT_EQ(keltest::ValueOf(configuration.legacyPopupExtension), items);
    EXPECT_EQ(keltest::ValueOf(configuration.popupExtension), nullptr);
    EXPECT_EQ(keltest::ValueOf(configuration.selectionType), FourCharCode{typeFileSpec});
    DisposeHandle(items);
}

} // namespace
