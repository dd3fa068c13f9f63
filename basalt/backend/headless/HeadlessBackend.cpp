#include "basalt/backend/headless/HeadlessBackend.h"

#include <cmath>
#include <cstdlib>

namespace basalt::headless {
namespace {

class HeadlessWindow final : public toolbox::BackendWindow {
public:
    HeadlessWindow(const Rect& bounds, double scale) : scale_(scale) { SetContentBounds(bounds); }
    ~HeadlessWindow() override {
        if (surface_ != nullptr)
            cairo_surface_destroy(surface_);
    }

    cairo_surface_t* Surface() override { return surface_; }
    double Scale() const override { return scale_; }
    void SetVisible(bool) override {}
    void SetTitle(const std::string&) override {}
    void Present() override { cairo_surface_flush(surface_); }

    void SetContentBounds(const Rect& bounds) override {
        int width = std::max(1, int(std::lround((bounds.right - bounds.left) * scale_)));
        int height = std::max(1, int(std::lround((bounds.bottom - bounds.top) * scale_)));
        if (surface_ != nullptr && cairo_image_surface_get_width(surface_) == width &&
            cairo_image_surface_get_height(surface_) == height)
            return;
        if (surface_ != nullptr)
            cairo_surface_destroy(surface_);
        surface_ = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    }

private:
    double scale_;
    cairo_surface_t* surface_ = nullptr;
};

double ScaleFromEnvironment() {
    const char* scale = std::getenv("KEL_SCALE");
    return scale != nullptr && std::atof(scale) >= 2 ? 2.0 : 1.0;
}

[[maybe_unused]] const bool kRegistered = [] {
    toolbox::RegisterBackend("headless", false, [](std::string&) {
        auto backend = std::make_unique<HeadlessBackend>();
        backend->scale = ScaleFromEnvironment();
        return backend;
    });
    return true;
}();

} // namespace

std::unique_ptr<toolbox::BackendWindow> HeadlessBackend::CreateWindow(WindowRef, WindowClass,
                                                                      const Rect& contentBounds) {
    return std::make_unique<HeadlessWindow>(contentBounds, scale);
}

MenuItemIndex HeadlessBackend::TrackPopupMenu(MenuRef menu, Point where, MenuItemIndex current) {
    lastMenu = menu;
    lastMenuLocation = where;
    if (!menuWork.empty()) {
        std::function<void(MenuRef)> work = std::move(menuWork.front());
        menuWork.pop_front();
        ShownMenu shown{menu, where, current,
                        menuChoices.empty() ? MenuItemIndex(0) : menuChoices.front()};
        shownMenu = &shown;
        work(menu);
        shownMenu = nullptr;
    }
    if (menuChoices.empty())
        return 0;
    MenuItemIndex choice = menuChoices.front();
    menuChoices.pop_front();
    return choice;
}

HeadlessBackend* ActiveHeadlessBackend() {
    return dynamic_cast<HeadlessBackend*>(&toolbox::CurrentBackend());
}

} // namespace basalt::headless
