#pragma once

// Browse dialogs on real temporary folders, driven headless. A BrowseDialogRun makes a dialog of
// the open kind on a folder and records what its client hears; the helpers find rows and
// buttons on the window the way a user's clicks would.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "kel/dialogs/TBrowseDialog.h"
#include "kel/interface/KelDialogRules.h"
#include "tests/kel/interface/EventRecorder.h"
#include "tests/support/HeadlessWaiting.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace keltest {

// The smallest concrete browse dialog: an open dialog's rules and title, its items set up first
// as a concrete dialog does.
class TestBrowseDialog : public TBrowseDialog {
public:
    TestBrowseDialog(const TDialogConfiguration& configuration, const BEDesc* location);
    TStringRef GetDefaultButtonTitle() override;
    StatusCode InitDialog() override;
};

// How a test dialog is made, beyond its location and modality.
struct BrowseDialogSetup {
    uint32_t optionFlags = kKelOptDefaults;
    WindowRef parent = nullptr;
    // Changes the options record before the dialog is made.
    std::function<void(KelDialogCreationOptions&)> adjust;
    // Whether the client lets an item of that path through; everything when empty.
    std::function<bool(const std::string&)> allows;
};

BrowseDialogSetup Adjusting(std::function<void(KelDialogCreationOptions&)> adjust);
BrowseDialogSetup Allowing(std::function<bool(const std::string&)> allows);
BrowseDialogSetup OnParent(WindowRef parent);

struct BrowseDialogRun {
    // A dialog on location (nothing: the saved or last resort place) with the modality.
    BrowseDialogRun(const std::filesystem::path& location, uint32_t modality,
                    BrowseDialogSetup setup = {});
    ~BrowseDialogRun();
    BrowseDialogRun(const BrowseDialogRun&) = delete;
    BrowseDialogRun& operator=(const BrowseDialogRun&) = delete;

    // Runs a modal dialog; work acts on it from inside its loop. Returns the user action.
    uint32_t RunModal(const std::function<void()>& work);
    // The chosen items of the reply as absolute paths; empty on failure.
    std::vector<std::string> ReplyPaths(StatusCode* status = nullptr);

    TestBrowseDialog* dialog = nullptr;
    EventRecorder recorder;
    std::function<bool(const std::string&)> allows;
};

// Forgets what the test dialogs remembered: their folder, size and place.
void ForgetDialogPrefs();
// Switches the open dialogs' view style for the next dialogs.
void UseListView(bool list);
// The names of the selected rows, and of the target's rows once listed.
std::vector<std::string> SelectedNames(TBrowseDialog& dialog);
std::string TargetName(TBrowseDialog& dialog);
// The middle of a row of the list view, in window content coordinates.
BGPoint ListRowPoint(TBrowseDialog& dialog, int row);
// Clicks a row of the list once the target shows at least that many rows.
void ClickListRow(TBrowseDialog& dialog, int row, uint32_t modifiers = 0);
// The node of a path, and the control of an id in the dialog's window.
TKelNode NodeOf(const std::filesystem::path& path);
ControlRef ControlOf(TBrowseDialog& dialog, int16_t item);
// Clicks the control of that id.
void ClickItem(TBrowseDialog& dialog, int16_t item);
// The frame of the control of that id, in window content coordinates.
BGRect FrameIn(TBrowseDialog& dialog, int16_t item);
// Runs a modeless dialog on the folder, hands it to work, and ends it if work did not.
void WithModelessDialog(const std::filesystem::path& folder,
                        const std::function<void(TBrowseDialog&)>& work);

} // namespace keltest
