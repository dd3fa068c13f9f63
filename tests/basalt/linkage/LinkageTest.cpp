#include "basalt/linkage/Linkage.h"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <future>
#include <gtest/gtest.h>

namespace {

TEST(Linkage, FindsSymbolsOfLoadedModules) {
    EXPECT_TRUE(TKIsSymbolNameDefined("BCRetain"));
    EXPECT_EQ(TKLookupAndBindSymbol("BCRetain"), reinterpret_cast<void*>(&BCRetain));
    EXPECT_EQ(TKAddressOfSymbol("strlen"), reinterpret_cast<void*>(&strlen));
    EXPECT_FALSE(TKIsSymbolNameDefined("_TKKelCreateGetFileDialog"));
    EXPECT_EQ(TKLookupAndBindSymbol("_TKKelCreateGetFileDialog"), nullptr);
    EXPECT_EQ(TKAddressOfSymbol(nullptr), nullptr);
}

TEST(Linkage, FixesAreOnUnlessDisabled) {
    unsetenv("KEL_DISABLED_FIXES");
    EXPECT_TRUE(_BSCheckFix(BCSTR("5026050")));
    setenv("KEL_DISABLED_FIXES", "4924595, 5026050 ,77", 1);
    EXPECT_FALSE(_BSCheckFix(BCSTR("5026050")));
    EXPECT_FALSE(_BSCheckFix(BCSTR("4924595")));
    EXPECT_TRUE(_BSCheckFix(BCSTR("5110700")));
    EXPECT_TRUE(_BSCheckFix(BCSTR("7"))); // a prefix of a listed number is not listed
    EXPECT_FALSE(_BSCheckFix(BCSTR("fix")));
    EXPECT_FALSE(_BSCheckFix(nullptr));
    unsetenv("KEL_DISABLED_FIXES");
}

struct Counting {
    int32_t count = 0;
    int32_t finished = 0;
    std::promise<void> done;
    static constexpr int32_t kTasks = 8;
};

StatusCode CountOnce(void* parameter) {
    auto* counting = static_cast<Counting*>(parameter);
    for (int i = 0; i < 1000; ++i)
        IncrementAtomic(&counting->count);
    // Only the last task to finish signals; it touches nothing after that.
    if (IncrementAtomic(&counting->finished) == Counting::kTasks - 1)
        counting->done.set_value();
    return noErr;
}

TEST(Linkage, TasksRunAndAtomicsDoNotLoseCounts) {
    Counting counting;
    auto finished = counting.done.get_future();
    for (int32_t i = 0; i < Counting::kTasks; ++i) {
        MPTaskID task = nullptr;
        ASSERT_EQ(MPCreateTask(CountOnce, &counting, 0, nullptr, nullptr, nullptr, 0, &task),
                  noErr);
        EXPECT_NE(task, nullptr);
    }
    ASSERT_EQ(finished.wait_for(std::chrono::seconds(30)), std::future_status::ready);
    EXPECT_EQ(DecrementAtomic(&counting.count), Counting::kTasks * 1000);
    EXPECT_EQ(AddAtomic(5, &counting.count), Counting::kTasks * 1000 - 1);
    EXPECT_EQ(MPCreateTask(nullptr, nullptr, 0, nullptr, nullptr, nullptr, 0, nullptr), paramErr);
}

} // namespace
