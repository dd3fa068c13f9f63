// The client's preview calls. They need the preview engine, which the library does not have yet:
// no preview reference can be made, and the calls answer as they would for one that cannot
// preview. None of them looks at routing.

#include "kel/interface/KelStartup.h"

#include <kel/KelServices.h>

namespace {

// What a call on a reference answers: no reference can be made yet, so any is a bad one.
StatusCode NoPreview(KelPreviewReference reference) {
    if (reference == nullptr) {
        return paramErr;
    }
    return kKelNoPreviewErr;
}

} // namespace

KelPreviewReference KelCreatePreviewReference(void) {
    EnsureKelInitialized();
    return nullptr;
}

StatusCode KelSetupPreview(KelPreviewReference reference, WindowRef, const BEDesc*, Rect*) {
    return NoPreview(reference);
}

StatusCode KelSetPreviewArea(KelPreviewReference reference, Rect* bounds) {
    return bounds == nullptr ? StatusCode{paramErr} : NoPreview(reference);
}

StatusCode KelLoadPreview(KelPreviewReference reference, KelLoadPreviewProc, void*) {
    return NoPreview(reference);
}

StatusCode KelDrawPreviewInContext(KelPreviewReference reference, BGContextRef) {
    return NoPreview(reference);
}

void KelDisposePreviewReference(KelPreviewReference) {}

StatusCode KelCreatePreview(const BEDesc* fileDesc, FourCharCode, const void*, int32_t) {
    EnsureKelInitialized();
    if (fileDesc == nullptr) {
        return paramErr;
    }
    return kBCUnimpErr;
}
