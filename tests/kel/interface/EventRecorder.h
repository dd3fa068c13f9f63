#pragma once

// A client event callback that writes down what it is sent, for tests of the dialog lifecycle.

#include <functional>
#include <kel/KelServices.h>
#include <vector>

namespace keltest {

struct EventRecorder {
    std::vector<long> selectors;
    std::vector<uint32_t> userActions;
    std::vector<WindowRef> windows;
    // Run on each selector, after it is written down.
    std::function<void(long, KelCBRec*)> onEvent;

    static void Record(long selector, KelCBRec* record, void* clientData) {
        auto* recorder = static_cast<EventRecorder*>(clientData);
        recorder->selectors.push_back(selector);
        recorder->userActions.push_back(record->userAction);
        // Copied first: the record is packed and the field may sit unaligned.
        const WindowRef window = record->window;
        recorder->windows.push_back(window);
        if (recorder->onEvent) {
            recorder->onEvent(selector, record);
        }
    }
};

} // namespace keltest
