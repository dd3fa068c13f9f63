#include "tools/kelpick/ReplyPaths.h"

#include <basalt/BasaltFiles.h>
#include <cstring>
#include <vector>

StatusCode PrintReplyPaths(const KelReplyRecord& reply, std::FILE* to) {
    // The record is packed: its selection is read from an aligned copy.
    BEDescList selection;
    std::memcpy(&selection, &reply.selection, sizeof selection);
    long count = 0;
    StatusCode status = BECountItems(&selection, &count);
    std::vector<uint8_t> path(65536);
    for (long index = 1; status == noErr && index <= count; ++index) {
        BFRef ref;
        status =
            BEGetNthPtr(&selection, index, typeBFRef, nullptr, nullptr, &ref, sizeof ref, nullptr);
        if (status == noErr) {
            status = BFRefMakePath(&ref, path.data(), uint32_t(path.size()));
        }
        if (status == noErr) {
            std::fwrite(path.data(), 1, std::strlen(reinterpret_cast<char*>(path.data())), to);
            std::fputc('\n', to);
        }
    }
    return status;
}
