// The clipboard of a program on the X11 backend, for the end-to-end tests:
//   x11_clipboard get          writes the clipboard's text to standard output
//   x11_clipboard put FILE     puts the file's text on the clipboard and serves it until killed

#include "basalt/toolbox/backend/Backend.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

int main(int argc, char** argv) {
    basalt::toolbox::Backend& backend = basalt::toolbox::CurrentBackend();
    if (argc == 2 && std::strcmp(argv[1], "get") == 0) {
        std::string text = backend.ClipboardText();
        std::fwrite(text.data(), 1, text.size(), stdout);
        return text.empty() ? 1 : 0;
    }
    if (argc == 3 && std::strcmp(argv[1], "put") == 0) {
        std::ifstream file(argv[2], std::ios::binary);
        std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        if (!file.good() && !file.eof())
            return 2;
        backend.SetClipboardText(text);
        std::puts("serving");
        std::fflush(stdout);
        RunApplicationEventLoop();
        return 0;
    }
    std::fprintf(stderr, "usage: x11_clipboard get | put FILE\n");
    return 2;
}
