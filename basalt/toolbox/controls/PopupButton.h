#pragma once

// A popup button: a menu attached with "mhan" (retained), the value is the chosen item and the
// maximum the item count. A press shows the menu through the backend; a choice sets the value,
// sends the item's command to the menu, and reports a hit on the menu part. The button shows the
// chosen item's icon and text.

#include "basalt/toolbox/views/View.h"

namespace basalt::toolbox {

class PopupButton : public View {
public:
    PopupButton() : View(kControlKindPopupButton) {}
    ~PopupButton() override;
    void Draw(BGContextRef context) override;
    BGSize OptimalSize(float* baseline) override;
    ControlPartCode HitTest(BGPoint local) override;
    ControlPartCode PerformClick(ControlPartCode part, uint32_t modifiers) override;
    bool ActsOnPress() const override { return true; }
    StatusCode SetKindData(ResType tag, size_t size, const void* data) override;
    StatusCode GetKindData(ResType tag, size_t size, void* data, size_t* actual) override;
    MenuRef Menu() const { return menu_; }
    std::u16string CurrentItemText() const;
    IconRef CurrentItemIcon() const;

private:
    MenuRef menu_ = nullptr;
};

} // namespace basalt::toolbox
