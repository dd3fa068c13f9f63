#pragma once

// The command line of kelpick: a command and its options.

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

// A filter of the zenity-compatible front: a type popup item that shows the files whose names
// match one of its glob patterns.
struct FileFilter {
    std::string name;
    std::vector<std::string> patterns;
};

struct KelpickOptions {
    // Asked for the usage or the version instead of a dialog.
    enum class Request { dialog, help, version } request = Request::dialog;
    std::string command;
    std::optional<std::string> document;
    std::optional<std::string> app;
    // Why the document closes, for ask-save: 1 closing, 2 quitting, 0 another reason.
    unsigned action = 0;
    unsigned long count = 0;
    bool hasCount = false;
    bool headless = false;
    std::string script;
    std::string snapshot;
    double timeout = 30;
    bool timeoutGiven = false;

    // The browse commands.
    std::optional<std::string> dir;
    bool multiple = false;
    // Lower-case extensions without their dot, and MIME types, in the order given.
    std::vector<std::string> types;
    bool showHidden = false;
    std::optional<std::string> title;
    std::optional<std::string> message;
    std::optional<std::string> okLabel;
    bool packagesAsFolders = false;
    bool sheet = false;

    // The save command.
    std::optional<std::string> name;
    bool hideExtension = false;
    bool noConfirm = false;

    // The zenity-compatible front writes the chosen paths on one line, joined by separator, and
    // answers with that tool's exit codes.
    bool fileSelection = false;
    std::string separator = "|";
    std::vector<FileFilter> filters;
};

// The options, or nothing with a message on standard error.
std::optional<KelpickOptions> ParseKelpickOptions(int argc, char** argv);
// Whether the command line is meant for the zenity-compatible front: it names no command and
// asks for --file-selection.
bool IsFileSelection(int argc, char** argv);
// The options of the zenity-compatible front, or nothing with a message on standard error.
std::optional<KelpickOptions> ParseFileSelectionOptions(int argc, char** argv);
void PrintKelpickUsage(std::FILE* to);
// open, save, file, folder, volume, object and new-folder put up a dialog with a browser.
bool IsBrowseCommand(const std::string& command);
