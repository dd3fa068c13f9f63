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

constexpr const char* kMessage = "The file \u201Creport.txt\u201D is locked.";

// An alert of that type with kMessage, shown at that scale.
class ShownAlert {
public:
    ShownAlert(AlertType type, double scale, OptionBits flags = 0) {
        HeadlessDriver::SetScale(scale);
        StringHolder message(MakeBCString(u"The file \u201Creport.txt\u201D is locked."));
        AlertStdBCStringAlertParamRec param;
        GetStandardAlertDefaultParams(&param, kStdAlertVersionOne);
        param.flags = flags;
        EXPECT_EQ(CreateStandardAlert(type, message.get(), nullptr, &param, &alert), noErr);
        ShowWindow(GetDialogWindow(alert));
    }
    ~ShownAlert() {
        DisposeWindow(GetDialogWindow(alert));
        HeadlessDriver::SetScale(1);
    }
    ShownAlert(const ShownAlert&) = delete;
    ShownAlert& operator=(const ShownAlert&) = delete;

    // The colour at a point of the content, in points.
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

    // Where the message begins, -1 when it isn't shown.
    double MessageLeft() const {
        BGRect box{};
        return HeadlessDriver::FindShownText(GetDialogWindow(alert), kMessage,
                                             BGRectMake(0, 0, 440, 60), &box)
                   ? box.origin.x
                   : -1;
    }

    DialogRef alert = nullptr;
};

bool Near(Color a, Color b, int tolerance = 24) {
    return std::abs(a.red - b.red) < tolerance && std::abs(a.green - b.green) < tolerance &&
           std::abs(a.blue - b.blue) < tolerance;
}

// The icon's square: 48 points inside the 20-point margin; the text starts beyond it.
constexpr double kIconLeft = 20;
constexpr double kIconTop = 20;
constexpr double kIconSide = 48;
constexpr double kTextBesideIcon = kIconLeft + kIconSide;

} // namespace

TEST(AlertIcon, TheThemesCautionIconIsDrawnBesideTheTextAtBothScales) {
    for (double scale : {1.0, 2.0}) {
        ShownAlert caution(kAlertCautionAlert, scale);
        EXPECT_TRUE(Near(caution.At(kIconLeft + 2, kIconTop + 2), kMagenta)) << scale;
        EXPECT_TRUE(Near(caution.At(kIconLeft + kIconSide - 2, kIconTop + kIconSide - 2), kMagenta))
            << scale;
        EXPECT_GT(caution.MessageLeft(), kTextBesideIcon) << scale;
    }
}

TEST(AlertIcon, AnAlertMayAskForTheCautionIconWhateverItsType) {
    for (AlertType type : {kAlertStopAlert, kAlertNoteAlert}) {
        ShownAlert asked(type, 2, kStdAlertCautionIcon);
        EXPECT_TRUE(Near(asked.At(kIconLeft + 2, kIconTop + 2), kMagenta)) << type;
        ShownAlert own(type, 2);
        EXPECT_FALSE(Near(own.At(kIconLeft + 2, kIconTop + 2), kMagenta)) << type;
    }
}

TEST(AlertIcon, WithoutASharpThemePictureTheIconIsDrawnAndAPlainAlertHasNone) {
    // No theme has dialog-error: the drawn stop sign, red at its top.
    ShownAlert stop(kAlertStopAlert, 2);
    EXPECT_TRUE(
        Near(stop.At(kIconLeft + kIconSide / 2, kIconTop + kIconSide * 0.15), {217, 58, 54}, 60));
    HeadlessDriver::WritePNG(GetDialogWindow(stop.alert), KEL_TEST_BINARY_DIR "/alert-stop@2x.png");
    // dialog-information is there at 24 pixels only, too small for 48: drawn, not blown up.
    ShownAlert note(kAlertNoteAlert, 1);
    EXPECT_TRUE(
        Near(note.At(kIconLeft + kIconSide / 2, kIconTop + kIconSide * 0.85), {58, 123, 213}, 60));
    ShownAlert plain(kAlertPlainAlert, 1);
    EXPECT_GE(plain.MessageLeft(), 0);
    EXPECT_LT(plain.MessageLeft(), kIconLeft + 4);
}
