#pragma once

// The object behind a KelDialogRef. It counts its references by hand (the client holds one, every
// exported operation holds one more for the length of the call) and dies at zero. A run goes
// CreateDialog, selector 2, StartDialog; an end goes TerminateDialog, selector 12, selector 3,
// after which the client is never called again. All of it happens on the main thread.

#include "kel/foundation/TArrayRef.h"
#include "kel/foundation/TStringRef.h"
#include "kel/interface/IReferenceCounted.h"
#include "kel/interface/KelBaseDialog.h"
#include "kel/interface/TDialogConfiguration.h"
#include "kel/interface/TKelClient.h"
#include "kel/interface/TTypeMenuItem.h"

#include <vector>

// A struct, as the C boundary declares it.
struct __KelDialog : public KelBaseDialog, public IReferenceCounted {
public:
    explicit __KelDialog(const TDialogConfiguration& configuration);
    ~__KelDialog() override;

    void Retain() override;
    // Deletes the dialog when the last reference goes.
    void Release() override;
    virtual StatusCode FillReply(KelReplyRecord& reply);
    virtual StatusCode CustomControl(long selector, void* parms);
    virtual TStringRef SaveFileName();
    virtual void SetSaveFileName(const TStringRef& name, bool preserveExtension);
    virtual bool SaveFileExtensionHidden();
    virtual StatusCode SetSaveFileExtensionHidden(bool hidden);
    virtual StatusCode SetFilterTypeIdentifiers(BCArrayRef identifiers);
    virtual StatusCode CreateDialog() = 0;
    virtual StatusCode StartDialog() = 0;
    virtual void TerminateDialog() = 0;

    StatusCode Run();
    StatusCode Terminate();
    StatusCode TerminateWithUserAction(uint32_t action);

    void AddTypeMenuItem(const TTypeMenuItem& item);
    // Adds a separator, but never as the first item.
    void AddPopupMenuItemSeperator();
    // One client item per element of a string array.
    void SetTypeMenuExtension(const TArrayRef& items);
    // One client item per 512-byte record of a handle of KelMenuItemSpec.
    void SetTypeMenuExtension(KelMenuItemSpec** items);

    // Whether dialog names a dialog that is alive now; guards the boundary against stale refs.
    static bool IsLive(const void* dialog);

    bool IsRunning() const { return running; }
    uint32_t UserAction() const { return userAction; }
    uint32_t RetainCount() const { return retainCount; }
    uint32_t OptionFlags() const { return optionFlags; }
    uint32_t Modality() const { return modality; }
    const TKelClient& Client() const { return client; }
    const std::vector<TTypeMenuItem>& TypeMenuItems() const { return typeMenuItems; }
    const TStringRef& WindowTitle() const { return windowTitle; }
    const TStringRef& ActionButtonLabel() const { return actionButtonLabel; }
    const TStringRef& PreferenceKey() const { return preferenceKey; }

protected:
    uint32_t retainCount = 1;
    bool running = false;
    uint32_t userAction = kKelUserActionNone;
    TKelClient client;
    uint32_t optionFlags;
    Point location;
    TStringRef clientName;
    TStringRef windowTitle;
    TStringRef actionButtonLabel;
    TStringRef cancelButtonLabel;
    TStringRef saveFileName;
    TStringRef message;
    TStringRef preferenceKey;
    std::vector<TTypeMenuItem> typeMenuItems;
    uint32_t modality;
    WindowRef parentWindow;
};

// Holds a reference on a dialog for the length of a scope, so that a callback may end the
// dialog without pulling it away from under the caller.
class StRetainDialog {
public:
    explicit StRetainDialog(__KelDialog* dialog) : dialog(dialog) { dialog->Retain(); }
    StRetainDialog(const StRetainDialog&) = delete;
    StRetainDialog& operator=(const StRetainDialog&) = delete;
    ~StRetainDialog() { dialog->Release(); }

private:
    __KelDialog* dialog;
};
