#pragma once

// Helpers shared by the tests of the nodes subsystem.

#include "basalt/files/BFNameCodec.h"
#include "kel/nodes/TKelNode.h"

#include <filesystem>
#include <string>

namespace kelnodetest {

inline TUniString Text(const std::u16string& text) {
    return TUniString(uint32_t(text.size()), reinterpret_cast<const uint16_t*>(text.data()));
}

inline std::u16string Chars(const TUniString& text) {
    if (text.Length() == 0) {
        return {};
    }
    return std::u16string(reinterpret_cast<const char16_t*>(text.Characters()), text.Length());
}

// The path text the node service uses for a file-system path (bytes that are not UTF-8 kept).
inline std::u16string PathText(const std::filesystem::path& path) {
    return basalt::files::DecodeName(path.string());
}

inline TKelNode NodeAt(const std::filesystem::path& path) {
    std::u16string text = PathText(path);
    return TKelNode(
        GetPathNameAsNode(BCIndex(text.size()), reinterpret_cast<const UniChar*>(text.data())),
        false);
}

inline std::u16string Property(const TKelNode& node, const char (&code)[5]) {
    TUniString out;
    out.SetCapacity(1024);
    if (node.GetPropertyAsString(NodeCode(code), out) != noErr) {
        return u"<error>";
    }
    return Chars(out);
}

} // namespace kelnodetest
