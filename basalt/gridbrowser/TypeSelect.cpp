#include "basalt/gridbrowser/TypeSelect.h"

#include "basalt/core/Collation.h"

namespace basalt::gridbrowser {

const std::u16string& TypeSelect::Type(char16_t character, double now) {
    if (now - last_ > kPause)
        prefix_.clear();
    last_ = now;
    prefix_.push_back(character);
    return prefix_;
}

std::optional<size_t>
TypeSelect::Find(const std::u16string& prefix, size_t count,
                 const std::function<std::optional<std::u16string>(size_t)>& name) {
    std::optional<size_t> after, last;
    std::u16string afterName;
    for (size_t i = 0; i < count; ++i) {
        std::optional<std::u16string> candidate = name(i);
        if (!candidate)
            continue;
        last = i;
        std::u16string head = candidate->substr(0, prefix.size());
        if (CompareCollated(head, prefix, true) == 0)
            return i;
        if (CompareCollated(*candidate, prefix, true) > 0 &&
            (!after || CompareCollated(*candidate, afterName, true) < 0)) {
            after = i;
            afterName = std::move(*candidate);
        }
    }
    return after ? after : last;
}

} // namespace basalt::gridbrowser
