#include "kel/browser/TContainerData.h"

#include "kel/browser/TNodeBrowserControl.h"

void TContainerData::NodeObserverNotePropertyChange(TKelNode& child, unsigned long property) {
    owner->NoteChildPropertyChange(*this, child, property);
}

void TContainerData::NodeObserverNoteDeletion(TKelNode& child) {
    owner->NoteChildDeletion(*this, child);
}

void TContainerData::NodeObserverNoteChildAddition(TKelNode&, TKelNode& child) {
    owner->NoteChildAddition(*this, child);
}

void TContainerData::NodeObserverNoteSyncCompletion(TKelNode&) {
    syncInProgress = false;
}

void TContainerData::NodeObserverNoteOpenSyncCompletion(TKelNode&) {
    owner->PopulateContainerData(*this);
    syncInProgress = false;
}

void TContainerData::NodeObserverNoteVirtualChildListChanged(TKelNode&) {
    owner->PopulateContainerData(*this);
    syncInProgress = false;
    // The population's done call comes first for a query, the open call after it.
    owner->ObserverNodeOpen(node);
}

void TContainerData::NodeObserverNoteDisplayAttributesChanged(TKelNode&, BCDictionaryRef) {}
