// Preference files: whatever bytes a domain's file holds, reading its values never crashes,
// and a write keeps every value the file already held.

#include "FuzzScratch.h"
#include "basalt/core/BCString.h"
#include "basalt/core/PreferencesValue.h"

#include <basalt/BasaltCore.h>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

namespace {

const std::string kDomain = "org.example.fuzz";

BCStringRef MakeString(const std::string& text) {
    return BCStringCreateWithBytes(nullptr, reinterpret_cast<const uint8_t*>(text.data()),
                                   BCIndex(text.size()), kBCStringEncodingUTF8, false);
}

std::string DomainPath() {
    return fuzz::ScratchFolder() + "/.config/kel/preferences/" + kDomain + ".json";
}

nlohmann::json ReadDomainFile() {
    std::ifstream file(DomainPath(), std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return nlohmann::json::parse(text.str(), nullptr, false);
}

void ReadEveryValue(const nlohmann::json& values, BCStringRef domain) {
    for (const auto& [key, value] : values.items()) {
        BCStringRef name = MakeString(key);
        if (name == nullptr)
            continue;
        if (BCTypeRef copy = BCPreferencesCopyAppValue(name, domain))
            BCRelease(copy);
        Boolean valid = false;
        BCPreferencesGetAppIntegerValue(name, domain, &valid);
        BCPreferencesGetAppBooleanValue(name, domain, &valid);
        BCRelease(name);
    }
}

// A value read as an object and written back as JSON reads as the same object again.
void CheckValueRoundTrip(const nlohmann::json& value) {
    BCTypeRef object = basalt::PreferenceObject(value);
    if (object == nullptr)
        return;
    if (auto json = basalt::PreferenceJSON(object)) {
        BCTypeRef again = basalt::PreferenceObject(*json);
        if (again == nullptr || !BCEqual(object, again))
            std::abort();
        BCRelease(again);
    }
    BCRelease(object);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::FreshFolder(".config/kel/preferences");
    std::ofstream(DomainPath(), std::ios::binary)
        .write(reinterpret_cast<const char*>(data), std::streamsize(size));
    const nlohmann::json before = ReadDomainFile();

    BCStringRef domain = MakeString(kDomain);
    BCPreferencesAppSynchronize(domain);
    if (before.is_object()) {
        ReadEveryValue(before, domain);
        for (const auto& [key, value] : before.items())
            CheckValueRoundTrip(value);
    }

    BCStringRef key = MakeString("fuzz-written");
    BCPreferencesSetAppValue(key, kBCBooleanTrue, domain);
    BCRelease(key);
    BCRelease(domain);

    // Nothing that was on disk may be lost by a write.
    const nlohmann::json after = ReadDomainFile();
    if (before.is_object()) {
        if (!after.is_object())
            std::abort();
        for (const auto& [name, value] : before.items())
            if (name != "fuzz-written" && (!after.contains(name) || after[name] != value))
                std::abort();
    }
    return 0;
}
