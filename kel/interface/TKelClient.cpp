#include "kel/interface/TKelClient.h"

#include <basalt/BasaltToolbox.h>
#include <cstring>

TKelClient::TKelClient(KelEventProc eventProc, KelPreviewProc previewProc,
                       KelObjectFilterProc filterProc, void* clientData, FourCharCode selectionType)
    : eventProc(eventProc), previewProc(previewProc), filterProc(filterProc),
      clientData(clientData), selectionType(selectionType) {
    std::memset(&record, 0, sizeof record);
    record.version = 1;
    record.itemHit = -1;
    record.userAction = kKelUserActionNone;
}

void TKelClient::Event(long selector) {
    if (eventProc == nullptr) {
        return;
    }
    // A client that draws from its callback draws into the dialog's window.
    if (record.window == nullptr || !IsValidWindowPtr(record.window)) {
        eventProc(selector, &record, clientData);
        return;
    }
    GrafPtr savedPort = nullptr;
    GetPort(&savedPort);
    SetPortWindowPort(record.window);
    eventProc(selector, &record, clientData);
    SetPort(savedPort);
}

bool TKelClient::Preview(KelCBRec* cbRecord) {
    return previewProc != nullptr && previewProc(cbRecord, clientData) != 0;
}

bool TKelClient::Filter(BEDesc* item, void* itemInfo, int16_t filterMode) {
    return filterProc == nullptr || filterProc(item, itemInfo, clientData, filterMode) != 0;
}

void TKelClient::Close() {
    eventProc = nullptr;
    previewProc = nullptr;
    filterProc = nullptr;
}
