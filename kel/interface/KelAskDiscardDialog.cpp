#include "kel/interface/KelAskDiscardDialog.h"

StatusCode KelAskDiscardDialog::CreateDialog() {
    const TStringRef name = SaveFileName();
    AlertTexts texts{};
    texts.position = 0xA80A;
    texts.banner = Localized("DiscardChanges Banner");
    texts.explanation = !name.IsNil() ? WithParam(Localized("WantToDiscardDoc Banner"), 0, name)
                                      : Localized("WantToDiscardThis Banner");
    CreateAlert(texts);
    return noErr;
}
