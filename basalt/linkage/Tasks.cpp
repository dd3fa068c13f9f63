#include "basalt/linkage/Linkage.h"

#include <atomic>
#include <pthread.h>

namespace {

struct TaskStart {
    TaskProc entryPoint;
    void* parameter;
};

void* RunTask(void* start) {
    TaskStart task = *static_cast<TaskStart*>(start);
    delete static_cast<TaskStart*>(start);
    task.entryPoint(task.parameter);
    return nullptr;
}

// Task ids are numbers, not addresses: a finished task leaves nothing to free.
MPTaskID NextTaskID() {
    static std::atomic<uintptr_t> next{1};
    return reinterpret_cast<MPTaskID>(next.fetch_add(1));
}

} // namespace

extern "C" {

StatusCode MPCreateTask(TaskProc entryPoint, void* parameter, size_t stackSize,
                        MPQueueID notifyQueue, void*, void*, MPTaskOptions, MPTaskID* task) {
    if (entryPoint == nullptr || notifyQueue != nullptr)
        return paramErr;
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
    if (stackSize > 0 && pthread_attr_setstacksize(&attributes, stackSize) != 0) {
        pthread_attr_destroy(&attributes);
        return paramErr;
    }
    auto* start = new TaskStart{entryPoint, parameter};
    pthread_t thread;
    int failed = pthread_create(&thread, &attributes, RunTask, start);
    pthread_attr_destroy(&attributes);
    if (failed != 0) {
        delete start;
        return memFullErr;
    }
    if (task != nullptr)
        *task = NextTaskID();
    return noErr;
}

int32_t AddAtomic(int32_t amount, int32_t* value) {
    return __atomic_fetch_add(value, amount, __ATOMIC_SEQ_CST);
}

int32_t IncrementAtomic(int32_t* value) {
    return AddAtomic(1, value);
}

int32_t DecrementAtomic(int32_t* value) {
    return AddAtomic(-1, value);
}

} // extern "C"
