#include "kel/interface/KelProcess.h"

#include <array>

BCStringRef MainBundleIdentifier() {
    static const BCStringRef identifier = BCBundleGetIdentifier(BCBundleGetMainBundle());
    return identifier;
}

BCStringRef KelGetProcessID() {
    static const BCStringRef processID =
        MainBundleIdentifier() != nullptr ? MainBundleIdentifier() : BCSTR("");
    return processID;
}

bool ShouldExpectClientToRunEventLoopDuringPreviewDraw() {
    static const bool expected = [] {
        constexpr std::array kClients = {"com.quillworks.Scribe", "com.quillworks.Ledger",
                                         "com.quillworks.Slides"};
        for (const char* client : kClients) {
            BCStringRef name =
                BCStringCreateWithCString(kBCAllocatorDefault, client, kBCStringEncodingASCII);
            const bool same = BCStringCompare(KelGetProcessID(), name, 0) == kBCCompareEqualTo;
            BCRelease(name);
            if (same) {
                return true;
            }
        }
        return false;
    }();
    return expected;
}
