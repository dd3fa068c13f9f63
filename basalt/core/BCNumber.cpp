// Numbers keep whether they were made from an integer or a floating type, so that preferences
// written as 3 do not come back as 3.0. Reading converts and reports whether the value fit.

#include "basalt/core/BCObject.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

namespace basalt {

class Number final : public BCObject {
public:
    static constexpr TypeID kType = TypeID::Number;

    Number(int64_t integer, double real, bool isFloat)
        : BCObject(kType), integer_(integer), real_(real), float_(isFloat) {}

    bool IsFloat() const { return float_; }
    int64_t Integer() const { return integer_; }
    double Real() const { return float_ ? real_ : static_cast<double>(integer_); }

    bool Equals(const BCObject& other) const override {
        const auto& that = static_cast<const Number&>(other);
        if (float_ || that.float_)
            return Real() == that.Real();
        return integer_ == that.integer_;
    }
    BCHashCode Hash() const override {
        double real = Real();
        if (real == std::floor(real) && std::abs(real) < 9e18)
            return static_cast<BCHashCode>(static_cast<int64_t>(real));
        return std::hash<double>{}(real);
    }
    std::string Describe() const override {
        if (!float_)
            return std::to_string(integer_);
        char text[32];
        std::snprintf(text, sizeof text, "%.17g", real_);
        return text;
    }

private:
    int64_t integer_;
    double real_;
    bool float_;
};

namespace {

bool IsFloatType(BCNumberType type) {
    return type == kBCNumberFloat32Type || type == kBCNumberFloat64Type ||
           type == kBCNumberFloatType || type == kBCNumberDoubleType;
}

template <class T>
bool StoreInteger(int64_t value, void* out) {
    bool fits = value >= std::numeric_limits<T>::min() && value <= std::numeric_limits<T>::max();
    T narrowed = static_cast<T>(value);
    std::memcpy(out, &narrowed, sizeof narrowed);
    return fits;
}

template <class T>
bool StoreIntegerFromReal(double value, void* out) {
    bool fits = std::isfinite(value) && value == std::trunc(value) &&
                value >= static_cast<double>(std::numeric_limits<T>::min()) &&
                value <= static_cast<double>(std::numeric_limits<T>::max());
    T narrowed = fits ? static_cast<T>(value) : T(0);
    if (!fits && std::isfinite(value))
        narrowed = static_cast<T>(std::clamp(value, double(std::numeric_limits<T>::min()),
                                             double(std::numeric_limits<T>::max())));
    std::memcpy(out, &narrowed, sizeof narrowed);
    return fits;
}

template <class T>
bool StoreInteger(const Number& number, void* out) {
    return number.IsFloat() ? StoreIntegerFromReal<T>(number.Real(), out)
                            : StoreInteger<T>(number.Integer(), out);
}

} // namespace
} // namespace basalt

using basalt::Number;

extern "C" {

BCTypeID BCNumberGetTypeID(void) {
    return static_cast<BCTypeID>(basalt::TypeID::Number);
}

BCNumberRef BCNumberCreate(BCAllocatorRef, BCNumberType type, const void* valuePtr) {
    if (valuePtr == nullptr)
        return nullptr;
    int64_t integer = 0;
    double real = 0;
    switch (type) {
    case kBCNumberSInt8Type:
    case kBCNumberCharType:
        integer = *static_cast<const int8_t*>(valuePtr);
        break;
    case kBCNumberSInt16Type:
    case kBCNumberShortType:
        integer = *static_cast<const int16_t*>(valuePtr);
        break;
    case kBCNumberSInt32Type:
    case kBCNumberIntType:
        integer = *static_cast<const int32_t*>(valuePtr);
        break;
    case kBCNumberSInt64Type:
    case kBCNumberLongType:
    case kBCNumberLongLongType:
    case kBCNumberBCIndexType:
        integer = *static_cast<const int64_t*>(valuePtr);
        break;
    case kBCNumberFloat32Type:
    case kBCNumberFloatType:
        real = *static_cast<const float*>(valuePtr);
        break;
    case kBCNumberFloat64Type:
    case kBCNumberDoubleType:
        real = *static_cast<const double*>(valuePtr);
        break;
    default:
        return nullptr;
    }
    auto* number = new Number(integer, real, basalt::IsFloatType(type));
    return reinterpret_cast<BCNumberRef>(static_cast<basalt::BCObject*>(number));
}

Boolean BCNumberGetValue(BCNumberRef number, BCNumberType type, void* valuePtr) {
    const Number* object = basalt::As<Number>(number);
    if (object == nullptr || valuePtr == nullptr)
        return false;
    switch (type) {
    case kBCNumberSInt8Type:
    case kBCNumberCharType:
        return basalt::StoreInteger<int8_t>(*object, valuePtr);
    case kBCNumberSInt16Type:
    case kBCNumberShortType:
        return basalt::StoreInteger<int16_t>(*object, valuePtr);
    case kBCNumberSInt32Type:
    case kBCNumberIntType:
        return basalt::StoreInteger<int32_t>(*object, valuePtr);
    case kBCNumberSInt64Type:
    case kBCNumberLongType:
    case kBCNumberLongLongType:
    case kBCNumberBCIndexType:
        return basalt::StoreInteger<int64_t>(*object, valuePtr);
    case kBCNumberFloat32Type:
    case kBCNumberFloatType: {
        float value = static_cast<float>(object->Real());
        std::memcpy(valuePtr, &value, sizeof value);
        return static_cast<double>(value) == object->Real();
    }
    case kBCNumberFloat64Type:
    case kBCNumberDoubleType: {
        double value = object->Real();
        std::memcpy(valuePtr, &value, sizeof value);
        return object->IsFloat() || static_cast<int64_t>(value) == object->Integer();
    }
    default:
        return false;
    }
}

Boolean BCNumberIsFloatType(BCNumberRef number) {
    const Number* object = basalt::As<Number>(number);
    return object != nullptr && object->IsFloat();
}

} // extern "C"
