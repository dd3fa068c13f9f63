#include "basalt/core/Base64.h"

namespace basalt {
namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

int ValueOf(char c) {
    if (c >= 'A' && c <= 'Z')
        return c - 'A';
    if (c >= 'a' && c <= 'z')
        return c - 'a' + 26;
    if (c >= '0' && c <= '9')
        return c - '0' + 52;
    return c == '+' ? 62 : c == '/' ? 63 : -1;
}

} // namespace

std::string EncodeBase64(const uint8_t* bytes, size_t length) {
    std::string out;
    for (size_t i = 0; i < length; i += 3) {
        uint32_t group = uint32_t(bytes[i]) << 16;
        if (i + 1 < length)
            group |= uint32_t(bytes[i + 1]) << 8;
        if (i + 2 < length)
            group |= bytes[i + 2];
        out += kAlphabet[(group >> 18) & 63];
        out += kAlphabet[(group >> 12) & 63];
        out += i + 1 < length ? kAlphabet[(group >> 6) & 63] : '=';
        out += i + 2 < length ? kAlphabet[group & 63] : '=';
    }
    return out;
}

std::optional<std::vector<uint8_t>> DecodeBase64(const std::string& text) {
    if (text.size() % 4 != 0)
        return std::nullopt;
    std::vector<uint8_t> out;
    for (size_t i = 0; i < text.size(); i += 4) {
        bool last = i + 4 == text.size();
        int padding = last ? (text[i + 3] == '=') + (text[i + 2] == '=') : 0;
        uint32_t group = 0;
        for (size_t j = 0; j < 4; ++j) {
            int value = j >= size_t(4 - padding) ? 0 : ValueOf(text[i + j]);
            if (value < 0)
                return std::nullopt;
            group = group << 6 | uint32_t(value);
        }
        out.push_back(uint8_t(group >> 16));
        if (padding < 2)
            out.push_back(uint8_t(group >> 8));
        if (padding < 1)
            out.push_back(uint8_t(group));
    }
    return out;
}

} // namespace basalt
