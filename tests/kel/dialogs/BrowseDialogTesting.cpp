#include "tests/kel/dialogs/BrowseDialogTesting.h"

#include "basalt/gridbrowser/GridBrowser.h"
#include "kel/foundation/KelBundle.h"
#include "kel/foundation/TKelPrefs.h"
#include "kel/foundation/TKelPrefsStore.h"
#include "kel/interface/KelStartup.h"
#include "tests/kel/browser/BrowserWindow.h"
#include "tests/kel/nodes/KelNodeTesting.h"

#include <basalt/files/BFRef.h>
#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;

namespace keltest {

TestBrowseDialog::TestBrowseDialog(const TDialogConfiguration& configuration,
                                   const BEDesc* location)
    : TBrowseDialog(BCSTR("Get File"), kKelUserActionOpen, TStringRef(BCSTR("GetFile")),
                    configuration, location, BCSTR("KelPanelFileListModeForOpenMode")) {}

TStringRef TestBrowseDialog::GetDefaultButtonTitle() {
    return BundleText("Open Button");
}

namespace {

// The path a reply item names, or "" when it names none.
std::string PathOf(const BEDesc& item) {
    BEDesc ref{typeNull, nullptr};
    std::string path;
    if (BECoerceDesc(&item, typeBFRef, &ref) == noErr) {
        BFRef file;
        uint8_t bytes[4096] = {};
        if (BEGetDescData(&ref, &file, sizeof file) == noErr &&
            BFRefMakePath(&file, bytes, sizeof bytes) == noErr) {
            path = reinterpret_cast<char*>(bytes);
        }
        BEDisposeDesc(&ref);
    }
    return path;
}

Boolean FilterByPath(BEDesc* item, void*, void* clientData, int16_t) {
    auto* run = static_cast<BrowseDialogRun*>(clientData);
    return !run->allows || run->allows(PathOf(*item));
}

void RecordEvent(long selector, KelCBRec* record, void* clientData) {
    EventRecorder::Record(selector, record, &static_cast<BrowseDialogRun*>(clientData)->recorder);
}

} // namespace

StatusCode TestBrowseDialog::InitDialog() {
    SetupDialogItems();
    return TBrowseDialog::InitDialog();
}

BrowseDialogSetup Adjusting(std::function<void(KelDialogCreationOptions&)> adjust) {
    BrowseDialogSetup setup;
    setup.adjust = std::move(adjust);
    return setup;
}

BrowseDialogSetup Allowing(std::function<bool(const std::string&)> allows) {
    BrowseDialogSetup setup;
    setup.allows = std::move(allows);
    return setup;
}

BrowseDialogSetup OnParent(WindowRef parent) {
    BrowseDialogSetup setup;
    setup.parent = parent;
    return setup;
}

BrowseDialogRun::BrowseDialogRun(const std::filesystem::path& location, uint32_t modality,
                                 BrowseDialogSetup setup)
    : allows(std::move(setup.allows)) {
    EnsureKelInitialized();
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.modality = modality;
    options.optionFlags = setup.optionFlags;
    options.parentWindow = setup.parent;
    if (setup.adjust) {
        setup.adjust(options);
    }
    TDialogConfiguration configuration(&options, RecordEvent, nullptr,
                                       allows ? FilterByPath : nullptr, this);
    ApplyDialogRules(configuration, KelDialogKind::kGetFile);
    BEDesc desc{typeNull, nullptr};
    const TKelNode node = location.empty() ? TKelNode() : kelnodetest::NodeAt(location);
    if (!node.IsEmpty()) {
        EXPECT_EQ(GetNodeAsBEDesc(node.PeekNodeRef(), &desc), noErr);
    }
    dialog = new TestBrowseDialog(configuration, node.IsEmpty() ? nullptr : &desc);
    BEDisposeDesc(&desc);
}

BrowseDialogRun::~BrowseDialogRun() {
    KelDialogDispose(dialog);
    HeadlessDriver::RunUntilIdle();
}

uint32_t BrowseDialogRun::RunModal(const std::function<void()>& work) {
    HeadlessDriver::Soon([work] { work(); });
    EXPECT_EQ(KelDialogRun(dialog), noErr);
    return KelDialogGetUserAction(dialog);
}

std::vector<std::string> BrowseDialogRun::ReplyPaths(StatusCode* status) {
    KelReplyRecord reply{};
    const StatusCode got = KelDialogGetReply(dialog, &reply);
    if (status != nullptr) {
        *status = got;
    }
    std::vector<std::string> paths;
    BEDescList list = reply.selection;
    long count = 0;
    BECountItems(&list, &count);
    for (long index = 1; index <= count; ++index) {
        BEDesc item{typeNull, nullptr};
        if (BEGetNthDesc(&list, index, typeWildCard, nullptr, &item) == noErr) {
            paths.push_back(PathOf(item));
            BEDisposeDesc(&item);
        }
    }
    KelDisposeReply(&reply);
    return paths;
}

void ForgetDialogPrefs() {
    TKelPrefs prefs;
    prefs.SetClientKeys(TStringRef(BCSTR("GetFile")), TStringRef(BCSTR("0")));
    for (BCStringRef leaf : {kKelPrefDialogPath, kKelPrefDialogHomeDirectoryPath,
                             kKelPrefDialogSize, kKelPrefDialogPosition}) {
        kel_prefs::RemoveAppValue(prefs.CreateKey(leaf));
    }
    BCPreferencesAppSynchronize(kBCPreferencesCurrentApplication);
}

void UseListView(bool list) {
    TKelPrefs prefs;
    prefs.SetView(list ? TKelPrefs::kListView : TKelPrefs::kColumnView,
                  BCSTR("KelPanelFileListModeForOpenMode"));
}

std::vector<std::string> SelectedNames(TBrowseDialog& dialog) {
    TKelNodeArray selection;
    dialog.GetSelection(selection);
    return NamesOf(selection);
}

std::string TargetName(TBrowseDialog& dialog) {
    TKelNode target;
    dialog.Target(target);
    return target.IsEmpty() ? std::string() : NameOf(target);
}

BGPoint ListRowPoint(TBrowseDialog& dialog, int row) {
    ControlRef control = dialog.Browser()->Control();
    BGRect frame = BGRectZero;
    BTViewGetBounds(control, &frame);
    BTViewConvertRect(&frame, control, nullptr);
    uint16_t height = 0;
    GetGridBrowserTableViewRowHeight(control, &height);
    int32_t header = 0;
    GetThemeMetric(kBTThemeMetricListHeaderHeight, &header);
    return BGPoint{frame.origin.x + 60, frame.origin.y + header + (row + 0.5) * height};
}

void ClickListRow(TBrowseDialog& dialog, int row, uint32_t modifiers) {
    TKelNode target;
    EXPECT_TRUE(RunUntil([&] {
        TKelNodeArray rows;
        return dialog.Target(target) == noErr &&
               dialog.Browser()->GetItems(&target, false, 0, rows) == noErr &&
               int(rows.size()) > row;
    })) << "the target never showed row "
        << row;
    HeadlessDriver::ClickAt(dialog.GetWindow(), ListRowPoint(dialog, row), modifiers);
    HeadlessDriver::RunUntilIdle();
}

TKelNode NodeOf(const std::filesystem::path& path) {
    return kelnodetest::NodeAt(path);
}

ControlRef ControlOf(TBrowseDialog& dialog, int16_t item) {
    return dialog.GetControlFromLayout(item);
}

void ClickItem(TBrowseDialog& dialog, int16_t item) {
    HeadlessDriver::Click(dialog.GetWindow(), "kels", item);
    HeadlessDriver::RunUntilIdle();
}

BGRect FrameIn(TBrowseDialog& dialog, int16_t item) {
    ControlRef control = ControlOf(dialog, item);
    BGRect frame = BGRectZero;
    BTViewGetBounds(control, &frame);
    BTViewConvertRect(&frame, control, nullptr);
    return frame;
}

void WithModelessDialog(const std::filesystem::path& folder,
                        const std::function<void(TBrowseDialog&)>& work) {
    BrowseDialogRun run(folder, kKelModalityModeless);
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    HeadlessDriver::RunUntilIdle();
    work(*run.dialog);
    if (run.dialog->IsRunning()) {
        KelCustomControl(run.dialog, kKelCtlTerminate, nullptr);
    }
}

} // namespace keltest
