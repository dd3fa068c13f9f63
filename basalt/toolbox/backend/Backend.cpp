#include "basalt/toolbox/backend/Backend.h"

#include "basalt/graphics/BGCairo.h"

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

const Registration* ChooseRegistration() {
    const char* asked = std::getenv("KEL_BACKEND");
    if (asked != nullptr && *asked != '\0') {
        if (const Registration* registration = Find(asked))
            return registration;
        std::fprintf(stderr,
                     "KEL_BACKEND names \"%s\", which this build does not have; "
                     "using the headless backend\n",
                     asked);
    } else if (const char* display = std::getenv("DISPLAY"); display != nullptr && *display) {
        for (const auto& registration : Registry())
            if (registration.preferWhenDisplay)
                return &registration;
    }
    return Find("headless");
}

struct Chosen {
    std::unique_ptr<Backend> backend;
    std::string failure;
};

Chosen Choose() {
    Chosen chosen;
    const Registration* registration = ChooseRegistration();
    if (registration == nullptr)
        chosen.failure = "no toolbox backend is registered";
    else
        chosen.backend = registration->factory(chosen.failure);
    if (chosen.backend == nullptr && chosen.failure.empty())
        chosen.failure = "the toolbox backend could not start";
    return chosen;
}

} // namespace

void RegisterBackend(const std::string& name, bool preferWhenDisplay, BackendFactory factory) {
    Registry().push_back({name, preferWhenDisplay, std::move(factory)});
}

Backend* TryCurrentBackend(std::string* failure) {
    static Chosen chosen = Choose();
    if (chosen.backend == nullptr && failure != nullptr)
        *failure = chosen.failure;
    return chosen.backend.get();
}

Backend& CurrentBackend() {
    std::string failure;
    Backend* backend = TryCurrentBackend(&failure);
    if (backend == nullptr) {
        std::fprintf(stderr, "%s\n", failure.c_str());
        std::fflush(nullptr);
        std::_Exit(2);
    }
    return *backend;
}

BGContextRef CreateFlippedContext(BackendWindow& window, BGFloat heightInPoints) {
    BGContextRef context =
        graphics::CreateContextForSurface(window.Surface(), heightInPoints, window.Scale());
    if (context == nullptr)
        return nullptr;
    BGContextTranslateCTM(context, 0, heightInPoints);
    BGContextScaleCTM(context, 1, -1);
    return context;
}

} // namespace basalt::toolbox
