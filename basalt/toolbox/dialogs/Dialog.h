#pragma once

// A dialog bound to a window. Item numbers are the dialog's: the window's controls whose id
// has the signature "kels" are items by their id number; appended item lists follow the
// highest number. Items that have no control (user items) keep only their rectangle.

#include "basalt/toolbox/windows/Window.h"

#include <functional>
#include <optional>

namespace basalt::toolbox {

class Dialog {
public:
    explicit Dialog(Window& window);

    static Dialog* From(DialogRef ref) { return reinterpret_cast<Dialog*>(ref); }
    DialogRef Ref() { return reinterpret_cast<DialogRef>(this); }

    struct Item {
        std::weak_ptr<View> control;
        Rect rect{};
        int16_t type = kDialogItemUserItem;
    };

    Window& window;
    bool tracksCursor = false;
    DialogItemIndex defaultItem = 0;
    DialogItemIndex cancelItem = 0;
    // The last item whose control reported a hit.
    DialogItemIndex lastHit = 0;
    // Set by a standard alert: called with the item when one of its buttons is hit.
    std::function<void(DialogItemIndex)> onItemHit;
    // A standard sheet's answers go here as "cmds" 1.
    EventTargetRef notifyTarget = nullptr;
    uint16_t alertPosition = 0;

    DialogItemIndex Count() const { return DialogItemIndex(items_.size()); }
    Item* At(DialogItemIndex number);
    View* ControlAt(DialogItemIndex number);
    std::optional<DialogItemIndex> NumberOf(const View* view) const;
    DialogItemIndex Append(const Item& item);
    void Shorten(DialogItemIndex count);
    void NoteControlHit(View* view);

private:
    std::vector<Item> items_; // item n at index n - 1
};

// Parses an item list handle and adds its items to the dialog's window; false if malformed.
bool AppendItemList(Dialog& dialog, Handle list, DITLMethod method);

} // namespace basalt::toolbox
