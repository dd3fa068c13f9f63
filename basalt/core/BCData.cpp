#include "basalt/core/BCObject.h"

#include <cstring>
#include <functional>
#include <string_view>
#include <vector>

namespace basalt {

class Data final : public BCObject {
public:
    static constexpr TypeID kType = TypeID::Data;

    Data(std::vector<uint8_t> bytes, bool isMutable)
        : BCObject(kType), bytes_(std::move(bytes)), mutable_(isMutable) {}

    std::vector<uint8_t>& Bytes() { return bytes_; }
    const std::vector<uint8_t>& Bytes() const { return bytes_; }
    bool IsMutable() const { return mutable_; }

    bool Equals(const BCObject& other) const override {
        return bytes_ == static_cast<const Data&>(other).bytes_;
    }
    BCHashCode Hash() const override {
        return std::hash<std::string_view>{}(
            std::string_view(reinterpret_cast<const char*>(bytes_.data()), bytes_.size()));
    }
    std::string Describe() const override {
        static const char kHex[] = "0123456789abcdef";
        std::string text = "<";
        for (size_t i = 0; i < bytes_.size(); ++i) {
            if (i > 0 && i % 4 == 0)
                text += ' ';
            text += kHex[bytes_[i] >> 4];
            text += kHex[bytes_[i] & 15];
        }
        return text + ">";
    }

private:
    std::vector<uint8_t> bytes_;
    const bool mutable_;
};

} // namespace basalt

using basalt::Data;

namespace {

Data* Editable(BCMutableDataRef data) {
    Data* object = basalt::AsMutable<Data>(data);
    return object != nullptr && object->IsMutable() ? object : nullptr;
}

} // namespace

extern "C" {

BCTypeID BCDataGetTypeID(void) {
    return static_cast<BCTypeID>(basalt::TypeID::Data);
}

BCDataRef BCDataCreate(BCAllocatorRef, const uint8_t* bytes, BCIndex length) {
    if (length < 0 || (bytes == nullptr && length > 0))
        return nullptr;
    std::vector<uint8_t> copy(bytes, bytes + length);
    return reinterpret_cast<BCDataRef>(static_cast<basalt::BCObject*>(new Data(copy, false)));
}

BCMutableDataRef BCDataCreateMutable(BCAllocatorRef, BCIndex) {
    return reinterpret_cast<BCMutableDataRef>(static_cast<basalt::BCObject*>(new Data({}, true)));
}

BCIndex BCDataGetLength(BCDataRef data) {
    const Data* object = basalt::As<Data>(data);
    return object != nullptr ? static_cast<BCIndex>(object->Bytes().size()) : 0;
}

const uint8_t* BCDataGetBytePtr(BCDataRef data) {
    const Data* object = basalt::As<Data>(data);
    return object != nullptr ? object->Bytes().data() : nullptr;
}

uint8_t* BCDataGetMutableBytePtr(BCMutableDataRef data) {
    Data* object = Editable(data);
    return object != nullptr ? object->Bytes().data() : nullptr;
}

void BCDataGetBytes(BCDataRef data, BCRange range, uint8_t* buffer) {
    const Data* object = basalt::As<Data>(data);
    if (object == nullptr || buffer == nullptr || range.location < 0 || range.length < 0 ||
        static_cast<size_t>(range.location + range.length) > object->Bytes().size())
        return;
    std::memcpy(buffer, object->Bytes().data() + range.location, static_cast<size_t>(range.length));
}

void BCDataSetLength(BCMutableDataRef data, BCIndex length) {
    Data* object = Editable(data);
    if (object != nullptr && length >= 0)
        object->Bytes().resize(static_cast<size_t>(length), 0);
}

void BCDataAppendBytes(BCMutableDataRef data, const uint8_t* bytes, BCIndex length) {
    Data* object = Editable(data);
    if (object != nullptr && bytes != nullptr && length > 0)
        object->Bytes().insert(object->Bytes().end(), bytes, bytes + length);
}

} // extern "C"
