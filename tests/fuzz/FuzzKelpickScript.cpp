// kelpick's --script text: any bytes give steps or a refusal, and every step given can be
// performed as parsed (a key that exists, an item above 0, a row, label or file that is named,
// a wait within its bound).

#include "tools/kelpick/ScriptStep.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void CheckStep(const ScriptStep& step) {
    switch (step.kind) {
    case ScriptStep::Kind::key:
        if (step.keyCode == 0xFFFF)
            std::abort();
        break;
    case ScriptStep::Kind::click:
        if (step.item <= 0)
            std::abort();
        break;
    case ScriptStep::Kind::snapshot:
    case ScriptStep::Kind::clickLabel:
    case ScriptStep::Kind::select:
    case ScriptStep::Kind::open:
    case ScriptStep::Kind::side:
    case ScriptStep::Kind::popup:
        if (step.text.empty())
            std::abort();
        break;
    case ScriptStep::Kind::wait:
        if (!(step.seconds >= 0 && step.seconds <= 600))
            std::abort();
        break;
    case ScriptStep::Kind::type:
    case ScriptStep::Kind::view:
    case ScriptStep::Kind::waitIdle:
        break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string script(reinterpret_cast<const char*>(data), size);
    if (auto steps = ParseScript(script))
        for (const ScriptStep& step : *steps)
            CheckStep(step);
    return 0;
}
