#pragma once

// Reading the words of a command line, shared by kelpick's own commands and its zenity front.

#include <charconv>
#include <cstring>

// Says "kelpick: " and the formatted message on standard error; false, to return at once.
bool Fail(const char* format, const char* what);

template <class Number>
bool ParseNumber(const char* text, Number& out) {
    const char* end = text + std::strlen(text);
    auto [stop, error] = std::from_chars(text, end, out);
    return error == std::errc() && stop == end;
}

// Seconds, more than none.
bool ParseTimeout(const char* text, double& seconds);
