#include "basalt/toolbox/controls/PopupButton.h"

#include "basalt/toolbox/controls/ControlDrawing.h"
#include "basalt/toolbox/menus/Menu.h"
#include "basalt/toolbox/windows/Window.h"

#include <cmath>
#include <cstring>

namespace basalt::toolbox {

PopupButton::~PopupButton() {
    if (menu_ != nullptr)
        ReleaseMenu(menu_);
}

namespace {

constexpr BGFloat kIconSize = 16;
constexpr BGFloat kIconGap = 5;

} // namespace

std::u16string PopupButton::CurrentItemText() const {
    if (!IsLiveMenu(menu_))
        return Text();
    const Menu::Item* item = Menu::From(menu_)->At(MenuItemIndex(Value()));
    return item != nullptr ? item->text : Text();
}

IconRef PopupButton::CurrentItemIcon() const {
    const Menu::Item* item =
        IsLiveMenu(menu_) ? Menu::From(menu_)->At(MenuItemIndex(Value())) : nullptr;
    return item != nullptr ? item->icon : nullptr;
}

// The current item shows as the menu shows it: its icon, if it has one, before its text.
void PopupButton::Draw(BGContextRef context) {
    BTThemeButtonDrawInfo info{};
    info.state = ThemeState(*this);
    BGRect bounds = Bounds();
    BGRect label = bounds;
    BTThemeDrawButton(&bounds, kBTThemePopupButton, &info, context, &label);
    if (IconRef icon = CurrentItemIcon()) {
        BGRect box =
            BGRectMake(label.origin.x, BGRectGetMidY(label) - kIconSize / 2, kIconSize, kIconSize);
        PlotIconRefInContext(context, &box, kBTIconAlignCenter,
                             info.state == kBTThemeStateActive ? kBTIconTransformNone
                                                               : kBTIconTransformDisabled,
                             nullptr, kBTPlotIconNormal, icon);
        label.origin.x += kIconSize + kIconGap;
        label.size.width = std::max<BGFloat>(0, label.size.width - kIconSize - kIconGap);
    }
    DrawText(context, CurrentItemText(), label, kBTThemeFontSystem, kBTThemeTextFlushLeft,
             info.state);
}

BGSize PopupButton::OptimalSize(float* baseline) {
    BGFloat widest = 0, base = 0;
    if (IsLiveMenu(menu_))
        for (const auto& item : Menu::From(menu_)->items)
            widest = std::max(widest, MeasureText(item.text, kBTThemeFontSystem, &base).width);
    int32_t height = 22;
    GetThemeMetric(kBTThemeMetricPopupButtonHeight, &height);
    if (baseline != nullptr)
        *baseline = float(base);
    return {std::ceil(widest) + 40, BGFloat(height)};
}

ControlPartCode PopupButton::HitTest(BGPoint local) {
    return BGRectContainsPoint(Bounds(), local) ? ControlPartCode(kControlMenuPart)
                                                : ControlPartCode(kControlNoPart);
}

ControlPartCode PopupButton::PerformClick(ControlPartCode, uint32_t) {
    if (!IsLiveMenu(menu_))
        return kControlNoPart;
    auto keep = Shared();
    MenuRef menu = menu_;
    RetainMenu(menu);
    BGRect frame = FrameInWindow();
    Window* window = OwnerWindow();
    Point where{int16_t(frame.origin.y), int16_t(frame.origin.x)};
    if (window != nullptr) {
        where.v = int16_t(where.v + window->ContentBounds().top);
        where.h = int16_t(where.h + window->ContentBounds().left);
    }
    long chosen = PopUpMenuSelect(menu, where.v, where.h, int16_t(Value()));
    ControlPartCode part = kControlNoPart;
    if (chosen != 0) {
        auto item = MenuItemIndex(chosen & 0xFFFF);
        SetMaximum(CountMenuItems(menu));
        SetValue(item);
        SendMenuCommand(*Menu::From(menu), item);
        part = kControlMenuPart;
    }
    ReleaseMenu(menu);
    return part;
}

StatusCode PopupButton::SetKindData(ResType tag, size_t size, const void* data) {
    if (tag != kControlPopupButtonMenuRefTag)
        return errDataNotSupported;
    MenuRef menu = nullptr;
    if (data == nullptr || size != sizeof menu)
        return paramErr;
    std::memcpy(&menu, data, sizeof menu);
    if (menu != nullptr && !IsLiveMenu(menu))
        return errInvalidMenuRef;
    if (menu != nullptr)
        RetainMenu(menu);
    if (menu_ != nullptr)
        ReleaseMenu(menu_);
    menu_ = menu;
    SetMinimum(0);
    SetMaximum(menu != nullptr ? CountMenuItems(menu) : 0);
    SetNeedsDisplay();
    return noErr;
}

StatusCode PopupButton::GetKindData(ResType tag, size_t size, void* data, size_t* actual) {
    if (tag != kControlPopupButtonMenuRefTag)
        return errDataNotSupported;
    if (data != nullptr && size >= sizeof menu_)
        std::memcpy(data, &menu_, sizeof menu_);
    if (actual != nullptr)
        *actual = sizeof menu_;
    return noErr;
}

} // namespace basalt::toolbox
