#pragma once

// Controls that show something and take no clicks: static text, group box, separator, image
// view and the chasing arrows (which turn on a timer while "anim" is true).

#include "basalt/toolbox/views/View.h"

namespace basalt::toolbox {

class StaticText : public View {
public:
    StaticText() : View(kControlKindStaticText) {}
    void Draw(BGContextRef context) override;
    ControlPartCode HitTest(BGPoint) override { return kControlNoPart; }
    BGSize OptimalSize(float* baseline) override;
    StatusCode SetKindData(ResType tag, size_t size, const void* data) override;
    StatusCode GetKindData(ResType tag, size_t size, void* data, size_t* actual) override;
    BTThemeFontID font = kBTThemeFontSystem;
    uint32_t flush = kBTThemeTextFlushLeft;
};

class GroupBox : public View {
public:
    GroupBox() : View(kControlKindGroupBox) {}
    void Draw(BGContextRef context) override;
    ControlPartCode HitTest(BGPoint) override { return kControlNoPart; }
};

class Separator : public View {
public:
    Separator() : View(kControlKindSeparator) {}
    void Draw(BGContextRef context) override;
    ControlPartCode HitTest(BGPoint) override { return kControlNoPart; }
};

class ImageView : public View {
public:
    ImageView() : View(kControlKindImageView) {}
    ~ImageView() override;
    void Draw(BGContextRef context) override;
    ControlPartCode HitTest(BGPoint) override { return kControlNoPart; }
    StatusCode SetKindData(ResType tag, size_t size, const void* data) override;
    StatusCode GetKindData(ResType tag, size_t size, void* data, size_t* actual) override;

private:
    BGImageRef image_ = nullptr;
};

class ChasingArrows : public View {
public:
    ChasingArrows() : View(kControlKindChasingArrows) {}
    ~ChasingArrows() override;
    void Draw(BGContextRef context) override;
    ControlPartCode HitTest(BGPoint) override { return kControlNoPart; }
    StatusCode SetKindData(ResType tag, size_t size, const void* data) override;
    StatusCode GetKindData(ResType tag, size_t size, void* data, size_t* actual) override;
    int Frame() const { return frame_; }

private:
    static void Step(EventLoopTimerRef timer, void* data);
    EventLoopTimerRef timer_ = nullptr;
    int frame_ = 0;
};

class UserPane : public View {
public:
    UserPane() : View(kControlKindUserPane) {}
    ControlPartCode HitTest(BGPoint) override { return kControlNoPart; }
};

} // namespace basalt::toolbox
