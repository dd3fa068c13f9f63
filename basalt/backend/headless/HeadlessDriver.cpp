#include "basalt/backend/headless/HeadlessDriver.h"

#include "basalt/backend/headless/HeadlessBackend.h"
#include "basalt/backend/headless/ShownMenuPicture.h"
#include "basalt/graphics/BGCairo.h"
#include "basalt/graphics/ShownText.h"
#include "basalt/toolbox/classic/KeyboardLayout.h"
#include "basalt/toolbox/controls/Buttons.h"
#include "basalt/toolbox/events/ApplicationTarget.h"
#include "basalt/toolbox/events/EventLoop.h"
#include "basalt/toolbox/menus/Menu.h"
#include "basalt/toolbox/views/UnicodeText.h"
#include "basalt/toolbox/windows/WindowList.h"

#include <algorithm>
#include <memory>

namespace basalt::headless {
namespace {

using toolbox::EventHolder;
using toolbox::SetParam;

void PostMouse(WindowRef window, EventKind kind, BGPoint local, uint32_t modifiers,
               int32_t wheel = 0) {
    Rect content{};
    GetWindowBounds(window, kWindowContentRgn, &content);
    BGPoint global = {local.x + content.left, local.y + content.top};
    EventHolder event(kEventClassMouse, kind);
    SetParam(event.get(), kEventParamMouseLocation, typeBTPoint, global);
    SetParam(event.get(), kEventParamKeyModifiers, typeUInt32, modifiers);
    SetParam(event.get(), kEventParamWindowRef, typeWindowRef, window);
    uint16_t button = 1;
    SetParam(event.get(), kEventParamMouseButton, typeMouseButton, button);
    if (kind == kEventMouseWheelMoved)
        SetParam(event.get(), kEventParamMouseWheelDelta, typeSInt32, wheel);
    PostEventToQueue(GetMainEventQueue(), event.get(), kEventPriorityStandard);
}

void PostKey(EventKind kind, uint16_t code, uint32_t modifiers, char16_t character) {
    EventHolder event(kEventClassKeyboard, kind);
    uint32_t keyCode = code;
    SetParam(event.get(), kEventParamKeyCode, typeUInt32, keyCode);
    SetParam(event.get(), kEventParamKeyModifiers, typeUInt32, modifiers);
    char legacy = character < 0x80 ? char(character) : '?';
    SetParam(event.get(), kEventParamKeyMacCharCodes, typeChar, legacy);
    SetEventParameter(event.get(), kEventParamKeyUnicodes, typeUnicodeText, sizeof character,
                      &character);
    PostEventToQueue(GetMainEventQueue(), event.get(), kEventPriorityStandard);
}

void RunWork(EventLoopTimerRef timer, void* data) {
    std::unique_ptr<std::function<void()>> work(static_cast<std::function<void()>*>(data));
    RemoveEventLoopTimer(timer);
    (*work)();
}

BGRect ControlFrame(WindowRef window, ControlID id, ControlRef* outControl) {
    ControlRef control = nullptr;
    if (GetControlByID(window, &id, &control) != noErr)
        return BGRectNull;
    *outControl = control;
    return toolbox::View::From(control)->FrameInWindow();
}

// The title bar drawn above the content in snapshots, so that a picture reads as a window.
void DrawTitleBar(cairo_surface_t* target, WindowRef window, double width, double scale) {
    BGContextRef context = graphics::CreateContextForSurface(
        target, cairo_image_surface_get_height(target) / scale, scale);
    if (context == nullptr)
        return;
    double height = cairo_image_surface_get_height(target) / scale;
    BGContextTranslateCTM(context, 0, height);
    BGContextScaleCTM(context, 1, -1);
    BGRect bar = BGRectMake(0, 0, width, kBTWindowTitleBarHeight);
    BGContextSetGrayFillColor(context, IsWindowActive(window) ? 0.90 : 0.95, 1.0);
    BGContextFillRect(context, bar);
    BGContextSetGrayFillColor(context, 0.75, 1.0);
    BGContextFillRect(context, BGRectMake(0, kBTWindowTitleBarHeight - 1, width, 1));
    WindowAttributes attributes = 0;
    GetWindowAttributes(window, &attributes);
    if (attributes & kWindowCloseBoxAttribute) {
        BGContextSetRGBFillColor(context, 0.93, 0.38, 0.35, 1.0);
        BGContextFillEllipseInRect(context, BGRectMake(8, 5, 12, 12));
    }
    BCStringRef title = nullptr;
    CopyWindowTitleAsBCString(window, &title);
    BTThemeTextInfo info{};
    info.state = kBTThemeStateActive;
    info.fontID = kBTThemeFontEmphasized;
    info.horizontalFlush = kBTThemeTextFlushCenter;
    info.verticalFlush = 1;
    info.truncationPosition = kBTThemeTextTruncationEnd;
    info.truncationMaxLines = 1;
    BGRect text = BGRectInset(bar, 28, 2);
    BGContextSetGrayFillColor(context, 0.15, 1.0);
    if (title != nullptr && BCStringGetLength(title) > 0)
        BTThemeDrawTextBox(title, &text, &info, context);
    BCRelease(title);
    BGContextRelease(context);
}

} // namespace

bool HeadlessDriver::Available() {
    return ActiveHeadlessBackend() != nullptr;
}

StatusCode HeadlessDriver::ClickAt(WindowRef window, BGPoint local, uint32_t modifiers) {
    if (!IsValidWindowPtr(window))
        return errInvalidWindowRef;
    PostMouse(window, kEventMouseDown, local, modifiers);
    PostMouse(window, kEventMouseUp, local, modifiers);
    return noErr;
}

StatusCode HeadlessDriver::Click(WindowRef window, ControlID id, uint32_t modifiers,
                                 ControlPartCode part) {
    ControlRef control = nullptr;
    BGRect frame = ControlFrame(window, id, &control);
    if (control == nullptr)
        return errUnknownControl;
    BGPoint middle = {BGRectGetMidX(frame), BGRectGetMidY(frame)};
    auto* segmented = dynamic_cast<toolbox::SegmentedView*>(toolbox::View::From(control));
    if (segmented != nullptr && part > 0 && segmented->Maximum() > 0) {
        double width = frame.size.width / segmented->Maximum();
        middle.x = frame.origin.x + width * (part - 0.5);
    }
    return ClickAt(window, middle, modifiers);
}

StatusCode HeadlessDriver::Click(WindowRef window, const char* signature, int32_t id,
                                 uint32_t modifiers) {
    ControlID controlID{
        toolbox::FourCC({signature[0], signature[1], signature[2], signature[3], 0}), id};
    return Click(window, controlID, modifiers);
}

StatusCode HeadlessDriver::Click(ControlRef control, uint32_t modifiers) {
    WindowRef window = control != nullptr ? GetControlOwner(control) : nullptr;
    if (window == nullptr)
        return errUnknownControl;
    BGRect frame = toolbox::View::From(control)->FrameInWindow();
    return ClickAt(window, {BGRectGetMidX(frame), BGRectGetMidY(frame)}, modifiers);
}

StatusCode HeadlessDriver::Drag(WindowRef window, BGPoint from, BGPoint to, uint32_t modifiers) {
    if (!IsValidWindowPtr(window))
        return errInvalidWindowRef;
    PostMouse(window, kEventMouseDown, from, modifiers);
    PostMouse(window, kEventMouseDragged, to, modifiers);
    PostMouse(window, kEventMouseUp, to, modifiers);
    return noErr;
}

StatusCode HeadlessDriver::MoveTo(WindowRef window, BGPoint local) {
    if (!IsValidWindowPtr(window))
        return errInvalidWindowRef;
    PostMouse(window, kEventMouseMoved, local, 0);
    return noErr;
}

StatusCode HeadlessDriver::Scroll(WindowRef window, BGPoint local, int32_t lines) {
    if (!IsValidWindowPtr(window))
        return errInvalidWindowRef;
    PostMouse(window, kEventMouseWheelMoved, local, 0, lines);
    return noErr;
}

StatusCode HeadlessDriver::ResizeTo(WindowRef window, int16_t width, int16_t height) {
    Rect bounds{};
    if (GetWindowBounds(window, kWindowContentRgn, &bounds) != noErr)
        return errInvalidWindowRef;
    bounds.right = int16_t(bounds.left + width);
    bounds.bottom = int16_t(bounds.top + height);
    EventHolder event(kEventClassWindow, kEventWindowBoundsChanging);
    SetParam(event.get(), kEventParamDirectObject, typeWindowRef, window);
    SetParam(event.get(), kEventParamCurrentBounds, typeQDRectangle, bounds);
    PostEventToQueue(GetMainEventQueue(), event.get(), kEventPriorityStandard);
    return noErr;
}

StatusCode HeadlessDriver::PressKey(uint16_t keyCode, uint32_t modifiers, char16_t character) {
    if (character == 0)
        character = toolbox::CharacterForKeyCode(keyCode, (modifiers & shiftKey) != 0);
    PostKey(kEventRawKeyDown, keyCode, modifiers, character);
    PostKey(kEventRawKeyUp, keyCode, modifiers, character);
    return noErr;
}

StatusCode HeadlessDriver::TypeText(const std::string& utf8) {
    for (char16_t character : toolbox::FromUTF8(utf8)) {
        bool shift = false;
        uint16_t code = toolbox::KeyCodeForCharacter(character, &shift);
        // Characters no key types arrive as text with key code 0xFF, as composed input does.
        PressKey(code == 0xFFFF ? 0xFF : code, shift ? shiftKey : 0, character);
    }
    return noErr;
}

void HeadlessDriver::ChooseMenuItem(MenuItemIndex item) {
    if (HeadlessBackend* backend = ActiveHeadlessBackend())
        backend->menuChoices.push_back(item);
}

void HeadlessDriver::WhileMenuOpen(std::function<void(MenuRef)> work) {
    if (HeadlessBackend* backend = ActiveHeadlessBackend())
        backend->menuWork.push_back(std::move(work));
}

void HeadlessDriver::RunUntilIdle() {
    while (toolbox::DispatchPendingEvents()) {
    }
    toolbox::FlushWindowsBeforeWaiting();
}

void HeadlessDriver::RunFor(EventTimeout seconds) {
    RunCurrentEventLoop(seconds);
    RunUntilIdle();
}

void HeadlessDriver::Soon(std::function<void()> work, EventTimeout delay) {
    auto* held = new std::function<void()>(std::move(work));
    InstallEventLoopTimer(GetMainEventLoop(), delay, 0, RunWork, held, nullptr);
}

namespace {

// A sheet shows on its parent: centred, hanging from the top of the content, with a shadow
// below it so that it reads as lying above the window.
void PaintSheet(cairo_t* cr, toolbox::Window& parent, double parentWidth, int bar) {
    toolbox::Window* sheet = parent.VisibleSheet();
    if (sheet == nullptr)
        return;
    sheet->Invalidate();
    sheet->Flush();
    toolbox::BackendWindow* surface = sheet->Surface();
    if (surface == nullptr)
        return;
    double scale = surface->Scale();
    double width = cairo_image_surface_get_width(surface->Surface()) / scale;
    double height = cairo_image_surface_get_height(surface->Surface()) / scale;
    double left = std::max(0.0, (parentWidth - width) / 2) * scale;
    cairo_save(cr);
    for (int step = 1; step <= 6; ++step) {
        cairo_set_source_rgba(cr, 0, 0, 0, 0.03);
        cairo_rectangle(cr, left - step * scale, bar, (width + 2 * step) * scale,
                        (height + step) * scale);
        cairo_fill(cr);
    }
    cairo_set_source_surface(cr, surface->Surface(), left, bar);
    cairo_paint(cr);
    cairo_restore(cr);
}

// The snapshot with the menu shown now drawn over it, grown where the menu runs past the
// window; the snapshot itself when no menu is shown. Takes over `picture`.
cairo_surface_t* WithShownMenu(cairo_surface_t* picture, toolbox::Window& window, double top,
                               double scale) {
    HeadlessBackend* backend = ActiveHeadlessBackend();
    if (backend == nullptr || backend->shownMenu == nullptr ||
        !toolbox::IsLiveMenu(backend->shownMenu->menu))
        return picture;
    BGRect menu = ShownMenuFrame(*backend->shownMenu, window.ContentBounds(), top);
    double width = cairo_image_surface_get_width(picture) / scale;
    double height = cairo_image_surface_get_height(picture) / scale;
    double left = std::min(0.0, menu.origin.x), above = std::min(0.0, menu.origin.y);
    double right = std::max(width, menu.origin.x + menu.size.width);
    double below = std::max(height, menu.origin.y + menu.size.height);
    cairo_surface_t* grown = cairo_image_surface_create(
        CAIRO_FORMAT_ARGB32, int((right - left) * scale), int((below - above) * scale));
    cairo_t* cr = cairo_create(grown);
    cairo_set_source_surface(cr, picture, -left * scale, -above * scale);
    cairo_paint(cr);
    PaintShownMenu(cr, *backend->shownMenu,
                   {(menu.origin.x - left) * scale, (menu.origin.y - above) * scale}, scale);
    cairo_destroy(cr);
    cairo_surface_destroy(picture);
    return grown;
}

} // namespace

bool HeadlessDriver::FindShownText(WindowRef window, const std::string& utf8, BGRect within,
                                   BGRect* box) {
    if (!IsValidWindowPtr(window))
        return false;
    toolbox::Window* live = toolbox::Window::From(window);
    graphics::ShownTextRecording recording;
    live->Invalidate();
    live->Flush();
    toolbox::BackendWindow* surface = live->Surface();
    if (surface == nullptr)
        return false;
    const double scale = surface->Scale();
    for (const graphics::ShownText& text : recording.Texts()) {
        const BGRect content =
            BGRectMake(text.box.origin.x / scale, text.box.origin.y / scale,
                       text.box.size.width / scale, text.box.size.height / scale);
        const BGPoint middle{BGRectGetMidX(content), BGRectGetMidY(content)};
        if (text.surface == surface->Surface() && text.utf8 == utf8 &&
            BGRectContainsPoint(within, middle)) {
            *box = content;
            return true;
        }
    }
    return false;
}

StatusCode HeadlessDriver::WritePNG(WindowRef window, const std::filesystem::path& path) {
    if (!IsValidWindowPtr(window))
        return errInvalidWindowRef;
    toolbox::Window* live = toolbox::Window::From(window);
    live->Invalidate();
    live->Flush();
    toolbox::BackendWindow* surface = live->Surface();
    if (surface == nullptr)
        return errInvalidWindowRef;
    double scale = surface->Scale();
    int width = cairo_image_surface_get_width(surface->Surface());
    int bar = live->HasTitleBar() ? int(double(kBTWindowTitleBarHeight) * scale) : 0;
    int height = cairo_image_surface_get_height(surface->Surface()) + bar;
    cairo_surface_t* picture = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    if (bar > 0)
        DrawTitleBar(picture, window, width / scale, scale);
    cairo_t* cr = cairo_create(picture);
    cairo_set_source_surface(cr, surface->Surface(), 0, bar);
    cairo_paint(cr);
    PaintSheet(cr, *live, width / scale, bar);
    cairo_destroy(cr);
    picture = WithShownMenu(picture, *live, bar / scale, scale);
    cairo_status_t status = cairo_surface_write_to_png(picture, path.c_str());
    cairo_surface_destroy(picture);
    return status == CAIRO_STATUS_SUCCESS ? noErr : StatusCode(fnfErr);
}

int HeadlessDriver::BeepCount() {
    HeadlessBackend* backend = ActiveHeadlessBackend();
    return backend != nullptr ? backend->beeps : 0;
}

uint32_t HeadlessDriver::Cursor() {
    HeadlessBackend* backend = ActiveHeadlessBackend();
    return backend != nullptr ? backend->cursor : uint32_t(kThemeArrowCursor);
}

void HeadlessDriver::ResetBeepCount() {
    if (HeadlessBackend* backend = ActiveHeadlessBackend())
        backend->beeps = 0;
}

void HeadlessDriver::SetScale(double scale) {
    if (HeadlessBackend* backend = ActiveHeadlessBackend())
        backend->scale = scale >= 2 ? 2.0 : 1.0;
}

} // namespace basalt::headless
