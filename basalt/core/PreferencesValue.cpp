#include "basalt/core/PreferencesValue.h"

#include "basalt/core/BCString.h"
#include "basalt/core/Base64.h"

#include <vector>

namespace basalt {
namespace {

using nlohmann::json;

std::optional<json> NumberJSON(BCNumberRef number) {
    if (BCNumberIsFloatType(number)) {
        double value = 0;
        BCNumberGetValue(number, kBCNumberFloat64Type, &value);
        return json(value);
    }
    int64_t value = 0;
    BCNumberGetValue(number, kBCNumberSInt64Type, &value);
    return json(value);
}

std::optional<json> ArrayJSON(BCArrayRef array) {
    json out = json::array();
    for (BCIndex i = 0; i < BCArrayGetCount(array); ++i) {
        auto item = PreferenceJSON(BCArrayGetValueAtIndex(array, i));
        if (!item)
            return std::nullopt;
        out.push_back(std::move(*item));
    }
    return out;
}

std::optional<json> DictionaryJSON(BCDictionaryRef dictionary) {
    BCIndex count = BCDictionaryGetCount(dictionary);
    std::vector<const void*> keys(static_cast<size_t>(count)), values(keys.size());
    BCDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
    json out = json::object();
    for (size_t i = 0; i < keys.size(); ++i) {
        auto item = PreferenceJSON(values[i]);
        if (BCGetTypeID(keys[i]) != BCStringGetTypeID() || !item)
            return std::nullopt;
        out[UTF8Of(static_cast<BCStringRef>(keys[i]))] = std::move(*item);
    }
    return out;
}

BCTypeRef ObjectFromObjectJSON(const json& object) {
    if (object.size() == 1 && object.contains("$data") && object["$data"].is_string())
        if (auto bytes = DecodeBase64(object["$data"].get<std::string>()))
            return BCDataCreate(kBCAllocatorDefault, bytes->data(), BCIndex(bytes->size()));
    if (object.size() == 1 && object.contains("$date") && object["$date"].is_number())
        return BCDateCreate(kBCAllocatorDefault, object["$date"].get<double>());
    BCMutableDictionaryRef dictionary = BCDictionaryCreateMutable(kBCAllocatorDefault, 0);
    for (const auto& [key, value] : object.items()) {
        BCStringRef name = MakeString(FromUTF8(key));
        BCTypeRef item = PreferenceObject(value);
        BCDictionarySetValue(dictionary, name, item);
        BCRelease(name);
        BCRelease(item);
    }
    return dictionary;
}

} // namespace

std::optional<json> PreferenceJSON(BCTypeRef value) {
    BCTypeID type = BCGetTypeID(value);
    if (type == BCStringGetTypeID())
        return json(UTF8Of(static_cast<BCStringRef>(value)));
    if (type == BCBooleanGetTypeID())
        return json(bool(BCBooleanGetValue(static_cast<BCBooleanRef>(value))));
    if (type == BCNumberGetTypeID())
        return NumberJSON(static_cast<BCNumberRef>(value));
    if (type == BCDataGetTypeID()) {
        auto data = static_cast<BCDataRef>(value);
        return json{{"$data", EncodeBase64(BCDataGetBytePtr(data), size_t(BCDataGetLength(data)))}};
    }
    if (type == BCDateGetTypeID())
        return json{{"$date", BCDateGetAbsoluteTime(static_cast<BCDateRef>(value))}};
    if (type == BCArrayGetTypeID())
        return ArrayJSON(static_cast<BCArrayRef>(value));
    if (type == BCDictionaryGetTypeID())
        return DictionaryJSON(static_cast<BCDictionaryRef>(value));
    return std::nullopt;
}

BCTypeRef PreferenceObject(const json& value) {
    switch (value.type()) {
    case json::value_t::string:
        return MakeString(FromUTF8(value.get<std::string>()));
    case json::value_t::boolean:
        return value.get<bool>() ? kBCBooleanTrue : kBCBooleanFalse;
    case json::value_t::number_integer:
    case json::value_t::number_unsigned: {
        int64_t number = value.get<int64_t>();
        return BCNumberCreate(kBCAllocatorDefault, kBCNumberSInt64Type, &number);
    }
    case json::value_t::number_float: {
        double number = value.get<double>();
        return BCNumberCreate(kBCAllocatorDefault, kBCNumberFloat64Type, &number);
    }
    case json::value_t::array: {
        BCMutableArrayRef array =
            BCArrayCreateMutable(kBCAllocatorDefault, 0, &kBCTypeArrayCallBacks);
        for (const auto& item : value) {
            BCTypeRef object = PreferenceObject(item);
            if (object != nullptr)
                BCArrayAppendValue(array, object);
            BCRelease(object);
        }
        return array;
    }
    case json::value_t::object:
        return ObjectFromObjectJSON(value);
    default:
        return nullptr;
    }
}

} // namespace basalt
