#include "basalt/core/BCBundle.h"

#include "basalt/core/BCString.h"

#include <dlfcn.h>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

namespace basalt {
namespace {

std::string ReadText(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::string StringField(const nlohmann::json& info, const char* key) {
    auto found = info.find(key);
    return found != info.end() && found->is_string() ? found->get<std::string>() : "";
}

} // namespace

Bundle::Bundle(std::filesystem::path folder) : BCObject(kType), folder_(std::move(folder)) {
    auto info = nlohmann::json::parse(ReadText(folder_ / "Info.json"), nullptr, false);
    if (!info.is_object())
        return;
    identifier_ = StringField(info, "identifier");
    executable_ = StringField(info, "executable");
    developmentRegion_ = StringField(info, "developmentRegion");
    if (!identifier_.empty())
        identifierString_ = MakeString(FromUTF8(identifier_));
}

Bundle::~Bundle() {
    BCRelease(identifierString_);
    // Code stays mapped: function pointers handed out may still be in use.
}

std::vector<std::filesystem::path> Bundle::LocalizedFolders() const {
    std::vector<std::string> languages = PreferredLanguages();
    if (!developmentRegion_.empty())
        languages.push_back(developmentRegion_);
    std::vector<std::filesystem::path> folders;
    std::error_code error;
    for (const std::string& language : languages) {
        std::filesystem::path folder = Resources() / (language + ".lproj");
        if (std::filesystem::is_directory(folder, error))
            folders.push_back(folder);
    }
    return folders;
}

std::optional<std::filesystem::path> Bundle::FindResource(const std::string& relative) const {
    std::vector<std::filesystem::path> folders = LocalizedFolders();
    folders.push_back(Resources());
    std::error_code error;
    for (const auto& folder : folders)
        if (std::filesystem::exists(folder / relative, error))
            return folder / relative;
    return std::nullopt;
}

const StringsTable& Bundle::Table(const std::filesystem::path& file) const {
    std::lock_guard lock(mutex_);
    auto found = tables_.find(file);
    if (found == tables_.end())
        found = tables_.emplace(file, ParseStringsTable(ReadText(file))).first;
    return found->second;
}

std::optional<std::u16string> Bundle::Localized(const std::u16string& key,
                                                const std::string& table) const {
    std::error_code error;
    for (const auto& folder : LocalizedFolders()) {
        std::filesystem::path file = folder / (table + ".strings");
        if (!std::filesystem::exists(file, error))
            continue;
        const StringsTable& strings = Table(file);
        if (auto found = strings.find(key); found != strings.end())
            return found->second;
    }
    return std::nullopt;
}

bool Bundle::Load() {
    std::lock_guard lock(mutex_);
    if (library_ == nullptr && !executable_.empty())
        library_ = dlopen((folder_ / executable_).c_str(), RTLD_NOW | RTLD_LOCAL);
    return library_ != nullptr;
}

bool Bundle::IsLoaded() const {
    std::lock_guard lock(mutex_);
    return library_ != nullptr;
}

void* Bundle::Symbol(const std::string& name) {
    if (!Load())
        return nullptr;
    std::lock_guard lock(mutex_);
    return dlsym(library_, name.c_str());
}

std::string Bundle::Describe() const {
    return "<bundle " + folder_.string() + " (" +
           (identifier_.empty() ? "no identifier" : identifier_) + ")>";
}

} // namespace basalt

using basalt::Bundle;

namespace {

BCURLRef FileURL(const std::filesystem::path& path, bool isDirectory) {
    const std::string& bytes = path.native();
    return BCURLCreateFromFileSystemRepresentation(kBCAllocatorDefault,
                                                   reinterpret_cast<const uint8_t*>(bytes.data()),
                                                   static_cast<BCIndex>(bytes.size()), isDirectory);
}

std::string Component(BCStringRef string) {
    return string != nullptr ? basalt::UTF8Of(string) : "";
}

} // namespace

extern "C" {

BCTypeID BCBundleGetTypeID(void) {
    return static_cast<BCTypeID>(basalt::TypeID::Bundle);
}

BCStringRef BCBundleGetIdentifier(BCBundleRef bundle) {
    const Bundle* object = basalt::As<Bundle>(bundle);
    return object != nullptr ? object->IdentifierString() : nullptr;
}

BCURLRef BCBundleCopyBundleURL(BCBundleRef bundle) {
    const Bundle* object = basalt::As<Bundle>(bundle);
    return object != nullptr ? FileURL(object->Folder(), true) : nullptr;
}

BCURLRef BCBundleCopyResourcesDirectoryURL(BCBundleRef bundle) {
    const Bundle* object = basalt::As<Bundle>(bundle);
    return object != nullptr ? FileURL(object->Resources(), true) : nullptr;
}

BCURLRef BCBundleCopyResourceURL(BCBundleRef bundle, BCStringRef resourceName,
                                 BCStringRef resourceType, BCStringRef subDirName) {
    const Bundle* object = basalt::As<Bundle>(bundle);
    std::string name = Component(resourceName);
    if (object == nullptr || name.empty())
        return nullptr;
    std::string type = Component(resourceType);
    if (!type.empty() && type[0] != '.')
        type = "." + type;
    std::filesystem::path relative = std::filesystem::path(Component(subDirName)) / (name + type);
    auto found = object->FindResource(relative.relative_path().string());
    std::error_code error;
    return found ? FileURL(*found, std::filesystem::is_directory(*found, error)) : nullptr;
}

BCStringRef BCBundleCopyLocalizedString(BCBundleRef bundle, BCStringRef key, BCStringRef value,
                                        BCStringRef tableName) {
    const Bundle* object = basalt::As<Bundle>(bundle);
    if (key == nullptr)
        return value != nullptr ? BCStringCreateCopy(kBCAllocatorDefault, value) : nullptr;
    std::string table = Component(tableName);
    if (object != nullptr)
        if (auto found =
                object->Localized(basalt::TextOf(key), table.empty() ? "Localizable" : table))
            return basalt::MakeString(std::move(*found));
    bool useValue = value != nullptr && BCStringGetLength(value) > 0;
    return BCStringCreateCopy(kBCAllocatorDefault, useValue ? value : key);
}

Boolean BCBundleLoadExecutable(BCBundleRef bundle) {
    Bundle* object = basalt::AsMutable<Bundle>(bundle);
    return object != nullptr && object->Load();
}

Boolean BCBundleIsExecutableLoaded(BCBundleRef bundle) {
    const Bundle* object = basalt::As<Bundle>(bundle);
    return object != nullptr && object->IsLoaded();
}

void* BCBundleGetFunctionPointerForName(BCBundleRef bundle, BCStringRef name) {
    Bundle* object = basalt::AsMutable<Bundle>(bundle);
    return object != nullptr && name != nullptr ? object->Symbol(basalt::UTF8Of(name)) : nullptr;
}

} // extern "C"
