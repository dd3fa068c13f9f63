#pragma once

// The dialogs that choose a file, a folder, a volume or any object, and the one that makes a new
// folder. They differ from the open dialog in their window and in what accepting means.

#include "kel/dialogs/KelGetFileDialog.h"

class KelChooseFileDialog : public KelGetFileDialog {
public:
    explicit KelChooseFileDialog(const TDialogConfiguration& configuration)
        : KelGetFileDialog(configuration, BCSTR("ChooseFile"), kKelUserActionChoose) {}
};

class KelChooseFolderDialog : public KelGetFileDialog {
public:
    explicit KelChooseFolderDialog(const TDialogConfiguration& configuration)
        : KelGetFileDialog(configuration, BCSTR("ChooseFolder"), kKelUserActionChoose) {}
};

class KelChooseVolumeDialog : public KelGetFileDialog {
public:
    explicit KelChooseVolumeDialog(const TDialogConfiguration& configuration)
        : KelGetFileDialog(configuration, BCSTR("ChooseVolume"), kKelUserActionChoose) {}
};

class KelChooseObjectDialog : public KelGetFileDialog {
public:
    explicit KelChooseObjectDialog(const TDialogConfiguration& configuration)
        : KelGetFileDialog(configuration, BCSTR("ChooseObject"), kKelUserActionChoose) {}
};

class KelNewFolderDialog : public KelGetFileDialog {
public:
    explicit KelNewFolderDialog(const TDialogConfiguration& configuration)
        : KelGetFileDialog(configuration, BCSTR("NewFolder"), kKelUserActionNewFolder) {}
};
