// Relative references and standardised paths of URLs.

#include "basalt/core/BCString.h"
#include "basalt/core/BCURL.h"
#include "basalt/core/EncodingConverter.h"
#include "basalt/core/NameCodec.h"

#include <vector>

namespace basalt {

std::string ResolveReference(const std::string& relative, const URL& base) {
    if (!relative.empty() && relative[0] == '/')
        return base.WithPath(RemoveDotSegments(relative));
    const std::string& path = base.Path();
    return base.WithPath(RemoveDotSegments(path.substr(0, path.rfind('/') + 1) + relative));
}

std::string RemoveDotSegments(const std::string& path) {
    std::vector<std::string> kept;
    size_t start = 0;
    bool absolute = !path.empty() && path[0] == '/';
    bool endsAsFolder = false;
    while (start <= path.size()) {
        size_t slash = path.find('/', start);
        std::string step = path.substr(start, slash == std::string::npos ? slash : slash - start);
        endsAsFolder = step == "." || step == ".." || (step.empty() && slash == std::string::npos);
        if (step == "..") {
            if (!kept.empty())
                kept.pop_back();
        } else if (!step.empty() && step != ".") {
            kept.push_back(step);
        }
        if (slash == std::string::npos)
            break;
        start = slash + 1;
    }
    std::string out = absolute ? "/" : "";
    for (size_t i = 0; i < kept.size(); ++i)
        out += (i > 0 ? "/" : "") + kept[i];
    if (endsAsFolder && !kept.empty())
        out += '/';
    return out;
}

} // namespace basalt

using basalt::URL;

extern "C" {

BCURLRef BCURLCreateWithBytes(BCAllocatorRef, const uint8_t* bytes, BCIndex length,
                              BCStringEncoding encoding, BCURLRef baseURL) {
    if (bytes == nullptr || length <= 0)
        return nullptr;
    auto text = basalt::DecodeBytes(bytes, size_t(length), encoding);
    if (!text)
        return nullptr;
    BCStringRef string = basalt::MakeString(std::move(*text));
    BCURLRef url = BCURLCreateWithString(kBCAllocatorDefault, string, baseURL);
    BCRelease(string);
    return url;
}

BCURLRef BCURLCreateWithFileSystemPathRelativeToBase(BCAllocatorRef allocator, BCStringRef filePath,
                                                     BCURLPathStyle pathStyle, Boolean isDirectory,
                                                     BCURLRef baseURL) {
    const URL* base = basalt::As<URL>(baseURL);
    std::string path = basalt::EncodeName(basalt::TextOf(filePath));
    if (base == nullptr || path.empty() || path[0] == '/')
        return BCURLCreateWithFileSystemPath(allocator, filePath, pathStyle, isDirectory);
    std::string escaped = basalt::EscapePath(path);
    if (isDirectory && escaped.back() != '/')
        escaped += '/';
    // The base names a folder even when its text lacks the final slash.
    std::string folder = base->Path();
    if (folder.empty() || folder.back() != '/')
        folder += '/';
    return basalt::MakeURL(base->WithPath(basalt::RemoveDotSegments(folder + escaped)));
}

BCURLRef BCURLCopyAbsoluteURL(BCURLRef url) {
    const URL* object = basalt::As<URL>(url);
    if (object == nullptr)
        return nullptr;
    return basalt::MakeURL(object->WithPath(basalt::RemoveDotSegments(object->Path())));
}

BCDataRef BCURLCreateData(BCAllocatorRef, BCURLRef url, BCStringEncoding encoding, Boolean) {
    const URL* object = basalt::As<URL>(url);
    if (object == nullptr)
        return nullptr;
    // The text is already escaped, white space included.
    auto bytes = basalt::EncodeText(basalt::FromUTF8(object->Text()), encoding, 0);
    return bytes
               ? BCDataCreate(kBCAllocatorDefault, reinterpret_cast<const uint8_t*>(bytes->data()),
                              BCIndex(bytes->size()))
               : nullptr;
}

BCStringRef BCURLCopyPathExtension(BCURLRef url) {
    BCStringRef name = BCURLCopyLastPathComponent(url);
    const std::u16string& text = basalt::TextOf(name);
    size_t dot = text.rfind(u'.');
    BCStringRef extension = dot == std::u16string::npos || dot + 1 == text.size()
                                ? nullptr
                                : basalt::MakeString(text.substr(dot + 1));
    BCRelease(name);
    return extension;
}

} // extern "C"
