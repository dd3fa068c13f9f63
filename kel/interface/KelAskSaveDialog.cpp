#include "kel/interface/KelAskSaveDialog.h"

#include "kel/interface/KelCommandKeys.h"

#include <cctype>

namespace {

constexpr int32_t kDontSaveCommandKey = 3;
constexpr uint16_t kAskSavePosition = 0xA80A;

} // namespace

StatusCode KelAskSaveDialog::CreateDialog() {
    const TStringRef name = SaveFileName();
    AlertTexts texts{};
    texts.position = kAskSavePosition;
    if (!message.IsNil()) {
        texts.banner = Localized("SaveChangesOther Banner");
        texts.explanation = message;
    } else if (action == kQuitting) {
        texts.banner = Localized("SaveChangesQuitting Banner");
        texts.explanation = !name.IsNil()
                                ? WithParam(Localized("WantToSaveDoc Banner"), 0, name)
                                : WithParam(Localized("WantToSaveAppDocs Banner"), 0, clientName);
    } else {
        texts.banner =
            Localized(action == kClosing ? "SaveChangesClosing Banner" : "SaveChangesOther Banner");
        texts.explanation = !name.IsNil() ? WithParam(Localized("WantToSaveDoc Banner"), 0, name)
                                          : Localized("WantToSaveThis Banner");
    }
    texts.defaultText = Localized("Save Button");
    // Quitting with no one document to name asks about them all, where "don't save" is no answer.
    if (action != kQuitting || !name.IsNil()) {
        texts.otherText = Localized("Don't Save Button");
    }
    CreateAlert(texts);
    return noErr;
}

bool KelAskSaveDialog::DoKeyEvent(uint8_t character, uint32_t, uint32_t& hit) {
    const uint8_t dontSave = CommandKeyAt(kDontSaveCommandKey);
    if (dontSave == 0 || std::toupper(character) != std::toupper(dontSave)) {
        return false;
    }
    hit = kAlertStdAlertOtherButton;
    return true;
}
