#include "basalt/graphics/IconPictures.h"

#include "basalt/graphics/IconTheme.h"
#include "basalt/graphics/PixbufSurface.h"

#include <map>
#include <mutex>
#include <utility>

namespace basalt::graphics {
namespace {

cairo_surface_t* LoadPicture(const std::vector<std::string>& names, int pixelSize) {
    for (const std::string& name : names) {
        const auto file = IconThemeSet::Default().Find(name, pixelSize);
        if (!file)
            continue;
        GdkPixbuf* pixbuf =
            gdk_pixbuf_new_from_file_at_size(file->c_str(), pixelSize, pixelSize, nullptr);
        if (pixbuf == nullptr)
            continue;
        cairo_surface_t* picture = SurfaceFromPixbuf(pixbuf);
        g_object_unref(pixbuf);
        if (cairo_surface_status(picture) == CAIRO_STATUS_SUCCESS)
            return picture;
        cairo_surface_destroy(picture);
    }
    return nullptr;
}

class PictureCache {
public:
    ~PictureCache() {
        for (auto& entry : pictures_)
            cairo_surface_destroy(entry.second);
    }

    cairo_surface_t* Get(const std::string& key, const std::vector<std::string>& names,
                         int pixelSize) {
        std::lock_guard lock(mutex_);
        auto [entry, added] = pictures_.try_emplace({key, pixelSize}, nullptr);
        if (added)
            entry->second = LoadPicture(names, pixelSize);
        return entry->second;
    }

private:
    std::mutex mutex_;
    std::map<std::pair<std::string, int>, cairo_surface_t*> pictures_;
};

} // namespace

cairo_surface_t* IconPicture(const std::string& key, const std::vector<std::string>& names,
                             int pixelSize) {
    static PictureCache cache;
    return cache.Get(key, names, pixelSize);
}

} // namespace basalt::graphics
