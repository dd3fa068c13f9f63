#pragma once

// A popup menu for the menu tests: Alpha, Beta, a disabled Gamma, a separator, a checked
// Delta, Epsilon, then as many "Item N" as asked, and the events the user makes on it.

#include "basalt/toolbox/events/Event.h"
#include "basalt/toolbox/menus/Menu.h"
#include "basalt/toolbox/views/UnicodeText.h"

#include <string>

namespace menutest {

using namespace basalt::toolbox;

class TestMenu {
public:
    explicit TestMenu(int extraItems = 0) {
        CreateNewMenu(300, 0, &ref_);
        for (const char16_t* text : {u"Alpha", u"Beta", u"Gamma"})
            Append(text, 0);
        Append(u"", kMenuItemAttrSeparator);
        Append(u"Delta", 0);
        Append(u"Epsilon", 0);
        DisableMenuItem(ref_, 3);
        CheckMenuItem(ref_, 5, true);
        for (int item = 7; item < 7 + extraItems; ++item) {
            std::string text = "Item " + std::to_string(item);
            Append(std::u16string(text.begin(), text.end()).c_str(), 0);
        }
    }
    ~TestMenu() { ReleaseMenu(ref_); }
    TestMenu(const TestMenu&) = delete;
    TestMenu& operator=(const TestMenu&) = delete;

    Menu& get() { return *Menu::From(ref_); }
    MenuRef ref() { return ref_; }

    void Append(const char16_t* text, MenuItemAttributes attributes) {
        StringHolder title(MakeBCString(text));
        AppendMenuItemTextWithBCString(ref_, title.get(), attributes, 0, nullptr);
    }

private:
    MenuRef ref_ = nullptr;
};

inline EventHolder MouseEvent(EventKind kind, BGPoint global, EventTime time = 0) {
    EventHolder event(kEventClassMouse, kind);
    SetParam(event.get(), kEventParamMouseLocation, typeBTPoint, global);
    event.get()->time = time;
    return event;
}

inline EventHolder WheelEvent(BGPoint global, int32_t lines,
                              EventMouseWheelAxis axis = kEventMouseWheelAxisY) {
    EventHolder event = MouseEvent(kEventMouseWheelMoved, global);
    SetParam(event.get(), kEventParamMouseWheelDelta, typeSInt32, lines);
    SetParam(event.get(), kEventParamMouseWheelAxis, typeMouseWheelAxis, axis);
    return event;
}

inline EventHolder KeyEvent(uint32_t code, char16_t character = 0, EventTime time = 0,
                            uint32_t modifiers = 0) {
    EventHolder event(kEventClassKeyboard, kEventRawKeyDown);
    SetParam(event.get(), kEventParamKeyCode, typeUInt32, code);
    SetParam(event.get(), kEventParamKeyModifiers, typeUInt32, modifiers);
    if (character != 0)
        SetParam(event.get(), kEventParamKeyUnicodes, typeUnicodeText, character);
    event.get()->time = time;
    return event;
}

} // namespace menutest
