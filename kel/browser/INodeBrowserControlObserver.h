#pragma once

// What the browser tells its dialog. The dialog implements it; the browser holds it without
// owning it. Calls come on the main thread, from inside the browser's own operations or its
// control's callbacks, in the orders the browser's target and history code document.

#include "kel/foundation/TRect.h"
#include "kel/nodes/TKelNode.h"

class TNodeBrowserControl;

class INodeBrowserControlObserver {
public:
    // An alias did not resolve at once and a second attempt begins; a query's hits changed.
    virtual void NodeBrowserControlNodeOpen(TNodeBrowserControl& control, TKelNode& node) = 0;
    // That attempt ended, with the resolved node; a query-hits container was populated.
    virtual void NodeBrowserControlNodeOpenDone(TNodeBrowserControl& control, TKelNode& node) = 0;
    virtual void NodeBrowserControlTargetChanged(TNodeBrowserControl& control,
                                                 TKelNode& target) = 0;
    virtual void NodeBrowserControlViewRootChanged(TNodeBrowserControl& control,
                                                   TKelNode& root) = 0;
    virtual void NodeBrowserControlSelectionChanged(TNodeBrowserControl& control) = 0;
    virtual void NodeBrowserControlNodeDoubleClicked(TNodeBrowserControl& control,
                                                     TKelNode& node) = 0;
    // True when the dialog's client drew the preview itself.
    virtual bool NodeBrowserControlDrawPreview(TNodeBrowserControl& control, TKelNode& node,
                                               TRect& rect) = 0;
    virtual bool NodeBrowserControlIsPreviewAllowed() = 0;
    virtual void NodeBrowserControlHandleError(TNodeBrowserControl& control, TKelNode& node,
                                               long status) = 0;
    virtual void NodeBrowserControlViewStyleChanged(unsigned long style) = 0;
    // position is the 1-based current history entry, 0 with none.
    virtual void NodeBrowserControlBackForwardSnapshotChanged(long position, long count) = 0;
    virtual bool NodeBrowserControlWantsDisclosureTrianglesInListView() = 0;
    // Only some dialogs care that a dimmed row was clicked.
    virtual void NodeBrowserControlDisabledItemClicked(TNodeBrowserControl&, TKelNode&) {}

protected:
    ~INodeBrowserControlObserver() = default;
};
