#include "tools/kelpick/ReplyPaths.h"

#include "basalt/core/NameCodec.h"

#include <basalt/BasaltFiles.h>
#include <cstring>

namespace {

StatusCode PathOfItem(const BEDescList& selection, long index, std::string& path) {
    BFRef ref;
    StatusCode status =
        BEGetNthPtr(&selection, index, typeBFRef, nullptr, nullptr, &ref, sizeof ref, nullptr);
    return status == noErr ? PathOfRef(ref, path) : status;
}

// The record is packed: its selection is read from an aligned copy.
BEDescList SelectionOf(const KelReplyRecord& reply) {
    BEDescList selection;
    std::memcpy(&selection, &reply.selection, sizeof selection);
    return selection;
}

} // namespace

StatusCode PathOfRef(const BFRef& ref, std::string& path) {
    // The filter asks for every file a folder lists: the buffer is made once, on the main
    // thread, where all of kelpick runs.
    static std::vector<uint8_t> bytes(65536);
    const StatusCode status = BFRefMakePath(&ref, bytes.data(), uint32_t(bytes.size()));
    if (status == noErr) {
        path = reinterpret_cast<const char*>(bytes.data());
    }
    return status;
}

StatusCode CopyReplyPaths(const KelReplyRecord& reply, std::vector<std::string>& paths) {
    const BEDescList selection = SelectionOf(reply);
    long count = 0;
    StatusCode status = BECountItems(&selection, &count);
    for (long index = 1; status == noErr && index <= count; ++index) {
        std::string path;
        status = PathOfItem(selection, index, path);
        paths.push_back(path);
    }
    return status;
}

StatusCode CopySavePath(const KelReplyRecord& reply, std::string& path) {
    BCStringRef name = nullptr;
    std::memcpy(&name, &reply.saveFileName, sizeof name);
    if (name == nullptr || BCStringGetLength(name) == 0) {
        return paramErr;
    }
    std::string folder;
    if (StatusCode status = PathOfItem(SelectionOf(reply), 1, folder); status != noErr) {
        return status;
    }
    path = folder + (folder.ends_with('/') ? "" : "/") + NameBytes(name);
    return noErr;
}

void PrintPaths(const std::vector<std::string>& paths, const std::string& separator,
                std::FILE* to) {
    for (size_t index = 0; index < paths.size(); ++index) {
        if (index > 0) {
            std::fwrite(separator.data(), 1, separator.size(), to);
        }
        std::fwrite(paths[index].data(), 1, paths[index].size(), to);
    }
    std::fputc('\n', to);
}

std::string NameBytes(BCStringRef name) {
    std::u16string text(size_t(BCStringGetLength(name)), u'\0');
    BCStringGetCharacters(name, BCRangeMake(0, BCIndex(text.size())),
                          reinterpret_cast<UniChar*>(text.data()));
    return basalt::EncodeName(text);
}

BCStringRef CreateNameString(const std::string& bytes) {
    const std::u16string text = basalt::DecodeName(bytes);
    return BCStringCreateWithCharacters(nullptr, reinterpret_cast<const UniChar*>(text.data()),
                                        BCIndex(text.size()));
}
