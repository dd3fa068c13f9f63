#include "basalt/core/BCObject.h"

#include <chrono>
#include <ctime>

namespace basalt {
namespace {

// Seconds from the Unix epoch to 2001-01-01 00:00:00 UTC.
constexpr double kEpochOffset = 978307200.0;

class Date final : public BCObject {
public:
    static constexpr TypeID kType = TypeID::Date;

    explicit Date(BCAbsoluteTime at) : BCObject(kType), at_(at) {}

    BCAbsoluteTime At() const { return at_; }
    bool Equals(const BCObject& other) const override {
        return at_ == static_cast<const Date&>(other).at_;
    }
    BCHashCode Hash() const override { return std::hash<double>{}(at_); }
    std::string Describe() const override {
        std::time_t seconds = static_cast<std::time_t>(at_ + kEpochOffset);
        std::tm utc{};
        gmtime_r(&seconds, &utc);
        char text[40];
        std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S +0000", &utc);
        return text;
    }

private:
    const BCAbsoluteTime at_;
};

} // namespace
} // namespace basalt

extern "C" {

BCTypeID BCDateGetTypeID(void) {
    return static_cast<BCTypeID>(basalt::TypeID::Date);
}

BCAbsoluteTime BCAbsoluteTimeGetCurrent(void) {
    auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count() - basalt::kEpochOffset;
}

BCDateRef BCDateCreate(BCAllocatorRef, BCAbsoluteTime at) {
    return reinterpret_cast<BCDateRef>(static_cast<basalt::BCObject*>(new basalt::Date(at)));
}

BCAbsoluteTime BCDateGetAbsoluteTime(BCDateRef date) {
    const auto* object = basalt::As<basalt::Date>(date);
    return object != nullptr ? object->At() : 0;
}

BCComparisonResult BCDateCompare(BCDateRef a, BCDateRef b, void*) {
    BCAbsoluteTime first = BCDateGetAbsoluteTime(a);
    BCAbsoluteTime second = BCDateGetAbsoluteTime(b);
    return first < second   ? kBCCompareLessThan
           : first > second ? kBCCompareGreaterThan
                            : kBCCompareEqualTo;
}

} // extern "C"
