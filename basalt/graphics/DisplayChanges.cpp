#include "basalt/graphics/DisplayChanges.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace {

struct Registration {
    BGDisplayReconfigurationCallBack callback;
    void* userInfo;
    bool operator==(const Registration&) const = default;
};

std::mutex gMutex;
std::vector<Registration> gRegistrations;

bool Registered(const Registration& registration) {
    std::lock_guard lock(gMutex);
    return std::find(gRegistrations.begin(), gRegistrations.end(), registration) !=
           gRegistrations.end();
}

// Works on a copy, so callbacks may change the list; one removed meanwhile is not called.
void Tell(BGDirectDisplayID display, BGDisplayChangeSummaryFlags flags) {
    std::vector<Registration> snapshot;
    {
        std::lock_guard lock(gMutex);
        snapshot = gRegistrations;
    }
    for (const Registration& registration : snapshot)
        if (Registered(registration))
            registration.callback(display, flags, registration.userInfo);
}

} // namespace

namespace basalt::graphics {

void NotifyDisplayReconfiguration(BGDirectDisplayID display, BGDisplayChangeSummaryFlags flags) {
    Tell(display, kBGDisplayBeginConfigurationFlag);
    Tell(display,
         flags & ~static_cast<BGDisplayChangeSummaryFlags>(kBGDisplayBeginConfigurationFlag));
}

} // namespace basalt::graphics

extern "C" {

StatusCode BGDisplayRegisterReconfigurationCallback(BGDisplayReconfigurationCallBack callback,
                                                    void* userInfo) {
    if (callback == nullptr)
        return paramErr;
    std::lock_guard lock(gMutex);
    const Registration registration{callback, userInfo};
    if (std::find(gRegistrations.begin(), gRegistrations.end(), registration) !=
        gRegistrations.end())
        return paramErr;
    gRegistrations.push_back(registration);
    return noErr;
}

StatusCode BGDisplayRemoveReconfigurationCallback(BGDisplayReconfigurationCallBack callback,
                                                  void* userInfo) {
    std::lock_guard lock(gMutex);
    const auto found =
        std::find(gRegistrations.begin(), gRegistrations.end(), Registration{callback, userInfo});
    if (found == gRegistrations.end())
        return paramErr;
    gRegistrations.erase(found);
    return noErr;
}

} // extern "C"
