#include "basalt/graphics/IconPictures.h"

#include "basalt/graphics/IconTheme.h"
#include "basalt/graphics/PixbufSurface.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <utility>

namespace basalt::graphics {
namespace {

// Scaling a picture up by more than this shows.
constexpr double kMostUpscale = 1.25;

// Whether a file is drawn at pixelSize without blowing its pixels up: a scalable format, or a
// raster at least nearly that size.
bool Sharp(const std::string& file, int pixelSize) {
    int width = 0;
    int height = 0;
    GdkPixbufFormat* format = gdk_pixbuf_get_file_info(file.c_str(), &width, &height);
    if (format == nullptr)
        return false;
    return gdk_pixbuf_format_is_scalable(format) ||
           std::max(width, height) * kMostUpscale >= pixelSize;
}

cairo_surface_t* LoadPicture(const std::vector<std::string>& names, int pixelSize, bool sharpOnly) {
    for (const std::string& name : names) {
        const auto file = IconThemeSet::Default().Find(name, pixelSize);
        if (!file || (sharpOnly && !Sharp(*file, pixelSize)))
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
                         int pixelSize, bool sharpOnly) {
        std::lock_guard lock(mutex_);
        auto [entry, added] = pictures_.try_emplace({key, pixelSize}, nullptr);
        if (added)
            entry->second = LoadPicture(names, pixelSize, sharpOnly);
        return entry->second;
    }

private:
    std::mutex mutex_;
    std::map<std::pair<std::string, int>, cairo_surface_t*> pictures_;
};

} // namespace

cairo_surface_t* IconPicture(const std::string& key, const std::vector<std::string>& names,
                             int pixelSize, bool sharpOnly) {
    static PictureCache cache;
    return cache.Get(key, names, pixelSize, sharpOnly);
}

} // namespace basalt::graphics
