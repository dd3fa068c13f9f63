#include "basalt/toolbox/dialogs/Dialog.h"

#include "basalt/toolbox/windows/WindowList.h"

namespace basalt::toolbox {
namespace {

void CollectItems(View& view, std::vector<View*>& out) {
    if (view.id.signature == FourCC("kels") && view.id.id > 0)
        out.push_back(&view);
    for (const auto& child : view.Subviews())
        CollectItems(*child, out);
}

Rect BoundsInWindow(View& view) {
    Rect rect;
    BGRectToRect(view.FrameInWindow(), &rect);
    return rect;
}

} // namespace

Dialog::Dialog(Window& window) : window(window) {
    std::vector<View*> controls;
    CollectItems(window.Root(), controls);
    for (View* control : controls) {
        auto number = size_t(control->id.id);
        if (number > 4096)
            continue; // not an item number; such ids only name the control
        if (items_.size() < number)
            items_.resize(number);
        items_[number - 1] = {control->Shared(), BoundsInWindow(*control), kDialogItemControl};
    }
}

Dialog::Item* Dialog::At(DialogItemIndex number) {
    return number >= 1 && size_t(number) <= items_.size() ? &items_[size_t(number) - 1] : nullptr;
}

View* Dialog::ControlAt(DialogItemIndex number) {
    Item* item = At(number);
    return item != nullptr ? item->control.lock().get() : nullptr;
}

std::optional<DialogItemIndex> Dialog::NumberOf(const View* view) const {
    for (const View* candidate = view; candidate != nullptr; candidate = candidate->Superview())
        for (size_t i = 0; i < items_.size(); ++i)
            if (items_[i].control.lock().get() == candidate)
                return DialogItemIndex(i + 1);
    return std::nullopt;
}

DialogItemIndex Dialog::Append(const Item& item) {
    items_.push_back(item);
    return Count();
}

void Dialog::Shorten(DialogItemIndex count) {
    while (count-- > 0 && !items_.empty()) {
        if (auto control = items_.back().control.lock())
            control->RemoveFromSuperview();
        items_.pop_back();
    }
}

void Dialog::NoteControlHit(View* view) {
    std::optional<DialogItemIndex> number = NumberOf(view);
    if (!number)
        return;
    lastHit = *number;
    // The callback may dispose of the window and with it this dialog: call a copy.
    if (auto callback = onItemHit)
        callback(*number);
}

} // namespace basalt::toolbox
