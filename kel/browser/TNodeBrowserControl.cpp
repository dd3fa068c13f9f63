// Construction and destruction of the browser. The control is owned and destroyed with this
// object; its containers close by the control's own item messages when its target is cleared.

#include "kel/browser/TNodeBrowserControl.h"

#include "kel/browser/BrowserNodes.h"
#include "kel/interface/__KelDialog.h"

namespace {

constexpr uint32_t kMultipleSelectionOption = 0x80;
constexpr uint16_t kColumnWidth = 170;

} // namespace

TNodeBrowserControl::TNodeBrowserControl(__KelDialog* dialog, unsigned long viewStyle,
                                         const TNodeFilter& filter,
                                         INodeBrowserControlObserver& observer, ControlRef control)
    : dialog(dialog), filter(&filter), observer(&observer), viewStyle(viewStyle),
      viewRoot(TKelNode::GetRootNodeRef(), true) {
    InitControl(control);
    const BTThemeFontID font = kBTControlFontViews; // font id -4
    SetControlData(control, 0, kControlFontStyleTag, sizeof(font), &font);
    observatory.SetTickleControl(control);
    SetGridBrowserSortProperty(control, viewStyle == kColumnViewStyle
                                            ? kGridBrowserItemSelfIdentityProperty
                                            : kNameProperty);
    SetGridBrowserSortOrder(control, kGridBrowserOrderIncreasing);
    SetGridBrowserTableViewColumnWidth(control, kColumnWidth);
    UseSelectionFlagsOfDialog();
}

void TNodeBrowserControl::UseSelectionFlagsOfDialog() {
    if (dialog != nullptr && (dialog->OptionFlags() & kMultipleSelectionOption) != 0) {
        return;
    }
    GridBrowserSelectionFlags flags = 0;
    GetGridBrowserSelectionFlags(control, &flags);
    SetGridBrowserSelectionFlags(control, flags | kGridBrowserSelectOnlyOne);
}

void TNodeBrowserControl::FinalizeControl() {
    observatory.SetTickleControl(nullptr);
    // The control closes its containers, and so deletes their records, by its item messages.
    SetGridBrowserTarget(control, 0);
    GridBrowserCallbacks callbacks;
    InitGridBrowserCallbacks(&callbacks);
    SetGridBrowserCallbacks(control, &callbacks);
    GridBrowserCustomCallbacks custom;
    InitGridBrowserCustomCallbacks(&custom);
    SetGridBrowserCustomCallbacks(control, &custom);
}

TNodeBrowserControl::~TNodeBrowserControl() {
    FinalizeControl();
    if (syncTimer != nullptr) {
        RemoveEventLoopTimer(syncTimer);
    }
    DisposeControl(control);
    while (!snapshots.empty()) {
        DeleteSnapshot(SnapshotCount() - 1);
    }
    // Records left by double clicks were never closed by the control; they go with the vector,
    // and the observatory's queue, disposed first, ends their registrations.
}
