#include "tests/kel/dialogs/BrowseDialogTesting.h"

#include "basalt/gridbrowser/GridBrowser.h"
#include "kel/foundation/KelBundle.h"
#include "kel/foundation/TKelPrefs.h"
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
    return KelBundle::GetStringResource(BCSTR("Open Button"));
}

BrowseDialogRun::BrowseDialogRun(const std::filesystem::path& location, uint32_t modality,
                                 uint32_t optionFlags) {
    EnsureKelInitialized();
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.modality = modality;
    options.optionFlags = optionFlags;
    TDialogConfiguration configuration(&options, EventRecorder::Record, nullptr, nullptr,
                                       &recorder);
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
        BFRef ref;
        DescType type = 0;
        Size size = 0;
        uint8_t path[4096] = {};
        if (BEGetNthPtr(&list, index, typeBFRef, nullptr, &type, &ref, sizeof ref, &size) ==
                noErr &&
            BFRefMakePath(&ref, path, sizeof path) == noErr) {
            paths.emplace_back(reinterpret_cast<char*>(path));
        }
    }
    KelDisposeReply(&reply);
    return paths;
}

void UseListView(bool list) {
    TKelPrefs prefs;
    prefs.SetView(list ? TKelPrefs::kListView : TKelPrefs::kColumnView,
                  BCSTR("KelPanelFileListModeForOpenMode"));
}

bool RunUntil(const std::function<bool()>& condition, std::chrono::milliseconds deadline) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        HeadlessDriver::RunFor(0.02);
    }
    return true;
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

void ClickItem(TBrowseDialog& dialog, int16_t item) {
    HeadlessDriver::Click(dialog.GetWindow(), "kels", item);
    HeadlessDriver::RunUntilIdle();
}

} // namespace keltest
