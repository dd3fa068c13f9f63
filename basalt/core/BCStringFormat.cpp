// printf-style formatting into core strings. "%@" inserts an object's description. Arguments
// may be positional ("%2$@"); all arguments are read from the va_list once, in position order,
// after the whole format has been parsed, so that mixed orders read the right types.

#include "basalt/core/BCString.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <optional>
#include <vector>

namespace basalt {
namespace {

enum class ArgKind { None, Int, Long, LongLong, Double, LongDouble, Pointer };

struct Arg {
    ArgKind kind = ArgKind::None;
    long long integer = 0;
    double real = 0;
    long double longReal = 0;
    const void* pointer = nullptr;
};

struct Spec {
    std::string flags;
    int width = -1;
    int widthArg = -1; // position of a '*' width argument, else -1
    int precision = -1;
    int precisionArg = -1;
    std::string length;
    char16_t conversion = 0;
    int arg = -1;
};

struct Piece {
    std::u16string literal;
    std::optional<Spec> spec;
};

bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

// Widths, precisions and positions beyond this are treated as this, so a hostile format
// cannot ask for gigabytes of padding.
constexpr int kLargestAmount = 10000;

int ReadNumber(const std::u16string& format, size_t& at) {
    int value = 0;
    while (at < format.size() && IsDigit(format[at]))
        value = std::min(value * 10 + (format[at++] - u'0'), kLargestAmount);
    return value;
}

// Reads "n$" at `at` if present and returns n - 1.
std::optional<int> ReadPosition(const std::u16string& format, size_t& at) {
    size_t probe = at;
    int value = ReadNumber(format, probe);
    if (probe > at && probe < format.size() && format[probe] == u'$' && value > 0) {
        at = probe + 1;
        return value - 1;
    }
    return std::nullopt;
}

class Parser {
public:
    explicit Parser(const std::u16string& format) : format_(format) {}

    std::optional<std::vector<Piece>> Parse(std::vector<ArgKind>& kinds) {
        std::vector<Piece> pieces(1);
        for (size_t at = 0; at < format_.size();) {
            char16_t c = format_[at++];
            if (c != u'%') {
                pieces.back().literal += c;
                continue;
            }
            if (at < format_.size() && format_[at] == u'%') {
                pieces.back().literal += u'%';
                ++at;
                continue;
            }
            auto spec = ParseSpec(at, kinds);
            if (!spec)
                return std::nullopt;
            pieces.back().spec = *spec;
            pieces.emplace_back();
        }
        return pieces;
    }

private:
    int NextArg(std::optional<int> position) { return position ? *position : next_++; }

    static void Need(std::vector<ArgKind>& kinds, int index, ArgKind kind) {
        if (kinds.size() <= static_cast<size_t>(index))
            kinds.resize(static_cast<size_t>(index) + 1, ArgKind::None);
        kinds[static_cast<size_t>(index)] = kind;
    }

    // Width or precision: digits, '*' or '*n$'.
    void ReadAmount(size_t& at, int& amount, int& amountArg, std::vector<ArgKind>& kinds) {
        if (at < format_.size() && format_[at] == u'*') {
            ++at;
            amountArg = NextArg(ReadPosition(format_, at));
            Need(kinds, amountArg, ArgKind::Int);
        } else if (at < format_.size() && IsDigit(format_[at])) {
            amount = ReadNumber(format_, at);
        }
    }

    std::optional<Spec> ParseSpec(size_t& at, std::vector<ArgKind>& kinds) {
        Spec spec;
        std::optional<int> position = ReadPosition(format_, at);
        while (at < format_.size() &&
               std::u16string_view(u"-+ #0'").find(format_[at]) != std::u16string_view::npos)
            spec.flags += static_cast<char>(format_[at++]);
        ReadAmount(at, spec.width, spec.widthArg, kinds);
        if (at < format_.size() && format_[at] == u'.') {
            ++at;
            spec.precision = 0;
            ReadAmount(at, spec.precision, spec.precisionArg, kinds);
        }
        while (at < format_.size() &&
               std::u16string_view(u"hlqLzjt").find(format_[at]) != std::u16string_view::npos)
            spec.length += static_cast<char>(format_[at++]);
        if (at >= format_.size())
            return std::nullopt;
        spec.conversion = format_[at++];
        ArgKind kind = KindOf(spec);
        if (kind == ArgKind::None)
            return std::nullopt;
        spec.arg = NextArg(position);
        Need(kinds, spec.arg, kind);
        return spec;
    }

    static ArgKind KindOf(const Spec& spec) {
        switch (spec.conversion) {
        case u'd':
        case u'i':
        case u'u':
        case u'x':
        case u'X':
        case u'o':
        case u'c':
        case u'C':
            if (spec.length == "ll" || spec.length == "q" || spec.length == "j")
                return ArgKind::LongLong;
            if (spec.length == "l" || spec.length == "z" || spec.length == "t")
                return ArgKind::Long;
            return ArgKind::Int;
        case u'f':
        case u'F':
        case u'e':
        case u'E':
        case u'g':
        case u'G':
        case u'a':
        case u'A':
            return spec.length == "L" ? ArgKind::LongDouble : ArgKind::Double;
        case u's':
        case u'S':
        case u'p':
        case u'@':
            return ArgKind::Pointer;
        default:
            return ArgKind::None;
        }
    }

    const std::u16string& format_;
    int next_ = 0;
};

std::vector<Arg> ReadArgs(const std::vector<ArgKind>& kinds, va_list arguments) {
    std::vector<Arg> args(kinds.size());
    for (size_t i = 0; i < kinds.size(); ++i) {
        Arg& arg = args[i];
        arg.kind = kinds[i];
        switch (kinds[i]) {
        case ArgKind::Int:
            arg.integer = va_arg(arguments, int);
            break;
        case ArgKind::Long:
            arg.integer = va_arg(arguments, long);
            break;
        case ArgKind::LongLong:
            arg.integer = va_arg(arguments, long long);
            break;
        case ArgKind::Double:
            arg.real = va_arg(arguments, double);
            break;
        case ArgKind::LongDouble:
            arg.longReal = va_arg(arguments, long double);
            break;
        case ArgKind::Pointer:
            arg.pointer = va_arg(arguments, const void*);
            break;
        // A gap in positions cannot be skipped safely: stop reading there.
        case ArgKind::None:
            return args;
        }
    }
    return args;
}

std::string CFormat(const Spec& spec, int width, int precision, const char* length,
                    char conversion) {
    std::string format = "%" + spec.flags;
    if (width >= 0)
        format += std::to_string(width);
    if (precision >= 0)
        format += "." + std::to_string(precision);
    return format + length + conversion;
}

template <class T>
std::string Printed(const std::string& format, T value) {
    int size = std::snprintf(nullptr, 0, format.c_str(), value);
    std::string out(static_cast<size_t>(size > 0 ? size : 0) + 1, '\0');
    std::snprintf(out.data(), out.size(), format.c_str(), value);
    out.pop_back();
    return out;
}

std::u16string Padded(std::u16string text, const Spec& spec, int width) {
    if (width > 0 && text.size() < static_cast<size_t>(width)) {
        std::u16string pad(static_cast<size_t>(width) - text.size(), u' ');
        text = spec.flags.find('-') != std::string::npos ? text + pad : pad + text;
    }
    return text;
}

std::u16string TextArgument(const Spec& spec, const Arg& arg, int precision) {
    if (spec.conversion == u'@') {
        BCStringRef description = BCCopyDescription(arg.pointer);
        std::u16string text = description ? TextOf(description) : u"(null)";
        BCRelease(description);
        return text;
    }
    if (spec.conversion == u'S') {
        auto* chars = static_cast<const char16_t*>(arg.pointer);
        if (chars == nullptr)
            return u"(null)";
        std::u16string text(chars);
        return precision >= 0 ? text.substr(0, static_cast<size_t>(precision)) : text;
    }
    if (spec.conversion == u'C')
        return std::u16string(1, static_cast<char16_t>(arg.integer));
    auto* bytes = static_cast<const char*>(arg.pointer);
    if (bytes == nullptr)
        return u"(null)";
    std::string text =
        precision >= 0 ? std::string(bytes, strnlen(bytes, size_t(precision))) : std::string(bytes);
    return FromUTF8(text);
}

std::u16string FormatOne(const Spec& spec, const std::vector<Arg>& args) {
    auto at = [&](int index) -> const Arg* {
        return index >= 0 && static_cast<size_t>(index) < args.size() &&
                       args[static_cast<size_t>(index)].kind != ArgKind::None
                   ? &args[static_cast<size_t>(index)]
                   : nullptr;
    };
    auto amount = [&](int index, int fixed) {
        long long value = index >= 0 && at(index) ? at(index)->integer : fixed;
        return static_cast<int>(std::clamp<long long>(value, -kLargestAmount, kLargestAmount));
    };
    int width = amount(spec.widthArg, spec.width);
    int precision = amount(spec.precisionArg, spec.precision);
    const Arg* arg = at(spec.arg);
    if (arg == nullptr)
        return u"";
    char conversion = static_cast<char>(spec.conversion);
    switch (arg->kind) {
    case ArgKind::Pointer:
        if (conversion == 'p')
            return FromUTF8(Printed(CFormat(spec, width, -1, "", 'p'), arg->pointer));
        return Padded(TextArgument(spec, *arg, precision), spec, width);
    case ArgKind::Double:
        return FromUTF8(Printed(CFormat(spec, width, precision, "", conversion), arg->real));
    case ArgKind::LongDouble:
        return FromUTF8(Printed(CFormat(spec, width, precision, "L", conversion), arg->longReal));
    default:
        break;
    }
    if (conversion == 'c' || conversion == 'C')
        return Padded(std::u16string(1, static_cast<char16_t>(arg->integer)), spec, width);
    // Integers are printed at full width and narrowed as the length modifier asks.
    long long value = arg->integer;
    bool isSigned = conversion == 'd' || conversion == 'i';
    if (spec.length == "hh")
        value = isSigned ? static_cast<signed char>(value) : static_cast<unsigned char>(value);
    else if (spec.length == "h")
        value = isSigned ? static_cast<short>(value) : static_cast<unsigned short>(value);
    else if (arg->kind == ArgKind::Int && !isSigned)
        value = static_cast<unsigned int>(value);
    return FromUTF8(Printed(CFormat(spec, width, precision, "ll", conversion), value));
}

std::optional<std::u16string> FormatText(const std::u16string& format, va_list arguments) {
    std::vector<ArgKind> kinds;
    auto pieces = Parser(format).Parse(kinds);
    if (!pieces)
        return std::nullopt;
    std::vector<Arg> args = ReadArgs(kinds, arguments);
    std::u16string out;
    for (const Piece& piece : *pieces) {
        out += piece.literal;
        if (piece.spec)
            out += FormatOne(*piece.spec, args);
    }
    return out;
}

} // namespace
} // namespace basalt

extern "C" {

BCStringRef BCStringCreateWithFormatAndArguments(BCAllocatorRef, BCDictionaryRef,
                                                 BCStringRef format, va_list arguments) {
    if (basalt::As<basalt::String>(format) == nullptr)
        return nullptr;
    va_list copy;
    va_copy(copy, arguments);
    auto text = basalt::FormatText(basalt::TextOf(format), copy);
    va_end(copy);
    return text ? basalt::MakeString(std::move(*text)) : nullptr;
}

BCStringRef BCStringCreateWithFormat(BCAllocatorRef allocator, BCDictionaryRef formatOptions,
                                     BCStringRef format, ...) {
    va_list arguments;
    va_start(arguments, format);
    BCStringRef string =
        BCStringCreateWithFormatAndArguments(allocator, formatOptions, format, arguments);
    va_end(arguments);
    return string;
}

} // extern "C"
