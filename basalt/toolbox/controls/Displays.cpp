#include "basalt/toolbox/controls/Displays.h"

#include "basalt/toolbox/controls/ControlDataCopy.h"
#include "basalt/toolbox/controls/ControlDrawing.h"

#include <cmath>

namespace basalt::toolbox {
void StaticText::Draw(BGContextRef context) {
    DrawText(context, Text(), Bounds(), font, flush, ThemeState(*this), 0);
}

BGSize StaticText::OptimalSize(float* baseline) {
    BGFloat base = 0;
    BGSize size = MeasureText(Text(), font, &base);
    if (baseline != nullptr)
        *baseline = float(base);
    return {std::ceil(size.width), std::ceil(size.height)};
}

StatusCode StaticText::SetKindData(ResType tag, size_t size, const void* data) {
    if (tag != kControlFontStyleTag)
        return errDataNotSupported;
    StatusCode status = TakeControlValue(&font, size, data);
    SetNeedsDisplay();
    return status;
}

StatusCode StaticText::GetKindData(ResType tag, size_t size, void* data, size_t* actual) {
    return tag == kControlFontStyleTag ? PutControlValue(font, size, data, actual)
                                       : errDataNotSupported;
}

void GroupBox::Draw(BGContextRef context) {
    BGRect bounds = Bounds();
    BGRect box = bounds;
    if (!Text().empty()) {
        box.origin.y += 8;
        box.size.height -= 8;
    }
    BTThemeGroupBoxDrawInfo info{};
    info.state = ThemeState(*this);
    info.kind = kBTThemeGroupBoxPrimary;
    BTThemeDrawGroupBox(&box, &info, context);
    if (!Text().empty()) {
        BGSize title = MeasureText(Text(), kBTThemeFontSmallEmphasized);
        BGRect label = BGRectMake(bounds.origin.x + 10, bounds.origin.y, title.width + 8, 16);
        BTThemeApplyBackground(&label, kBTThemeBackgroundWindow, info.state, context);
        BGContextFillRect(context, label);
        DrawText(context, Text(), BGRectInset(label, 4, 0), kBTThemeFontSmallEmphasized,
                 kBTThemeTextFlushLeft, info.state);
    }
}

void Separator::Draw(BGContextRef context) {
    BGRect bounds = Bounds();
    BTThemeDrawSeparator(&bounds, ThemeState(*this), context);
}

ImageView::~ImageView() {
    BGImageRelease(image_);
}

void ImageView::Draw(BGContextRef context) {
    if (image_ == nullptr)
        return;
    BGRect bounds = Bounds();
    BTViewDrawBGImage(context, &bounds, image_);
}

StatusCode ImageView::SetKindData(ResType tag, size_t size, const void* data) {
    if (tag != kControlImageViewImageTag)
        return errDataNotSupported;
    BGImageRef image = nullptr;
    if (StatusCode status = TakeControlValue(&image, size, data); status != noErr)
        return status;
    BGImageRetain(image);
    BGImageRelease(image_);
    image_ = image;
    SetNeedsDisplay();
    return noErr;
}

StatusCode ImageView::GetKindData(ResType tag, size_t size, void* data, size_t* actual) {
    return tag == kControlImageViewImageTag ? PutControlValue(image_, size, data, actual)
                                            : errDataNotSupported;
}

ChasingArrows::~ChasingArrows() {
    if (timer_ != nullptr)
        RemoveEventLoopTimer(timer_);
}

void ChasingArrows::Step(EventLoopTimerRef, void* data) {
    auto* arrows = static_cast<ChasingArrows*>(data);
    arrows->frame_ = (arrows->frame_ + 1) % 8;
    arrows->SetNeedsDisplay();
}

void ChasingArrows::Draw(BGContextRef context) {
    BGRect bounds = Bounds();
    double radius = std::min(bounds.size.width, bounds.size.height) / 2 - 2;
    double cx = bounds.origin.x + bounds.size.width / 2;
    double cy = bounds.origin.y + bounds.size.height / 2;
    bool dim = !IsEnabledInTree();
    for (int i = 0; i < 8; ++i) {
        double angle = i * M_PI / 4;
        int age = (frame_ - i + 8) % 8;
        double gray = timer_ != nullptr ? 0.2 + 0.09 * age : 0.55;
        BGContextSetGrayFillColor(context, gray, dim ? 0.4 : 1.0);
        double x = cx + std::cos(angle) * radius * 0.7;
        double y = cy + std::sin(angle) * radius * 0.7;
        double dot = std::max(1.5, radius * 0.22);
        BGContextFillEllipseInRect(context, BGRectMake(x - dot, y - dot, 2 * dot, 2 * dot));
    }
}

StatusCode ChasingArrows::SetKindData(ResType tag, size_t size, const void* data) {
    if (tag != kControlChasingArrowsAnimatingTag)
        return errDataNotSupported;
    Boolean animating = false;
    if (StatusCode status = TakeControlValue(&animating, size, data); status != noErr)
        return status;
    if (animating && timer_ == nullptr)
        InstallEventLoopTimer(GetMainEventLoop(), 0.1, 0.1, Step, this, &timer_);
    if (!animating && timer_ != nullptr) {
        RemoveEventLoopTimer(timer_);
        timer_ = nullptr;
    }
    SetNeedsDisplay();
    return noErr;
}

StatusCode ChasingArrows::GetKindData(ResType tag, size_t size, void* data, size_t* actual) {
    if (tag != kControlChasingArrowsAnimatingTag)
        return errDataNotSupported;
    return PutControlValue(Boolean(timer_ != nullptr), size, data, actual);
}

} // namespace basalt::toolbox
