// A toolbox window with one text field, for driving the X11 backend from outside: it prints
// "text: ..." with the field's content when the window is closed, "drop: URL" for each file
// dropped on it, "wheel: AXIS LINES" for each turn of the wheel and "display: LEFT TOP RIGHT
// BOTTOM" (the window's greatest-area display) when the displays change. Its drag tracking refuses
// files whose names end in ".bad". Started with "busy", it shows the busy cursor throughout.

#include <basalt/BasaltDrag.h>
#include <basalt/BasaltGraphics.h>
#include <basalt/BasaltToolbox.h>
#include <cstdio>
#include <string>
#include <vector>

namespace {

ControlRef gField = nullptr;

std::string FieldText() {
    BCStringRef text = nullptr;
    GetControlData(gField, 0, kControlEditTextCFStringTag, sizeof text, &text, nullptr);
    if (text == nullptr)
        return {};
    std::vector<char> utf8(size_t(BCStringGetLength(text)) * 4 + 1);
    BCStringGetCString(text, utf8.data(), BCIndex(utf8.size()), kBCStringEncodingUTF8);
    BCRelease(text);
    return utf8.data();
}

StatusCode Closing(EventHandlerCallRef call, EventRef event, void*) {
    std::printf("text: %s\n", FieldText().c_str());
    std::fflush(stdout);
    QuitApplicationEventLoop();
    return CallNextEventHandler(call, event);
}

StatusCode Tracking(DragTrackingMessage message, WindowRef, void*, DragRef drag) {
    if (message != kDragTrackingInWindow)
        return noErr;
    char url[1024] = {};
    Size size = sizeof url - 1;
    GetFlavorData(drag, 1, kDragFlavorTypeFileURL, url, &size, 0);
    std::string name(url);
    if (name.size() >= 4 && name.compare(name.size() - 4, 4, ".bad") == 0)
        return dragNotAcceptedErr;
    ShowDragHilite(drag, nullptr, true);
    return noErr;
}

StatusCode Dropped(WindowRef, void*, DragRef drag) {
    uint16_t count = 0;
    CountDragItems(drag, &count);
    for (uint16_t index = 1; index <= count; ++index) {
        DragItemRef item = 0;
        GetDragItemReferenceNumber(drag, index, &item);
        char url[1024] = {};
        Size size = sizeof url - 1;
        if (GetFlavorData(drag, item, kDragFlavorTypeFileURL, url, &size, 0) == noErr)
            std::printf("drop: %s\n", url);
    }
    std::fflush(stdout);
    return noErr;
}

StatusCode Wheeled(EventHandlerCallRef call, EventRef event, void*) {
    int32_t lines = 0;
    EventMouseWheelAxis axis = kEventMouseWheelAxisY;
    GetEventParameter(event, kEventParamMouseWheelDelta, typeSInt32, nullptr, sizeof lines, nullptr,
                      &lines);
    GetEventParameter(event, kEventParamMouseWheelAxis, typeMouseWheelAxis, nullptr, sizeof axis,
                      nullptr, &axis);
    std::printf("wheel: %s %d\n", axis == kEventMouseWheelAxisX ? "x" : "y", int(lines));
    std::fflush(stdout);
    return CallNextEventHandler(call, event);
}

void DisplaysChanged(BGDirectDisplayID, BGDisplayChangeSummaryFlags flags, void* window) {
    if (flags & kBGDisplayBeginConfigurationFlag)
        return;
    Rect display{};
    BTWindowGetGreatestAreaDisplay(static_cast<WindowRef>(window), 0, &display);
    std::printf("display: %d %d %d %d\n", display.left, display.top, display.right, display.bottom);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv) {
    Rect bounds = {120, 160, 240, 560};
    WindowRef window = nullptr;
    if (CreateNewWindow(kDocumentWindowClass, kWindowCloseBoxAttribute, &bounds, &window) != noErr)
        return 2;
    BCStringRef title =
        BCStringCreateWithCString(nullptr, "Field \xE2\x80\x94 \xC3\xBC", kBCStringEncodingUTF8);
    SetWindowTitleWithBCString(window, title);
    BCRelease(title);
    Rect fieldBounds = {40, 20, 62, 380};
    if (BTCreateControl(window, &fieldBounds, kControlKindEditUnicodeText, nullptr, &gField) !=
        noErr)
        return 2;
    const EventTypeSpec close = {kEventClassWindow, kEventWindowClose};
    InstallEventHandler(GetWindowEventTarget(window), Closing, 1, &close, nullptr, nullptr);
    const EventTypeSpec wheel = {kEventClassMouse, kEventMouseWheelMoved};
    InstallEventHandler(GetWindowEventTarget(window), Wheeled, 1, &wheel, nullptr, nullptr);
    BGDisplayRegisterReconfigurationCallback(DisplaysChanged, window);
    if (argc > 1 && std::string(argv[1]) == "busy")
        SetThemeCursor(kThemeWatchCursor);
    InstallReceiveHandler(Dropped, window, nullptr);
    InstallTrackingHandler(Tracking, window, nullptr);
    ShowWindow(window);
    SetKeyboardFocus(window, gField, kControlEditTextPart);
    RunApplicationEventLoop();
    RemoveReceiveHandler(Dropped, window);
    RemoveTrackingHandler(Tracking, window);
    return 0;
}
