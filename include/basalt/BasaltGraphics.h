/*
 * Basalt graphics: geometry, drawing contexts, images and image sources, icons, regions, theme
 * text and theme drawing. A C header; the toolbox header includes it.
 *
 * Coordinates. A BGContextRef made over a bitmap or a window starts with its origin at the
 * bottom left and y growing upwards; BGContextDrawImage draws upright in that system. Views draw
 * in a "flipped" context (origin top left, y down). Icons, text, view images and theme parts
 * (PlotIconRefInContext, BTViewDrawBGImage, the BTTheme calls) come out upright in either: their
 * rectangle's min y is its top edge in a flipped context and its bottom edge in a y-up one.
 * Whole-number Point/Rect/RgnHandle coordinates are those of windows and controls: origin top
 * left, y down.
 *
 * Ownership: Create and Copy functions return a reference the caller owns and releases with the
 * matching Release; Get functions do not give ownership.
 */
#ifndef BASALT_GRAPHICS_H
#define BASALT_GRAPHICS_H

#include <basalt/BasaltCore.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Whole-number geometry of windows and controls ---------------------------------------- */

typedef struct Point {
    int16_t v;
    int16_t h;
} Point;

typedef struct Rect {
    int16_t top;
    int16_t left;
    int16_t bottom;
    int16_t right;
} Rect;

BASALT_EXPORT void SetRect(Rect* r, int16_t left, int16_t top, int16_t right, int16_t bottom);
BASALT_EXPORT void OffsetRect(Rect* r, int16_t dh, int16_t dv);
BASALT_EXPORT void InsetRect(Rect* r, int16_t dh, int16_t dv);
/* False and an empty dst when the two do not overlap. */
BASALT_EXPORT Boolean SectRect(const Rect* a, const Rect* b, Rect* dst);
BASALT_EXPORT void UnionRect(const Rect* a, const Rect* b, Rect* dst);
/* A point on the right or bottom edge is outside. */
BASALT_EXPORT Boolean PtInRect(Point pt, const Rect* r);
BASALT_EXPORT Boolean EmptyRect(const Rect* r);
BASALT_EXPORT Boolean EqualRect(const Rect* a, const Rect* b);

/* ---- Floating geometry of views and contexts ------------------------------------------------ */

typedef double BGFloat;

typedef struct BGPoint {
    BGFloat x;
    BGFloat y;
} BGPoint;

typedef struct BGSize {
    BGFloat width;
    BGFloat height;
} BGSize;

typedef struct BGRect {
    BGPoint origin;
    BGSize size;
} BGRect;

typedef struct BGAffineTransform {
    BGFloat a, b, c, d;
    BGFloat tx, ty;
} BGAffineTransform;

BASALT_EXPORT extern const BGPoint BGPointZero;
BASALT_EXPORT extern const BGSize BGSizeZero;
BASALT_EXPORT extern const BGRect BGRectZero;
/* The rectangle that stands for "nothing": the result of intersecting disjoint rectangles. */
BASALT_EXPORT extern const BGRect BGRectNull;
BASALT_EXPORT extern const BGAffineTransform BGAffineTransformIdentity;

BASALT_EXPORT BGPoint BGPointMake(BGFloat x, BGFloat y);
BASALT_EXPORT BGSize BGSizeMake(BGFloat width, BGFloat height);
BASALT_EXPORT BGRect BGRectMake(BGFloat x, BGFloat y, BGFloat width, BGFloat height);

/* Rectangles with a negative size are read as if standardised first. */
BASALT_EXPORT BGFloat BGRectGetMinX(BGRect r);
BASALT_EXPORT BGFloat BGRectGetMidX(BGRect r);
BASALT_EXPORT BGFloat BGRectGetMaxX(BGRect r);
BASALT_EXPORT BGFloat BGRectGetMinY(BGRect r);
BASALT_EXPORT BGFloat BGRectGetMidY(BGRect r);
BASALT_EXPORT BGFloat BGRectGetMaxY(BGRect r);
BASALT_EXPORT BGFloat BGRectGetWidth(BGRect r);
BASALT_EXPORT BGFloat BGRectGetHeight(BGRect r);
BASALT_EXPORT BGRect BGRectStandardize(BGRect r);
BASALT_EXPORT Boolean BGRectIsEmpty(BGRect r);
BASALT_EXPORT Boolean BGRectIsNull(BGRect r);
BASALT_EXPORT Boolean BGRectEqualToRect(BGRect a, BGRect b);
/* Min edges inclusive, max edges exclusive. */
BASALT_EXPORT Boolean BGRectContainsPoint(BGRect r, BGPoint p);
BASALT_EXPORT Boolean BGRectContainsRect(BGRect outer, BGRect inner);
BASALT_EXPORT Boolean BGRectIntersectsRect(BGRect a, BGRect b);
BASALT_EXPORT BGRect BGRectIntersection(BGRect a, BGRect b);
BASALT_EXPORT BGRect BGRectUnion(BGRect a, BGRect b);
/* Moves each edge in by dx and dy (out, when negative). */
BASALT_EXPORT BGRect BGRectInset(BGRect r, BGFloat dx, BGFloat dy);
BASALT_EXPORT BGRect BGRectOffset(BGRect r, BGFloat dx, BGFloat dy);
/* The smallest rectangle with whole-number edges that holds r. */
BASALT_EXPORT BGRect BGRectIntegral(BGRect r);

BASALT_EXPORT BGAffineTransform BGAffineTransformMake(BGFloat a, BGFloat b, BGFloat c, BGFloat d,
                                                      BGFloat tx, BGFloat ty);
BASALT_EXPORT BGAffineTransform BGAffineTransformMakeTranslation(BGFloat tx, BGFloat ty);
BASALT_EXPORT BGAffineTransform BGAffineTransformMakeScale(BGFloat sx, BGFloat sy);
BASALT_EXPORT BGAffineTransform BGAffineTransformMakeRotation(BGFloat angle);
/* t1 applied first, then t2. */
BASALT_EXPORT BGAffineTransform BGAffineTransformConcat(BGAffineTransform t1, BGAffineTransform t2);
/* The identity when t cannot be inverted. */
BASALT_EXPORT BGAffineTransform BGAffineTransformInvert(BGAffineTransform t);
BASALT_EXPORT BGPoint BGPointApplyAffineTransform(BGPoint p, BGAffineTransform t);
/* The bounding box of the transformed rectangle. */
BASALT_EXPORT BGRect BGRectApplyAffineTransform(BGRect r, BGAffineTransform t);

/* Conversions between the two geometries. */
BASALT_EXPORT BGRect BGRectFromRect(const Rect* r);
/* Rounds outwards to whole numbers, clamped to 16 bits. */
BASALT_EXPORT void BGRectToRect(BGRect r, Rect* out);

/* ---- Colour ------------------------------------------------------------------------------- */

typedef struct BTRGBColor {
    uint16_t red;
    uint16_t green;
    uint16_t blue;
} BTRGBColor;

/* The display's RGB colour space (sRGB); the only space contexts and images use. */
typedef struct OpaqueBGColorSpace* BGColorSpaceRef;

BASALT_EXPORT BGColorSpaceRef BGColorSpaceCreateDisplayRGB(void);
BASALT_EXPORT BGColorSpaceRef BGColorSpaceRetain(BGColorSpaceRef space);
BASALT_EXPORT void BGColorSpaceRelease(BGColorSpaceRef space);

/* ---- Data providers ----------------------------------------------------------------------- */

typedef struct OpaqueBGDataProvider* BGDataProviderRef;
typedef void (*BGDataProviderReleaseDataCallback)(void* info, const void* data, size_t size);

/* Reads the whole file now; null when it cannot be read. */
BASALT_EXPORT BGDataProviderRef BGDataProviderCreateWithURL(BCURLRef url);
/* Uses the bytes in place; release (if any) is called with info, data and size when the last
   reference goes. */
BASALT_EXPORT BGDataProviderRef BGDataProviderCreateWithData(
    void* info, const void* data, size_t size, BGDataProviderReleaseDataCallback release);
BASALT_EXPORT BGDataProviderRef BGDataProviderCreateWithBCData(BCDataRef data);
BASALT_EXPORT BCDataRef BGDataProviderCopyData(BGDataProviderRef provider);
BASALT_EXPORT BGDataProviderRef BGDataProviderRetain(BGDataProviderRef provider);
BASALT_EXPORT void BGDataProviderRelease(BGDataProviderRef provider);

/* ---- Images ------------------------------------------------------------------------------- */

typedef struct OpaqueBGImage* BGImageRef;

/*
 * Pixel layouts: 8 bits a component, 32 bits a pixel, each pixel one 32-bit word in host byte
 * order with alpha (or padding) in the high byte, then red, green, blue.
 */
typedef uint32_t BGBitmapInfo;
enum {
    kBGImageAlphaNone = 0,
    kBGImageAlphaPremultipliedLast = 1,
    kBGImageAlphaPremultipliedFirst = 2,
    kBGImageAlphaLast = 3,
    kBGImageAlphaFirst = 4,
    kBGImageAlphaNoneSkipLast = 5,
    kBGImageAlphaNoneSkipFirst = 6,
    kBGBitmapAlphaInfoMask = 0x1F,
    kBGBitmapByteOrderDefault = 0,
    kBGBitmapByteOrder32Host = 0
};

typedef int32_t BGColorRenderingIntent;
enum { kBGRenderingIntentDefault = 0 };

/* Status values of the graphics calls. */
enum {
    kBGImageFormatErr = -2020, /* the bytes are no image of a format that can be read */
    kBGNoImageErr = -2022      /* a missing image or file */
};

/* Wraps the provider's bytes without copying them; the provider stays alive while the image
   does. Only the 32-bit layouts with alpha first (premultiplied or skipped) are accepted;
   anything else gives null. decode must be null. */
BASALT_EXPORT BGImageRef BGImageCreate(size_t width, size_t height, size_t bitsPerComponent,
                                       size_t bitsPerPixel, size_t bytesPerRow,
                                       BGColorSpaceRef space, BGBitmapInfo bitmapInfo,
                                       BGDataProviderRef provider, const BGFloat* decode,
                                       Boolean shouldInterpolate, BGColorRenderingIntent intent);
/* Decodes PNG bytes; null when they are not a PNG. */
BASALT_EXPORT BGImageRef BGImageCreateWithPNGDataProvider(BGDataProviderRef provider,
                                                          const BGFloat* decode,
                                                          Boolean shouldInterpolate,
                                                          BGColorRenderingIntent intent);
BASALT_EXPORT BGImageRef BGImageRetain(BGImageRef image);
BASALT_EXPORT void BGImageRelease(BGImageRef image);
BASALT_EXPORT size_t BGImageGetWidth(BGImageRef image);
BASALT_EXPORT size_t BGImageGetHeight(BGImageRef image);

/* ---- Image sources -------------------------------------------------------------------------- */

typedef struct OpaqueBGImageSource* BGImageSourceRef;

/* Option keys, in the options dictionaries of the calls below. */
BASALT_EXPORT extern const BCStringRef kBGImageSourceTypeIdentifierHint;
BASALT_EXPORT extern const BCStringRef kBGImageSourceCreateThumbnailFromImageIfAbsent;
BASALT_EXPORT extern const BCStringRef kBGImageSourceCreateThumbnailFromImageAlways;
BASALT_EXPORT extern const BCStringRef kBGImageSourceThumbnailMaxPixelSize;
BASALT_EXPORT extern const BCStringRef kBGImageSourceCreateThumbnailWithTransform;
/* Property keys of BGImageSourceCopyPropertiesAtIndex. */
BASALT_EXPORT extern const BCStringRef kBGImagePropertyPixelWidth;
BASALT_EXPORT extern const BCStringRef kBGImagePropertyPixelHeight;
BASALT_EXPORT extern const BCStringRef kBGImagePropertyHasAlpha;
BASALT_EXPORT extern const BCStringRef kBGImagePropertyOrientation;
BASALT_EXPORT extern const BCStringRef kBGImagePropertyFormatName;

/* The MIME types of the formats that can be read, as an array of strings. */
BASALT_EXPORT BCArrayRef BGImageSourceCopyTypeIdentifiers(void);
/* Null when the file cannot be read. A source over bytes of no known format has count 0. */
BASALT_EXPORT BGImageSourceRef BGImageSourceCreateWithURL(BCURLRef url, BCDictionaryRef options);
BASALT_EXPORT BGImageSourceRef BGImageSourceCreateWithDataProvider(BGDataProviderRef provider,
                                                                   BCDictionaryRef options);
BASALT_EXPORT size_t BGImageSourceGetCount(BGImageSourceRef source);
BASALT_EXPORT BGImageRef BGImageSourceCreateImageAtIndex(BGImageSourceRef source, size_t index,
                                                         BCDictionaryRef options);
/* Made from the full image (a format's own thumbnail is not looked at), no larger than
   kBGImageSourceThumbnailMaxPixelSize on its longer side; turned upright when
   kBGImageSourceCreateThumbnailWithTransform is true. */
BASALT_EXPORT BGImageRef BGImageSourceCreateThumbnailAtIndex(BGImageSourceRef source, size_t index,
                                                             BCDictionaryRef options);
BASALT_EXPORT BCDictionaryRef BGImageSourceCopyPropertiesAtIndex(BGImageSourceRef source,
                                                                 size_t index,
                                                                 BCDictionaryRef options);
BASALT_EXPORT void BGImageSourceRelease(BGImageSourceRef source);

/* ---- Contexts ------------------------------------------------------------------------------- */

typedef struct OpaqueBGContext* BGContextRef;

/* A bitmap context: 8 bits a component, 32 bits a pixel, alpha mode premultiplied first (2) or
   none-skip-first (6). With null data the context allocates (cleared) pixels of its own. */
BASALT_EXPORT BGContextRef BGBitmapContextCreate(void* data, size_t width, size_t height,
                                                 size_t bitsPerComponent, size_t bytesPerRow,
                                                 BGColorSpaceRef space, BGBitmapInfo bitmapInfo);
/* An image holding a copy of the context's pixels as they are now. */
BASALT_EXPORT BGImageRef BGBitmapContextCreateImage(BGContextRef context);
BASALT_EXPORT void* BGBitmapContextGetData(BGContextRef context);
BASALT_EXPORT size_t BGBitmapContextGetWidth(BGContextRef context);
BASALT_EXPORT size_t BGBitmapContextGetHeight(BGContextRef context);
BASALT_EXPORT size_t BGBitmapContextGetBytesPerRow(BGContextRef context);

BASALT_EXPORT BGContextRef BGContextRetain(BGContextRef context);
BASALT_EXPORT void BGContextRelease(BGContextRef context);
/* Pushes matrix, clip, colours, alpha and line width; the path is not part of the state. */
BASALT_EXPORT void BGContextSaveGState(BGContextRef context);
BASALT_EXPORT void BGContextRestoreGState(BGContextRef context);

BASALT_EXPORT void BGContextTranslateCTM(BGContextRef context, BGFloat tx, BGFloat ty);
BASALT_EXPORT void BGContextScaleCTM(BGContextRef context, BGFloat sx, BGFloat sy);
BASALT_EXPORT void BGContextRotateCTM(BGContextRef context, BGFloat angle);
BASALT_EXPORT void BGContextConcatCTM(BGContextRef context, BGAffineTransform transform);
/* User space to the context's base space (points, origin bottom left). */
BASALT_EXPORT BGAffineTransform BGContextGetCTM(BGContextRef context);

BASALT_EXPORT void BGContextClipToRect(BGContextRef context, BGRect rect);
/* Clips to the current path (non-zero winding) and clears it. */
BASALT_EXPORT void BGContextClip(BGContextRef context);
BASALT_EXPORT BGRect BGContextGetClipBoundingBox(BGContextRef context);

BASALT_EXPORT void BGContextSetRGBFillColor(BGContextRef context, BGFloat red, BGFloat green,
                                            BGFloat blue, BGFloat alpha);
BASALT_EXPORT void BGContextSetRGBStrokeColor(BGContextRef context, BGFloat red, BGFloat green,
                                              BGFloat blue, BGFloat alpha);
BASALT_EXPORT void BGContextSetGrayFillColor(BGContextRef context, BGFloat gray, BGFloat alpha);
BASALT_EXPORT void BGContextSetGrayStrokeColor(BGContextRef context, BGFloat gray, BGFloat alpha);
/* A global alpha applied to everything drawn afterwards. */
BASALT_EXPORT void BGContextSetAlpha(BGContextRef context, BGFloat alpha);
BASALT_EXPORT void BGContextSetLineWidth(BGContextRef context, BGFloat width);
BASALT_EXPORT void BGContextSetShouldAntialias(BGContextRef context, Boolean antialias);

BASALT_EXPORT void BGContextBeginPath(BGContextRef context);
BASALT_EXPORT void BGContextMoveToPoint(BGContextRef context, BGFloat x, BGFloat y);
BASALT_EXPORT void BGContextAddLineToPoint(BGContextRef context, BGFloat x, BGFloat y);
BASALT_EXPORT void BGContextAddCurveToPoint(BGContextRef context, BGFloat cp1x, BGFloat cp1y,
                                            BGFloat cp2x, BGFloat cp2y, BGFloat x, BGFloat y);
/* clockwise is 1 for a clockwise arc in user space. */
BASALT_EXPORT void BGContextAddArc(BGContextRef context, BGFloat x, BGFloat y, BGFloat radius,
                                   BGFloat startAngle, BGFloat endAngle, int clockwise);
BASALT_EXPORT void BGContextAddRect(BGContextRef context, BGRect rect);
BASALT_EXPORT void BGContextAddRoundedRect(BGContextRef context, BGRect rect, BGFloat radius);
BASALT_EXPORT void BGContextAddEllipseInRect(BGContextRef context, BGRect rect);
BASALT_EXPORT void BGContextClosePath(BGContextRef context);
/* Filling or stroking consumes the path. */
BASALT_EXPORT void BGContextFillPath(BGContextRef context);
BASALT_EXPORT void BGContextEOFillPath(BGContextRef context);
BASALT_EXPORT void BGContextStrokePath(BGContextRef context);

BASALT_EXPORT void BGContextFillRect(BGContextRef context, BGRect rect);
BASALT_EXPORT void BGContextStrokeRect(BGContextRef context, BGRect rect);
BASALT_EXPORT void BGContextStrokeRectWithWidth(BGContextRef context, BGRect rect, BGFloat width);
/* Makes the rectangle fully transparent. */
BASALT_EXPORT void BGContextClearRect(BGContextRef context, BGRect rect);
BASALT_EXPORT void BGContextFillEllipseInRect(BGContextRef context, BGRect rect);
BASALT_EXPORT void BGContextStrokeEllipseInRect(BGContextRef context, BGRect rect);
/* Strokes count/2 separate lines: points 0-1, 2-3, ... */
BASALT_EXPORT void BGContextStrokeLineSegments(BGContextRef context, const BGPoint* points,
                                               size_t count);

/* Draws the image scaled into rect, its top row at the rect's max y (upright in a y-up
   context). */
BASALT_EXPORT void BGContextDrawImage(BGContextRef context, BGRect rect, BGImageRef image);

/* ---- Displays ----------------------------------------------------------------------------- */

typedef uint32_t BGDirectDisplayID;
typedef uint32_t BGDisplayChangeSummaryFlags;
enum {
    kBGDisplayBeginConfigurationFlag = 1, /* a change is about to happen */
    kBGDisplayMovedFlag = 2,
    kBGDisplaySetMainFlag = 4,
    kBGDisplaySetModeFlag = 8,
    kBGDisplayAddFlag = 16,
    kBGDisplayRemoveFlag = 32
};

typedef void (*BGDisplayReconfigurationCallBack)(BGDirectDisplayID display,
                                                 BGDisplayChangeSummaryFlags flags, void* userInfo);

/* Called on the main thread for every change of the displays' arrangement: once with
   kBGDisplayBeginConfigurationFlag, then with what changed. Registering the same pair twice
   is paramErr; a callback may remove itself or others while being called. */
BASALT_EXPORT StatusCode
BGDisplayRegisterReconfigurationCallback(BGDisplayReconfigurationCallBack callback, void* userInfo);
BASALT_EXPORT StatusCode
BGDisplayRemoveReconfigurationCallback(BGDisplayReconfigurationCallBack callback, void* userInfo);

/* ---- Regions ------------------------------------------------------------------------------ */

/* A set of whole-number pixels in window coordinates (y down). */
typedef struct OpaqueRgn* RgnHandle;

BASALT_EXPORT RgnHandle NewRgn(void);
BASALT_EXPORT void DisposeRgn(RgnHandle rgn);
BASALT_EXPORT void CopyRgn(RgnHandle src, RgnHandle dst);
BASALT_EXPORT void SetEmptyRgn(RgnHandle rgn);
BASALT_EXPORT void SetRectRgn(RgnHandle rgn, int16_t left, int16_t top, int16_t right,
                              int16_t bottom);
BASALT_EXPORT void RectRgn(RgnHandle rgn, const Rect* r);
BASALT_EXPORT void OffsetRgn(RgnHandle rgn, int16_t dh, int16_t dv);
BASALT_EXPORT void InsetRgn(RgnHandle rgn, int16_t dh, int16_t dv);
/* dst may be one of the sources. */
BASALT_EXPORT void SectRgn(RgnHandle a, RgnHandle b, RgnHandle dst);
BASALT_EXPORT void UnionRgn(RgnHandle a, RgnHandle b, RgnHandle dst);
BASALT_EXPORT void DiffRgn(RgnHandle a, RgnHandle b, RgnHandle dst);
BASALT_EXPORT void XorRgn(RgnHandle a, RgnHandle b, RgnHandle dst);
BASALT_EXPORT Boolean EmptyRgn(RgnHandle rgn);
BASALT_EXPORT Boolean EqualRgn(RgnHandle a, RgnHandle b);
BASALT_EXPORT Boolean PtInRgn(Point pt, RgnHandle rgn);
BASALT_EXPORT Boolean RectInRgn(const Rect* r, RgnHandle rgn);
/* The bounding box, (0,0,0,0) for an empty region; returns bounds. */
BASALT_EXPORT Rect* GetRegionBounds(RgnHandle rgn, Rect* bounds);
/* The last region status: 0, or -108 when a region could not be made. */
BASALT_EXPORT StatusCode GetLastRegionStatus(void);

/* ---- Icons -------------------------------------------------------------------------------- */

typedef struct OpaqueIconRef* IconRef;

enum {
    kBTSystemVolume = -32768,
    kBTSystemIconsCreator = 0x686F7374, /* "host" */
    kBTIconNotFoundErr = -8051
};

/* System icon types for GetIconRef with kBTSystemIconsCreator. */
enum {
    kBTIconComputer = 0x726F6F74,           /* "root" */
    kBTIconGenericFolder = 0x666C6472,      /* "fldr" */
    kBTIconGenericServer = 0x73727672,      /* "srvr" */
    kBTIconGenericNetwork = 0x676E6574,     /* "gnet" */
    kBTIconSearch = 0x676C6173,             /* "glas" */
    kBTIconGenericDocument = 0x646F6375,    /* "docu" */
    kBTIconGenericApplication = 0x4150504C, /* "APPL" */
    kBTIconTrash = 0x74727368,              /* "trsh" */
    kBTIconFullTrash = 0x66747268,          /* "ftrh" */
    kBTIconHardDisk = 0x6864736B,           /* "hdsk" */
    kBTIconRemovableDisk = 0x726D6F76,      /* "rmov" */
    kBTIconOpticalDisc = 0x63646472,        /* "cddr" */
    kBTIconHome = 0x686F6D65,               /* "home" */
    kBTIconDesktop = 0x6465736B,            /* "desk" */
    kBTIconDocumentsFolder = 0x646F6373,    /* "docs" */
    kBTIconDownloadsFolder = 0x646F776E,    /* "down" */
    kBTIconPackage = 0x706B6720,            /* "pkg " */
    kBTIconAlias = 0x616C6973,              /* "alis" */
    kBTIconEject = 0x656A6563,              /* "ejec" */
    kBTIconLocked = 0x6C6F636B,             /* "lock" */
    kBTIconAlertNote = 0x6E6F7465,          /* "note" */
    kBTIconAlertCaution = 0x63617574,       /* "caut" */
    kBTIconAlertStop = 0x73746F70,          /* "stop" */
    kBTIconUnknownFile = 0x3F3F3F3F         /* "????" */
};

/* icon is owned by the caller (release with ReleaseIconRef). Unknown types give
   kBTIconNotFoundErr. Every known type yields an icon: a drawn one when no theme has it. The
   alert icons are drawn too rather than blown up from a theme picture much smaller than the
   size plotted. */
BASALT_EXPORT StatusCode GetIconRef(int16_t vRefNum, OSType creator, OSType iconType,
                                    IconRef* icon);
/* An icon by freedesktop icon name (for a MIME type, say "text-x-python"), looked up in the
   icon themes; when the name is missing, genericName (may be null, "text-x-generic", say), then
   the drawn document icon. Owned by the caller. */
BASALT_EXPORT StatusCode GetIconRefFromIconName(const char* name, const char* genericName,
                                                IconRef* icon);
BASALT_EXPORT StatusCode AcquireIconRef(IconRef icon);
BASALT_EXPORT StatusCode ReleaseIconRef(IconRef icon);
BASALT_EXPORT uint16_t GetIconRefOwners(IconRef icon);

typedef int16_t BTIconAlignment;
enum {
    kBTIconAlignNone = 0,
    kBTIconAlignCenter = 1 /* pictures are always centred; the names say what callers mean */
};

typedef int16_t BTIconTransform;
enum {
    kBTIconTransformNone = 0,
    kBTIconTransformDisabled = 1,     /* dimmed */
    kBTIconTransformSelected = 0x4000 /* darkened */
};

typedef uint32_t BTPlotIconFlags;
enum { kBTPlotIconNormal = 0 };

/* Draws the icon centred in rect, upright, at the best size the themes offer for the rect and
   the context's scale. labelColor (may be null) tints it. */
BASALT_EXPORT StatusCode PlotIconRefInContext(BGContextRef context, const BGRect* rect,
                                              BTIconAlignment align, BTIconTransform transform,
                                              const BTRGBColor* labelColor, BTPlotIconFlags flags,
                                              IconRef icon);

/* ---- Theme: fonts and text ---------------------------------------------------------------- */

typedef uint16_t BTThemeFontID;
enum {
    kBTThemeFontSystem = 0,
    kBTThemeFontSmallSystem = 1,
    kBTThemeFontSmallEmphasized = 2,
    kBTThemeFontViews = 3,
    kBTThemeFontEmphasized = 4,
    kBTThemeFontApplication = 5,
    kBTThemeFontLabel = 6,
    kBTThemeFontScope = 1005,
    kBTThemeFontScopeEmphasized = 1006,
    /* Control font styles name theme fonts by small negative numbers; these are the same
       fonts under those numbers (-1, -2, -3, -4 as 16 bits). */
    kBTControlFontSmallSystem = 0xFFFF,
    kBTControlFontSmallEmphasized = 0xFFFE,
    kBTControlFontBigSystem = 0xFFFD,
    kBTControlFontViews = 0xFFFC
};

typedef uint32_t BTThemeDrawState;
enum {
    kBTThemeStateInactive = 0,
    kBTThemeStateActive = 1,
    kBTThemeStatePressed = 2,
    kBTThemeStateRollover = 6,
    kBTThemeStateUnavailable = 7,
    kBTThemeStateUnavailableInactive = 8
};

enum {
    kBTThemeTextFlushLeft = 0,
    kBTThemeTextFlushCenter = 1,
    kBTThemeTextFlushRight = 2,
    kBTThemeTextFlushTop = 0,
    kBTThemeTextFlushBottom = 2
};

enum {
    kBTThemeTextTruncationNone = 0,
    kBTThemeTextTruncationMiddle = 1,
    kBTThemeTextTruncationEnd = 2
};

enum { kBTThemeFontErr = -2030 /* a font id that the theme does not know */ };

typedef struct BTThemeTextInfo {
    uint32_t version;       /* 0 */
    BTThemeDrawState state; /* unavailable states draw dimmed */
    BTThemeFontID fontID;
    uint32_t horizontalFlush;    /* left, centre, right */
    uint32_t verticalFlush;      /* top, centre, bottom */
    uint32_t options;            /* 0 */
    uint32_t truncationPosition; /* none, middle, end */
    uint32_t truncationMaxLines; /* 0: as many as it takes */
    Boolean truncationHappened;  /* set by the drawing call */
} BTThemeTextInfo;

/* The size the text takes. width 0 means one unwrapped paragraph per line; otherwise lines wrap
   at width (and are cut to truncationMaxLines when it is set). Any output may be null. */
BASALT_EXPORT StatusCode BTThemeGetTextDimensions(BCStringRef string, BGFloat width,
                                                  const BTThemeTextInfo* info, BGFloat* outWidth,
                                                  BGFloat* outHeight, BGFloat* outBaseline);
/* Draws the text upright in bounds in the context's fill colour: wrapped to the width, cut to
   the line limit with an ellipsis where truncationPosition says. */
BASALT_EXPORT StatusCode BTThemeDrawTextBox(BCStringRef string, const BGRect* bounds,
                                            BTThemeTextInfo* info, BGContextRef context);
/* In: ioBounds->h is the wrapping width when wrapToWidth is set. Out: h width, v height. */
BASALT_EXPORT StatusCode GetThemeTextDimensions(BCStringRef string, BTThemeFontID fontID,
                                                BTThemeDrawState state, Boolean wrapToWidth,
                                                Point* ioBounds, int16_t* outBaseline);

/* ---- Theme: metrics ------------------------------------------------------------------------- */

typedef uint32_t BTThemeMetric;
enum {
    kBTThemeMetricScrollBarWidth = 0,
    kBTThemeMetricSmallScrollBarWidth = 1,
    kBTThemeMetricCheckBoxHeight = 2,
    kBTThemeMetricRadioButtonHeight = 3,
    kBTThemeMetricEditTextWhitespace = 4,
    kBTThemeMetricEditTextFrameOutset = 5,
    kBTThemeMetricListBoxFrameOutset = 6,
    kBTThemeMetricFocusRectOutset = 7,
    kBTThemeMetricPushButtonHeight = 19,
    kBTThemeMetricListHeaderHeight = 20,
    kBTThemeMetricDisclosureTriangleHeight = 25,
    kBTThemeMetricDisclosureTriangleWidth = 26,
    kBTThemeMetricPopupButtonHeight = 30,
    kBTThemeMetricSeparatorSize = 40,
    kBTThemeMetricCheckBoxWidth = 50,
    kBTThemeMetricDisclosureButtonHeight = 51,
    kBTThemeMetricDisclosureButtonWidth = 52,
    kBTThemeMetricPushButtonMinWidth = 53,
    kBTThemeMetricEditTextHeight = 54,
    kBTThemeMetricSmallIconSize = 55,
    kBTThemeMetricLargeIconSize = 56
};

/* paramErr for a metric the theme does not have. */
BASALT_EXPORT StatusCode GetThemeMetric(BTThemeMetric metric, int32_t* outMetric);

/* ---- Theme: drawing --------------------------------------------------------------------- */

enum { kBTThemeFrameTextField = 0, kBTThemeFrameListBox = 1 };

typedef struct BTThemeFrameDrawInfo {
    uint32_t version;
    uint32_t kind;
    BTThemeDrawState state;
    Boolean isFocused;
} BTThemeFrameDrawInfo;

enum { kBTThemeGroupBoxPrimary = 0, kBTThemeGroupBoxSecondary = 1 };

typedef struct BTThemeGroupBoxDrawInfo {
    uint32_t version;
    BTThemeDrawState state;
    uint32_t kind;
} BTThemeGroupBoxDrawInfo;

typedef struct BTThemeWellDrawInfo {
    uint32_t version;
    BTThemeDrawState state;
} BTThemeWellDrawInfo;

typedef uint16_t BTThemeButtonKind;
enum {
    kBTThemePushButton = 0,
    kBTThemeCheckBox = 1,
    kBTThemeRadioButton = 2,
    kBTThemeBevelButton = 3,
    kBTThemePopupButton = 5,
    kBTThemeDisclosureTriangle = 6,
    kBTThemeDisclosureButton = 7,
    kBTThemeListHeaderButton = 10
};

typedef uint16_t BTThemeButtonValue;
enum { kBTThemeButtonOff = 0, kBTThemeButtonOn = 1, kBTThemeButtonMixed = 2 };

typedef uint32_t BTThemeButtonAdornment;
enum {
    kBTThemeAdornmentNone = 0,
    kBTThemeAdornmentDefault = 1,            /* the default push button */
    kBTThemeAdornmentFocus = 4,              /* draws the focus ring */
    kBTThemeAdornmentHeaderSorted = 0x20,    /* a list header with the sort arrow */
    kBTThemeAdornmentHeaderDescending = 0x40 /* the arrow points down */
};

typedef struct BTThemeButtonDrawInfo {
    uint32_t version;
    BTThemeDrawState state;
    BTThemeButtonValue value;
    BTThemeButtonAdornment adornment;
} BTThemeButtonDrawInfo;

enum {
    kBTThemeBackgroundWindow = 1,
    kBTThemeBackgroundPlacard = 2,
    kBTThemeBackgroundListView = 10,
    kBTThemeBackgroundDialogArea = 11, /* a dialog's own content, custom areas included */
    kBTThemeBackgroundSelection = 20,  /* selected rows: the accent, grey when inactive */
    kBTThemeBackgroundListStripe = 21  /* every other row of a striped list */
};

enum {
    kBTThemeTextColorPlain = 0,
    kBTThemeTextColorOnAccent = 1, /* titles of active default buttons, selected rows */
    kBTThemeTextColorSecondary = 2 /* labels beside values, captions */
};

BASALT_EXPORT StatusCode BTThemeDrawFrame(const BGRect* rect, const BTThemeFrameDrawInfo* info,
                                          BGContextRef context);
BASALT_EXPORT StatusCode BTThemeDrawGroupBox(const BGRect* rect,
                                             const BTThemeGroupBoxDrawInfo* info,
                                             BGContextRef context);
BASALT_EXPORT StatusCode BTThemeDrawGenericWell(const BGRect* rect, const BTThemeWellDrawInfo* info,
                                                BGContextRef context);
/* A ring just outside rect; nothing when hasFocus is false. */
BASALT_EXPORT StatusCode BTThemeDrawFocusRect(const BGRect* rect, Boolean hasFocus,
                                              BGContextRef context);
/* Draws the button's body; outLabelRect (may be null) is where its title belongs. For a check
   box, radio button or disclosure triangle the mark sits at the left (vertically centred). An
   active default push button is filled with the accent: its title takes
   kBTThemeTextColorOnAccent. */
BASALT_EXPORT StatusCode BTThemeDrawButton(const BGRect* bounds, BTThemeButtonKind kind,
                                           const BTThemeButtonDrawInfo* info, BGContextRef context,
                                           BGRect* outLabelRect);
/* A horizontal or vertical line along the longer side of rect. */
BASALT_EXPORT StatusCode BTThemeDrawSeparator(const BGRect* rect, BTThemeDrawState state,
                                              BGContextRef context);
/* A scroll bar along the longer side of track: the track, and the thumb from thumbStart for
   thumbLength points along it (no thumb when thumbLength is 0). */
BASALT_EXPORT StatusCode BTThemeDrawScrollBar(const BGRect* track, BGFloat thumbStart,
                                              BGFloat thumbLength, BTThemeDrawState state,
                                              BGContextRef context);
/* Sets the context's fill colour to the theme's text colour of that kind, dimmed for
   unavailable states. */
BASALT_EXPORT StatusCode BTThemeSetTextColor(uint32_t kind, BTThemeDrawState state,
                                             BGContextRef context);
/* Sets the context's fill colour to the background of that kind. */
BASALT_EXPORT StatusCode BTThemeApplyBackground(const BGRect* bounds, uint32_t kind,
                                                BTThemeDrawState state, BGContextRef context);

/* Draws an image stretched into rect, upright. */
BASALT_EXPORT StatusCode BTViewDrawBGImage(BGContextRef context, const BGRect* rect,
                                           BGImageRef image);

#ifdef __cplusplus
}
#endif

#endif /* BASALT_GRAPHICS_H */
