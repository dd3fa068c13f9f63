// Data providers: bytes for images, either borrowed with a release callback or owned.

#include "basalt/graphics/BGCairo.h"
#include "basalt/graphics/BGImageObject.h"

#include <fstream>
#include <iterator>

using basalt::graphics::ReleaseObject;
using basalt::graphics::RetainObject;

OpaqueBGDataProvider::~OpaqueBGDataProvider() {
    if (release != nullptr)
        release(info, bytes, size);
    if (data != nullptr)
        BCRelease(data);
}

namespace basalt::graphics {

BGDataProviderRef CreateDataProviderWithPath(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return nullptr;
    auto* provider = new OpaqueBGDataProvider;
    provider->owned.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    if (in.bad()) {
        ReleaseObject(provider);
        return nullptr;
    }
    provider->bytes = provider->owned.data();
    provider->size = provider->owned.size();
    return provider;
}

} // namespace basalt::graphics

extern "C" {

BGDataProviderRef BGDataProviderCreateWithData(void* info, const void* data, size_t size,
                                               BGDataProviderReleaseDataCallback release) {
    if (data == nullptr && size != 0)
        return nullptr;
    auto* provider = new OpaqueBGDataProvider;
    provider->bytes = static_cast<const uint8_t*>(data);
    provider->size = size;
    provider->info = info;
    provider->release = release;
    return provider;
}

BGDataProviderRef BGDataProviderRetain(BGDataProviderRef provider) {
    return RetainObject(provider);
}

void BGDataProviderRelease(BGDataProviderRef provider) {
    ReleaseObject(provider);
}

BGDataProviderRef BGDataProviderCreateWithURL(BCURLRef url) {
    char path[4096];
    if (url == nullptr ||
        !BCURLGetFileSystemRepresentation(url, true, reinterpret_cast<uint8_t*>(path), sizeof path))
        return nullptr;
    return basalt::graphics::CreateDataProviderWithPath(path);
}

BGDataProviderRef BGDataProviderCreateWithBCData(BCDataRef data) {
    if (data == nullptr)
        return nullptr;
    auto* provider = new OpaqueBGDataProvider;
    provider->data = static_cast<BCDataRef>(BCRetain(data));
    provider->bytes = BCDataGetBytePtr(data);
    provider->size = static_cast<size_t>(BCDataGetLength(data));
    return provider;
}

BCDataRef BGDataProviderCopyData(BGDataProviderRef provider) {
    if (provider == nullptr)
        return nullptr;
    return BCDataCreate(kBCAllocatorDefault, provider->bytes, static_cast<BCIndex>(provider->size));
}

} // extern "C"
