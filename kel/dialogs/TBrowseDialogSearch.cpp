// Searching from the dialog: typing in the search field starts a search once the typing pauses,
// the field's cancel mark goes back to where the dialog was, the scope buttons choose where the
// next searches look, and the arrows turn while a search still walks its folders.

#include "basalt/nodes/NodeQueries.h"
#include "kel/browser/BrowserNodes.h"
#include "kel/dialogs/TBrowseDialog.h"

namespace {

// Each key restarts the pause, so that a fast typist causes one search after the last key.
constexpr EventTimerInterval kQueryDelay = 0.2;

// Searches for what the field holds; an empty field ends the search.
void SearchForFieldText(TBrowseDialog& dialog, ControlRef field) {
    BCStringRef copied = field != nullptr ? BTViewCopyText(field) : nullptr;
    const TStringRef text = copied != nullptr ? TStringRef(copied, false) : TStringRef(BCSTR(""));
    dialog.Browser()->SetQueryTarget(text.AsBCStringRef());
    // The walk starts before the browser watches its hits, so a walk that has already ended has
    // nothing more to announce: the arrows turn only for a search still gathering.
    const TKelNode& query = dialog.Browser()->QueryNode();
    dialog.SetBusyState(text.Length() >= 1 && !query.IsEmpty() &&
                        NodeQueryIsGathering(query.PeekNodeRef()));
}

} // namespace

void TBrowseDialog::InstallSearchHandlers() {
    const EventTypeSpec fieldEvents[] = {{kEventClassTextField, kEventTextFieldTextDidChange},
                                         {kEventClassSearchField, kEventSearchFieldCancelClicked}};
    InstallControlHandler(searchField, SearchFieldHandler, fieldEvents);
    const EventTypeSpec barEvents[] = {{kEventClassControl, kEventControlDraw}};
    InstallControlHandler(scopeBar, ScopeBarHandler, barEvents);
}

StatusCode TBrowseDialog::SearchFieldHandler(EventHandlerCallRef, EventRef event, void* data) {
    auto* dialog = static_cast<TBrowseDialog*>(data);
    if (dialog->browser == nullptr) {
        return eventNotHandledErr;
    }
    if (GetEventClass(event) == kEventClassSearchField) {
        // The field has emptied itself, which asked for a search of nothing: that is dropped.
        if (dialog->queryTimer != nullptr) {
            RemoveEventLoopTimer(dialog->queryTimer);
            dialog->queryTimer = nullptr;
        }
        // Only a search that shows has a place to go back to.
        TKelNode target;
        dialog->browser->GetTarget(target);
        if (IsHitsContainer(target)) {
            dialog->browser->SetHistoryViewSnapshot(1, dialog->prefs);
        }
        return eventNotHandledErr;
    }
    dialog->FollowSearchText();
    if (dialog->queryTimer != nullptr) {
        return SetEventLoopTimerNextFireTime(dialog->queryTimer, kQueryDelay);
    }
    return InstallEventLoopTimer(GetMainEventLoop(), kQueryDelay, 0, QueryTimerProc, dialog,
                                 &dialog->queryTimer);
}

// The cancel mark shows only with something to cancel, from the first key on.
void TBrowseDialog::FollowSearchText() {
    TStringRef text(BTViewCopyText(searchField), false);
    if (text.Length() > 0) {
        BTSearchFieldChangeAttributes(searchField, kBTSearchFieldAttributesCancel, 0);
    } else {
        BTSearchFieldChangeAttributes(searchField, 0, kBTSearchFieldAttributesCancel);
    }
}

void TBrowseDialog::QueryTimerProc(EventLoopTimerRef, void* data) {
    static_cast<TBrowseDialog*>(data)->ExecuteQueryTimer();
}

void TBrowseDialog::ExecuteQueryTimer() {
    RemoveEventLoopTimer(queryTimer);
    queryTimer = nullptr;
    SearchForFieldText(*this, searchField);
}

void TBrowseDialog::ChooseQueryScope(int16_t item) {
    const auto scope = static_cast<TKelPrefs::QueryScope>(item - kBrowseScopeEverywhere);
    prefs.SetQueryScope(scope);
    // The buttons of the bar are exclusive: a click on the chosen one leaves it chosen.
    ShowQueryScope(scope);
    SearchForFieldText(*this, searchField);
}

void TBrowseDialog::ShowQueryScope(TKelPrefs::QueryScope scope) {
    for (int16_t item : {kBrowseScopeEverywhere, kBrowseScopeHome, kBrowseScopeFolder}) {
        if (ControlRef button = Control(item)) {
            BTViewSetValue(button, item - kBrowseScopeEverywhere == scope ? 1 : 0);
        }
    }
}

// A search's deliveries of hits each end with an open call; the arrows keep turning only while
// the search still walks its folders, so that they stop with its last delivery.
void TBrowseDialog::NodeBrowserControlNodeOpen(TNodeBrowserControl&, TKelNode& node) {
    const bool searchDone = IsHitsContainer(node) && !NodeQueryIsGathering(node.PeekNodeRef());
    SetBusyState(searchDone ? 0 : 1);
}

StatusCode TBrowseDialog::ScopeBarHandler(EventHandlerCallRef, EventRef event, void* data) {
    BGContextRef context = nullptr;
    if (GetEventParameter(event, kEventParamCGContextRef, typeBGContextRef, nullptr, sizeof context,
                          nullptr, &context) != noErr) {
        return eventNotHandledErr;
    }
    BGRect bounds = BGRectZero;
    BTViewGetBounds(static_cast<TBrowseDialog*>(data)->scopeBar, &bounds);
    BGContextSetGrayFillColor(context, 0.65, 1.0);
    BGContextFillRect(context, bounds);
    // The line's lower half falls below the bar, under the browser: only a light top edge shows.
    bounds.size.height += 1.0;
    BGContextSetGrayStrokeColor(context, 1.0, 0.6);
    BGContextStrokeRect(context, bounds);
    return noErr;
}
