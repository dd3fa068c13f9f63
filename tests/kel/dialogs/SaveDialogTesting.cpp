#include "tests/kel/dialogs/SaveDialogTesting.h"

#include "basalt/core/NameCodec.h"
#include "kel/foundation/TKelPrefs.h"
#include "tests/kel/foundation/StringTesting.h"

#include <basalt/files/BEDesc.h>
#include <basalt/files/BFRef.h>
#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;

namespace keltest {

SaveRun::SaveRun(const std::filesystem::path& folder, const SaveSetup& setup) {
    KelDialogCreationOptions options = Options(setup.modality, setup.optionFlags);
    if (!setup.name.empty()) {
        options.saveFileName =
            BCStringCreateWithCString(nullptr, setup.name.c_str(), kBCStringEncodingUTF8);
    }
    options.popupExtension = setup.formats;
    options.parentWindow = setup.parent;
    EXPECT_EQ(KelCreatePutFileDialog(&options, NodeCode("TEXT"), setup.creator,
                                     EventRecorder::Record, &recorder, &dialog),
              noErr);
    if (options.saveFileName != nullptr) {
        BCRelease(options.saveFileName);
    }
    if (dialog != nullptr && !folder.empty()) {
        StartIn(folder);
    }
}

std::string SaveRun::FieldText() const {
    TTextEdit* field = Save().NameField();
    return field != nullptr ? Utf8(field->GetTextContent()) : std::string();
}

bool SaveRun::DefaultButtonActive() const {
    return IsControlActive(Save().GetControlFromLayout(kBrowseDefaultButton));
}

SaveReply ReplyOf(const SaveRun& run) {
    KelReplyRecord reply{};
    SaveReply out;
    out.status = KelDialogGetReply(run.dialog, &reply);
    // Copied first: the record is packed and the field sits unaligned.
    const BEDesc selection = reply.selection;
    const std::vector<std::string> folders = PathsOf(selection);
    out.folder = folders.empty() ? std::string() : folders.front();
    if (reply.saveFileName != nullptr) {
        const TStringRef name(reply.saveFileName);
        std::u16string characters(size_t(name.Length()), u'\0');
        name.CopyCharacters(TRange(0, name.Length()),
                            reinterpret_cast<UniChar*>(characters.data()));
        out.name = basalt::EncodeName(characters);
    }
    out.replacing = reply.replacing != 0;
    out.extensionHidden = reply.saveFileExtensionHidden != 0;
    KelDisposeReply(&reply);
    return out;
}

void RememberSaveForm(bool collapsed, bool extensionHidden) {
    TKelPrefs prefs;
    prefs.SetClientKeys(TStringRef(BCSTR("PutFile")), TStringRef(BCSTR("0")));
    prefs.SetWindowMinimizedPref(collapsed);
    prefs.SetExtensionHiddenPref(extensionHidden);
    BCPreferencesAppSynchronize(kBCPreferencesCurrentApplication);
}

void WhenAlertShows(const SaveRun& run, const std::function<void(WindowRef)>& work) {
    WhenInFront(run.Save().GetWindow(), work);
}

} // namespace keltest
