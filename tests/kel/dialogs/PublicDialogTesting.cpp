#include "tests/kel/dialogs/PublicDialogTesting.h"

#include "basalt/nodes/NodeService.h"
#include "tests/kel/foundation/StringTesting.h"
#include "tests/kel/nodes/KelNodeTesting.h"

#include <basalt/files/BEDesc.h>
#include <basalt/files/BFRef.h>
#include <cstring>
#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;

namespace keltest {

TypeListHandle::TypeListHandle(FourCharCode creator, std::initializer_list<FourCharCode> types)
    : handle(NewHandleClear(static_cast<Size>(sizeof(KelTypeList) + types.size() * 4))) {
    KelTypeList* list = *Get();
    list->componentSignature = creator;
    list->typeCount = static_cast<int16_t>(types.size());
    std::copy(types.begin(), types.end(), list->osTypes);
}

TypeListHandle::~TypeListHandle() {
    DisposeHandle(handle);
}

KelDialogCreationOptions Options(uint32_t modality, uint32_t optionFlags) {
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.modality = modality;
    options.optionFlags = optionFlags;
    return options;
}

PublicDialog::PublicDialog() {
    recorder.onEvent = [this](long selector, KelCBRec* record) {
        if (selector != kKelCBPopupMenuSelect) {
            return;
        }
        void* data = nullptr;
        std::memcpy(&data, reinterpret_cast<char*>(record) + offsetof(KelCBRec, eventData),
                    sizeof data);
        popupChoices.push_back(*static_cast<KelMenuItemSpec*>(data));
    };
}

PublicDialog::~PublicDialog() {
    if (dialog != nullptr) {
        KelDialogDispose(dialog);
    }
    HeadlessDriver::RunUntilIdle();
}

void PublicDialog::StartIn(const std::filesystem::path& folder) {
    BEDesc desc = DescOf(folder);
    EXPECT_EQ(KelCustomControl(dialog, 8, &desc), noErr);
    BEDisposeDesc(&desc);
}

void When(const std::function<bool()>& condition, const std::function<void()>& work) {
    HeadlessDriver::Soon(
        [condition, work] {
            if (condition()) {
                work();
            } else {
                When(condition, work);
            }
        },
        0.01);
}

void WhenInFront(WindowRef window, const std::function<void(WindowRef)>& work) {
    When([window] { return FrontWindow() != window; }, [work] { work(FrontWindow()); });
}

uint32_t PublicDialog::RunModal(const std::function<void()>& work) {
    // Start-up itself may run the loop (to wait for a listing, say) before the dialog's own
    // loop runs: the work waits for the window.
    KelDialogRef shown = dialog;
    When(
        [shown] {
            WindowRef window = KelDialogGetWindow(shown);
            return window != nullptr && IsWindowVisible(window);
        },
        work);
    EXPECT_EQ(KelDialogRun(dialog), noErr);
    return KelDialogGetUserAction(dialog);
}

std::vector<std::string> PublicDialog::ReplyPaths(StatusCode* status) {
    KelReplyRecord reply{};
    const StatusCode got = KelDialogGetReply(dialog, &reply);
    if (status != nullptr) {
        *status = got;
    }
    BEDescList list = reply.selection;
    std::vector<std::string> paths = PathsOf(list);
    KelDisposeReply(&reply);
    return paths;
}

std::vector<std::string> PathsOf(const BEDesc& desc) {
    std::vector<std::string> paths;
    const auto add = [&paths](const BFRef& ref) {
        uint8_t path[4096] = {};
        if (BFRefMakePath(&ref, path, sizeof path) == noErr) {
            paths.emplace_back(reinterpret_cast<char*>(path));
        }
    };
    long count = 0;
    if (BECountItems(&desc, &count) != noErr) {
        BEDesc coerced{typeNull, nullptr};
        BFRef ref;
        if (BECoerceDesc(&desc, typeBFRef, &coerced) == noErr &&
            BEGetDescData(&coerced, &ref, sizeof ref) == noErr) {
            add(ref);
        }
        BEDisposeDesc(&coerced);
        return paths;
    }
    for (long index = 1; index <= count; ++index) {
        BFRef ref;
        DescType type = 0;
        Size size = 0;
        if (BEGetNthPtr(&desc, index, typeBFRef, nullptr, &type, &ref, sizeof ref, &size) ==
            noErr) {
            add(ref);
        }
    }
    return paths;
}

BEDesc DescOf(const std::filesystem::path& path) {
    BEDesc desc{typeNull, nullptr};
    EXPECT_EQ(GetNodeAsBEDesc(kelnodetest::NodeAt(path).PeekNodeRef(), &desc), noErr);
    return desc;
}

std::vector<std::string> MenuTitles(const __KelDialog& dialog) {
    std::vector<std::string> titles;
    for (const TTypeMenuItem& item : dialog.TypeMenuItems()) {
        titles.push_back(item.kind == TTypeMenuItem::kSeparator ? "-" : Utf8(item.title));
    }
    return titles;
}

} // namespace keltest
