#pragma once

// Type-to-select: characters typed within a short pause of each other make one prefix, and the
// row to select is the first whose name starts with it, ignoring case, by the locale's
// collation; failing that, the first name that sorts after it.

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace basalt::gridbrowser {

class TypeSelect {
public:
    static constexpr double kPause = 1.0; // seconds

    // Adds a typed character at a time (seconds) and answers the prefix typed so far.
    const std::u16string& Type(char16_t character, double now);
    void Reset() { prefix_.clear(); }

    // The index among count rows of the best match for the prefix; nullopt when no row can be
    // chosen. name(i) gives the i-th row's name, or nullopt for a row that can't be chosen.
    static std::optional<size_t>
    Find(const std::u16string& prefix, size_t count,
         const std::function<std::optional<std::u16string>(size_t)>& name);

private:
    std::u16string prefix_;
    double last_ = -1e9;
};

} // namespace basalt::gridbrowser
