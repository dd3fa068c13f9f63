#pragma once

// The command line of kelpick: a command and its options.

#include <cstdio>
#include <optional>
#include <string>

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
};

// The options, or nothing with a message on standard error.
std::optional<KelpickOptions> ParseKelpickOptions(int argc, char** argv);
void PrintKelpickUsage(std::FILE* to);
