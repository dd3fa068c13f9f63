#include "basalt/core/BCArray.h"

#include "basalt/core/BCString.h"

#include <algorithm>

namespace basalt {
namespace {

const void* RetainObject(BCAllocatorRef, const void* value) {
    return BCRetain(value);
}

void ReleaseObject(BCAllocatorRef, const void* value) {
    BCRelease(value);
}

Boolean EqualObjects(const void* a, const void* b) {
    return BCEqual(a, b);
}

} // namespace

Array::Array(const BCArrayCallBacks* callBacks, bool isMutable)
    : BCObject(kType), mutable_(isMutable) {
    if (callBacks != nullptr)
        callBacks_ = *callBacks;
}

Array::~Array() {
    Clear();
}

const void* Array::Retained(const void* value) const {
    return callBacks_.retain != nullptr ? callBacks_.retain(kBCAllocatorDefault, value) : value;
}

void Array::Released(const void* value) const {
    if (callBacks_.release != nullptr)
        callBacks_.release(kBCAllocatorDefault, value);
}

void Array::Insert(size_t index, const void* value) {
    values_.insert(values_.begin() + static_cast<long>(index), Retained(value));
}

void Array::Set(size_t index, const void* value) {
    const void* old = values_[index];
    values_[index] = Retained(value);
    Released(old);
}

void Array::Remove(size_t index) {
    const void* old = values_[index];
    values_.erase(values_.begin() + static_cast<long>(index));
    Released(old);
}

void Array::Clear() {
    std::vector<const void*> old;
    old.swap(values_);
    for (const void* value : old)
        Released(value);
}

bool Array::SameValue(const void* a, const void* b) const {
    return callBacks_.equal != nullptr ? callBacks_.equal(a, b) : a == b;
}

bool Array::Equals(const BCObject& other) const {
    const auto& theirs = static_cast<const Array&>(other).values_;
    return std::equal(values_.begin(), values_.end(), theirs.begin(), theirs.end(),
                      [this](const void* a, const void* b) { return SameValue(a, b); });
}

std::string Array::Describe() const {
    std::string text = "(";
    for (size_t i = 0; i < values_.size(); ++i) {
        text += i == 0 ? "\n    " : ",\n    ";
        BCStringRef description = callBacks_.copyDescription != nullptr
                                      ? callBacks_.copyDescription(values_[i])
                                      : nullptr;
        text += description != nullptr ? UTF8Of(description) : "<value>";
        BCRelease(description);
    }
    return text + (values_.empty() ? ")" : "\n)");
}

} // namespace basalt

using basalt::Array;

namespace {

BCMutableArrayRef Wrap(Array* array) {
    return reinterpret_cast<BCMutableArrayRef>(static_cast<basalt::BCObject*>(array));
}

Array* Editable(BCMutableArrayRef array) {
    Array* object = basalt::AsMutable<Array>(array);
    return object != nullptr && object->IsMutable() ? object : nullptr;
}

bool ValidRange(const Array* array, BCRange range) {
    return array != nullptr && range.location >= 0 && range.length >= 0 &&
           static_cast<size_t>(range.location + range.length) <= array->Values().size();
}

Array* CopyOf(BCArrayRef source, bool isMutable) {
    const Array* from = basalt::As<Array>(source);
    if (from == nullptr)
        return nullptr;
    auto* array = new Array(&from->CallBacks(), isMutable);
    for (const void* value : from->Values())
        array->Insert(array->Values().size(), value);
    return array;
}

} // namespace

extern "C" {

const BCArrayCallBacks kBCTypeArrayCallBacks = {0, basalt::RetainObject, basalt::ReleaseObject,
                                                BCCopyDescription, basalt::EqualObjects};

BCTypeID BCArrayGetTypeID(void) {
    return static_cast<BCTypeID>(basalt::TypeID::Array);
}

BCArrayRef BCArrayCreate(BCAllocatorRef, const void** values, BCIndex numValues,
                         const BCArrayCallBacks* callBacks) {
    if (numValues < 0 || (values == nullptr && numValues > 0))
        return nullptr;
    auto* array = new Array(callBacks, false);
    for (BCIndex i = 0; i < numValues; ++i)
        array->Insert(static_cast<size_t>(i), values[i]);
    return Wrap(array);
}

BCArrayRef BCArrayCreateCopy(BCAllocatorRef, BCArrayRef array) {
    return Wrap(CopyOf(array, false));
}

BCMutableArrayRef BCArrayCreateMutable(BCAllocatorRef, BCIndex, const BCArrayCallBacks* callBacks) {
    return Wrap(new Array(callBacks, true));
}

BCMutableArrayRef BCArrayCreateMutableCopy(BCAllocatorRef, BCIndex, BCArrayRef array) {
    return Wrap(CopyOf(array, true));
}

BCIndex BCArrayGetCount(BCArrayRef array) {
    const Array* object = basalt::As<Array>(array);
    return object != nullptr ? static_cast<BCIndex>(object->Values().size()) : 0;
}

const void* BCArrayGetValueAtIndex(BCArrayRef array, BCIndex index) {
    const Array* object = basalt::As<Array>(array);
    if (object == nullptr || index < 0 || static_cast<size_t>(index) >= object->Values().size())
        return nullptr;
    return object->Values()[static_cast<size_t>(index)];
}

BCIndex BCArrayGetFirstIndexOfValue(BCArrayRef array, BCRange range, const void* value) {
    const Array* object = basalt::As<Array>(array);
    if (!ValidRange(object, range))
        return kBCNotFound;
    for (BCIndex i = range.location; i < range.location + range.length; ++i)
        if (object->SameValue(object->Values()[static_cast<size_t>(i)], value))
            return i;
    return kBCNotFound;
}

Boolean BCArrayContainsValue(BCArrayRef array, BCRange range, const void* value) {
    return BCArrayGetFirstIndexOfValue(array, range, value) != kBCNotFound;
}

void BCArrayAppendValue(BCMutableArrayRef array, const void* value) {
    if (Array* object = Editable(array))
        object->Insert(object->Values().size(), value);
}

void BCArrayInsertValueAtIndex(BCMutableArrayRef array, BCIndex index, const void* value) {
    Array* object = Editable(array);
    if (object != nullptr && index >= 0 && static_cast<size_t>(index) <= object->Values().size())
        object->Insert(static_cast<size_t>(index), value);
}

void BCArraySetValueAtIndex(BCMutableArrayRef array, BCIndex index, const void* value) {
    Array* object = Editable(array);
    if (object == nullptr || index < 0 || static_cast<size_t>(index) > object->Values().size())
        return;
    // Setting one past the end appends.
    if (static_cast<size_t>(index) == object->Values().size())
        object->Insert(static_cast<size_t>(index), value);
    else
        object->Set(static_cast<size_t>(index), value);
}

void BCArrayRemoveValueAtIndex(BCMutableArrayRef array, BCIndex index) {
    Array* object = Editable(array);
    if (object != nullptr && index >= 0 && static_cast<size_t>(index) < object->Values().size())
        object->Remove(static_cast<size_t>(index));
}

void BCArrayRemoveAllValues(BCMutableArrayRef array) {
    if (Array* object = Editable(array))
        object->Clear();
}

void BCArraySortValues(BCMutableArrayRef array, BCRange range, BCComparatorFunction comparator,
                       void* context) {
    Array* object = Editable(array);
    if (!ValidRange(object, range) || comparator == nullptr)
        return;
    auto begin = object->Storage().begin() + range.location;
    std::stable_sort(begin, begin + range.length, [&](const void* a, const void* b) {
        return comparator(a, b, context) == kBCCompareLessThan;
    });
}

} // extern "C"
