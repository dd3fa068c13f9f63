#pragma once

// The save dialog: a name field (control 4) over the folder the browser or the where popup
// picks. The name's extension may be hidden: the field then shows the stem, and the extension
// comes back whenever the whole name is asked for. An accept never replaces a file without the
// user's yes in the replace alert, unless the client asked for no questions (0x10000).
//
// The window has two forms: collapsed (name, where popup, buttons) and disclosed (with the
// browser), toggled by the disclosure button and remembered in the "Disclosure" preference.
//
// Split by concern: construction and buttons (KelSaveDocumentDialog), the name field
// (...Name), the extension (...Extension), the replace and hidden-name questions
// (...Replace), the two window forms (...Disclosure), keys, clicks and drops (...Keys), and the
// reply (...Reply).

#include "kel/dialogs/ITextEditObserver.h"
#include "kel/dialogs/KelPutFileDialog.h"
#include "kel/dialogs/TTextEdit.h"
#include "kel/foundation/RetainedRef.h"

#include <memory>

// The index just behind the last dot of name's extension in offset, or -1 when the name has
// none. -50 for a null argument, -10810 when the name can't be read as a path.
StatusCode GetExtensionInfo(const TStringRef& name, unsigned long* offset);
// The extension of name without its dot; null when there is none.
RetainedRef<BCOpaqueString> CopyExtensionFromName(BCStringRef name);

class KelSaveDocumentDialog : public KelPutFileDialog, public ITextEditObserver {
public:
    KelSaveDocumentDialog(const TDialogConfiguration& configuration, FourCharCode fileType,
                          FourCharCode fileCreator, const BEDesc* defaultLocation = nullptr);
    ~KelSaveDocumentDialog() override;

    // ---- Construction, buttons, accept ----
    StatusCode InitDialog() override;
    void SetupDialogItems() override;
    void SetupWindowSize(TRect& bounds) override;
    void AssignWindowTitle() override;
    void SetDefaultButtonTitle() override;
    TStringRef GetDefaultButtonTitle() override;
    void FixButtons() override;
    void FixButtons(const TStringRef* text);
    bool CanChoose() override;
    bool ValidateAcceptDialog(uint32_t modifiers) override;
    int32_t ItemHit(int16_t item, int16_t part, uint32_t modifiers) override;
    StatusCode FillReply(KelReplyRecord& reply) override;
    void SaveDialogPrefs() override;
    bool SimpleSaveMode() const override { return simpleMode; }

    // ---- The name ----
    TStringRef SaveFileName() override;
    void SetSaveFileName(const TStringRef& name, bool preserveExtension) override;
    bool SaveFileExtensionHidden() override { return extensionHidden; }
    StatusCode SetSaveFileExtensionHidden(bool hidden) override;
    StatusCode SelectSaveFileName(ControlEditTextSelectionRec* selection) override;
    void SetupEditField();
    void SelectFileEditText();
    void UpdateEditFieldMaxLength();
    void SetExtensionHidden(bool hidden);
    bool ValidateExtension();
    bool CheckForHiddenFileName();

    // ---- What the name field tells ----
    void FocusChanged(unsigned char gained) override;
    bool CharacterTyped(unsigned short character) override;
    void TextChanged(const TStringRef& text) override;
    void KeyError(TStringRef message) override;

    // ---- Replacing ----
    bool CanReplaceIfConflict();
    bool ConfirmReplacing(TKelNode& node);
    // The file in folder that saving under name would replace; empty when there is none.
    static TKelNode ExistingFile(const TKelNode& folder, const TStringRef& name);
    static Boolean replaceDialogFilter(DialogRef dialog, EventRecord* event, DialogItemIndex* item);

    // ---- The two forms of the window ----
    void ShowBrowserPane();
    void HideBrowserPane();
    void ToggleWindSize(unsigned char grow);
    void MinimizeDialogSize(TRect& from, TRect& to);
    void DiscloseDialogSize(TRect& from, TRect& to);
    void GetWindowDeltaSize(int16_t& width, int16_t& height);

    // ---- Keys, clicks and drops ----
    bool FilterRawKeyEvent(uint16_t key, uint32_t modifiers, EventRef event) override;
    bool ProcessModifierKeys(uint16_t key, uint32_t modifiers, int16_t& itemHit) override;
    bool DefaultKeydown(uint16_t character, int16_t& item) override;
    using KelBaseDialog::DefaultKeydown;
    bool CanReceiveDrop(TKelNode& node) override;
    StatusCode ReceiveDrop(TKelNode& node) override;
    void NodeBrowserControlDisabledItemClicked(TNodeBrowserControl& control,
                                               TKelNode& node) override;

    TTextEdit* NameField() const { return nameField.get(); }
    BCStringRef Extension() const { return extension.Get(); }
    bool UserHidesExtension() const { return userHidesExtension; }
    Point CollapsedMinimumSize() const {
        return Point{collapsedMinimumHeight, collapsedMinimumWidth};
    }

private:
    // The stem of name when its extension is the dialog's, compared without regard to case;
    // else name as it is.
    TStringRef WithoutOwnExtension(const TStringRef& name) const;
    // name with "." and the dialog's extension behind it.
    TStringRef WithOwnExtension(const TStringRef& name) const;
    // name with its extension cut and the dialog's put in its place, when the dialog handles
    // extensions; else name as it is.
    TStringRef KeepingOwnExtension(const TStringRef& name) const;
    // The whole name for what the field shows: the hidden extension comes back.
    TStringRef WholeNameOf(const TStringRef& text) const;
    // Whether the field's text gives a name a file can have.
    bool CanNameAFile(const TStringRef& text) const;
    // Gives the field the name of a file the user clicked or dropped.
    void TakeNameOf(const TKelNode& node);
    // Shows or hides the where row of the collapsed form.
    void ShowWhereRow(bool shown);
    void SetResizable(bool resizable);
    // The height of the where row with the space under it.
    BGFloat WhereRowDepth();
    // Moves the pane's top edge down by that much, its bottom edge staying.
    void MovePaneTop(BGFloat by);
    void RaisePaneIntoWhereRow(bool raised);
    // Steps the window from one size to the other in three thirds, drawing each.
    void AnimateSize(const TRect& from, const TRect& to);

    ControlRef disclosureButton = nullptr;
    int16_t collapsedMinimumWidth = 0;
    int16_t collapsedMinimumHeight = 0;
    bool simpleMode = true;
    bool extensionHidden = false;
    bool userHidesExtension = false;
    TRect disclosedBounds;
    bool paneInWhereRow = false;
    std::unique_ptr<TTextEdit> nameField;
    RetainedRef<BCOpaqueString> extension;
    // The whole name a click put in the field, and the clicked file's own name where that
    // differs; both nil when the field holds no such name.
    struct TakenName {
        TStringRef shownName;
        TStringRef ownName;
    } taken;
};
