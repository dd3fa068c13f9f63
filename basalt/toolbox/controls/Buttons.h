#pragma once

// Buttons: push and bevel buttons, check boxes and radio buttons, disclosure buttons, and the
// segmented view whose part is the segment clicked (1-based).

#include "basalt/toolbox/views/View.h"

#include <memory>
#include <type_traits>

namespace basalt::toolbox {

class PushButton : public View {
public:
    explicit PushButton(OSType kind = kControlKindPushButton) : View(kind) {}
    void Draw(BGContextRef context) override;
    BGSize OptimalSize(float* baseline) override;
    bool IsPushButton() const override { return true; }
};

class CheckBox : public View {
public:
    explicit CheckBox(OSType kind) : View(kind) {}
    void Draw(BGContextRef context) override;
    BGSize OptimalSize(float* baseline) override;
    ControlPartCode HitTest(BGPoint local) override;
    ControlPartCode PerformClick(ControlPartCode part, uint32_t modifiers) override;
};

class DisclosureButton : public View {
public:
    DisclosureButton() : View(kControlKindDisclosureButton) {}
    void Draw(BGContextRef context) override;
    ControlPartCode PerformClick(ControlPartCode part, uint32_t modifiers) override;
};

class SegmentedView : public View {
public:
    static constexpr uint32_t kMaximumSegments = 64;

    SegmentedView();
    void Draw(BGContextRef context) override;
    ControlPartCode HitTest(BGPoint local) override;
    ControlPartCode PerformClick(ControlPartCode part, uint32_t modifiers) override;
    StatusCode SetKindData(ResType tag, size_t size, const void* data) override;
    StatusCode GetKindData(ResType tag, size_t size, void* data, size_t* actual) override;
    // Per segment (part 1 and up): its image ("imag", a BGImageRef the view retains, drawn in
    // place of the label) and whether it takes clicks ("enab", a Boolean).
    StatusCode SetPartData(ControlPartCode part, ResType tag, size_t size,
                           const void* data) override;
    StatusCode GetPartData(ControlPartCode part, ResType tag, size_t size, void* data,
                           size_t* actual) override;
    // Segment labels, from the text split at "|".
    std::vector<std::u16string> Labels() const;

private:
    struct Segment {
        std::shared_ptr<std::remove_pointer_t<BGImageRef>> image;
        bool enabled = true;
    };
    Segment* SegmentAt(ControlPartCode part);
    void DrawSegmentImage(BGContextRef context, const Segment& segment, const BGRect& rect,
                          BTThemeDrawState state) const;

    uint32_t count_ = 2;
    std::vector<Segment> segments_ = std::vector<Segment>(2);
};

} // namespace basalt::toolbox
