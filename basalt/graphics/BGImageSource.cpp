// Image sources: the bytes of an image file, probed once for what gdk-pixbuf can tell about
// them, and decoded on demand at full size or as a thumbnail. Each decode has its own loader,
// so sources may be used from a preview thread.

#include "basalt/graphics/BGCairo.h"
#include "basalt/graphics/BGImageObject.h"
#include "basalt/graphics/PixbufSurface.h"

#include <algorithm>
#include <cstdlib>
#include <string>

using basalt::graphics::ReleaseObject;
using basalt::graphics::RetainObject;

struct OpaqueBGImageSource : basalt::graphics::CountedObject {
    ~OpaqueBGImageSource() { ReleaseObject(provider); }

    BGDataProviderRef provider = nullptr;
    std::string mimeHint;
    // What the probe found; count 0 when the bytes are no image.
    size_t imageCount = 0;
    int width = 0, height = 0;
    bool hasAlpha = false;
    int orientation = 1;
    std::string formatName;
};

namespace {

struct Decode {
    int maxPixelSize = 0; // 0: full size
    int originalWidth = 0, originalHeight = 0;
};

void OnSizePrepared(GdkPixbufLoader* loader, int width, int height, gpointer data) {
    auto* decode = static_cast<Decode*>(data);
    decode->originalWidth = width;
    decode->originalHeight = height;
    const int longer = std::max(width, height);
    if (decode->maxPixelSize <= 0 || longer <= decode->maxPixelSize)
        return;
    const double scale = static_cast<double>(decode->maxPixelSize) / longer;
    gdk_pixbuf_loader_set_size(loader, std::max(1, static_cast<int>(width * scale + 0.5)),
                               std::max(1, static_cast<int>(height * scale + 0.5)));
}

GdkPixbufLoader* LoaderFor(const std::string& mimeHint) {
    if (!mimeHint.empty())
        if (GdkPixbufLoader* loader =
                gdk_pixbuf_loader_new_with_mime_type(mimeHint.c_str(), nullptr))
            return loader;
    return gdk_pixbuf_loader_new();
}

// Decodes the source's bytes, scaled down while decoding when decode asks; the format's name
// goes to formatName when it is not null.
GdkPixbuf* DecodeSource(const OpaqueBGImageSource& source, Decode& decode,
                        std::string* formatName) {
    const BGDataProviderRef provider = source.provider;
    if (provider->size == 0)
        return nullptr;
    GdkPixbufLoader* loader = LoaderFor(source.mimeHint);
    g_signal_connect(loader, "size-prepared", G_CALLBACK(OnSizePrepared), &decode);
    const bool written = gdk_pixbuf_loader_write(loader, provider->bytes, provider->size, nullptr);
    const bool closed = gdk_pixbuf_loader_close(loader, nullptr);
    GdkPixbuf* pixbuf = written && closed ? gdk_pixbuf_loader_get_pixbuf(loader) : nullptr;
    if (pixbuf != nullptr)
        g_object_ref(pixbuf);
    if (pixbuf != nullptr && formatName != nullptr)
        if (GdkPixbufFormat* format = gdk_pixbuf_loader_get_format(loader)) {
            gchar* name = gdk_pixbuf_format_get_name(format);
            *formatName = name;
            g_free(name);
        }
    g_object_unref(loader);
    return pixbuf;
}

void Probe(OpaqueBGImageSource& source) {
    Decode decode;
    decode.maxPixelSize = 64; // enough to learn the facts; JPEG decodes scaled and fast
    GdkPixbuf* pixbuf = DecodeSource(source, decode, &source.formatName);
    if (pixbuf == nullptr)
        return;
    source.imageCount = 1;
    source.width = decode.originalWidth;
    source.height = decode.originalHeight;
    source.hasAlpha = gdk_pixbuf_get_has_alpha(pixbuf);
    if (const gchar* orientation = gdk_pixbuf_get_option(pixbuf, "orientation"))
        source.orientation = std::clamp(std::atoi(orientation), 1, 8);
    g_object_unref(pixbuf);
}

bool BooleanOption(BCDictionaryRef options, BCStringRef key) {
    const void* value = options != nullptr ? BCDictionaryGetValue(options, key) : nullptr;
    if (value == nullptr)
        return false;
    if (BCGetTypeID(value) == BCBooleanGetTypeID())
        return BCBooleanGetValue(static_cast<BCBooleanRef>(value));
    int number = 0;
    return BCGetTypeID(value) == BCNumberGetTypeID() &&
           BCNumberGetValue(static_cast<BCNumberRef>(value), kBCNumberIntType, &number) &&
           number != 0;
}

int IntegerOption(BCDictionaryRef options, BCStringRef key) {
    const void* value = options != nullptr ? BCDictionaryGetValue(options, key) : nullptr;
    double number = 0;
    if (value == nullptr || BCGetTypeID(value) != BCNumberGetTypeID())
        return 0;
    BCNumberGetValue(static_cast<BCNumberRef>(value), kBCNumberDoubleType, &number);
    return number > 0 ? static_cast<int>(std::min(number, 32767.0)) : 0;
}

std::string StringOption(BCDictionaryRef options, BCStringRef key) {
    const void* value = options != nullptr ? BCDictionaryGetValue(options, key) : nullptr;
    char text[256];
    if (value == nullptr || BCGetTypeID(value) != BCStringGetTypeID() ||
        !BCStringGetCString(static_cast<BCStringRef>(value), text, sizeof text,
                            kBCStringEncodingUTF8))
        return {};
    return text;
}

BGImageSourceRef CreateSource(BGDataProviderRef provider, BCDictionaryRef options) {
    auto* source = new OpaqueBGImageSource;
    source->provider = RetainObject(provider);
    source->mimeHint = StringOption(options, kBGImageSourceTypeIdentifierHint);
    Probe(*source);
    return source;
}

BGImageRef ImageFrom(GdkPixbuf* pixbuf) {
    if (pixbuf == nullptr)
        return nullptr;
    cairo_surface_t* surface = basalt::graphics::SurfaceFromPixbuf(pixbuf);
    g_object_unref(pixbuf);
    BGImageRef image = nullptr;
    if (cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS)
        image = new OpaqueBGImage(surface);
    else
        cairo_surface_destroy(surface);
    return image;
}

void SetNumber(BCMutableDictionaryRef dictionary, BCStringRef key, int value) {
    BCNumberRef number = BCNumberCreate(kBCAllocatorDefault, kBCNumberIntType, &value);
    BCDictionarySetValue(dictionary, key, number);
    BCRelease(number);
}

} // namespace

extern "C" {

const BCStringRef kBGImageSourceTypeIdentifierHint = BCSTR("kBGImageSourceTypeIdentifierHint");
const BCStringRef kBGImageSourceCreateThumbnailFromImageIfAbsent =
    BCSTR("kBGImageSourceCreateThumbnailFromImageIfAbsent");
const BCStringRef kBGImageSourceCreateThumbnailFromImageAlways =
    BCSTR("kBGImageSourceCreateThumbnailFromImageAlways");
const BCStringRef kBGImageSourceThumbnailMaxPixelSize =
    BCSTR("kBGImageSourceThumbnailMaxPixelSize");
const BCStringRef kBGImageSourceCreateThumbnailWithTransform =
    BCSTR("kBGImageSourceCreateThumbnailWithTransform");
const BCStringRef kBGImagePropertyPixelWidth = BCSTR("PixelWidth");
const BCStringRef kBGImagePropertyPixelHeight = BCSTR("PixelHeight");
const BCStringRef kBGImagePropertyHasAlpha = BCSTR("HasAlpha");
const BCStringRef kBGImagePropertyOrientation = BCSTR("Orientation");
const BCStringRef kBGImagePropertyFormatName = BCSTR("FormatName");

BCArrayRef BGImageSourceCopyTypeIdentifiers(void) {
    BCMutableArrayRef types = BCArrayCreateMutable(kBCAllocatorDefault, 0, &kBCTypeArrayCallBacks);
    GSList* formats = gdk_pixbuf_get_formats();
    for (GSList* item = formats; item != nullptr; item = item->next) {
        auto* format = static_cast<GdkPixbufFormat*>(item->data);
        gchar** mimeTypes = gdk_pixbuf_format_get_mime_types(format);
        for (gchar** mime = mimeTypes; mime != nullptr && *mime != nullptr; ++mime) {
            BCStringRef type =
                BCStringCreateWithCString(kBCAllocatorDefault, *mime, kBCStringEncodingUTF8);
            BCArrayAppendValue(types, type);
            BCRelease(type);
        }
        g_strfreev(mimeTypes);
    }
    g_slist_free(formats);
    return types;
}

BGImageSourceRef BGImageSourceCreateWithURL(BCURLRef url, BCDictionaryRef options) {
    BGDataProviderRef provider = BGDataProviderCreateWithURL(url);
    if (provider == nullptr)
        return nullptr;
    BGImageSourceRef source = CreateSource(provider, options);
    BGDataProviderRelease(provider);
    return source;
}

BGImageSourceRef BGImageSourceCreateWithDataProvider(BGDataProviderRef provider,
                                                     BCDictionaryRef options) {
    return provider != nullptr ? CreateSource(provider, options) : nullptr;
}

size_t BGImageSourceGetCount(BGImageSourceRef source) {
    return source != nullptr ? source->imageCount : 0;
}

BGImageRef BGImageSourceCreateImageAtIndex(BGImageSourceRef source, size_t index,
                                           BCDictionaryRef options) {
    (void)options;
    if (source == nullptr || index >= source->imageCount)
        return nullptr;
    Decode decode;
    return ImageFrom(DecodeSource(*source, decode, nullptr));
}

BGImageRef BGImageSourceCreateThumbnailAtIndex(BGImageSourceRef source, size_t index,
                                               BCDictionaryRef options) {
    if (source == nullptr || index >= source->imageCount)
        return nullptr;
    // Formats' own thumbnails are never read, so one is only made from the image.
    if (!BooleanOption(options, kBGImageSourceCreateThumbnailFromImageIfAbsent) &&
        !BooleanOption(options, kBGImageSourceCreateThumbnailFromImageAlways))
        return nullptr;
    Decode decode;
    decode.maxPixelSize = IntegerOption(options, kBGImageSourceThumbnailMaxPixelSize);
    GdkPixbuf* pixbuf = DecodeSource(*source, decode, nullptr);
    if (pixbuf != nullptr && BooleanOption(options, kBGImageSourceCreateThumbnailWithTransform)) {
        GdkPixbuf* upright = gdk_pixbuf_apply_embedded_orientation(pixbuf);
        g_object_unref(pixbuf);
        pixbuf = upright;
    }
    return ImageFrom(pixbuf);
}

BCDictionaryRef BGImageSourceCopyPropertiesAtIndex(BGImageSourceRef source, size_t index,
                                                   BCDictionaryRef options) {
    (void)options;
    if (source == nullptr || index >= source->imageCount)
        return nullptr;
    BCMutableDictionaryRef properties = BCDictionaryCreateMutable(kBCAllocatorDefault, 0);
    SetNumber(properties, kBGImagePropertyPixelWidth, source->width);
    SetNumber(properties, kBGImagePropertyPixelHeight, source->height);
    SetNumber(properties, kBGImagePropertyOrientation, source->orientation);
    BCDictionarySetValue(properties, kBGImagePropertyHasAlpha,
                         source->hasAlpha ? kBCBooleanTrue : kBCBooleanFalse);
    BCStringRef format = BCStringCreateWithCString(kBCAllocatorDefault, source->formatName.c_str(),
                                                   kBCStringEncodingUTF8);
    BCDictionarySetValue(properties, kBGImagePropertyFormatName, format);
    BCRelease(format);
    return properties;
}

void BGImageSourceRelease(BGImageSourceRef source) {
    ReleaseObject(source);
}

} // extern "C"
