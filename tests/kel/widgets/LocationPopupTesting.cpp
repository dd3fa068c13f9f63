#include "tests/kel/widgets/LocationPopupTesting.h"

#include "kel/foundation/TKelPrefs.h"
#include "kel/foundation/TKelPrefsStore.h"
#include "kel/nodes/TNodePathHelper.h"
#include "tests/support/TestEnvironment.h"

#include <algorithm>

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;

namespace keltest {

void LocationPopupTest::SetUp() {
    ForgetDialogPrefs();
    UseListView(true);
    home = ScratchHome();
    for (const char* folder : {"Desktop", "Documents"}) {
        fs::create_directories(home / folder);
    }
    WriteFile(home / ".config/user-dirs.dirs",
              "XDG_DESKTOP_DIR=\"$HOME/Desktop\"\nXDG_DOCUMENTS_DIR=\"$HOME/Documents\"\n");
    fs::remove(home / ".config/gtk-3.0/bookmarks");
    SetRecents({});
    tree = MakeScratchFolder("Places");
    fs::create_directories(tree / "Outer" / "Inner");
}

void LocationPopupTest::TearDown() {
    run.reset();
    fs::remove(home / ".config/gtk-3.0/bookmarks");
    fs::remove(home / ".config/user-dirs.dirs");
    SetRecents({});
}

void LocationPopupTest::Open(const fs::path& folder, BrowseDialogSetup setup) {
    run = std::make_unique<BrowseDialogRun>(folder, kKelModalityModeless, std::move(setup));
    ASSERT_EQ(KelDialogRun(run->dialog), noErr);
    ASSERT_TRUE(ShowsFolder(folder));
}

void LocationPopupTest::ShowWherePopup() {
    ControlRef path = ControlOf(*run->dialog, kBrowsePathPopup);
    ControlRef where = ControlOf(*run->dialog, kBrowseWherePopup);
    BGRect frame = BGRectZero;
    BTViewGetFrame(path, &frame);
    HideControl(path);
    BTViewAddSubview(BTViewGetSuperview(path), where);
    BTViewSetFrame(where, &frame);
    ShowControl(where);
}

std::vector<std::string> LocationPopupTest::Pick(int16_t control, MenuItemIndex choice,
                                                 const std::function<void()>& whileOpen) {
    std::vector<std::string> shown;
    HeadlessDriver::WhileMenuOpen([&](MenuRef menu) {
        shown = MenuTitles(menu);
        if (whileOpen) {
            whileOpen();
        }
    });
    HeadlessDriver::ChooseMenuItem(choice);
    ClickItem(*run->dialog, control);
    HeadlessDriver::RunUntilIdle();
    return shown;
}

void LocationPopupTest::SetRecents(const std::vector<fs::path>& folders) {
    TObjectRef list(BCArrayCreateMutable(nullptr, 0, &kBCTypeArrayCallBacks), false);
    for (const fs::path& folder : folders) {
        TNodePathHelper helper(NodeOf(folder).PeekNodeRef());
        TObjectRef url(helper.CopyURL(), false);
        ASSERT_FALSE(url.IsNil()) << folder;
        BCArrayAppendValue(static_cast<BCMutableArrayRef>(const_cast<void*>(list.Get())),
                           BCURLGetString(static_cast<BCURLRef>(url.Get())));
    }
    kel_prefs::SetSharedValue(TKelPrefs::RecentFoldersKey(),
                              folders.empty() ? nullptr : list.Get());
}

void LocationPopupTest::AddBookmark(const fs::path& folder, const std::string& label) {
    const fs::path file = home / ".config/gtk-3.0/bookmarks";
    WriteFile(file, ReadFile(file) + "file://" + folder.string() + " " + label + "\n");
}

bool LocationPopupTest::ShowsFolder(const fs::path& folder) {
    const TKelNode wanted = NodeOf(folder);
    return RunUntil([&] {
        TKelNode target;
        return run->dialog->Target(target) == noErr && target == wanted;
    });
}

std::vector<std::string> MenuTitles(MenuRef menu) {
    std::vector<std::string> titles;
    for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
        MenuItemAttributes attributes = 0;
        GetMenuItemAttributes(menu, item, &attributes);
        BCStringRef text = nullptr;
        CopyMenuItemTextAsBCString(menu, item, &text);
        char buffer[1024] = {};
        if (text != nullptr) {
            BCStringGetCString(text, buffer, sizeof buffer, kBCStringEncodingUTF8);
            BCRelease(text);
        }
        titles.push_back((attributes & kMenuItemAttrSeparator) != 0 ? "-" : buffer);
    }
    return titles;
}

std::vector<std::string> Slice(const std::vector<std::string>& titles, size_t first, size_t end) {
    first = std::min(first, titles.size());
    end = std::clamp(end, first, titles.size());
    return {titles.begin() + long(first), titles.begin() + long(end)};
}

size_t IndexOf(const std::vector<std::string>& titles, const std::string& text) {
    return size_t(std::find(titles.begin(), titles.end(), text) - titles.begin());
}

} // namespace keltest
