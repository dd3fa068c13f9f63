// Renders one sheet of every theme part, icon and text style at 1x and 2x and keeps it as a
// PNG beside the build, so a person can judge the look. The assertions only check that the
// sheet is drawn at both scales alike.

#include "tests/basalt/graphics/PixelProbe.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>
#include <iostream>

namespace {

namespace fs = std::filesystem;

constexpr double kWidth = 560;
constexpr double kHeight = 440;

void Text(BGContextRef context, const char* text, BGRect box, BTThemeFontID font,
          uint32_t flush = kBTThemeTextFlushLeft, BTThemeDrawState state = kBTThemeStateActive,
          uint32_t maxLines = 1, uint32_t colour = kBTThemeTextColorPlain) {
    BTThemeTextInfo info = {};
    info.state = state;
    info.fontID = font;
    info.horizontalFlush = flush;
    info.verticalFlush = kBTThemeTextFlushCenter;
    info.truncationPosition = kBTThemeTextTruncationEnd;
    info.truncationMaxLines = maxLines;
    BTThemeSetTextColor(colour, state, context);
    BCStringRef string =
        BCStringCreateWithCString(kBCAllocatorDefault, text, kBCStringEncodingUTF8);
    BTThemeDrawTextBox(string, &box, &info, context);
    BCRelease(string);
}

void Button(BGContextRef context, BTThemeButtonKind kind, BGRect bounds, const char* title,
            BTThemeDrawState state, BTThemeButtonValue value = 0,
            BTThemeButtonAdornment adornment = 0) {
    const BTThemeButtonDrawInfo info = {0, state, value, adornment};
    BGRect label;
    BTThemeDrawButton(&bounds, kind, &info, context, &label);
    const bool onAccent = kind == kBTThemePushButton && (adornment & kBTThemeAdornmentDefault) &&
                          (state == kBTThemeStateActive || state == kBTThemeStatePressed);
    const bool centred = kind == kBTThemePushButton || kind == kBTThemeBevelButton;
    if (title != nullptr)
        Text(context, title, label, kBTThemeFontSystem,
             centred ? kBTThemeTextFlushCenter : kBTThemeTextFlushLeft, state, 1,
             onAccent ? kBTThemeTextColorOnAccent : kBTThemeTextColorPlain);
}

void Buttons(BGContextRef context) {
    Button(context, kBTThemePushButton, BGRectMake(20, 20, 90, 25), "Cancel", kBTThemeStateActive);
    Button(context, kBTThemePushButton, BGRectMake(120, 20, 90, 25), "Open", kBTThemeStateActive, 0,
           kBTThemeAdornmentDefault);
    Button(context, kBTThemePushButton, BGRectMake(220, 20, 90, 25), "Pressed",
           kBTThemeStatePressed);
    Button(context, kBTThemePushButton, BGRectMake(320, 20, 90, 25), "Disabled",
           kBTThemeStateUnavailable);
    Button(context, kBTThemePushButton, BGRectMake(420, 20, 120, 25), "Focused",
           kBTThemeStateActive, 0, kBTThemeAdornmentFocus);

    Button(context, kBTThemeCheckBox, BGRectMake(20, 60, 130, 20), "Show hidden",
           kBTThemeStateActive, kBTThemeButtonOn);
    Button(context, kBTThemeCheckBox, BGRectMake(150, 60, 90, 20), "Off", kBTThemeStateActive);
    Button(context, kBTThemeCheckBox, BGRectMake(240, 60, 90, 20), "Mixed", kBTThemeStateActive,
           kBTThemeButtonMixed);
    Button(context, kBTThemeRadioButton, BGRectMake(330, 60, 80, 20), "List", kBTThemeStateActive,
           kBTThemeButtonOn);
    Button(context, kBTThemeRadioButton, BGRectMake(410, 60, 80, 20), "Columns",
           kBTThemeStateUnavailable);

    Button(context, kBTThemePopupButton, BGRectMake(20, 95, 150, 25), "Documents",
           kBTThemeStateActive);
    Button(context, kBTThemeDisclosureTriangle, BGRectMake(185, 97, 80, 20), "Closed",
           kBTThemeStateActive);
    Button(context, kBTThemeDisclosureTriangle, BGRectMake(265, 97, 80, 20), "Open",
           kBTThemeStateActive, kBTThemeButtonOn);
    Button(context, kBTThemeDisclosureButton, BGRectMake(345, 97, 90, 20), "Details",
           kBTThemeStateActive);
    Button(context, kBTThemeBevelButton, BGRectMake(450, 95, 90, 25), "Toggle", kBTThemeStateActive,
           kBTThemeButtonOn);
}

void Fields(BGContextRef context) {
    const BGRect field = BGRectMake(20, 135, 250, 22);
    BTThemeFrameDrawInfo info = {0, kBTThemeFrameTextField, kBTThemeStateActive, true};
    BGContextSetGrayFillColor(context, 1, 1);
    BGContextFillRect(context, BGRectInset(field, 1, 1));
    BTThemeDrawFrame(&field, &info, context);
    Text(context, "Quarterly report for the northern region.txt", BGRectInset(field, 6, 0),
         kBTThemeFontSystem);

    BGRect header = BGRectMake(290, 135, 150, 22);
    BTThemeButtonDrawInfo sorted = {0, kBTThemeStateActive, 0, kBTThemeAdornmentHeaderSorted};
    BGRect label;
    BTThemeDrawButton(&header, kBTThemeListHeaderButton, &sorted, context, &label);
    Text(context, "Name", label, kBTThemeFontSmallEmphasized);
    header = BGRectMake(440, 135, 100, 22);
    const BTThemeButtonDrawInfo plain = {0, kBTThemeStateActive, 0, 0};
    BTThemeDrawButton(&header, kBTThemeListHeaderButton, &plain, context, &label);
    Text(context, "Date Modified", label, kBTThemeFontSmallSystem);

    const BGRect separator = BGRectMake(20, 168, 520, 1);
    BTThemeDrawSeparator(&separator, kBTThemeStateActive, context);
}

void Icons(BGContextRef context) {
    const BGRect box = BGRectMake(20, 180, 300, 180);
    const BTThemeGroupBoxDrawInfo group = {0, kBTThemeStateActive, kBTThemeGroupBoxPrimary};
    BTThemeDrawGroupBox(&box, &group, context);
    const OSType types[] = {kBTIconGenericFolder,      kBTIconComputer, kBTIconGenericNetwork,
                            kBTIconGenericServer,      kBTIconSearch,   kBTIconGenericDocument,
                            kBTIconGenericApplication, kBTIconTrash,    kBTIconHardDisk,
                            kBTIconGenericFolder};
    const char* names[] = {"Folder",   "Computer",    "Network", "Server", "Search",
                           "Document", "Application", "Trash",   "Disk",   "Disabled"};
    for (int i = 0; i < 10; ++i) {
        IconRef icon = nullptr;
        GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, types[i], &icon);
        const double x = 35 + (i % 5) * 56, y = 195 + (i / 5) * 80;
        const BGRect square = BGRectMake(x + 8, y, 32, 32);
        PlotIconRefInContext(context, &square, kBTIconAlignCenter,
                             i == 9 ? kBTIconTransformDisabled : kBTIconTransformNone, nullptr, 0,
                             icon);
        Text(context, names[i], BGRectMake(x - 4, y + 36, 56, 14), kBTThemeFontLabel,
             kBTThemeTextFlushCenter);
        ReleaseIconRef(icon);
    }
}

void Sidebar(BGContextRef context) {
    const BGRect list = BGRectMake(340, 180, 200, 80);
    BGContextSetRGBFillColor(context, 0.9216, 0.9216, 0.9216, 1);
    BGContextFillRect(context, list);
    const BTThemeFrameDrawInfo frame = {0, kBTThemeFrameListBox, kBTThemeStateActive, false};
    BTThemeDrawFrame(&list, &frame, context);
    BGContextSetRGBFillColor(context, 0.227, 0.431, 0.647, 1);
    BGContextFillRect(context, BGRectMake(341, 206, 198, 26));
    const OSType types[] = {kBTIconHome, kBTIconDesktop, kBTIconDownloadsFolder};
    const char* names[] = {"Home", "Desktop with a very long name indeed", "Downloads"};
    for (int i = 0; i < 3; ++i) {
        IconRef icon = nullptr;
        GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, types[i], &icon);
        const double y = 181 + i * 26;
        const BGRect square = BGRectMake(346, y + 3, 20, 20);
        PlotIconRefInContext(context, &square, 0, 0, nullptr, 0, icon);
        Text(context, names[i], BGRectMake(372, y, 146, 26), kBTThemeFontViews,
             kBTThemeTextFlushLeft, kBTThemeStateActive, 1,
             i == 1 ? kBTThemeTextColorOnAccent : kBTThemeTextColorPlain);
        ReleaseIconRef(icon);
    }
}

void ScrollBar(BGContextRef context) {
    const BGRect track = BGRectMake(526, 181, 13, 78);
    BTThemeDrawScrollBar(&track, 6, 40, kBTThemeStateActive, context);
}

void Preview(BGContextRef context) {
    const BGRect well = BGRectMake(340, 270, 200, 90);
    const BTThemeWellDrawInfo info = {0, kBTThemeStateActive};
    BTThemeDrawGenericWell(&well, &info, context);
    Text(context,
         "Dear team,\nthe attached notes cover the plan for next quarter, the budget and "
         "who looks after what. Please read them before Monday's meeting.",
         BGRectInset(well, 6, 6), kBTThemeFontLabel, kBTThemeTextFlushLeft, kBTThemeStateActive,
         10);
}

// A bundle image read the way the library reads it: a URL, a data provider, a PNG decode.
BGImageRef BundleImage(const std::string& name) {
    const std::string path =
        std::string(KEL_BUILD_BUNDLE_DIR) + "/KelServices.bundle/Resources/" + name + ".png";
    BCURLRef url = BCURLCreateFromFileSystemRepresentation(
        kBCAllocatorDefault, reinterpret_cast<const uint8_t*>(path.data()),
        static_cast<BCIndex>(path.size()), false);
    BGDataProviderRef provider = BGDataProviderCreateWithURL(url);
    BCRelease(url);
    BGImageRef image = provider != nullptr
                           ? BGImageCreateWithPNGDataProvider(provider, nullptr, true, 0)
                           : nullptr;
    BGDataProviderRelease(provider);
    return image;
}

// Draws a left-middle-right button from bundle images with its title; returns its width.
double ThreePartButton(BGContextRef context, const std::string& images, const char* title, double x,
                       double y, BTThemeFontID font, double grey) {
    BGImageRef left = BundleImage("_internal_" + images + "-left");
    BGImageRef middle = BundleImage("_internal_" + images + "-mid");
    BGImageRef right = BundleImage("_internal_" + images + "-right");
    if (left == nullptr || middle == nullptr || right == nullptr)
        return 0;
    const double capWidth = BGImageGetWidth(left), height = BGImageGetHeight(left);
    BCStringRef string =
        BCStringCreateWithCString(kBCAllocatorDefault, title, kBCStringEncodingUTF8);
    BTThemeTextInfo info = {};
    info.state = kBTThemeStateActive;
    info.fontID = font;
    info.verticalFlush = kBTThemeTextFlushCenter;
    info.truncationPosition = kBTThemeTextTruncationEnd;
    info.truncationMaxLines = 1;
    BGFloat width = 0;
    BTThemeGetTextDimensions(string, 0, &info, &width, nullptr, nullptr);
    const BGRect parts[] = {BGRectMake(x, y, capWidth, height),
                            BGRectMake(x + capWidth, y, width, height),
                            BGRectMake(x + capWidth + width, y, BGImageGetWidth(right), height)};
    BTViewDrawBGImage(context, &parts[0], left);
    BTViewDrawBGImage(context, &parts[1], middle);
    BTViewDrawBGImage(context, &parts[2], right);
    BGContextSetGrayFillColor(context, grey, 1);
    BTThemeDrawTextBox(string, &parts[1], &info, context);
    BCRelease(string);
    BGImageRelease(left);
    BGImageRelease(middle);
    BGImageRelease(right);
    return 2 * capWidth + width;
}

void BundleArt(BGContextRef context) {
    double x = 20;
    x += ThreePartButton(context, "scope-select", "This Computer", x, 375,
                         kBTThemeFontScopeEmphasized, 1) +
         4;
    x += ThreePartButton(context, "scope-roll", "Home", x, 375, kBTThemeFontScopeEmphasized, 1) + 4;
    x += ThreePartButton(context, "scope-press", "Shared", x, 375, kBTThemeFontScopeEmphasized, 1) +
         14;
    BCStringRef plain = BCSTR("Documents");
    BTThemeTextInfo info = {0,
                            kBTThemeStateActive,
                            kBTThemeFontScope,
                            0,
                            kBTThemeTextFlushCenter,
                            0,
                            kBTThemeTextTruncationEnd,
                            1,
                            false};
    const BGRect plainBox = BGRectMake(x, 375, 70, 20);
    BGContextSetGrayFillColor(context, 0.25, 1);
    BTThemeDrawTextBox(plain, &plainBox, &info, context);
    ThreePartButton(context, "info", "More Info", 370, 375, kBTThemeFontSmallSystem, 0.2);
    ThreePartButton(context, "info-press", "Connect", 470, 375, kBTThemeFontSmallSystem, 0.2);

    const char* selections[] = {"_internal_BlueSelection", "_internal_GreySelection"};
    const char* ejects[] = {"_internal_mb_eject_white", "_internal_mb_eject_white",
                            "_internal_mb_eject_gray", "_internal_mb_eject_roll",
                            "_internal_mb_eject_click"};
    for (int i = 0; i < 2; ++i) {
        BGImageRef selection = BundleImage(selections[i]);
        const BGRect row = BGRectMake(20 + i * 130, 405, 120, 20);
        BTViewDrawBGImage(context, &row, selection);
        BGImageRelease(selection);
    }
    for (int i = 0; i < 5; ++i) {
        BGImageRef eject = BundleImage(ejects[i]);
        const double left = i < 2 ? 20 + i * 130 + 100 : 290 + (i - 2) * 26;
        const BGRect button = BGRectMake(left, 406, 18, 18);
        BTViewDrawBGImage(context, &button, eject);
        BGImageRelease(eject);
    }
}

void DrawSampler(BGContextRef context) {
    BGContextTranslateCTM(context, 0, kHeight);
    BGContextScaleCTM(context, 1, -1);
    const BGRect all = BGRectMake(0, 0, kWidth, kHeight);
    BTThemeApplyBackground(&all, kBTThemeBackgroundWindow, kBTThemeStateActive, context);
    BGContextFillRect(context, all);
    Buttons(context);
    Fields(context);
    Icons(context);
    Sidebar(context);
    ScrollBar(context);
    Preview(context);
    BundleArt(context);
}

fs::path RenderSampler(double scale, const fs::path& folder) {
    const int width = static_cast<int>(kWidth * scale), height = static_cast<int>(kHeight * scale);
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    BGContextRef context = basalt::graphics::CreateContextForSurface(surface, kHeight, scale);
    DrawSampler(context);
    BGContextRelease(context);
    const fs::path file = folder / ("theme-sampler@" + std::to_string(int(scale)) + "x.png");
    cairo_surface_write_to_png(surface, file.c_str());
    cairo_surface_destroy(surface);
    return file;
}

TEST(ThemeSampler, DrawsTheSameSheetAtOneAndTwoTimes) {
    const fs::path scratch = keltest::MakeScratchFolder("sampler");
    const fs::path kept = fs::path(KEL_TEST_BINARY_DIR) / "artifacts";
    fs::create_directories(kept);
    for (double scale : {1.0, 2.0}) {
        const fs::path file = RenderSampler(scale, scratch);
        ASSERT_TRUE(fs::exists(file));
        fs::copy_file(file, kept / file.filename(), fs::copy_options::overwrite_existing);
        std::cout << "theme sampler: " << (kept / file.filename()).string() << "\n";
    }
    cairo_surface_t* one =
        cairo_image_surface_create_from_png((scratch / "theme-sampler@1x.png").c_str());
    cairo_surface_t* two =
        cairo_image_surface_create_from_png((scratch / "theme-sampler@2x.png").c_str());
    ASSERT_EQ(cairo_image_surface_get_width(two), 2 * cairo_image_surface_get_width(one));
    for (const char* name : {"_internal_scope-select-mid", "_internal_info-press-left",
                             "_internal_mb_eject_click", "_internal_GreySelection"}) {
        BGImageRef image = BundleImage(name);
        EXPECT_NE(image, nullptr) << name;
        BGImageRelease(image);
    }
    // The default button's face is at the same place in both.
    EXPECT_EQ(keltest::PixelAt(one, 125, 28), keltest::PixelAt(two, 250, 56));
    cairo_surface_destroy(one);
    cairo_surface_destroy(two);
}

} // namespace
