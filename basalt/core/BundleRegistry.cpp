// Finding bundles: by identifier on the search path, by folder, and the main bundle. Bundles
// that are found are registered once and kept for the life of the process, so a Get function
// can hand out a reference the caller does not own.

#include "basalt/core/BCBundle.h"
#include "basalt/core/BCString.h"

#include <cstdlib>
#include <dlfcn.h>
#include <sstream>

namespace basalt {
namespace {

class Registry {
public:
    static Registry& Shared() {
        static Registry* registry = new Registry;
        return *registry;
    }

    Bundle* ByIdentifier(const std::string& identifier) {
        std::lock_guard lock(mutex_);
        auto found = byIdentifier_.find(identifier);
        return found != byIdentifier_.end() ? found->second : nullptr;
    }

    Bundle* ByFolder(const std::filesystem::path& folder) {
        std::lock_guard lock(mutex_);
        auto found = byFolder_.find(folder);
        return found != byFolder_.end() ? found->second : nullptr;
    }

    // Keeps the bundle for good unless its folder or identifier is taken; returns the one kept.
    Bundle* Adopt(Bundle* bundle) {
        std::lock_guard lock(mutex_);
        if (auto found = byFolder_.find(bundle->Folder()); found != byFolder_.end()) {
            bundle->Release();
            return found->second;
        }
        const std::string& identifier = bundle->Identifier();
        if (!identifier.empty() && byIdentifier_.contains(identifier))
            return bundle;
        bundle->MakeImmortal();
        byFolder_[bundle->Folder()] = bundle;
        if (!identifier.empty())
            byIdentifier_[identifier] = bundle;
        return bundle;
    }

private:
    std::mutex mutex_;
    std::map<std::string, Bundle*> byIdentifier_;
    std::map<std::filesystem::path, Bundle*> byFolder_;
};

std::filesystem::path Canonical(const std::filesystem::path& folder) {
    std::error_code error;
    auto canonical = std::filesystem::weakly_canonical(folder, error);
    return error ? folder : canonical;
}

bool HasIdentifier(const std::filesystem::path& folder, const std::string& identifier) {
    std::error_code error;
    if (!std::filesystem::exists(folder / "Info.json", error))
        return false;
    Bundle probe(folder);
    return probe.Identifier() == identifier;
}

std::optional<std::filesystem::path> Search(const std::string& identifier) {
    std::error_code error;
    for (const auto& place : BundleSearchPath()) {
        if (HasIdentifier(place, identifier))
            return place;
        for (std::filesystem::directory_iterator entry(place, error), end; !error && entry != end;
             entry.increment(error))
            if (entry->is_directory(error) && HasIdentifier(entry->path(), identifier))
                return entry->path();
    }
    return std::nullopt;
}

std::filesystem::path MainBundleFolder() {
    if (const char* folder = std::getenv("KEL_MAIN_BUNDLE"); folder != nullptr && *folder)
        return folder;
    std::error_code error;
    auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::current_path(error) : executable.parent_path();
}

BCBundleRef Wrap(Bundle* bundle) {
    return reinterpret_cast<BCBundleRef>(static_cast<BCObject*>(bundle));
}

// The bundles installed beside this library, wherever the installation was put.
std::filesystem::path BundlesBesideLibrary() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&BundleSearchPath), &info) == 0 || info.dli_fname == nullptr)
        return {};
    return std::filesystem::path(info.dli_fname).parent_path() / KEL_LIBDIR_TO_BUNDLE_DIR;
}

} // namespace

std::vector<std::filesystem::path> BundleSearchPath() {
    std::vector<std::filesystem::path> places;
    if (const char* path = std::getenv("KEL_BUNDLE_PATH")) {
        std::stringstream stream(path);
        for (std::string place; std::getline(stream, place, ':');)
            if (!place.empty())
                places.emplace_back(place);
    }
    if (auto beside = BundlesBesideLibrary(); !beside.empty())
        places.push_back(beside.lexically_normal());
    places.emplace_back(KEL_BUILD_BUNDLE_DIR);
    places.emplace_back(KEL_INSTALL_BUNDLE_DIR);
    return places;
}

} // namespace basalt

using basalt::Bundle;
using basalt::Registry;

extern "C" {

BCBundleRef BCBundleGetMainBundle(void) {
    static Bundle* main =
        Registry::Shared().Adopt(new Bundle(basalt::Canonical(basalt::MainBundleFolder())));
    return basalt::Wrap(main);
}

BCBundleRef BCBundleGetBundleWithIdentifier(BCStringRef identifier) {
    std::string wanted = basalt::UTF8Of(identifier);
    if (wanted.empty())
        return nullptr;
    if (Bundle* known = Registry::Shared().ByIdentifier(wanted))
        return basalt::Wrap(known);
    auto folder = basalt::Search(wanted);
    if (!folder)
        return nullptr;
    Bundle* bundle = Registry::Shared().Adopt(new Bundle(basalt::Canonical(*folder)));
    // A folder already registered under another identifier does not answer for this one.
    return bundle->Identifier() == wanted ? basalt::Wrap(bundle) : nullptr;
}

BCBundleRef BCBundleCreate(BCAllocatorRef, BCURLRef bundleURL) {
    uint8_t path[4096];
    if (!BCURLGetFileSystemRepresentation(bundleURL, true, path, sizeof path))
        return nullptr;
    std::filesystem::path folder = basalt::Canonical(reinterpret_cast<const char*>(path));
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error))
        return nullptr;
    if (Bundle* known = Registry::Shared().ByFolder(folder))
        return basalt::Wrap(known);
    Bundle* bundle = Registry::Shared().Adopt(new Bundle(folder));
    return basalt::Wrap(bundle);
}

} // extern "C"
