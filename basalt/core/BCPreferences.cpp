// The preferences store: one JSON file per domain under $XDG_CONFIG_HOME/kel/preferences/.
// Values are cached per file after the first read; every set writes through to disk at once
// (merged with what other processes wrote), and Synchronize re-reads the file. A set that could
// not be written is kept as a change of this process until a later set or Synchronize writes it.
// There is one store per user: the any-user domain is the current user's.

#include "basalt/core/BCString.h"
#include "basalt/core/PreferencesFile.h"
#include "basalt/core/PreferencesValue.h"

#include <cstdlib>
#include <map>
#include <mutex>
#include <unistd.h>

extern "C" {

const BCStringRef kBCPreferencesCurrentApplication =
    __BCStringMakeConstantString("kBCPreferencesCurrentApplication");
const BCStringRef kBCPreferencesAnyApplication =
    __BCStringMakeConstantString("kBCPreferencesAnyApplication");
const BCStringRef kBCPreferencesCurrentUser =
    __BCStringMakeConstantString("kBCPreferencesCurrentUser");
const BCStringRef kBCPreferencesAnyUser = __BCStringMakeConstantString("kBCPreferencesAnyUser");
const BCStringRef kBCPreferencesCurrentHost =
    __BCStringMakeConstantString("kBCPreferencesCurrentHost");
const BCStringRef kBCPreferencesAnyHost = __BCStringMakeConstantString("kBCPreferencesAnyHost");

} // extern "C"

namespace basalt {
namespace {

std::filesystem::path PreferencesFolder() {
    const char* config = std::getenv("XDG_CONFIG_HOME");
    std::filesystem::path base;
    if (config != nullptr && config[0] == '/')
        base = config;
    else if (const char* home = std::getenv("HOME"))
        base = std::filesystem::path(home) / ".config";
    else
        return {};
    return base / "kel" / "preferences";
}

std::string CurrentApplicationName() {
    std::string identifier = UTF8Of(BCBundleGetIdentifier(BCBundleGetMainBundle()));
    if (!identifier.empty())
        return identifier;
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).filename().string();
}

std::string HostName() {
    char name[256] = {};
    gethostname(name, sizeof name - 1);
    return name;
}

std::optional<std::filesystem::path> DomainFile(BCStringRef applicationID, BCStringRef hostName) {
    if (applicationID == nullptr)
        return std::nullopt;
    std::string domain;
    if (BCEqual(applicationID, kBCPreferencesAnyApplication))
        domain = ".GlobalPreferences";
    else if (BCEqual(applicationID, kBCPreferencesCurrentApplication))
        domain = CurrentApplicationName();
    else
        domain = UTF8Of(applicationID);
    std::filesystem::path folder = PreferencesFolder();
    if (domain.empty() || domain == "." || domain == ".." ||
        domain.find('/') != std::string::npos || folder.empty())
        return std::nullopt;
    if (hostName != nullptr && BCEqual(hostName, kBCPreferencesCurrentHost))
        return folder / "ByHost" / (domain + "." + HostName() + ".json");
    return folder / (domain + ".json");
}

// Writers do nothing when the real and the effective user differ: a set-uid program must not
// leave files owned by another user in the home folder of the person who ran it.
bool MayWrite() {
    return getuid() == geteuid();
}

class Store {
public:
    static Store& Shared() {
        static Store* store = new Store;
        return *store;
    }

    BCTypeRef Copy(const std::filesystem::path& file, const std::string& key) {
        std::lock_guard lock(mutex_);
        const nlohmann::json& values = Cached(file).values;
        auto found = values.find(key);
        return found != values.end() ? PreferenceObject(*found) : nullptr;
    }

    void Set(const std::filesystem::path& file, const std::string& key,
             const std::optional<nlohmann::json>& value) {
        if (!MayWrite())
            return;
        std::lock_guard lock(mutex_);
        Domain& domain = Cached(file);
        domain.unwritten[key] = value;
        Apply(domain.unwritten, domain.values);
        WriteUnwritten(file, domain);
    }

    // Writes what earlier sets could not, then reads what other processes wrote. False when
    // either fails; this process then keeps the values it has.
    bool Synchronize(const std::filesystem::path& file) {
        std::lock_guard lock(mutex_);
        Domain& domain = Cached(file);
        if (!domain.unwritten.empty())
            return MayWrite() && WriteUnwritten(file, domain);
        std::optional<nlohmann::json> values = PreferencesFile(file).Load();
        if (values)
            domain.values = std::move(*values);
        return values.has_value();
    }

private:
    using Changes = std::map<std::string, std::optional<nlohmann::json>>;

    // The values this process sees, and the changes it made that are not on disk yet.
    struct Domain {
        nlohmann::json values;
        Changes unwritten;
    };

    static void Apply(const Changes& changes, nlohmann::json& values) {
        for (const auto& [key, value] : changes) {
            if (value)
                values[key] = *value;
            else
                values.erase(key);
        }
    }

    static bool WriteUnwritten(const std::filesystem::path& file, Domain& domain) {
        auto written = PreferencesFile(file).Update(
            [&](nlohmann::json& values) { Apply(domain.unwritten, values); });
        if (!written)
            return false; // kept in memory, so this process still sees what it set
        domain.values = std::move(*written);
        domain.unwritten.clear();
        return true;
    }

    Domain& Cached(const std::filesystem::path& file) {
        auto found = cache_.find(file);
        if (found == cache_.end()) {
            auto values = PreferencesFile(file).Load();
            Domain domain{values ? std::move(*values) : nlohmann::json::object(), {}};
            found = cache_.emplace(file, std::move(domain)).first;
        }
        return found->second;
    }

    std::mutex mutex_;
    std::map<std::filesystem::path, Domain> cache_;
};

} // namespace
} // namespace basalt

using basalt::Store;

extern "C" {

BCTypeRef BCPreferencesCopyValue(BCStringRef key, BCStringRef applicationID, BCStringRef,
                                 BCStringRef hostName) {
    auto file = basalt::DomainFile(applicationID, hostName);
    if (!file || basalt::As<basalt::String>(key) == nullptr)
        return nullptr;
    return Store::Shared().Copy(*file, basalt::UTF8Of(key));
}

void BCPreferencesSetValue(BCStringRef key, BCTypeRef value, BCStringRef applicationID, BCStringRef,
                           BCStringRef hostName) {
    auto file = basalt::DomainFile(applicationID, hostName);
    if (!file || basalt::As<basalt::String>(key) == nullptr)
        return;
    std::optional<nlohmann::json> json;
    if (value != nullptr) {
        json = basalt::PreferenceJSON(value);
        if (!json)
            return; // an object with no preference form is not stored
    }
    Store::Shared().Set(*file, basalt::UTF8Of(key), json);
}

Boolean BCPreferencesSynchronize(BCStringRef applicationID, BCStringRef, BCStringRef hostName) {
    auto file = basalt::DomainFile(applicationID, hostName);
    return file && Store::Shared().Synchronize(*file);
}

BCTypeRef BCPreferencesCopyAppValue(BCStringRef key, BCStringRef applicationID) {
    return BCPreferencesCopyValue(key, applicationID, kBCPreferencesCurrentUser,
                                  kBCPreferencesAnyHost);
}

void BCPreferencesSetAppValue(BCStringRef key, BCTypeRef value, BCStringRef applicationID) {
    BCPreferencesSetValue(key, value, applicationID, kBCPreferencesCurrentUser,
                          kBCPreferencesAnyHost);
}

Boolean BCPreferencesAppSynchronize(BCStringRef applicationID) {
    return BCPreferencesSynchronize(applicationID, kBCPreferencesCurrentUser,
                                    kBCPreferencesAnyHost);
}

Boolean BCPreferencesGetAppBooleanValue(BCStringRef key, BCStringRef applicationID,
                                        Boolean* keyExistsAndHasValidFormat) {
    BCTypeRef value = BCPreferencesCopyAppValue(key, applicationID);
    bool valid = true, answer = false;
    BCTypeID type = BCGetTypeID(value);
    if (type == BCBooleanGetTypeID()) {
        answer = BCBooleanGetValue(static_cast<BCBooleanRef>(value));
    } else if (type == BCNumberGetTypeID()) {
        double number = 0;
        BCNumberGetValue(static_cast<BCNumberRef>(value), kBCNumberFloat64Type, &number);
        answer = number != 0;
    } else if (type == BCStringGetTypeID()) {
        std::string text = basalt::UTF8Of(static_cast<BCStringRef>(value));
        valid = text == "true" || text == "YES" || text == "false" || text == "NO";
        answer = text == "true" || text == "YES";
    } else {
        valid = false;
    }
    BCRelease(value);
    if (keyExistsAndHasValidFormat != nullptr)
        *keyExistsAndHasValidFormat = valid;
    return answer;
}

BCIndex BCPreferencesGetAppIntegerValue(BCStringRef key, BCStringRef applicationID,
                                        Boolean* keyExistsAndHasValidFormat) {
    BCTypeRef value = BCPreferencesCopyAppValue(key, applicationID);
    bool valid = false;
    BCIndex answer = 0;
    if (BCGetTypeID(value) == BCNumberGetTypeID()) {
        // Fractions are truncated and large values clamped; the number still counts as valid.
        BCNumberGetValue(static_cast<BCNumberRef>(value), kBCNumberBCIndexType, &answer);
        valid = true;
    } else if (BCGetTypeID(value) == BCStringGetTypeID()) {
        std::string text = basalt::UTF8Of(static_cast<BCStringRef>(value));
        char* end = nullptr;
        answer = std::strtol(text.c_str(), &end, 10);
        valid = !text.empty() && end != nullptr && *end == '\0';
    }
    BCRelease(value);
    if (keyExistsAndHasValidFormat != nullptr)
        *keyExistsAndHasValidFormat = valid;
    return valid ? answer : 0;
}

} // extern "C"
