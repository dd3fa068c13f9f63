#include "basalt/toolbox/controls/Buttons.h"

#include "basalt/toolbox/controls/ControlDrawing.h"
#include "basalt/toolbox/windows/Window.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace basalt::toolbox {
namespace {

BTThemeButtonDrawInfo ButtonInfo(const View& view, BTThemeButtonValue value) {
    BTThemeButtonDrawInfo info{};
    info.state = ThemeState(view);
    info.value = value;
    return info;
}

bool HasFocus(View& view) {
    Window* window = view.OwnerWindow();
    return window != nullptr && window->Focus() == &view;
}

} // namespace

void PushButton::Draw(BGContextRef context) {
    BTThemeButtonDrawInfo info = ButtonInfo(*this, kBTThemeButtonOff);
    Window* window = OwnerWindow();
    if (window != nullptr && window->DefaultButton() == this)
        info.adornment |= kBTThemeAdornmentDefault;
    if (HasFocus(*this))
        info.adornment |= kBTThemeAdornmentFocus;
    BGRect bounds = Bounds();
    BGRect label = bounds;
    BTThemeButtonKind kind =
        Kind().kind == kControlKindBevelButton ? kBTThemeBevelButton : kBTThemePushButton;
    BTThemeDrawButton(&bounds, kind, &info, context, &label);
    bool onAccent = (info.adornment & kBTThemeAdornmentDefault) &&
                    (info.state == kBTThemeStateActive || info.state == kBTThemeStatePressed);
    DrawText(context, Text(), label, kBTThemeFontSystem, kBTThemeTextFlushCenter, info.state, 1,
             onAccent ? kBTThemeTextColorOnAccent : kBTThemeTextColorPlain);
}

BGSize PushButton::OptimalSize(float* baseline) {
    BGFloat base = 0;
    BGSize text = MeasureText(Text(), kBTThemeFontSystem, &base);
    int32_t height = 20, minimum = 70;
    GetThemeMetric(kBTThemeMetricPushButtonHeight, &height);
    GetThemeMetric(kBTThemeMetricPushButtonMinWidth, &minimum);
    if (baseline != nullptr)
        *baseline = float((height - text.height) / 2 + base);
    return {std::max<BGFloat>(minimum, std::ceil(text.width) + 24), BGFloat(height)};
}

void CheckBox::Draw(BGContextRef context) {
    BTThemeButtonDrawInfo info = ButtonInfo(*this, BTThemeButtonValue(Value()));
    if (HasFocus(*this))
        info.adornment |= kBTThemeAdornmentFocus;
    BGRect bounds = Bounds();
    BGRect label = bounds;
    BTThemeButtonKind kind =
        Kind().kind == kControlKindRadioButton ? kBTThemeRadioButton : kBTThemeCheckBox;
    BTThemeDrawButton(&bounds, kind, &info, context, &label);
    DrawText(context, Text(), label, kBTThemeFontSystem, kBTThemeTextFlushLeft, info.state);
}

BGSize CheckBox::OptimalSize(float* baseline) {
    BGFloat base = 0;
    BGSize text = MeasureText(Text(), kBTThemeFontSystem, &base);
    int32_t box = 16;
    GetThemeMetric(kBTThemeMetricCheckBoxWidth, &box);
    if (baseline != nullptr)
        *baseline = float(base);
    return {std::ceil(text.width) + box + 6, std::max<BGFloat>(box, std::ceil(text.height))};
}

ControlPartCode CheckBox::HitTest(BGPoint local) {
    if (!BGRectContainsPoint(Bounds(), local))
        return kControlNoPart;
    return Kind().kind == kControlKindRadioButton ? ControlPartCode(kControlRadioButtonPart)
                                                  : ControlPartCode(kControlCheckBoxPart);
}

ControlPartCode CheckBox::PerformClick(ControlPartCode part, uint32_t) {
    if (Kind().kind == kControlKindRadioButton)
        SetValue(1);
    else
        SetValue(Value() == 0 ? 1 : 0);
    return part;
}

void DisclosureButton::Draw(BGContextRef context) {
    BTThemeButtonDrawInfo info = ButtonInfo(*this, BTThemeButtonValue(Value()));
    BGRect bounds = Bounds();
    BTThemeDrawButton(&bounds, kBTThemeDisclosureButton, &info, context, nullptr);
}

ControlPartCode DisclosureButton::PerformClick(ControlPartCode part, uint32_t) {
    SetValue(Value() == 0 ? 1 : 0);
    return part;
}

SegmentedView::SegmentedView() : View(kControlKindSegmentedView) {
    SetMinimum(0);
    SetMaximum(int32_t(count_));
}

std::vector<std::u16string> SegmentedView::Labels() const {
    std::vector<std::u16string> labels(1);
    for (char16_t c : Text()) {
        if (c == u'|')
            labels.emplace_back();
        else
            labels.back().push_back(c);
    }
    labels.resize(count_);
    return labels;
}

void SegmentedView::Draw(BGContextRef context) {
    BGRect bounds = Bounds();
    double width = bounds.size.width / count_;
    std::vector<std::u16string> labels = Labels();
    for (uint32_t i = 0; i < count_; ++i) {
        BGRect segment =
            BGRectMake(bounds.origin.x + i * width, bounds.origin.y, width, bounds.size.height);
        bool selected = Value() == int32_t(i + 1);
        BTThemeButtonDrawInfo info =
            ButtonInfo(*this, selected ? kBTThemeButtonOn : kBTThemeButtonOff);
        if (Hilite() != kControlNoPart && Hilite() != ControlPartCode(i + 1))
            info.state = IsActive() ? kBTThemeStateActive : kBTThemeStateInactive;
        if (!segments_[i].enabled)
            info.state = kBTThemeStateUnavailable;
        BGRect label = segment;
        BTThemeDrawButton(&segment, kBTThemeBevelButton, &info, context, &label);
        if (segments_[i].image != nullptr)
            DrawSegmentImage(context, segments_[i], label, info.state);
        else
            DrawText(context, labels[i], label, kBTThemeFontSmallSystem, kBTThemeTextFlushCenter,
                     info.state);
    }
}

// Images are drawn at half their pixel size, so that one image is sharp on a display of two
// device pixels per point and is scaled down on one of one; a dimmed segment dims its image.
void SegmentedView::DrawSegmentImage(BGContextRef context, const Segment& segment,
                                     const BGRect& rect, BTThemeDrawState state) const {
    BGImageRef image = segment.image.get();
    const double width = double(BGImageGetWidth(image)) / 2;
    const double height = double(BGImageGetHeight(image)) / 2;
    const BGRect place = BGRectMake(std::round(BGRectGetMidX(rect) - width / 2),
                                    std::round(BGRectGetMidY(rect) - height / 2), width, height);
    BGContextSaveGState(context);
    if (state == kBTThemeStateUnavailable || state == kBTThemeStateInactive)
        BGContextSetAlpha(context, 0.4);
    BTViewDrawBGImage(context, &place, image);
    BGContextRestoreGState(context);
}

ControlPartCode SegmentedView::HitTest(BGPoint local) {
    BGRect bounds = Bounds();
    if (!BGRectContainsPoint(bounds, local) || count_ == 0)
        return kControlNoPart;
    auto segment = uint32_t((local.x - bounds.origin.x) / (bounds.size.width / count_));
    segment = std::min(segment, count_ - 1);
    return segments_[segment].enabled ? ControlPartCode(segment + 1)
                                      : ControlPartCode(kControlNoPart);
}

ControlPartCode SegmentedView::PerformClick(ControlPartCode part, uint32_t) {
    if (part >= 1 && uint32_t(part) <= count_)
        SetValue(part);
    return part;
}

StatusCode SegmentedView::SetKindData(ResType tag, size_t size, const void* data) {
    if (tag != kControlSegmentCountTag)
        return errDataNotSupported;
    if (size != sizeof count_ || data == nullptr)
        return paramErr;
    std::memcpy(&count_, data, sizeof count_);
    count_ = std::clamp(count_, 1u, kMaximumSegments);
    segments_.resize(count_);
    SetMaximum(int32_t(count_));
    SetNeedsDisplay();
    return noErr;
}

StatusCode SegmentedView::GetKindData(ResType tag, size_t size, void* data, size_t* actual) {
    if (tag != kControlSegmentCountTag)
        return errDataNotSupported;
    if (data != nullptr && size >= sizeof count_)
        std::memcpy(data, &count_, sizeof count_);
    if (actual != nullptr)
        *actual = sizeof count_;
    return noErr;
}

SegmentedView::Segment* SegmentedView::SegmentAt(ControlPartCode part) {
    return part >= 1 && uint32_t(part) <= count_ ? &segments_[size_t(part - 1)] : nullptr;
}

StatusCode SegmentedView::SetPartData(ControlPartCode part, ResType tag, size_t size,
                                      const void* data) {
    if (tag != kControlImageViewImageTag && tag != kControlSegmentEnabledTag)
        return SetKindData(tag, size, data);
    Segment* segment = SegmentAt(part);
    if (segment == nullptr || data == nullptr)
        return paramErr;
    if (tag == kControlSegmentEnabledTag) {
        if (size != sizeof(Boolean))
            return paramErr;
        segment->enabled = *static_cast<const Boolean*>(data) != 0;
    } else {
        if (size != sizeof(BGImageRef))
            return paramErr;
        BGImageRef image = *static_cast<const BGImageRef*>(data);
        if (image != nullptr)
            BGImageRetain(image);
        segment->image.reset(image, BGImageRelease);
    }
    SetNeedsDisplay();
    return noErr;
}

StatusCode SegmentedView::GetPartData(ControlPartCode part, ResType tag, size_t size, void* data,
                                      size_t* actual) {
    if (tag != kControlImageViewImageTag && tag != kControlSegmentEnabledTag)
        return GetKindData(tag, size, data, actual);
    Segment* segment = SegmentAt(part);
    if (segment == nullptr)
        return paramErr;
    if (tag == kControlSegmentEnabledTag) {
        const Boolean enabled = segment->enabled;
        if (data != nullptr && size >= sizeof enabled)
            std::memcpy(data, &enabled, sizeof enabled);
        if (actual != nullptr)
            *actual = sizeof enabled;
        return noErr;
    }
    BGImageRef image = segment->image.get();
    if (data != nullptr && size >= sizeof image)
        std::memcpy(data, &image, sizeof image);
    if (actual != nullptr)
        *actual = sizeof image;
    return noErr;
}

} // namespace basalt::toolbox
