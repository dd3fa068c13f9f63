// Coercions among the three ways a descriptor names a file: "bfrf" (BFRef), "bfs " (BFSpec)
// and "furl" (file URL text). Each goes through the BFRef, which revalidates the file.

#include "basalt/files/BEDesc.h"
#include "basalt/files/BFFileURL.h"
#include "basalt/files/BFLongPath.h"
#include "basalt/files/BFRef.h"

#include <vector>

using namespace basalt::files;

namespace {

std::vector<uint8_t> DescBytes(const BEDesc* desc) {
    std::vector<uint8_t> bytes(static_cast<size_t>(BEGetDescDataSize(desc)));
    BEGetDescData(desc, bytes.data(), static_cast<Size>(bytes.size()));
    return bytes;
}

StatusCode RefFromDesc(const BEDesc* desc, BFRef& ref) {
    std::vector<uint8_t> bytes = DescBytes(desc);
    switch (desc->descriptorType) {
    case typeBFRef:
        if (bytes.size() != sizeof(BFRef))
            return errBECorruptData;
        std::copy(bytes.begin(), bytes.end(), ref.hidden);
        return noErr;
    case typeFileSpec: {
        if (bytes.size() != sizeof(BFSpec))
            return errBECorruptData;
        BFSpec spec;
        std::copy(bytes.begin(), bytes.end(), reinterpret_cast<uint8_t*>(&spec));
        return BFSpecMakeBFRef(&spec, &ref) == noErr ? StatusCode(noErr)
                                                     : StatusCode(errBECoercionFail);
    }
    case typeFileURL: {
        auto path = PathFromFileURL(std::string(bytes.begin(), bytes.end()));
        if (!path)
            return errBECoercionFail;
        return MakeRef(*path, ref) == noErr ? StatusCode(noErr) : StatusCode(errBECoercionFail);
    }
    default:
        return errBECoercionFail;
    }
}

StatusCode DescFromRef(const BFRef& ref, DescType toType, BEDesc* result) {
    switch (toType) {
    case typeBFRef:
        return BECreateDesc(typeBFRef, &ref, sizeof ref, result);
    case typeFileSpec: {
        BFSpec spec;
        if (BFRefMakeBFSpec(&ref, &spec) != noErr)
            return errBECoercionFail;
        return BECreateDesc(typeFileSpec, &spec, sizeof spec, result);
    }
    case typeFileURL: {
        std::string path;
        if (PathOfRef(ref, path) != noErr)
            return errBECoercionFail;
        struct statx info {};
        bool directory = StatxPath(path, STATX_TYPE, info) == 0 && S_ISDIR(info.stx_mode);
        std::string url = FileURLFromPath(path, directory);
        return BECreateDesc(typeFileURL, url.data(), static_cast<Size>(url.size()), result);
    }
    default:
        return errBECoercionFail;
    }
}

} // namespace

extern "C" StatusCode BECoerceDesc(const BEDesc* desc, DescType toType, BEDesc* result) {
    if (desc == nullptr || result == nullptr)
        return paramErr;
    if (toType == typeWildCard || toType == desc->descriptorType)
        return BEDuplicateDesc(desc, result);
    BFRef ref;
    if (StatusCode status = RefFromDesc(desc, ref))
        return status;
    return DescFromRef(ref, toType, result);
}
