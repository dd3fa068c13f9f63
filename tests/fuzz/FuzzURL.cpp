// URLs with odd bytes: any bytes make a URL or nothing, every question asked of a URL has an
// answer, a file URL's path bytes make the same URL again, and the node path a URL leads to
// can be asked for without harm.

#include "FuzzScratch.h"
#include "kel/nodes/TKelNode.h"
#include "kel/nodes/TNodePathHelper.h"

#include <basalt/BasaltCore.h>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

void ReleaseIfAny(BCTypeRef object) {
    if (object != nullptr)
        BCRelease(object);
}

std::string Text(BCURLRef url) {
    BCDataRef data = BCURLCreateData(nullptr, url, kBCStringEncodingUTF8, false);
    if (data == nullptr)
        std::abort(); // every URL has a text
    std::string text(reinterpret_cast<const char*>(BCDataGetBytePtr(data)),
                     size_t(BCDataGetLength(data)));
    BCRelease(data);
    return text;
}

// The path's bytes make a URL whose path has the same bytes.
void CheckPathRoundTrip(BCURLRef url) {
    static uint8_t path[8192], again[8192];
    if (!BCURLGetFileSystemRepresentation(url, true, path, sizeof path))
        return;
    const size_t length = std::strlen(reinterpret_cast<const char*>(path));
    BCURLRef copy = BCURLCreateFromFileSystemRepresentation(nullptr, path, BCIndex(length),
                                                            BCURLHasDirectoryPath(url));
    if (copy == nullptr || !BCURLGetFileSystemRepresentation(copy, true, again, sizeof again) ||
        std::strcmp(reinterpret_cast<const char*>(path), reinterpret_cast<const char*>(again)))
        std::abort();
    BCRelease(copy);
}

void AskEverything(BCURLRef url) {
    Text(url);
    BCURLGetString(url);
    BCURLHasDirectoryPath(url);
    ReleaseIfAny(BCURLCopyAbsoluteURL(url));
    ReleaseIfAny(BCURLCopyPathExtension(url));
    ReleaseIfAny(BCURLCopyFileSystemPath(url, kBCURLPOSIXPathStyle));
    ReleaseIfAny(BCURLCopyLastPathComponent(url));
    ReleaseIfAny(BCURLCopyScheme(url));
    ReleaseIfAny(BCURLCreateCopyDeletingLastPathComponent(nullptr, url));
    if (BCStringRef last = BCURLCopyLastPathComponent(url)) {
        ReleaseIfAny(BCURLCreateCopyAppendingPathComponent(nullptr, url, last, true));
        BCRelease(last);
    }
    CheckPathRoundTrip(url);

    TNodePathHelper helper(url);
    if (helper.IsComplete())
        ReleaseIfAny(helper.CopyURL());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static BCURLRef base = [] {
        const std::string& folder = fuzz::ScratchFolder();
        TKelNode::InitializeCatalog();
        return BCURLCreateFromFileSystemRepresentation(
            nullptr, reinterpret_cast<const uint8_t*>(folder.data()), BCIndex(folder.size()), true);
    }();
    for (BCURLRef relativeTo : {BCURLRef(nullptr), base}) {
        if (BCURLRef url = BCURLCreateWithBytes(nullptr, data, BCIndex(size), kBCStringEncodingUTF8,
                                                relativeTo)) {
            AskEverything(url);
            BCRelease(url);
        }
    }
    if (BCURLRef url =
            BCURLCreateFromFileSystemRepresentation(nullptr, data, BCIndex(size), false)) {
        AskEverything(url);
        BCRelease(url);
    }
    return 0;
}
