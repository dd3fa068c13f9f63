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

} // extern "C"
