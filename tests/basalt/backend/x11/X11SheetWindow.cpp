// A window named "Parent" with a sheet named "Sheet" on it, for the end-to-end tests of how
// a sheet sits on its parent on a real display. It runs until it is killed.

#include <basalt/BasaltToolbox.h>

namespace {

void SetTitle(WindowRef window, const char* title) {
    BCStringRef text = BCStringCreateWithCString(nullptr, title, kBCStringEncodingUTF8);
    SetWindowTitleWithBCString(window, text);
    BCRelease(text);
}

} // namespace

int main() {
    Rect parentBounds = {120, 160, 360, 560};
    Rect sheetBounds = {0, 0, 100, 200};
    WindowRef parent = nullptr, sheet = nullptr;
    if (CreateNewWindow(kDocumentWindowClass, kWindowCloseBoxAttribute, &parentBounds, &parent) !=
            noErr ||
        CreateNewWindow(kSheetWindowClass, 0, &sheetBounds, &sheet) != noErr)
        return 2;
    SetTitle(parent, "Parent");
    SetTitle(sheet, "Sheet");
    ShowWindow(parent);
    if (ShowSheetWindow(sheet, parent) != noErr)
        return 2;
    RunApplicationEventLoop();
    return 0;
}
