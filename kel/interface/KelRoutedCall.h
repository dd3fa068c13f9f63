#pragma once

// The routed road of a blocking call, when the second implementation serves the process: the
// older record is converted, the dialog made through the create call, placed at the default
// location if one is given, run, and read by finish on success, then disposed. No argument is
// checked here; the other side answers for its own.

#include "kel/interface/KelRecordConversion.h"

#include <kel/KelServices.h>

// create(const KelDialogCreationOptions*, KelDialogRef*) makes the dialog; finish(KelDialogRef)
// reads its result after a successful run and answers a status.
template <class Create, class Finish>
StatusCode RunRoutedCall(const KelDialogOptions* options, const BEDesc* defaultLocation,
                         Create create, Finish finish) {
    KelDialogCreationOptions local;
    if (StatusCode status = ConvertDialogOptions(options, &local); status != noErr) {
        return status;
    }
    KelDialogRef dialog = nullptr;
    StatusCode status = create(&local, &dialog);
    if (status == noErr) {
        if (defaultLocation != nullptr) {
            KelCustomControl(dialog, kKelCtlSetLocation, const_cast<BEDesc*>(defaultLocation));
        }
        status = KelDialogRun(dialog);
        if (status == noErr) {
            status = finish(dialog);
        }
        KelDialogDispose(dialog);
    }
    ReleaseConvertedDialogOptions(&local);
    return status;
}
