#pragma once

// An open dialog on a scratch tree with the user's places set up (Desktop, Documents, one
// bookmark), for the where and path popups: they are opened the way a user opens them, and
// what they show while open is read off the menu.

#include "tests/kel/dialogs/BrowseDialogTesting.h"

#include <gtest/gtest.h>

namespace keltest {

class LocationPopupTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // A modeless dialog on the folder, running.
    void Open(const std::filesystem::path& folder, BrowseDialogSetup setup = {});
    // Shows the where popup in place of the path popup (the open windows have it, hidden, where
    // the top row covers it).
    void ShowWherePopup();
    // Opens the popup of that control, runs whileOpen, and answers with the item (0 dismisses
    // it). The titles the menu showed, "-" for a separator.
    std::vector<std::string> Pick(int16_t control, MenuItemIndex choice = 0,
                                  const std::function<void()>& whileOpen = {});
    // The recent places the popups read, newest first, as the dialogs store them.
    void SetRecents(const std::vector<std::filesystem::path>& folders);
    void AddBookmark(const std::filesystem::path& folder, const std::string& label);
    // Runs until the dialog shows that folder.
    bool ShowsFolder(const std::filesystem::path& folder);

    std::filesystem::path home;
    std::filesystem::path tree;
    std::unique_ptr<BrowseDialogRun> run;
};

// The titles of a menu's items in order, "-" for a separator.
std::vector<std::string> MenuTitles(MenuRef menu);
// The titles from the first to the last of a range, for comparing a group of a menu.
std::vector<std::string> Slice(const std::vector<std::string>& titles, size_t first, size_t end);
// The index of the first title equal to text, or the size if none.
size_t IndexOf(const std::vector<std::string>& titles, const std::string& text);

} // namespace keltest
