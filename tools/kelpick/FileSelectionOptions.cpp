// The zenity-compatible front: "kelpick --file-selection ..." reads the options of that tool's file
// selection and turns them into one of kelpick's own commands, so that a shell script switches
// by changing one word. Options come as "--name=value" or "--name value", in any order.

#include "tools/kelpick/KelpickOptions.h"
#include "tools/kelpick/OptionWords.h"

#include <cstring>
#include <filesystem>
#include <sstream>

namespace {

struct FrontWords {
    bool save = false;
    bool directory = false;
    bool confirmOverwrite = false;
    std::optional<std::string> filename;
};

std::string Trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// "Images | *.png *.jpg", or only patterns, which then name the filter too.
bool ParseFilter(const std::string& text, std::vector<FileFilter>& filters) {
    const size_t bar = text.find('|');
    FileFilter filter{.name = Trimmed(text.substr(0, bar)), .patterns = {}};
    std::istringstream words(bar == std::string::npos ? text : text.substr(bar + 1));
    for (std::string pattern; words >> pattern;) {
        filter.patterns.push_back(pattern);
    }
    if (filter.patterns.empty()) {
        return Fail("--file-filter takes 'NAME | PATTERN ...', not \"%s\"", text.c_str());
    }
    if (filter.name.empty()) {
        filter.name = Trimmed(text.substr(bar + 1));
    }
    filters.push_back(std::move(filter));
    return true;
}

// Options that the tool takes for its window and that change nothing here.
bool IsIgnored(const std::string& name) {
    return name == "--width" || name == "--height" || name == "--window-icon";
}

bool TakesValue(const std::string& name) {
    for (const char* option : {"--filename", "--file-filter", "--separator", "--title", "--script",
                               "--snapshot", "--timeout"}) {
        if (name == option) {
            return true;
        }
    }
    return IsIgnored(name);
}

bool ParseValue(const std::string& name, const std::string& value, KelpickOptions& options,
                FrontWords& words) {
    if (name == "--filename") {
        words.filename = value;
    } else if (name == "--file-filter") {
        return ParseFilter(value, options.filters);
    } else if (name == "--separator") {
        options.separator = value;
    } else if (name == "--title") {
        options.title = value;
    } else if (name == "--script") {
        options.script = value;
    } else if (name == "--snapshot") {
        options.snapshot = value;
    } else if (name == "--timeout") {
        options.timeoutGiven = true;
        return ParseTimeout(value.c_str(), options.timeout);
    }
    return true;
}

bool ParseFlag(const std::string& name, KelpickOptions& options, FrontWords& words) {
    if (name == "--help" || name == "-h") {
        options.request = KelpickOptions::Request::help;
        return true;
    }
    const std::pair<const char*, bool*> flags[] = {{"--file-selection", &options.fileSelection},
                                                   {"--save", &words.save},
                                                   {"--directory", &words.directory},
                                                   {"--multiple", &options.multiple},
                                                   {"--confirm-overwrite", &words.confirmOverwrite},
                                                   {"--headless", &options.headless},
                                                   {"--modal", nullptr}};
    for (const auto& [flag, field] : flags) {
        if (name == flag) {
            if (field != nullptr) {
                *field = true;
            }
            return true;
        }
    }
    return Fail("unknown option %s", name.c_str());
}

// A folder names where to start; any other path names the file in its folder: the name to save
// as, or the file to select.
void ApplyFilename(const std::string& path, KelpickOptions& options) {
    const std::filesystem::path whole = std::filesystem::absolute(path);
    std::error_code error;
    if (path.ends_with('/') || std::filesystem::is_directory(whole, error)) {
        options.dir = whole.string();
        return;
    }
    options.dir = whole.parent_path().string();
    options.name = whole.filename().string();
}

void ApplyWords(const FrontWords& words, KelpickOptions& options) {
    options.command = words.save ? "save" : words.directory ? "folder" : "open";
    // That tool asks before replacing a file only when told to.
    options.noConfirm = words.save && !words.confirmOverwrite;
    if (words.filename && !words.filename->empty()) {
        ApplyFilename(*words.filename, options);
    }
}

} // namespace

bool IsFileSelection(int argc, char** argv) {
    if (argc < 2 || std::strncmp(argv[1], "--", 2) != 0) {
        return false;
    }
    for (int index = 1; index < argc; ++index) {
        if (std::strcmp(argv[index], "--file-selection") == 0) {
            return true;
        }
    }
    return false;
}

std::optional<KelpickOptions> ParseFileSelectionOptions(int argc, char** argv) {
    KelpickOptions options;
    FrontWords words;
    for (int index = 1; index < argc; ++index) {
        const std::string word = argv[index];
        const size_t equals = word.find('=');
        const std::string name = word.substr(0, equals);
        if (!TakesValue(name)) {
            if (!ParseFlag(name, options, words)) {
                return std::nullopt;
            }
            if (equals != std::string::npos) {
                Fail("%s takes no value", name.c_str());
                return std::nullopt;
            }
            continue;
        }
        std::string value;
        if (equals != std::string::npos) {
            value = word.substr(equals + 1);
        } else if (index + 1 < argc) {
            value = argv[++index];
        } else {
            Fail("%s needs a value", name.c_str());
            return std::nullopt;
        }
        if (!ParseValue(name, value, options, words)) {
            return std::nullopt;
        }
    }
    ApplyWords(words, options);
    return options;
}
