#include "tools/kelpick/KelpickOptions.h"

#include <charconv>
#include <cstdio>
#include <cstring>

namespace {

template <class Number>
bool ParseNumber(const char* text, Number& out) {
    const char* end = text + std::strlen(text);
    auto [stop, error] = std::from_chars(text, end, out);
    return error == std::errc() && stop == end;
}

bool Fail(const char* format, const char* what) {
    std::fprintf(stderr, "kelpick: ");
    std::fprintf(stderr, format, what);
    std::fprintf(stderr, "\n");
    return false;
}

// Reads one option with its value, if it takes one; false on a bad option.
bool ParseOption(KelpickOptions& options, const char* name, const char* value, bool& usedValue) {
    usedValue = false;
    const auto takeValue = [&](auto& field) {
        if (value == nullptr) {
            return Fail("%s needs a value", name);
        }
        field = value;
        usedValue = true;
        return true;
    };
    if (std::strcmp(name, "--document") == 0) {
        return takeValue(options.document.emplace());
    }
    if (std::strcmp(name, "--app") == 0) {
        return takeValue(options.app.emplace());
    }
    if (std::strcmp(name, "--script") == 0) {
        return takeValue(options.script);
    }
    if (std::strcmp(name, "--snapshot") == 0) {
        return takeValue(options.snapshot);
    }
    if (std::strcmp(name, "--count") == 0 || std::strcmp(name, "--timeout") == 0) {
        std::string text;
        if (!takeValue(text)) {
            return false;
        }
        const bool isCount = name[2] == 'c';
        const bool parsed = isCount ? ParseNumber(text.c_str(), options.count)
                                    : ParseNumber(text.c_str(), options.timeout);
        if (!parsed || (!isCount && options.timeout <= 0)) {
            return Fail("%s needs a positive number", name);
        }
        options.hasCount = options.hasCount || isCount;
        return true;
    }
    if (std::strcmp(name, "--quitting") == 0) {
        options.action = 2;
        return true;
    }
    if (std::strcmp(name, "--closing") == 0) {
        options.action = 1;
        return true;
    }
    if (std::strcmp(name, "--headless") == 0) {
        options.headless = true;
        return true;
    }
    return Fail("unknown option %s", name);
}

bool IsKnownCommand(const std::string& command) {
    return command == "ask-save" || command == "ask-discard" || command == "ask-review";
}

bool IsHelp(const char* word) {
    return std::strcmp(word, "--help") == 0 || std::strcmp(word, "-h") == 0;
}

} // namespace

void PrintKelpickUsage(std::FILE* to) {
    std::fprintf(to,
                 "usage: kelpick ask-save [--document NAME] [--app NAME] [--quitting|--closing]\n"
                 "       kelpick ask-discard [--document NAME]\n"
                 "       kelpick ask-review --count N [--app NAME]\n"
                 "options: --headless --script 'STEP;STEP' --snapshot FILE.png --timeout SECONDS\n"
                 "steps: key:[cmd-|shift-|opt-]KEY  type:TEXT  click:N  wait:idle  "
                 "snapshot:FILE.png\n"
                 "       kelpick --help | --version\n");
}

std::optional<KelpickOptions> ParseKelpickOptions(int argc, char** argv) {
    if (argc < 2) {
        PrintKelpickUsage(stderr);
        return std::nullopt;
    }
    KelpickOptions options;
    if (std::strcmp(argv[1], "--version") == 0) {
        options.request = KelpickOptions::Request::version;
        return options;
    }
    for (int index = 1; index < argc; ++index) {
        if (IsHelp(argv[index])) {
            options.request = KelpickOptions::Request::help;
            return options;
        }
    }
    options.command = argv[1];
    if (!IsKnownCommand(options.command)) {
        Fail("unknown command %s", argv[1]);
        PrintKelpickUsage(stderr);
        return std::nullopt;
    }
    for (int index = 2; index < argc; ++index) {
        bool usedValue = false;
        const char* value = index + 1 < argc ? argv[index + 1] : nullptr;
        if (!ParseOption(options, argv[index], value, usedValue)) {
            return std::nullopt;
        }
        index += usedValue ? 1 : 0;
    }
    if (options.command == "ask-review" && !options.hasCount) {
        Fail("%s needs --count", "ask-review");
        return std::nullopt;
    }
    return options;
}
