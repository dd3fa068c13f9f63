#pragma once

// The dialogs that choose a file, a folder, a volume or any object, and the one that makes a new
// folder: the open dialog without a type popup, each with its own preferences, default button
// and notion of what may be chosen. Which nodes they offer comes from their create call's masks.

#include "kel/dialogs/KelGetFileDialog.h"

// What the five variants share.
class KelChooseDialog : public KelGetFileDialog {
public:
    KelChooseDialog(const char* prefsBase, uint32_t acceptAction, const char* buttonKey,
                    const TDialogConfiguration& configuration, const BEDesc* defaultLocation);

    // Actions that refuse choosing refuse these dialogs.
    bool CanChoose() override;
    TStringRef GetDefaultButtonTitle() override;
    void SetDefaultButtonTitle() override;
    // Only a chosen file belongs in the recent list.
    StatusCode AddSelectionToRecents(const BEDesc&) override { return noErr; }

private:
    const char* buttonKey;
};

class KelChooseFileDialog : public KelChooseDialog {
public:
    explicit KelChooseFileDialog(const TDialogConfiguration& configuration,
                                 const BEDesc* defaultLocation = nullptr);

    StatusCode AddSelectionToRecents(const BEDesc& list) override {
        return KelGetFileDialog::AddSelectionToRecents(list);
    }
};

class KelChooseFolderDialog : public KelChooseDialog {
public:
    explicit KelChooseFolderDialog(const TDialogConfiguration& configuration,
                                   const BEDesc* defaultLocation = nullptr);
};

class KelChooseObjectDialog : public KelChooseDialog {
public:
    explicit KelChooseObjectDialog(const TDialogConfiguration& configuration,
                                   const BEDesc* defaultLocation = nullptr);
};

class KelChooseVolumeDialog : public KelChooseDialog {
public:
    explicit KelChooseVolumeDialog(const TDialogConfiguration& configuration,
                                   const BEDesc* defaultLocation = nullptr);

    // Volumes live at the top: with nothing remembered, the dialog starts there.
    void CopyLastResortTargetPath(TKelNodeArray& path) override;
};

// Accepting makes the folder: the name is asked before the dialog ends, and the reply names the
// folder made.
class KelNewFolderDialog : public KelChooseDialog {
public:
    explicit KelNewFolderDialog(const TDialogConfiguration& configuration,
                                const BEDesc* defaultLocation = nullptr);

    bool CanChoose() override;
    bool ValidateAcceptDialog(uint32_t modifiers) override;
    StatusCode FillReply(KelReplyRecord& reply) override;

    const TKelNode& MadeFolder() const { return madeFolder; }

private:
    TKelNode madeFolder;
};
