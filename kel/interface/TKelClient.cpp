#include "kel/interface/TKelClient.h"

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
    // The dialog's graphics port is made current around the call once dialogs have windows.
    if (eventProc != nullptr) {
        eventProc(selector, &record, clientData);
    }
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
