#pragma once

// The small window that asks for the name of a new folder. It runs its own modal loop over the
// browse dialog and only answers a name: making the folder is the caller's part.

#include "kel/dialogs/ITextEditObserver.h"
#include "kel/dialogs/TTextEdit.h"
#include "kel/interface/KelBaseDialog.h"
#include "kel/interface/TKelClient.h"
#include "kel/nodes/TKelNode.h"

#include <memory>

class NewFolderDialog : public KelBaseDialog, public ITextEditObserver {
public:
    enum Result : uint16_t { kRunning = 0, kCancelled = 1, kAccepted = 2 };

    explicit NewFolderDialog(TKelClient& client);
    ~NewFolderDialog() override;

    // Runs the window until the user names a folder that can go into target (true, nameOut set)
    // or cancels (false).
    bool StartCreateNewFolder(const TKelNode& target, TStringRef& nameOut);
    int32_t ItemHit(int16_t item, int16_t part, uint32_t modifiers) override;
    StatusCode InitDialog() override;
    void SetupEventHandler();

    void TextChanged(const TStringRef& text) override;
    void KeyError(TStringRef message) override;
    void FocusChanged(unsigned char) override {}

private:
    bool AcceptName();
    // Whether the user wants a hidden name all the same.
    bool ConfirmDotName() const;
    static StatusCode HandleCommand(EventHandlerCallRef call, EventRef event, void* data);

    uint16_t result = kRunning;
    std::unique_ptr<TTextEdit> nameField;
    TStringRef folderName;
    TKelClient* client;
    TKelNode target;
    EventHandlerRef eventHandler = nullptr;
};
