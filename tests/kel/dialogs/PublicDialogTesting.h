#pragma once

// Dialogs made through the public create calls and run through KelDialogRun on real temporary
// folders, with a client that writes down what it hears.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "kel/dialogs/KelGetFileDialog.h"
#include "tests/kel/interface/EventRecorder.h"

#include <filesystem>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace keltest {

// A type list in the relocatable block the create calls take.
class TypeListHandle {
public:
    TypeListHandle(FourCharCode creator, std::initializer_list<FourCharCode> types);
    ~TypeListHandle();
    TypeListHandle(const TypeListHandle&) = delete;
    TypeListHandle& operator=(const TypeListHandle&) = delete;

    KelTypeList** Get() const { return reinterpret_cast<KelTypeList**>(handle); }

private:
    Handle handle;
};

KelDialogCreationOptions Options(uint32_t modality = kKelModalityAppModal,
                                 uint32_t optionFlags = kKelOptDefaults);

struct PublicDialog {
    PublicDialog();
    ~PublicDialog();
    PublicDialog(const PublicDialog&) = delete;
    PublicDialog& operator=(const PublicDialog&) = delete;

    // Points the dialog at a folder before it runs (the set-location message).
    void StartIn(const std::filesystem::path& folder);
    // Runs a modal dialog; work acts on it from inside its loop. Returns the user action.
    uint32_t RunModal(const std::function<void()>& work);
    // The reply's items as absolute paths; status gets the reply's status.
    std::vector<std::string> ReplyPaths(StatusCode* status = nullptr);
    // The dialog object behind the reference.
    KelGetFileDialog& Dialog() const { return *static_cast<KelGetFileDialog*>(dialog); }

    KelDialogRef dialog = nullptr;
    EventRecorder recorder;
    // The items of every type popup choice the client heard of.
    std::vector<KelMenuItemSpec> popupChoices;
};

// Runs work from inside whatever loop runs once the condition holds.
void When(const std::function<bool()>& condition, const std::function<void()>& work);
// Acts on the window that comes up in front of window.
void WhenInFront(WindowRef window, const std::function<void(WindowRef)>& work);
// The absolute paths of a descriptor list's items, or of one descriptor.
std::vector<std::string> PathsOf(const BEDesc& desc);
// A node's "bfrf" descriptor; the caller disposes of it.
BEDesc DescOf(const std::filesystem::path& path);
// The titles of the popup's entries, "-" for a separator.
std::vector<std::string> MenuTitles(const __KelDialog& dialog);

} // namespace keltest
