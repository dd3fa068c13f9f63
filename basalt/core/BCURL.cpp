#include "basalt/core/BCURL.h"

#include "basalt/core/BCString.h"
#include "basalt/core/EncodingConverter.h"
#include "basalt/core/NameCodec.h"

#include <cctype>
#include <cstring>
#include <unistd.h>

namespace basalt {
namespace {

bool IsUnreserved(unsigned char c) {
    return std::isalnum(c) || std::strchr("-._~!$&'()*+,;=:@/", c) != nullptr;
}

int HexValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// Length of a "scheme:" prefix, or 0.
size_t SchemeLength(const std::string& text) {
    if (text.empty() || !std::isalpha(static_cast<unsigned char>(text[0])))
        return 0;
    for (size_t i = 1; i < text.size(); ++i) {
        unsigned char c = static_cast<unsigned char>(text[i]);
        if (c == ':')
            return i;
        if (!std::isalnum(c) && c != '+' && c != '-' && c != '.')
            return 0;
    }
    return 0;
}

std::string CurrentDirectory() {
    std::string buffer(4096, '\0');
    if (getcwd(buffer.data(), buffer.size()) == nullptr)
        return "/";
    buffer.resize(std::strlen(buffer.c_str()));
    return buffer;
}

std::string TrimmedPath(const URL& url) {
    std::string path = url.Path();
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

// File paths are bytes: ones that are not UTF-8 keep their value as escapes (see NameCodec).
BCStringRef PathFromBytes(const std::string& bytes) {
    return MakeString(DecodeName(bytes));
}

BCStringRef StringFromBytes(const std::string& bytes) {
    auto text = DecodeBytes(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size(),
                            kBCStringEncodingUTF8);
    return text ? MakeString(std::move(*text)) : nullptr;
}

} // namespace

BCURLRef MakeURL(std::string text) {
    return reinterpret_cast<BCURLRef>(static_cast<BCObject*>(new URL(std::move(text))));
}

BCURLRef MakeFileURL(std::string path, bool isDirectory) {
    if (path.empty())
        return nullptr;
    if (path[0] != '/')
        path = CurrentDirectory() + "/" + path;
    if (isDirectory && path.back() != '/')
        path += '/';
    return MakeURL("file://" + EscapePath(path));
}

bool HasScheme(const std::string& text) {
    return SchemeLength(text) > 0;
}

URL::URL(std::string text) : BCObject(kType), text_(std::move(text)) {
    size_t schemeLength = SchemeLength(text_);
    scheme_ = text_.substr(0, schemeLength);
    size_t at = schemeLength == 0 ? 0 : schemeLength + 1;
    if (text_.compare(at, 2, "//") == 0)
        at = std::min(text_.find('/', at + 2), text_.size());
    size_t end = std::min(text_.find_first_of("?#", at), text_.size());
    prefix_ = text_.substr(0, at);
    path_ = text_.substr(at, end - at);
    suffix_ = text_.substr(end);
}

URL::~URL() {
    BCRelease(string_.load());
}

BCStringRef URL::AsString() const {
    BCStringRef string = string_.load();
    if (string != nullptr)
        return string;
    BCStringRef made = MakeString(FromUTF8(text_));
    if (string_.compare_exchange_strong(string, made))
        return made;
    BCRelease(made); // another thread was first
    return string;
}

std::string URL::WithPath(const std::string& escapedPath) const {
    return prefix_ + escapedPath + suffix_;
}

std::string EscapePath(const std::string& bytes) {
    static const char kHex[] = "0123456789ABCDEF";
    std::string out;
    for (unsigned char c : bytes) {
        if (IsUnreserved(c)) {
            out += static_cast<char>(c);
        } else {
            out += '%';
            out += kHex[c >> 4];
            out += kHex[c & 15];
        }
    }
    return out;
}

std::optional<std::string> UnescapePath(const std::string& escaped) {
    std::string out;
    for (size_t i = 0; i < escaped.size(); ++i) {
        if (escaped[i] != '%') {
            out += escaped[i];
            continue;
        }
        int high = i + 2 < escaped.size() ? HexValue(escaped[i + 1]) : -1;
        int low = high >= 0 ? HexValue(escaped[i + 2]) : -1;
        if (low < 0)
            return std::nullopt;
        out += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return out;
}

} // namespace basalt

using basalt::URL;

extern "C" {

BCTypeID BCURLGetTypeID(void) {
    return static_cast<BCTypeID>(basalt::TypeID::URL);
}

BCURLRef BCURLCreateWithString(BCAllocatorRef, BCStringRef urlString, BCURLRef baseURL) {
    std::string text = basalt::UTF8Of(urlString);
    if (text.empty() || text.find_first_of(" \t\r\n") != std::string::npos)
        return nullptr;
    if (basalt::HasScheme(text))
        return basalt::MakeURL(text);
    const URL* base = basalt::As<URL>(baseURL);
    return base != nullptr ? basalt::MakeURL(basalt::ResolveReference(text, *base)) : nullptr;
}

BCURLRef BCURLCreateWithFileSystemPath(BCAllocatorRef, BCStringRef filePath, BCURLPathStyle,
                                       Boolean isDirectory) {
    if (basalt::As<basalt::String>(filePath) == nullptr)
        return nullptr;
    return basalt::MakeFileURL(basalt::EncodeName(basalt::TextOf(filePath)), isDirectory);
}

BCURLRef BCURLCreateFromFileSystemRepresentation(BCAllocatorRef, const uint8_t* buffer,
                                                 BCIndex bufLen, Boolean isDirectory) {
    if (buffer == nullptr || bufLen <= 0)
        return nullptr;
    return basalt::MakeFileURL(std::string(reinterpret_cast<const char*>(buffer), size_t(bufLen)),
                               isDirectory);
}

BCURLRef BCURLCreateCopyAppendingPathComponent(BCAllocatorRef, BCURLRef url,
                                               BCStringRef pathComponent, Boolean isDirectory) {
    const URL* object = basalt::As<URL>(url);
    if (object == nullptr || basalt::As<basalt::String>(pathComponent) == nullptr)
        return nullptr;
    std::string path = object->Path();
    if (path.empty() || path.back() != '/')
        path += '/';
    path += basalt::EscapePath(basalt::EncodeName(basalt::TextOf(pathComponent)));
    if (isDirectory && path.back() != '/')
        path += '/';
    return basalt::MakeURL(object->WithPath(path));
}

BCURLRef BCURLCreateCopyDeletingLastPathComponent(BCAllocatorRef, BCURLRef url) {
    const URL* object = basalt::As<URL>(url);
    if (object == nullptr)
        return nullptr;
    std::string path = basalt::TrimmedPath(*object);
    size_t slash = path.rfind('/');
    path = slash == std::string::npos ? std::string("/") : path.substr(0, slash + 1);
    return basalt::MakeURL(object->WithPath(path));
}

BCStringRef BCURLGetString(BCURLRef url) {
    const URL* object = basalt::As<URL>(url);
    return object != nullptr ? object->AsString() : nullptr;
}

BCStringRef BCURLCopyFileSystemPath(BCURLRef url, BCURLPathStyle) {
    const URL* object = basalt::As<URL>(url);
    if (object == nullptr)
        return nullptr;
    auto bytes = basalt::UnescapePath(basalt::TrimmedPath(*object));
    return bytes ? basalt::PathFromBytes(*bytes) : nullptr;
}

Boolean BCURLGetFileSystemRepresentation(BCURLRef url, Boolean, uint8_t* buffer,
                                         BCIndex maxBufLen) {
    const URL* object = basalt::As<URL>(url);
    if (object == nullptr || buffer == nullptr || object->Scheme() != "file")
        return false;
    // A file system path is absolute: "file://host" and "file:name" name no file.
    auto bytes = basalt::UnescapePath(basalt::TrimmedPath(*object));
    if (!bytes || !bytes->starts_with('/') || bytes->find('\0') != std::string::npos ||
        static_cast<BCIndex>(bytes->size()) >= maxBufLen)
        return false;
    std::memcpy(buffer, bytes->c_str(), bytes->size() + 1);
    return true;
}

BCStringRef BCURLCopyLastPathComponent(BCURLRef url) {
    const URL* object = basalt::As<URL>(url);
    if (object == nullptr)
        return nullptr;
    std::string path = basalt::TrimmedPath(*object);
    auto bytes = basalt::UnescapePath(path == "/" ? path : path.substr(path.rfind('/') + 1));
    return bytes ? basalt::PathFromBytes(*bytes) : nullptr;
}

BCStringRef BCURLCopyScheme(BCURLRef url) {
    const URL* object = basalt::As<URL>(url);
    if (object == nullptr || object->Scheme().empty())
        return nullptr;
    return basalt::StringFromBytes(object->Scheme());
}

Boolean BCURLHasDirectoryPath(BCURLRef url) {
    const URL* object = basalt::As<URL>(url);
    return object != nullptr && !object->Path().empty() && object->Path().back() == '/';
}

} // extern "C"
