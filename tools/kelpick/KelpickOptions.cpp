#include "tools/kelpick/KelpickOptions.h"

#include "tools/kelpick/OptionWords.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>

namespace {

// "txt,.PDF,Image/PNG" as "txt", "pdf", "image/png": file names and MIME types are matched
// without regard to case.
bool ParseTypes(const std::string& list, std::vector<std::string>& types) {
    for (size_t start = 0; start <= list.size();) {
        size_t comma = std::min(list.find(',', start), list.size());
        std::string type = list.substr(start, comma - start);
        start = comma + 1;
        if (type.starts_with('.')) {
            type.erase(0, 1);
        }
        const bool bad = type.empty() || type.find_first_of("/.") == 0 || type.ends_with('/') ||
                         std::count(type.begin(), type.end(), '/') > 1;
        if (bad) {
            return Fail("--types takes extensions or MIME types separated by commas, not \"%s\"",
                        list.c_str());
        }
        std::transform(type.begin(), type.end(), type.begin(),
                       [](unsigned char c) { return char(std::tolower(c)); });
        types.push_back(type);
    }
    return true;
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
    const std::pair<const char*, std::optional<std::string>*> texts[] = {
        {"--document", &options.document}, {"--app", &options.app},
        {"--dir", &options.dir},           {"--title", &options.title},
        {"--message", &options.message},   {"--ok-label", &options.okLabel},
        {"--name", &options.name}};
    for (const auto& [option, field] : texts) {
        if (std::strcmp(name, option) == 0) {
            return takeValue(field->emplace());
        }
    }
    if (std::strcmp(name, "--types") == 0) {
        std::string list;
        return takeValue(list) && ParseTypes(list, options.types);
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
        if (!isCount) {
            return ParseTimeout(text.c_str(), options.timeout);
        }
        if (!ParseNumber(text.c_str(), options.count)) {
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
    const std::pair<const char*, bool*> flags[] = {
        {"--headless", &options.headless},
        {"--multiple", &options.multiple},
        {"--show-hidden", &options.showHidden},
        {"--packages-as-folders", &options.packagesAsFolders},
        {"--sheet", &options.sheet},
        {"--hide-extension", &options.hideExtension},
        {"--no-confirm", &options.noConfirm}};
    for (const auto& [option, field] : flags) {
        if (std::strcmp(name, option) == 0) {
            *field = true;
            return true;
        }
    }
    return Fail("unknown option %s", name);
}

bool IsKnownCommand(const std::string& command) {
    return command == "ask-save" || command == "ask-discard" || command == "ask-review" ||
           IsBrowseCommand(command);
}

bool IsHelp(const char* word) {
    return std::strcmp(word, "--help") == 0 || std::strcmp(word, "-h") == 0;
}

} // namespace

bool IsBrowseCommand(const std::string& command) {
    for (const char* browse :
         {"open", "save", "file", "folder", "volume", "object", "new-folder"}) {
        if (command == browse) {
            return true;
        }
    }
    return false;
}

void PrintKelpickUsage(std::FILE* to) {
    std::fprintf(
        to, "usage: kelpick ask-save [--document NAME] [--app NAME] [--quitting|--closing]\n"
            "       kelpick ask-discard [--document NAME]\n"
            "       kelpick ask-review --count N [--app NAME]\n"
            "       kelpick open|file|folder|volume|object|new-folder [--dir DIR] [--multiple]\n"
            "           [--types EXT,MIME/TYPE,...] [--show-hidden] [--title TEXT]\n"
            "           [--message TEXT] [--ok-label TEXT] [--packages-as-folders] [--sheet]\n"
            "           [--app NAME] [--name NAME, selected in DIR]\n"
            "       kelpick save [--dir DIR] [--name NAME] [--types EXT,MIME/TYPE,...]\n"
            "           [--hide-extension] [--no-confirm] and the options of open\n"
            "       kelpick --file-selection [--save] [--directory] [--multiple]\n"
            "           [--separator=SEP] [--filename=PATH] [--file-filter='NAME | PATTERN ...']\n"
            "           [--title=TEXT] [--confirm-overwrite], as zenity takes them\n"
            "       kelpick --help | --version\n"
            "options: --headless --script 'STEP;STEP' --snapshot FILE.png --timeout SECONDS\n"
            "steps: key:[cmd-|shift-|option-]KEY  type:TEXT  click:N|LABEL  select:NAME\n"
            "       select+:NAME  open:NAME  side:NAME  popup:TITLE  view:list|column\n"
            "       wait:idle|MS  snapshot:FILE.png\n"
            "keys: return enter escape tab space delete up down left right home end pageup\n"
            "      pagedown, a letter or a digit\n"
            "browse commands print the chosen paths, one per line; exit 0 chosen, 1 cancelled,\n"
            "2 an error; save prints the path to write (the file is not made);\n"
            "--file-selection prints them joined by SEP (\"|\"), exit 5 on the timeout, 255 on\n"
            "an error\n");
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
