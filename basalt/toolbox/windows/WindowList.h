#pragma once

// Every window of the process in z-order, front first, the modal stack, and which window is
// active. Activation changes send "wind" 5 and 6 and "cntl" 9 and 10 to the views.

#include "basalt/toolbox/windows/Window.h"

namespace basalt::toolbox::windows {

void Add(const std::shared_ptr<Window>& window);
void Remove(Window* window);
bool IsValid(WindowRef ref);
// The window behind a handle that is still in the list, else null.
inline Window* Live(WindowRef ref) {
    return IsValid(ref) ? Window::From(ref) : nullptr;
}
// Front first.
const std::vector<std::shared_ptr<Window>>& All();
void BringToFront(Window* window);
Window* FrontVisible();
// Where keys go: the top modal window, else the front window; a sheet on it, if one shows.
Window* UserFocus();
// The visible window under a global point, front first.
Window* AtPoint(Point global);

void PushModal(Window* window);
void PopModal(Window* window);
Window* TopModal();
// True if input may reach the window now (the modal state and sheets allow it).
bool AcceptsInput(Window* window);

// Whether the desktop gives this process the keyboard; while it does not, no window is active
// and all show their inactive look. Backends with a real display report it.
void SetApplicationActive(bool active);

// Recomputes the active window; sends the activation events when it changed.
void UpdateActivation();
Window* Active();

} // namespace basalt::toolbox::windows
