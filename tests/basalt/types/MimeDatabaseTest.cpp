#include "basalt/types/MimeDatabase.h"

#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

using basalt::types::MimeDatabase;

namespace {

// A small database of our own, so the rules are tested apart from the system's data.
MimeDatabase MakeDatabase() {
    auto dir = keltest::MakeScratchFolder("mime");
    keltest::WriteFile(dir / "globs2", "# header\n"
                                       "50:text/x-csrc:*.c:cs\n"
                                       "50:text/x-c++src:*.C:cs\n"
                                       "50:application/gzip:*.gz\n"
                                       "60:application/x-compressed-tar:*.tar.gz\n"
                                       "50:text/x-readme:README*\n"
                                       "50:text/x-makefile:makefile\n"
                                       "40:image/png:*.png\n");
    keltest::WriteFile(dir / "subclasses", "text/x-csrc text/plain\n"
                                           "application/x-compressed-tar application/gzip\n");
    keltest::WriteFile(dir / "aliases", "image/x-png image/png\n");
    keltest::WriteFile(dir / "generic-icons", "application/gzip:package-x-generic\n");
    keltest::WriteFile(dir / "image/png.xml",
                       "<mime-type type=\"image/png\">\n  <comment>PNG image</comment>\n"
                       "  <comment xml:lang=\"de\">PNG-Bild</comment>\n</mime-type>\n");
    return MimeDatabase({dir.string()});
}

TEST(MimeDatabaseTest, NamesMatchByLiteralLongestExtensionCaseAndPattern) {
    MimeDatabase db = MakeDatabase();
    EXPECT_EQ(db.TypeForName("main.c"), "text/x-csrc");
    EXPECT_EQ(db.TypeForName("main.C"), "text/x-c++src") << "case-sensitive glob";
    EXPECT_EQ(db.TypeForName("PHOTO.PNG"), "image/png") << "others ignore case";
    EXPECT_EQ(db.TypeForName("a.tar.gz"), "application/x-compressed-tar");
    EXPECT_EQ(db.TypeForName("a.gz"), "application/gzip");
    EXPECT_EQ(db.TypeForName("README.md"), "text/x-readme");
    EXPECT_EQ(db.TypeForName("Makefile"), "text/x-makefile");
    EXPECT_EQ(db.TypeForName("noextension"), "");
    EXPECT_EQ(db.TypeForName(".png"), "image/png");
}

TEST(MimeDatabaseTest, ConformanceFollowsSubclassesAliasesAndImplicitParents) {
    MimeDatabase db = MakeDatabase();
    EXPECT_TRUE(db.ConformsTo("text/x-csrc", "text/plain"));
    EXPECT_TRUE(db.ConformsTo("text/x-readme", "text/plain")) << "every text is plain text";
    EXPECT_TRUE(db.ConformsTo("application/x-compressed-tar", "application/octet-stream"));
    EXPECT_TRUE(db.ConformsTo("image/x-png", "image/png"));
    EXPECT_FALSE(db.ConformsTo("text/plain", "text/x-csrc"));
    EXPECT_FALSE(db.ConformsTo("inode/directory", "application/octet-stream"));
}

TEST(MimeDatabaseTest, CommentsIconsAndExtensions) {
    MimeDatabase db = MakeDatabase();
    EXPECT_EQ(db.Comment("image/x-png"), "PNG image");
    EXPECT_EQ(db.Comment("text/x-csrc"), "");
    EXPECT_EQ(db.GenericIcon("application/x-compressed-tar"), "application-x-generic");
    EXPECT_EQ(db.GenericIcon("application/gzip"), "package-x-generic");
    EXPECT_EQ(db.PreferredExtension("image/png"), "png");
}

TEST(MimeDatabaseTest, SystemDatabaseIsRead) {
    MimeDatabase& db = MimeDatabase::Shared();
    EXPECT_EQ(db.TypeForName("notes.txt"), "text/plain");
    EXPECT_EQ(db.TypeForName("photo.JPG"), "image/jpeg");
    EXPECT_FALSE(db.Comment("text/plain").empty());
}

} // namespace
