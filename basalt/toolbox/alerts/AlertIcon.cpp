#include "basalt/toolbox/alerts/AlertIcon.h"

namespace basalt::toolbox {
namespace {

class AlertIcon : public View {
public:
    explicit AlertIcon(IconRef icon) : View(kControlKindUserPane), icon_(icon) {}
    ~AlertIcon() override { ReleaseIconRef(icon_); }
    AlertIcon(const AlertIcon&) = delete;
    AlertIcon& operator=(const AlertIcon&) = delete;

    void Draw(BGContextRef context) override {
        const BGRect bounds = Bounds();
        PlotIconRefInContext(context, &bounds, kBTIconAlignCenter, kBTIconTransformNone, nullptr,
                             kBTPlotIconNormal, icon_);
    }
    ControlPartCode HitTest(BGPoint) override { return kControlNoPart; }

private:
    IconRef icon_;
};

OSType IconTypeOf(AlertType type) {
    switch (type) {
    case kAlertStopAlert:
        return kBTIconAlertStop;
    case kAlertNoteAlert:
        return kBTIconAlertNote;
    case kAlertCautionAlert:
        return kBTIconAlertCaution;
    default:
        return 0;
    }
}

} // namespace

std::shared_ptr<View> MakeAlertIcon(AlertType type) {
    const OSType iconType = IconTypeOf(type);
    IconRef icon = nullptr;
    if (iconType == 0 ||
        GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, iconType, &icon) != noErr)
        return nullptr;
    return std::make_shared<AlertIcon>(icon);
}

} // namespace basalt::toolbox
