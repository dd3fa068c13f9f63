#include "basalt/toolbox/backend/Backend.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace basalt::toolbox {
namespace {

struct Registration {
    std::string name;
    bool preferWhenDisplay;
    BackendFactory factory;
};

std::vector<Registration>& Registry() {
    static std::vector<Registration> registry;
    return registry;
}

const Registration* Find(const std::string& name) {
    for (const auto& registration : Registry())
        if (registration.name == name)
            return &registration;
    return nullptr;
}

std::unique_ptr<Backend> Choose() {
    const char* asked = std::getenv("KEL_BACKEND");
    if (asked != nullptr && *asked != '\0') {
        if (const Registration* registration = Find(asked))
            return registration->factory();
        std::fprintf(stderr,
                     "KEL_BACKEND names \"%s\", which this build does not have; "
                     "using the headless backend\n",
                     asked);
    } else if (const char* display = std::getenv("DISPLAY"); display != nullptr && *display) {
        for (const auto& registration : Registry())
            if (registration.preferWhenDisplay)
                return registration.factory();
    }
    const Registration* headless = Find("headless");
    return headless != nullptr ? headless->factory() : nullptr;
}

} // namespace

void RegisterBackend(const std::string& name, bool preferWhenDisplay, BackendFactory factory) {
    Registry().push_back({name, preferWhenDisplay, std::move(factory)});
}

Backend& CurrentBackend() {
    static std::unique_ptr<Backend> backend = Choose();
    if (backend == nullptr) {
        std::fprintf(stderr, "no toolbox backend is registered\n");
        std::abort();
    }
    return *backend;
}

} // namespace basalt::toolbox
