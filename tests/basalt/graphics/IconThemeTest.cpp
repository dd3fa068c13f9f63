#include "basalt/graphics/IconTheme.h"

#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using basalt::graphics::IconThemeSet;

// A small theme "Slate" (16, 48 and a scalable folder) that inherits "Base" (32).
class IconThemeTest : public ::testing::Test {
protected:
    void SetUp() override {
        icons = keltest::MakeScratchFolder("theme") / "icons";
        keltest::WriteFile(icons / "Slate/index.theme", "[Icon Theme]\nName=Slate\n"
                                                        "Inherits=Base\n"
                                                        "Directories=16/places,48/places,sc\n"
                                                        "[16/places]\nSize=16\nType=Fixed\n"
                                                        "[48/places]\nSize=48\nType=Fixed\n"
                                                        "[sc]\nSize=16\nMinSize=8\n"
                                                        "MaxSize=24\nType=Scalable\n");
        keltest::WriteFile(icons / "Base/index.theme",
                           "[Icon Theme]\nDirectories=32\n[32]\nSize=32\nType=Threshold\n");
        for (const char* file : {"Slate/16/places/folder.png", "Slate/48/places/folder.png",
                                 "Slate/sc/star.svg", "Base/32/disk.png", "Base/32/folder.png"})
            keltest::WriteFile(icons / file, "x");
        keltest::WriteFile(icons.parent_path() / "pixmaps/legacy.png", "x");
    }

    std::string Found(IconThemeSet& themes, const std::string& name, int size) {
        const auto path = themes.Find(name, size);
        return path ? fs::relative(*path, icons.parent_path()).string() : "none";
    }

    fs::path icons;
};

TEST_F(IconThemeTest, ExactSizesWinThenTheNextLargerThenTheLargestSmaller) {
    IconThemeSet themes({icons}, {"Slate"});
    EXPECT_EQ(Found(themes, "folder", 16), "icons/Slate/16/places/folder.png");
    EXPECT_EQ(Found(themes, "folder", 24), "icons/Slate/48/places/folder.png");
    EXPECT_EQ(Found(themes, "folder", 128), "icons/Slate/48/places/folder.png");
    EXPECT_EQ(Found(themes, "star", 20), "icons/Slate/sc/star.svg");
}

TEST_F(IconThemeTest, InheritedThemesThenPixmapsAreSearchedInOrder) {
    IconThemeSet themes({icons}, {"Slate"});
    EXPECT_EQ(Found(themes, "disk", 48), "icons/Base/32/disk.png");
    EXPECT_EQ(Found(themes, "legacy", 16), "pixmaps/legacy.png");
    EXPECT_EQ(Found(themes, "missing", 16), "none");
    EXPECT_EQ(Found(themes, "../Base/32/disk", 16), "none");
}

TEST_F(IconThemeTest, MissingThemesAreSkipped) {
    IconThemeSet themes({icons / "nowhere", icons}, {"Absent", "Base"});
    EXPECT_EQ(Found(themes, "folder", 32), "icons/Base/32/folder.png");
}

} // namespace
