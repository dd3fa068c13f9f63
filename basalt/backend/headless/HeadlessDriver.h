#pragma once

// Drives the toolbox without a display, for tests and scripted runs. Every input is posted to
// the main event queue as the events a real backend posts, and reaches windows through the
// same dispatcher and standard handlers. Coordinates are window content coordinates (points,
// top left, y down) unless a call says otherwise.

#include <basalt/BasaltToolbox.h>
#include <filesystem>
#include <functional>
#include <string>

namespace basalt::headless {

class HeadlessDriver {
public:
    // False when the process does not run the headless backend.
    static bool Available();

    // A press and release at a point of the window's content.
    static StatusCode ClickAt(WindowRef window, BGPoint local, uint32_t modifiers = 0);
    // Clicks the middle of the control with that id; for a segmented view, of segment `part`.
    static StatusCode Click(WindowRef window, ControlID id, uint32_t modifiers = 0,
                            ControlPartCode part = 0);
    static StatusCode Click(WindowRef window, const char* signature, int32_t id,
                            uint32_t modifiers = 0);
    // Clicks the middle of a control, wherever its window is when the click arrives.
    static StatusCode Click(ControlRef control, uint32_t modifiers = 0);
    // A press at one point, a drag to another and a release there.
    static StatusCode Drag(WindowRef window, BGPoint from, BGPoint to, uint32_t modifiers = 0);
    // The mouse moves to a point with no button down.
    static StatusCode MoveTo(WindowRef window, BGPoint local);
    // The wheel turns by lines (positive: up) with the mouse at a point.
    static StatusCode Scroll(WindowRef window, BGPoint local, int32_t lines);
    // The user drags the window's corner until its content has that size.
    static StatusCode ResizeTo(WindowRef window, int16_t width, int16_t height);
    // A key press and release. character 0 takes the key's own character.
    static StatusCode PressKey(uint16_t keyCode, uint32_t modifiers = 0, char16_t character = 0);
    // A key press for every character of the UTF-8 text.
    static StatusCode TypeText(const std::string& utf8);
    // The item the next popup menu answers with (0 dismisses it); queued in order.
    static void ChooseMenuItem(MenuItemIndex item);
    // Runs work while the next popup menu is open, before it answers with its queued choice:
    // to read the items it shows, or to take a snapshot, which then shows the menu over the
    // window with the item about to be chosen highlighted. Queued in order, one per menu.
    static void WhileMenuOpen(std::function<void(MenuRef)> work);

    // Dispatches what is queued and fires what is due until nothing is left, then draws.
    static void RunUntilIdle();
    // Runs the loop for a while (timers fire as they come due), then until idle.
    static void RunFor(EventTimeout seconds);
    // Calls work from inside whatever loop runs next (a modal loop, say), after `delay`.
    static void Soon(std::function<void()> work, EventTimeout delay = 0);

    // Where the window shows the text (its whole text, as drawn) with the middle of its box
    // inside `within`, in content coordinates; the window is drawn anew to find it. The first
    // match, in drawing order; false if the window shows no such text there.
    static bool FindShownText(WindowRef window, const std::string& utf8, BGRect within,
                              BGRect* box);

    // Draws the window if needed and writes it, title bar included, as a PNG file.
    static StatusCode WritePNG(WindowRef window, const std::filesystem::path& path);
    static int BeepCount();
    static void ResetBeepCount();
    // The theme cursor the pointer shows.
    static uint32_t Cursor();
    // Device pixels per point for windows made after this call (1 or 2).
    static void SetScale(double scale);
};

} // namespace basalt::headless
