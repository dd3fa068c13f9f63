// Callbacks are plain function pointers: a wrapper is the function itself, disposing of it does
// nothing, and invoking it calls it.

#include <kel/KelServices.h>

KelEventUPP NewKelEventUPP(KelEventProc proc) {
    return proc;
}

KelPreviewUPP NewKelPreviewUPP(KelPreviewProc proc) {
    return proc;
}

KelObjectFilterUPP NewKelObjectFilterUPP(KelObjectFilterProc proc) {
    return proc;
}

KelLoadPreviewUPP NewKelLoadPreviewUPP(KelLoadPreviewProc proc) {
    return proc;
}

void DisposeKelEventUPP(KelEventUPP) {}

void DisposeKelPreviewUPP(KelPreviewUPP) {}

void DisposeKelObjectFilterUPP(KelObjectFilterUPP) {}

void DisposeKelLoadPreviewUPP(KelLoadPreviewUPP) {}

void InvokeKelEventUPP(long selector, KelCBRec* record, void* clientData, KelEventUPP upp) {
    if (upp != nullptr) {
        upp(selector, record, clientData);
    }
}

Boolean InvokeKelPreviewUPP(KelCBRec* record, void* clientData, KelPreviewUPP upp) {
    return upp != nullptr ? upp(record, clientData) : 0;
}

Boolean InvokeKelObjectFilterUPP(BEDesc* item, void* info, void* clientData, int16_t filterMode,
                                 KelObjectFilterUPP upp) {
    return upp != nullptr ? upp(item, info, clientData, filterMode) : 0;
}

void InvokeKelLoadPreviewUPP(void* reference, int16_t state, void* data, KelLoadPreviewUPP upp) {
    if (upp != nullptr) {
        upp(reference, state, data);
    }
}
