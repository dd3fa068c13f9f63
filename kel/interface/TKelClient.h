#pragma once

// What a dialog knows of its client: the callbacks and the record handed to each of them.
// After Close() the client is never called again; the client data stays for the record's sake.

#include <kel/KelServices.h>

class TKelClient {
public:
    TKelClient(KelEventProc eventProc, KelPreviewProc previewProc, KelObjectFilterProc filterProc,
               void* clientData, FourCharCode selectionType);

    // Sends selector to the event callback, if there is one.
    void Event(long selector);
    // Whether the client drew the preview itself; false without a preview callback.
    bool Preview(KelCBRec* record);
    // Whether the client lets the item through; true without a filter callback.
    bool Filter(BEDesc* item, void* itemInfo, int16_t filterMode);
    void Close();

    bool HasEventProc() const { return eventProc != nullptr; }
    bool HasPreviewProc() const { return previewProc != nullptr; }
    FourCharCode SelectionType() const { return selectionType; }

    KelCBRec record;

private:
    KelEventProc eventProc;
    KelPreviewProc previewProc;
    KelObjectFilterProc filterProc;
    void* clientData;
    FourCharCode selectionType;
};
