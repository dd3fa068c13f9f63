#include "basalt/toolbox/views/ViewFactory.h"

#include "basalt/toolbox/controls/Buttons.h"
#include "basalt/toolbox/controls/Displays.h"
#include "basalt/toolbox/controls/EditText.h"
#include "basalt/toolbox/controls/PopupButton.h"
#include "basalt/toolbox/controls/ScrollView.h"
#include "basalt/toolbox/controls/Splitter.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace basalt::toolbox {
namespace {

constexpr std::array<std::pair<std::string_view, uint32_t>, 18> kNames = {{
    {"push-button", kControlKindPushButton},
    {"bevel-button", kControlKindBevelButton},
    {"segmented", kControlKindSegmentedView},
    {"check-box", kControlKindCheckBox},
    {"radio-button", kControlKindRadioButton},
    {"static-text", kControlKindStaticText},
    {"edit-text", kControlKindEditUnicodeText},
    {"search-field", kControlKindSearchField},
    {"popup-button", kControlKindPopupButton},
    {"chasing-arrows", kControlKindChasingArrows},
    {"group-box", kControlKindGroupBox},
    {"user-pane", kControlKindUserPane},
    {"disclosure-button", kControlKindDisclosureButton},
    {"splitter", kControlKindSplitter},
    {"scroll-view", kControlKindScrollView},
    {"image", kControlKindImageView},
    {"separator", kControlKindSeparator},
    {"view", kControlKindRoot},
}};

struct RegisteredKind {
    OSType kind;
    std::string name;
    std::function<std::shared_ptr<View>()> make;
};

std::vector<RegisteredKind>& Registered() {
    static std::vector<RegisteredKind> registered;
    return registered;
}

const RegisteredKind* FindRegistered(OSType kind) {
    for (const auto& entry : Registered())
        if (entry.kind == kind)
            return &entry;
    return nullptr;
}

} // namespace

void RegisterViewKind(OSType kind, std::string_view name,
                      std::function<std::shared_ptr<View>()> make) {
    if (FindRegistered(kind) == nullptr)
        Registered().push_back({kind, std::string(name), std::move(make)});
}

std::optional<OSType> KindFromName(std::string_view name) {
    for (const auto& [known, kind] : kNames)
        if (known == name)
            return kind;
    for (const auto& entry : Registered())
        if (entry.name == name)
            return entry.kind;
    return std::nullopt;
}

std::string_view NameOfKind(OSType kind) {
    for (const auto& [name, known] : kNames)
        if (known == kind)
            return name;
    if (const RegisteredKind* entry = FindRegistered(kind))
        return entry->name;
    return {};
}

std::shared_ptr<View> MakeView(OSType kind) {
    if (const RegisteredKind* entry = FindRegistered(kind))
        return entry->make();
    switch (kind) {
    case kControlKindPushButton:
    case kControlKindBevelButton:
        return std::make_shared<PushButton>(kind);
    case kControlKindSegmentedView:
        return std::make_shared<SegmentedView>();
    case kControlKindCheckBox:
    case kControlKindRadioButton:
        return std::make_shared<CheckBox>(kind);
    case kControlKindStaticText:
        return std::make_shared<StaticText>();
    case kControlKindEditUnicodeText:
        return std::make_shared<EditText>();
    case kControlKindSearchField:
        return std::make_shared<SearchField>();
    case kControlKindPopupButton:
        return std::make_shared<PopupButton>();
    case kControlKindChasingArrows:
        return std::make_shared<ChasingArrows>();
    case kControlKindGroupBox:
        return std::make_shared<GroupBox>();
    case kControlKindUserPane:
        return std::make_shared<UserPane>();
    case kControlKindDisclosureButton:
        return std::make_shared<DisclosureButton>();
    case kControlKindSplitter:
        return std::make_shared<Splitter>();
    case kControlKindScrollView:
        return std::make_shared<ScrollView>();
    case kControlKindImageView:
        return std::make_shared<ImageView>();
    case kControlKindSeparator:
        return std::make_shared<Separator>();
    case kControlKindRoot:
        return std::make_shared<View>(kControlKindRoot);
    default:
        return nullptr;
    }
}

} // namespace basalt::toolbox
