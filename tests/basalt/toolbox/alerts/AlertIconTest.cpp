// The icon of a standard alert, over icon themes of this test's own: a theme's picture where it
// has a sharp one, at 1x and 2x; the drawn icon where it has none or only one too small to
// blow up; no icon on a plain alert, with the text moved to the left.
//
// This program has a tree of its own as XDG_DATA_DIRS, set before any test looks an icon up:
// "hicolor" holds dialog-warning, solid magenta, at 48 and 96 pixels, and dialog-information,
// solid green, at 24 only; nothing has dialog-error.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/toolbox/backend/Backend.h"
#include "basalt/toolbox/views/UnicodeText.h"
#include "basalt/toolbox/windows/Window.h"

#include <cairo.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>

using basalt::headless::HeadlessDriver;
using namespace basalt::toolbox;

namespace {

namespace fs = std::filesystem;

struct Color {
    int red, green, blue;
};

constexpr Color kMagenta{255, 0, 255};
constexpr Color kGreen{0, 200, 0};

void WriteSolidPNG(const fs::path& path, int size, Color color) {
    fs::create_directories(path.parent_path());
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, size, size);
    cairo_t* cr = cairo_create(surface);
    cairo_set_source_rgb(cr, color.red / 255.0, color.green / 255.0, color.blue / 255.0);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_write_to_png(surface, path.c_str());
    cairo_surface_destroy(surface);
}

fs::path SystemMimeDatabase() {
    const char* dirs = std::getenv("XDG_DATA_DIRS");
    std::stringstream stream(dirs != nullptr && *dirs != '\0' ? dirs
                                                              : "/usr/local/share:/usr/share");
    for (std::string dir; std::getline(stream, dir, ':');)
        if (fs::exists(fs::path(dir) / "mime/mime.cache"))
            return fs::path(dir) / "mime";
    return "/usr/share/mime";
}

class IconThemesOfOurOwn : public ::testing::Environment {
public:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "kel-icons-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("cannot make a folder for the icon themes");
        root = pattern;
        const fs::path hicolor = root / "icons/hicolor";
        fs::create_directories(hicolor);
        std::ofstream(hicolor / "index.theme")
            << "[Icon Theme]\nName=Hicolor\nDirectories=24/status,48/status,96/status\n"
               "[24/status]\nSize=24\nType=Fixed\n[48/status]\nSize=48\nType=Fixed\n"
               "[96/status]\nSize=96\nType=Fixed\n";
        WriteSolidPNG(hicolor / "48/status/dialog-warning.png", 48, kMagenta);
        WriteSolidPNG(hicolor / "96/status/dialog-warning.png", 96, kMagenta);
        WriteSolidPNG(hicolor / "24/status/dialog-information.png", 24, kGreen);
        // The image loaders tell formats apart by the MIME database, which lives beside the
        // icons: keep the system's.
        fs::create_directory_symlink(SystemMimeDatabase(), root / "mime");
        setenv("XDG_DATA_DIRS", root.c_str(), 1);
    }
    void TearDown() override {
        std::error_code ignored;
        fs::remove_all(root, ignored);
    }

private:
    fs::path root;
};

[[maybe_unused]] ::testing::Environment* const kThemes =
    ::testing::AddGlobalTestEnvironment(new IconThemesOfOurOwn);

// An alert of that type, drawn at that scale; the colour of the point (in points) of its content.
class DrawnAlert {
public:
    DrawnAlert(AlertType type, double scale) {
        HeadlessDriver::SetScale(scale);
        StringHolder message(MakeBCString(u"The file \u201Creport.txt\u201D is locked."));
        EXPECT_EQ(CreateStandardAlert(type, message.get(), nullptr, nullptr, &alert), noErr);
        ShowWindow(GetDialogWindow(alert));
    }
    ~DrawnAlert() {
        DisposeWindow(GetDialogWindow(alert));
        HeadlessDriver::SetScale(1);
    }
    DrawnAlert(const DrawnAlert&) = delete;
    DrawnAlert& operator=(const DrawnAlert&) = delete;

    Color At(double x, double y) const {
        auto* window = Window::From(GetDialogWindow(alert));
        window->Invalidate();
        window->Flush();
        cairo_surface_t* surface = window->Surface()->Surface();
        const double scale = window->Surface()->Scale();
        cairo_surface_flush(surface);
        const auto* row = cairo_image_surface_get_data(surface) +
                          int(y * scale) * cairo_image_surface_get_stride(surface);
        const uint32_t pixel = reinterpret_cast<const uint32_t*>(row)[int(x * scale)];
        return {int(pixel >> 16 & 0xFF), int(pixel >> 8 & 0xFF), int(pixel & 0xFF)};
    }

    // Whether the message is drawn to the right of the icon's column.
    bool MessageBesideTheIcon() const {
        BGRect box{};
        return HeadlessDriver::FindShownText(GetDialogWindow(alert),
                                             "The file \u201Creport.txt\u201D is locked.",
                                             BGRectMake(80, 0, 400, 60), &box) &&
               box.origin.x >= 80;
    }

    DialogRef alert = nullptr;
};

bool Near(Color a, Color b) {
    return std::abs(a.red - b.red) < 24 && std::abs(a.green - b.green) < 24 &&
           std::abs(a.blue - b.blue) < 24;
}

bool Reddish(Color c) {
    return c.red > 160 && c.green < 110 && c.blue < 110;
}

bool Bluish(Color c) {
    return c.blue > 150 && c.red < 110;
}

// The icon's square: 48 points at the top left, inside the 20-point margin.
constexpr double kIconLeft = 20;
constexpr double kIconTop = 20;
constexpr double kIconSide = 48;

} // namespace

TEST(AlertIcon, TheThemesCautionIconIsDrawnBesideTheTextAtBothScales) {
    for (double scale : {1.0, 2.0}) {
        DrawnAlert caution(kAlertCautionAlert, scale);
        EXPECT_TRUE(Near(caution.At(kIconLeft + 2, kIconTop + 2), kMagenta)) << scale;
        EXPECT_TRUE(Near(caution.At(kIconLeft + kIconSide - 2, kIconTop + kIconSide - 2), kMagenta))
            << scale;
        EXPECT_TRUE(caution.MessageBesideTheIcon()) << scale;
        if (scale == 2)
            HeadlessDriver::WritePNG(GetDialogWindow(caution.alert),
                                     KEL_TEST_BINARY_DIR "/alert-theme-icon@2x.png");
    }
}

TEST(AlertIcon, WithoutASharpThemePictureTheIconIsDrawn) {
    // No theme has dialog-error: the drawn stop sign, red at its top.
    DrawnAlert stop(kAlertStopAlert, 2);
    EXPECT_TRUE(Reddish(stop.At(kIconLeft + kIconSide / 2, kIconTop + kIconSide * 0.15)));
    EXPECT_TRUE(stop.MessageBesideTheIcon());
    HeadlessDriver::WritePNG(GetDialogWindow(stop.alert), KEL_TEST_BINARY_DIR "/alert-stop@2x.png");
    // dialog-information is there at 24 pixels only, too small for 48: drawn, not blown up.
    DrawnAlert note(kAlertNoteAlert, 1);
    const Color bottom = note.At(kIconLeft + kIconSide / 2, kIconTop + kIconSide * 0.85);
    EXPECT_TRUE(Bluish(bottom));
    EXPECT_FALSE(Near(bottom, kGreen));
}

TEST(AlertIcon, APlainAlertHasNoIconAndItsTextStartsAtTheMargin) {
    DrawnAlert plain(kAlertPlainAlert, 1);
    BGRect box{};
    EXPECT_TRUE(HeadlessDriver::FindShownText(GetDialogWindow(plain.alert),
                                              "The file \u201Creport.txt\u201D is locked.",
                                              BGRectMake(0, 0, 440, 60), &box));
    EXPECT_LT(box.origin.x, kIconLeft + 4);
    const Color corner = plain.At(kIconLeft + 2, kIconTop + kIconSide - 2);
    EXPECT_FALSE(Near(corner, kMagenta) || Reddish(corner) || Bluish(corner));
}
