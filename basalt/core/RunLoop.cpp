// Run loops identify threads: each thread has one, made when it first asks. The main run loop
// belongs to the process's initial thread (the one that ran main), wherever it is first asked
// for, and lives as long as the process.

#include "basalt/core/BCObject.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace basalt {
namespace {

class RunLoop final : public BCObject {
public:
    static constexpr TypeID kType = TypeID::RunLoop;

    explicit RunLoop(bool isMain) : BCObject(kType) {
        if (isMain)
            MakeImmortal();
    }
};

bool OnInitialThread() {
    return syscall(SYS_gettid) == getpid();
}

RunLoop& MainRunLoop() {
    static RunLoop* main = new RunLoop(true);
    return *main;
}

// Releases a secondary thread's run loop when the thread ends.
struct ThreadRunLoop {
    RunLoop* loop = nullptr;
    ~ThreadRunLoop() {
        if (loop != nullptr)
            loop->Release();
    }
};

BCRunLoopRef Wrap(RunLoop& loop) {
    return reinterpret_cast<BCRunLoopRef>(static_cast<BCObject*>(&loop));
}

} // namespace
} // namespace basalt

extern "C" {

BCRunLoopRef BCRunLoopGetCurrent(void) {
    if (basalt::OnInitialThread())
        return basalt::Wrap(basalt::MainRunLoop());
    thread_local basalt::ThreadRunLoop current;
    if (current.loop == nullptr)
        current.loop = new basalt::RunLoop(false);
    return basalt::Wrap(*current.loop);
}

BCRunLoopRef BCRunLoopGetMain(void) {
    return basalt::Wrap(basalt::MainRunLoop());
}

} // extern "C"
