#include "basalt/core/BCDictionary.h"

#include "basalt/core/BCString.h"

namespace basalt {
namespace {

std::string DescriptionOf(const void* object) {
    BCStringRef description = BCCopyDescription(object);
    std::string text = description != nullptr ? UTF8Of(description) : "(null)";
    BCRelease(description);
    return text;
}

const void* StoredKey(const void* key) {
    const String* string = As<String>(key);
    if (string != nullptr && string->IsMutable())
        return MakeString(string->Text());
    return BCRetain(key);
}

} // namespace

Dictionary::~Dictionary() {
    Clear();
}

const void* Dictionary::Find(const void* key) const {
    auto found = index_.find(key);
    return found != index_.end() ? entries_[found->second].second : nullptr;
}

void Dictionary::Set(const void* key, const void* value) {
    BCRetain(value);
    auto found = index_.find(key);
    if (found != index_.end()) {
        const void* old = entries_[found->second].second;
        entries_[found->second].second = value;
        BCRelease(old);
        return;
    }
    const void* stored = StoredKey(key);
    entries_.emplace_back(stored, value);
    index_.emplace(stored, entries_.size() - 1);
}

void Dictionary::Remove(const void* key) {
    auto found = index_.find(key);
    if (found == index_.end())
        return;
    size_t at = found->second;
    auto [oldKey, oldValue] = entries_[at];
    index_.erase(found);
    entries_.erase(entries_.begin() + static_cast<long>(at));
    for (auto& [entryKey, position] : index_)
        if (position > at)
            --position;
    BCRelease(oldKey);
    BCRelease(oldValue);
}

void Dictionary::Clear() {
    auto old = std::move(entries_);
    entries_.clear();
    index_.clear();
    for (auto [key, value] : old) {
        BCRelease(key);
        BCRelease(value);
    }
}

bool Dictionary::Equals(const BCObject& other) const {
    const auto& theirs = static_cast<const Dictionary&>(other);
    if (entries_.size() != theirs.entries_.size())
        return false;
    for (auto [key, value] : entries_)
        if (!BCEqual(value, theirs.Find(key)))
            return false;
    return true;
}

std::string Dictionary::Describe() const {
    std::string text = "{";
    for (auto [key, value] : entries_)
        text += "\n    " + DescriptionOf(key) + " = " + DescriptionOf(value) + ";";
    return text + (entries_.empty() ? "}" : "\n}");
}

} // namespace basalt

using basalt::Dictionary;

namespace {

BCMutableDictionaryRef Wrap(Dictionary* dictionary) {
    return reinterpret_cast<BCMutableDictionaryRef>(static_cast<basalt::BCObject*>(dictionary));
}

Dictionary* Editable(BCMutableDictionaryRef dictionary) {
    Dictionary* object = basalt::AsMutable<Dictionary>(dictionary);
    return object != nullptr && object->IsMutable() ? object : nullptr;
}

} // namespace

extern "C" {

BCTypeID BCDictionaryGetTypeID(void) {
    return static_cast<BCTypeID>(basalt::TypeID::Dictionary);
}

BCMutableDictionaryRef BCDictionaryCreateMutable(BCAllocatorRef, BCIndex) {
    return Wrap(new Dictionary(true));
}

BCDictionaryRef BCDictionaryCreate(BCAllocatorRef, const void** keys, const void** values,
                                   BCIndex numValues) {
    if (numValues < 0 || (numValues > 0 && (keys == nullptr || values == nullptr)))
        return nullptr;
    auto* dictionary = new Dictionary(false);
    for (BCIndex i = 0; i < numValues; ++i)
        if (keys[i] != nullptr && values[i] != nullptr)
            dictionary->Set(keys[i], values[i]);
    return Wrap(dictionary);
}

BCMutableDictionaryRef BCDictionaryCreateMutableCopy(BCAllocatorRef, BCIndex,
                                                     BCDictionaryRef dictionary) {
    auto* copy = new Dictionary(true);
    if (const Dictionary* source = basalt::As<Dictionary>(dictionary))
        for (auto [key, value] : source->Entries())
            copy->Set(key, value);
    return Wrap(copy);
}

BCIndex BCDictionaryGetCount(BCDictionaryRef dictionary) {
    const Dictionary* object = basalt::As<Dictionary>(dictionary);
    return object != nullptr ? static_cast<BCIndex>(object->Entries().size()) : 0;
}

const void* BCDictionaryGetValue(BCDictionaryRef dictionary, const void* key) {
    const Dictionary* object = basalt::As<Dictionary>(dictionary);
    return object != nullptr && key != nullptr ? object->Find(key) : nullptr;
}

Boolean BCDictionaryContainsKey(BCDictionaryRef dictionary, const void* key) {
    return BCDictionaryGetValue(dictionary, key) != nullptr;
}

void BCDictionaryGetKeysAndValues(BCDictionaryRef dictionary, const void** keys,
                                  const void** values) {
    const Dictionary* object = basalt::As<Dictionary>(dictionary);
    if (object == nullptr)
        return;
    size_t i = 0;
    for (auto [key, value] : object->Entries()) {
        if (keys != nullptr)
            keys[i] = key;
        if (values != nullptr)
            values[i] = value;
        ++i;
    }
}

void BCDictionarySetValue(BCMutableDictionaryRef dictionary, const void* key, const void* value) {
    Dictionary* object = Editable(dictionary);
    if (object == nullptr || key == nullptr)
        return;
    // A null value removes the key, so a dictionary never holds a null.
    if (value == nullptr)
        object->Remove(key);
    else
        object->Set(key, value);
}

void BCDictionaryRemoveValue(BCMutableDictionaryRef dictionary, const void* key) {
    Dictionary* object = Editable(dictionary);
    if (object != nullptr && key != nullptr)
        object->Remove(key);
}

void BCDictionaryRemoveAllValues(BCMutableDictionaryRef dictionary) {
    if (Dictionary* object = Editable(dictionary))
        object->Clear();
}

} // extern "C"
