// Every exported call, given what a careless client might pass: null records and outs, dead
// dialogs, dialogs of the wrong class, absurd numbers and texts. Each answers with its status;
// nothing crashes, leaks or lands under HOME. Modal runs are left out: they would wait for a user.

#include "tests/kel/interface/PackedField.h"
#include "tests/support/TestEnvironment.h"

#include <basalt/files/BEDesc.h>
#include <climits>
#include <cstring>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <kel/KelServices.h>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

void NoEvents(long, KelCBRec*, void*) {}

struct Case {
    std::string what;
    std::function<StatusCode()> call;
    StatusCode expected;
};

void ExpectStatuses(const std::vector<Case>& cases, const std::string& context = {}) {
    for (const Case& c : cases)
        EXPECT_EQ(c.call(), c.expected) << context << c.what;
}

// The defaults, with the document name that the ask discard dialog needs.
KelDialogCreationOptions Defaults() {
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.saveFileName = BCSTR("Document");
    return options;
}

using CreateCall = std::function<StatusCode(const KelDialogCreationOptions*, KelDialogRef*)>;

struct Creator {
    std::string name;
    CreateCall create;
    bool asks; // an ask dialog, not a browse dialog
    bool saves;
};

// Every create call, made once: the cases keep references to these.
const std::vector<Creator>& Creators() {
    static const std::vector<Creator> creators = {
        {"get file",
         [](auto* o, auto* out) {
             return KelCreateGetFileDialog(o, nullptr, NoEvents, nullptr, nullptr, nullptr, out);
         },
         false, false},
        {"put file",
         [](auto* o, auto* out) { return KelCreatePutFileDialog(o, 0, 0, NoEvents, nullptr, out); },
         false, true},
        {"choose file",
         [](auto* o, auto* out) {
             return KelCreateChooseFileDialog(o, nullptr, NoEvents, nullptr, nullptr, nullptr, out);
         },
         false, false},
        {"choose folder",
         [](auto* o, auto* out) {
             return KelCreateChooseFolderDialog(o, NoEvents, nullptr, nullptr, out);
         },
         false, false},
        {"choose volume",
         [](auto* o, auto* out) {
             return KelCreateChooseVolumeDialog(o, NoEvents, nullptr, nullptr, out);
         },
         false, false},
        {"choose object",
         [](auto* o, auto* out) {
             return KelCreateChooseObjectDialog(o, NoEvents, nullptr, nullptr, nullptr, out);
         },
         false, false},
        {"new folder",
         [](auto* o, auto* out) { return KelCreateNewFolderDialog(o, NoEvents, nullptr, out); },
         false, false},
        {"ask save",
         [](auto* o, auto* out) {
             return KelCreateAskSaveChangesDialog(o, 1, NoEvents, nullptr, out);
         },
         true, false},
        {"ask discard",
         [](auto* o, auto* out) {
             return KelCreateAskDiscardChangesDialog(o, NoEvents, nullptr, out);
         },
         true, false},
        {"ask review",
         [](auto* o, auto* out) {
             return KelCreateAskReviewDocumentsDialog(o, 2, NoEvents, nullptr, out);
         },
         true, false},
    };
    return creators;
}

// A create call's status; a refused call must leave the out untouched.
StatusCode CreateAndDispose(const CreateCall& create, const KelDialogCreationOptions* options) {
    KelDialogRef dialog = nullptr;
    const StatusCode status = create(options, &dialog);
    if (status != noErr) {
        EXPECT_EQ(dialog, nullptr) << "a refused create call made a dialog";
    }
    KelDialogDispose(dialog);
    return status;
}

// A reply as the library clears it before anything else. Compared field by field: the
// descriptor's padding inside the record holds whatever its copy brought along.
bool IsClearedReply(const KelReplyRecord& reply) {
    const BEDesc selection = reply.selection;
    const char zeros[sizeof reply.reserved] = {};
    return reply.version == 2 && reply.validRecord == 0 && reply.replacing == 0 &&
           reply.isStationery == 0 && reply.translationNeeded == 0 &&
           selection.descriptorType == typeNull && selection.dataHandle == nullptr &&
           reply.keyScript == 0 && reply.fileTranslation == nullptr && reply.reserved1 == 0 &&
           reply.saveFileName == nullptr && reply.saveFileExtensionHidden == 0 &&
           reply.reserved2 == 0 && std::memcmp(reply.reserved, zeros, sizeof zeros) == 0;
}

// Every file and folder below root, so that a test can show it wrote nothing there.
std::set<std::string> Tree(const fs::path& root) {
    std::set<std::string> entries;
    std::error_code error;
    for (fs::recursive_directory_iterator it(root, error), end; !error && it != end;
         it.increment(error))
        entries.insert(it->path().string());
    return entries;
}

class BadInput : public ::testing::Test {
protected:
    void SetUp() override { homeBefore = Tree(keltest::ScratchHome()); }
    void TearDown() override {
        EXPECT_EQ(Tree(keltest::ScratchHome()), homeBefore) << "bad input wrote under HOME";
    }

private:
    std::set<std::string> homeBefore;
};

} // namespace

TEST_F(BadInput, NullRecordsAndOutsAreRefusedWithoutSideEffects) {
    const KelDialogCreationOptions defaults = Defaults();
    std::vector<Case> cases = {
        {"default options", [] { return KelGetDefaultDialogOptions(nullptr); }, paramErr},
        {"default creation options", [] { return KelGetDefaultDialogCreationOptions(nullptr); },
         paramErr},
        {"dispose reply", [] { return KelDisposeReply(nullptr); }, paramErr},
        {"complete save", [] { return KelCompleteSave(nullptr, 0); }, paramErr},
        {"translate file",
         [] { return KelTranslateFile(nullptr, nullptr, INT32_MIN, nullptr, nullptr, ~0u); },
         kKelUnimplementedErr},
        {"setup preview", [] { return KelSetupPreview(nullptr, nullptr, nullptr, nullptr); },
         paramErr},
        {"preview area", [] { return KelSetPreviewArea(nullptr, nullptr); }, paramErr},
        {"load preview", [] { return KelLoadPreview(nullptr, nullptr, nullptr); }, paramErr},
        {"draw preview", [] { return KelDrawPreviewInContext(nullptr, nullptr); }, paramErr},
        {"create preview", [] { return KelCreatePreview(nullptr, 0, nullptr, -1); }, paramErr},
    };
    for (const Creator& creator : Creators())
        cases.push_back({creator.name + " without out",
                         [&] { return creator.create(&defaults, nullptr); }, paramErr});
    for (const Creator& creator : Creators())
        if (creator.asks)
            cases.push_back({creator.name + " without options",
                             [&] { return CreateAndDispose(creator.create, nullptr); }, paramErr});
    // The blocking browse calls have nowhere to put their answer.
    const std::vector<std::pair<std::string, std::function<StatusCode()>>> blocking = {
        {"get file",
         [] {
             return KelGetFile(nullptr, nullptr, nullptr, NoEvents, nullptr, nullptr, nullptr,
                               nullptr);
         }},
        {"put file", [] { return KelPutFile(nullptr, nullptr, nullptr, NoEvents, 0, 0, nullptr); }},
        {"choose file",
         [] {
             return KelChooseFile(nullptr, nullptr, nullptr, NoEvents, nullptr, nullptr, nullptr,
                                  nullptr);
         }},
        {"choose folder",
         [] { return KelChooseFolder(nullptr, nullptr, nullptr, NoEvents, nullptr, nullptr); }},
        {"choose volume",
         [] { return KelChooseVolume(nullptr, nullptr, nullptr, NoEvents, nullptr, nullptr); }},
        {"choose object",
         [] { return KelChooseObject(nullptr, nullptr, nullptr, NoEvents, nullptr, nullptr); }},
        {"new folder", [] { return KelNewFolder(nullptr, nullptr, nullptr, NoEvents, nullptr); }},
    };
    for (const auto& [name, call] : blocking)
        cases.push_back({name + " without reply", call, paramErr});
    ExpectStatuses(cases);
    KelDisposePreviewReference(nullptr);
    KelDisposePreviewReference(KelCreatePreviewReference());
}

TEST_F(BadInput, BlockingCallsRefuseBeforeAnyDialogAndLeaveTheAnswerAlone) {
    KelDialogOptions empty;
    KelGetDefaultDialogOptions(&empty);
    KelDialogOptions withPopup = empty;
    Handle items = NewHandleClear(sizeof(KelMenuItemSpec));
    withPopup.popupExtension = items;
    KelDialogOptions keepingAliases = empty;
    keepingAliases.optionFlags = keepingAliases.optionFlags | kKelOptKeepAliases;
    KelReplyRecord reply;
    uint32_t answer = 0xA5A5A5A5;

    const std::vector<Case> asks = {
        {"ask save, no options",
         [&] { return KelAskSaveChanges(nullptr, 1, &answer, NoEvents, nullptr); }, paramErr},
        {"ask save, no name",
         [&] { return KelAskSaveChanges(&empty, 1, &answer, NoEvents, nullptr); }, paramErr},
        {"custom ask save, no options",
         [&] { return KelCustomAskSaveChanges(nullptr, &answer, NoEvents, nullptr); }, paramErr},
        {"custom ask save, no message",
         [&] { return KelCustomAskSaveChanges(&empty, &answer, NoEvents, nullptr); }, paramErr},
        {"ask discard, no options",
         [&] { return KelAskDiscardChanges(nullptr, &answer, NoEvents, nullptr); }, paramErr},
        {"ask discard, no name",
         [&] { return KelAskDiscardChanges(&empty, &answer, NoEvents, nullptr); }, paramErr},
    };
    ExpectStatuses(asks);
    EXPECT_EQ(answer, 0xA5A5A5A5u) << "a refused ask call wrote its answer";

    // The open and save calls' rules are applied after the reply was cleared.
    const std::vector<std::pair<std::string, std::function<StatusCode()>>> browse = {
        {"get file",
         [&] {
             return KelGetFile(nullptr, &reply, &withPopup, nullptr, nullptr, nullptr, nullptr,
                               nullptr);
         }},
        {"put file",
         [&] { return KelPutFile(nullptr, &reply, &withPopup, nullptr, 0, 0, nullptr); }},
        {"put file keeping aliases",
         [&] { return KelPutFile(nullptr, &reply, &keepingAliases, NoEvents, 0, 0, nullptr); }},
    };
    for (const auto& [name, call] : browse) {
        std::memset(&reply, 0xEE, sizeof reply);
        EXPECT_EQ(call(), paramErr) << name;
        EXPECT_TRUE(IsClearedReply(reply)) << name;
    }
    DisposeHandle(items);
}

TEST_F(BadInput, DeadAndForeignDialogsAreRefusedByEveryOperation) {
    const KelDialogCreationOptions defaults = Defaults();
    KelDialogRef disposedAsk = nullptr;
    KelDialogRef disposedBrowse = nullptr;
    ASSERT_EQ(KelCreateAskSaveChangesDialog(&defaults, 1, NoEvents, nullptr, &disposedAsk), noErr);
    ASSERT_EQ(KelCreateChooseFolderDialog(&defaults, NoEvents, nullptr, nullptr, &disposedBrowse),
              noErr);
    KelDialogDispose(disposedAsk);
    KelDialogDispose(disposedBrowse);
    KelReplyRecord notADialog;

    const std::vector<std::pair<std::string, KelDialogRef>> dead = {
        {"null", nullptr},
        {"disposed ask", disposedAsk},
        {"disposed browse", disposedBrowse},
        {"foreign pointer", reinterpret_cast<KelDialogRef>(&notADialog)},
    };
    for (const auto& entry : dead) {
        // Named apart from the pair: the cases' lambdas capture it.
        const std::string& name = entry.first;
        const KelDialogRef dialog = entry.second;
        KelReplyRecord reply;
        std::memset(&reply, 0xEE, sizeof reply);
        ExpectStatuses(
            {
                {"run", [&] { return KelDialogRun(dialog); }, paramErr},
                {"custom control", [&] { return KelCustomControl(dialog, 30, nullptr); }, paramErr},
                {"get reply", [&] { return KelDialogGetReply(dialog, &reply); }, paramErr},
                {"set save name", [&] { return KelDialogSetSaveFileName(dialog, BCSTR("x")); },
                 paramErr},
                {"hide extension", [&] { return KelDialogSetSaveFileExtensionHidden(dialog, 1); },
                 paramErr},
                {"type identifiers",
                 [&] { return KelDialogSetFilterTypeIdentifiers(dialog, nullptr); }, paramErr},
            },
            name + ": ");
        EXPECT_TRUE(IsClearedReply(reply)) << name;
        EXPECT_EQ(KelDialogGetUserAction(dialog), 0u) << name;
        EXPECT_EQ(KelDialogGetWindow(dialog), nullptr) << name;
        EXPECT_EQ(KelDialogGetSaveFileName(dialog), nullptr) << name;
        EXPECT_EQ(KelDialogGetSaveFileExtensionHidden(dialog), 0) << name;
        KelDialogDispose(dialog);
    }
}

TEST_F(BadInput, OperationsOfAnotherClassAnswerWrongClass) {
    const KelDialogCreationOptions defaults = Defaults();
    for (const Creator& creator : Creators()) {
        if (creator.saves)
            continue;
        KelDialogRef dialog = nullptr;
        ASSERT_EQ(creator.create(&defaults, &dialog), noErr) << creator.name;
        std::vector<Case> cases = {
            {"hide extension", [&] { return KelDialogSetSaveFileExtensionHidden(dialog, 1); },
             kKelWrongDialogClassErr},
            {"save name", [&] { return KelDialogSetSaveFileName(dialog, BCSTR("name")); }, noErr},
            {"no save name", [&] { return KelDialogSetSaveFileName(dialog, nullptr); }, noErr},
        };
        if (creator.asks) {
            cases.push_back({"type identifiers",
                             [&] { return KelDialogSetFilterTypeIdentifiers(dialog, nullptr); },
                             kKelWrongDialogClassErr});
            for (long selector : {0L, 1L, 29L, 31L, -1L, LONG_MAX, LONG_MIN})
                cases.push_back(
                    {"custom control " + std::to_string(selector),
                     [&, selector] { return KelCustomControl(dialog, selector, nullptr); },
                     kKelWrongDialogClassErr});
            cases.push_back({"reply",
                             [&] {
                                 KelReplyRecord reply;
                                 const StatusCode status = KelDialogGetReply(dialog, &reply);
                                 EXPECT_TRUE(IsClearedReply(reply));
                                 return status;
                             },
                             kKelWrongDialogClassErr});
        }
        // Ending a dialog that never ran finds it in the wrong state, every time.
        cases.push_back({"end before run", [&] { return KelCustomControl(dialog, 30, nullptr); },
                         kKelWrongStateErr});
        cases.push_back({"end again", [&] { return KelCustomControl(dialog, 30, nullptr); },
                         kKelWrongStateErr});
        ExpectStatuses(cases, creator.name + ": ");
        EXPECT_EQ(KelDialogGetUserAction(dialog), 0u) << creator.name;
        KelDialogDispose(dialog);
    }
}

namespace {

BCStringRef HugeText() {
    std::u16string text(1 << 20, u'\u65E5');
    return BCStringCreateWithCharacters(nullptr, reinterpret_cast<const UniChar*>(text.data()),
                                        BCIndex(text.size()));
}

BCStringRef LoneSurrogatesAndNuls() {
    const UniChar units[] = {0xD800, 'a', 0, 0xDFFF, 0xDC00, 0xD83D, 0, 0xFFFF};
    return BCStringCreateWithCharacters(nullptr, units, BCIndex(std::size(units)));
}

BCStringRef HighBytesInTheAppEncoding() {
    uint8_t bytes[255];
    for (size_t i = 0; i < sizeof bytes; ++i)
        bytes[i] = uint8_t(0x80 + i % 0x80);
    return BCStringCreateWithBytes(nullptr, bytes, BCIndex(sizeof bytes), kBCStringEncodingMacRoman,
                                   false);
}

} // namespace

TEST_F(BadInput, AbsurdOptionsMakeDialogsThatKeepTheirTexts) {
    for (auto make : {HugeText, LoneSurrogatesAndNuls, HighBytesInTheAppEncoding}) {
        BCStringRef text = make();
        ASSERT_NE(text, nullptr);
        KelDialogCreationOptions options = Defaults();
        options.optionFlags = 0xFFFFFFFF & ~uint32_t{kKelOptKeepAliases};
        options.location = Point{-32768, 32767};
        options.preferenceKey = 0xFFFFFFFF;
        options.modality = 0xFFFFFFFF;
        options.clientName = options.windowTitle = options.actionButtonLabel = text;
        options.cancelButtonLabel = options.saveFileName = options.message = text;
        for (const Creator& creator : Creators()) {
            KelDialogRef dialog = nullptr;
            ASSERT_EQ(creator.create(&options, &dialog), noErr) << creator.name;
            BCStringRef kept = KelDialogGetSaveFileName(dialog);
            EXPECT_TRUE(kept != nullptr && BCEqual(kept, text)) << creator.name;
            EXPECT_EQ(KelDialogSetSaveFileName(dialog, text), noErr) << creator.name;
            KelDialogDispose(dialog);
        }
        BCRelease(text);
    }
}

TEST_F(BadInput, AbsurdCountsAndListsAreTakenWithoutHarm) {
    const KelDialogCreationOptions defaults = Defaults();
    for (uint32_t count : {0u, 1u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        KelDialogRef dialog = nullptr;
        EXPECT_EQ(KelCreateAskReviewDocumentsDialog(&defaults, count, NoEvents, nullptr, &dialog),
                  noErr)
            << count;
        KelDialogDispose(dialog);
    }
    for (uint32_t action : {0u, 3u, 0xFFFFFFFFu}) {
        KelDialogRef dialog = nullptr;
        EXPECT_EQ(KelCreateAskSaveChangesDialog(&defaults, action, NoEvents, nullptr, &dialog),
                  noErr)
            << action;
        KelDialogDispose(dialog);
    }

    // Type lists whose count lies about the handle's size: negative, zero and far too many.
    for (int16_t count : {int16_t(-1), int16_t(0), int16_t(INT16_MIN), int16_t(INT16_MAX)}) {
        Handle handle = NewHandleClear(sizeof(KelTypeList));
        auto** list = reinterpret_cast<KelTypeList**>(handle);
        (*list)->componentSignature = 0x2A2A2A2A; // "****"
        (*list)->typeCount = count;
        for (auto create : {KelCreateGetFileDialog, KelCreateChooseFileDialog}) {
            KelDialogRef dialog = nullptr;
            EXPECT_EQ(create(&defaults, list, NoEvents, nullptr, nullptr, nullptr, &dialog), noErr)
                << count;
            KelDialogDispose(dialog);
        }
        DisposeHandle(handle);
    }

    // A popup array that holds things other than strings.
    const int32_t value = -1;
    BCNumberRef number = BCNumberCreate(nullptr, kBCNumberSInt32Type, &value);
    const void* items[] = {number, BCSTR(""), kBCBooleanTrue};
    BCArrayRef popup = BCArrayCreate(nullptr, items, 3, &kBCTypeArrayCallBacks);
    KelDialogCreationOptions options = defaults;
    options.popupExtension = popup;
    for (const Creator& creator : Creators())
        EXPECT_EQ(CreateAndDispose(creator.create, &options), noErr) << creator.name;
    BCRelease(popup);
    BCRelease(number);
}

TEST_F(BadInput, ReplyCallsTakeOddRecordsCalmly) {
    KelReplyRecord reply;
    std::memset(&reply, 0, sizeof reply);
    // A version 0 record predates the save name: whatever sits there is not the library's.
    reply.saveFileName = reinterpret_cast<BCStringRef>(uintptr_t{0x1});
    EXPECT_EQ(KelDisposeReply(&reply), noErr);
    EXPECT_EQ(keltest::ValueOf(reply.saveFileName), reinterpret_cast<BCStringRef>(uintptr_t{0x1}));

    std::memset(&reply, 0, sizeof reply);
    reply.version = 2;
    reply.selection = BEDesc{typeNull, nullptr};
    reply.validRecord = 1;
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(KelDisposeReply(&reply), noErr);
        EXPECT_TRUE(IsClearedReply(reply));
    }
    // Nothing to save into: the call fails and saves nothing.
    EXPECT_NE(KelCompleteSave(&reply, 0xFFFFFFFF), noErr);
}

TEST_F(BadInput, ASheetWithoutParentNeverShows) {
    KelDialogCreationOptions options = Defaults();
    options.modality = kKelModalitySheet;
    for (const Creator& creator : Creators()) {
        KelDialogRef dialog = nullptr;
        ASSERT_EQ(creator.create(&options, &dialog), noErr) << creator.name;
        for (int attempt = 0; attempt < 2; ++attempt)
            EXPECT_EQ(KelDialogRun(dialog), paramErr) << creator.name;
        EXPECT_EQ(KelDialogGetWindow(dialog), nullptr) << creator.name;
        KelDialogDispose(dialog);
    }
}

namespace {

// What the last callback called through a wrapper was given.
struct Seen {
    long selector = 0;
    const void* first = nullptr;
    const void* data = nullptr;
    int16_t number = 0;
} seen;

} // namespace

TEST_F(BadInput, CallbackWrappersHandOnExactlyWhatTheyAreGiven) {
    EXPECT_EQ(NewKelEventUPP(nullptr), nullptr);
    EXPECT_EQ(NewKelPreviewUPP(nullptr), nullptr);
    EXPECT_EQ(NewKelObjectFilterUPP(nullptr), nullptr);
    EXPECT_EQ(NewKelLoadPreviewUPP(nullptr), nullptr);
    DisposeKelEventUPP(nullptr);
    DisposeKelPreviewUPP(nullptr);
    DisposeKelObjectFilterUPP(nullptr);
    DisposeKelLoadPreviewUPP(nullptr);

    auto* const data = reinterpret_cast<void*>(~uintptr_t{0});
    auto* const record = reinterpret_cast<KelCBRec*>(uintptr_t{0x10});
    InvokeKelEventUPP(LONG_MIN, record, data, [](long selector, KelCBRec* r, void* d) {
        seen = {selector, r, d, 0};
    });
    EXPECT_EQ(seen.selector, LONG_MIN);
    EXPECT_EQ(seen.first, record);
    EXPECT_EQ(seen.data, data);

    EXPECT_EQ(InvokeKelPreviewUPP(record, data,
                                  [](KelCBRec* r, void* d) -> Boolean {
                                      seen = {0, r, d, 0};
                                      return 0xFF;
                                  }),
              0xFF);
    EXPECT_EQ(seen.first, record);

    auto* const item = reinterpret_cast<BEDesc*>(uintptr_t{0x20});
    EXPECT_EQ(InvokeKelObjectFilterUPP(item, nullptr, data, INT16_MIN,
                                       [](BEDesc* i, void*, void* d, int16_t mode) -> Boolean {
                                           seen = {0, i, d, mode};
                                           return 0;
                                       }),
              0);
    EXPECT_EQ(seen.first, item);
    EXPECT_EQ(seen.number, INT16_MIN);

    InvokeKelLoadPreviewUPP(record, -1, data, [](void* r, int16_t state, void* d) {
        seen = {0, r, d, state};
    });
    EXPECT_EQ(seen.number, -1);
    EXPECT_EQ(seen.data, data);
    EXPECT_EQ(KelLibraryVersion(), 0x03108000u);
}
