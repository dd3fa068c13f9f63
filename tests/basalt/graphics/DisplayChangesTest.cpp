#include "basalt/graphics/DisplayChanges.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

struct Log {
    std::vector<BGDisplayChangeSummaryFlags> flags;
    bool removeSelf = false;
    void* other = nullptr;
};

void Record(BGDirectDisplayID, BGDisplayChangeSummaryFlags flags, void* userInfo) {
    auto* log = static_cast<Log*>(userInfo);
    log->flags.push_back(flags);
    if (log->removeSelf)
        BGDisplayRemoveReconfigurationCallback(Record, log);
    if (log->other != nullptr)
        BGDisplayRemoveReconfigurationCallback(Record, log->other);
}

TEST(DisplayChanges, CallbacksHearTheAnnouncementThenTheChange) {
    Log log;
    ASSERT_EQ(BGDisplayRegisterReconfigurationCallback(Record, &log), noErr);
    EXPECT_EQ(BGDisplayRegisterReconfigurationCallback(Record, &log), paramErr);
    basalt::graphics::NotifyDisplayReconfiguration(1, kBGDisplaySetModeFlag);
    EXPECT_EQ(log.flags, (std::vector<BGDisplayChangeSummaryFlags>{kBGDisplayBeginConfigurationFlag,
                                                                   kBGDisplaySetModeFlag}));
    EXPECT_EQ(BGDisplayRemoveReconfigurationCallback(Record, &log), noErr);
    EXPECT_EQ(BGDisplayRemoveReconfigurationCallback(Record, &log), paramErr);
    EXPECT_EQ(BGDisplayRegisterReconfigurationCallback(nullptr, &log), paramErr);
}

TEST(DisplayChanges, CallbacksMayRemoveThemselvesAndOthersWhileCalled) {
    Log first, second;
    first.removeSelf = true;
    first.other = &second;
    BGDisplayRegisterReconfigurationCallback(Record, &first);
    BGDisplayRegisterReconfigurationCallback(Record, &second);
    basalt::graphics::NotifyDisplayReconfiguration(1, kBGDisplayAddFlag);
    EXPECT_EQ(first.flags.size(), 1u);
    EXPECT_TRUE(second.flags.empty());
}

} // namespace
