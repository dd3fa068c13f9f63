// A toolbox window with one text field, for driving the X11 backend from outside: it prints
// "text: ..." with the field's content when the window is closed, and "drop: URL" for each
// file dropped on it. Its drag tracking refuses files whose names end in ".bad".

#include <basalt/BasaltDrag.h>
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

} // namespace

int main() {
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
    InstallReceiveHandler(Dropped, window, nullptr);
    InstallTrackingHandler(Tracking, window, nullptr);
    ShowWindow(window);
    SetKeyboardFocus(window, gField, kControlEditTextPart);
    RunApplicationEventLoop();
    RemoveReceiveHandler(Dropped, window);
    RemoveTrackingHandler(Tracking, window);
    return 0;
}
