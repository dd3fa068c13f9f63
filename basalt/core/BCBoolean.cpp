#include "basalt/core/BCObject.h"

namespace basalt {
namespace {

class BooleanValue final : public BCObject {
public:
    static constexpr TypeID kType = TypeID::Boolean;

    explicit BooleanValue(bool value) : BCObject(kType), value_(value) { MakeImmortal(); }

    bool Value() const { return value_; }
    // The two values are singletons, so identity is equality.
    BCHashCode Hash() const override { return value_ ? 1 : 0; }
    std::string Describe() const override { return value_ ? "true" : "false"; }

private:
    const bool value_;
};

const BooleanValue kTrue(true);
const BooleanValue kFalse(false);

} // namespace
} // namespace basalt

extern "C" {

const BCBooleanRef kBCBooleanTrue =
    reinterpret_cast<BCBooleanRef>(static_cast<const basalt::BCObject*>(&basalt::kTrue));
const BCBooleanRef kBCBooleanFalse =
    reinterpret_cast<BCBooleanRef>(static_cast<const basalt::BCObject*>(&basalt::kFalse));

BCTypeID BCBooleanGetTypeID(void) {
    return static_cast<BCTypeID>(basalt::TypeID::Boolean);
}

Boolean BCBooleanGetValue(BCBooleanRef boolean) {
    const auto* object = basalt::As<basalt::BooleanValue>(boolean);
    return object != nullptr && object->Value();
}

} // extern "C"
