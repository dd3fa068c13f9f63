// Layout files: any bytes either load or fail with a status, and every window a loaded file
// names either builds or fails with a status and a message.

#include "FuzzScratch.h"
#include "basalt/toolbox/layout/LayoutFile.h"

#include <basalt/BasaltToolbox.h>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string path = fuzz::ScratchFolder() + "/Layout.json";
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(data), std::streamsize(size));

    LayoutRef layout = nullptr;
    if (CreateLayoutReferenceWithPath(path.c_str(), &layout) != noErr)
        return 0;
    for (const auto& [name, entry] : layout->document["windows"].items()) {
        BCStringRef windowName =
            BCStringCreateWithBytes(nullptr, reinterpret_cast<const uint8_t*>(name.data()),
                                    BCIndex(name.size()), kBCStringEncodingUTF8, false);
        if (windowName == nullptr)
            continue;
        WindowRef window = nullptr;
        const StatusCode status = CreateWindowFromLayout(layout, windowName, &window);
        BCRelease(windowName);
        if (status == noErr) {
            if (window == nullptr)
                std::abort();
            DisposeWindow(window);
        } else {
            BCStringRef message = BTCopyLastLayoutError();
            if (message == nullptr)
                std::abort(); // a failure always says why
            BCRelease(message);
        }
    }
    DisposeLayoutReference(layout);
    return 0;
}
