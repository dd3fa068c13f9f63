#include "basalt/types/MimeDatabase.h"

#include "tests/support/TestEnvironment.h"

#include <algorithm>
#include <fstream>
#include <gio/gio.h>
#include <gtest/gtest.h>

using basalt::types::MimeDatabase;

namespace {

// A small database of our own, so the rules are tested apart from the system's data.
MimeDatabase MakeDatabase() {
    auto dir = keltest::MakeScratchFolder("mime");
    // Case-sensitive globs come with an unflagged copy for older readers, before their
    // lower-case counterparts.
    keltest::WriteFile(dir / "globs2", "# header\n"
                                       "50:text/x-c++src:*.C:cs\n"
                                       "50:text/x-c++src:*.C\n"
                                       "50:text/x-csrc:*.c:cs\n"
                                       "50:text/x-csrc:*.c\n"
                                       "50:application/x-core:core:cs\n"
                                       "50:application/x-core:core\n"
                                       "80:text/x-heavy:*.gz.part\n"
                                       "90:application/x-part:*.part*\n"
                                       "50:application/x-gone:__NOGLOBS__\n"
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
    EXPECT_EQ(db.TypeForName("core"), "application/x-core");
    EXPECT_EQ(db.TypeForName("CORE"), "application/octet-stream") << "case-sensitive name";
    EXPECT_EQ(db.TypeForName("MAIN.C"), "text/x-c++src");
    EXPECT_EQ(db.TypeForName("MAIN.c"), "text/x-csrc");
    EXPECT_EQ(db.TypeForName("noextension"), "application/octet-stream");
    EXPECT_EQ(db.TypeForName("a.unknownextension"), "application/octet-stream");
    EXPECT_EQ(db.TypeForName(".png"), "image/png");
    EXPECT_EQ(db.TypeForName("A.GZ.PART"), "text/x-heavy") << "a suffix beats a heavier pattern";
    EXPECT_EQ(db.TypeForName("a.part1"), "application/x-part");
}

// A folder earlier in the search path ranks higher and can take a type's globs away.
TEST(MimeDatabaseTest, EarlierFoldersRankHigherAndClearGlobs) {
    auto user = keltest::MakeScratchFolder("mime-user");
    auto system = keltest::MakeScratchFolder("mime-system");
    keltest::WriteFile(user / "globs2", "50:application/x-gone:__NOGLOBS__\n"
                                        "50:text/x-mine:*.mine\n"
                                        "50:application/x-gone:*.kept\n");
    keltest::WriteFile(system / "globs2", "50:application/x-gone:*.gone\n"
                                          "50:text/x-theirs:*.mine\n");
    MimeDatabase db({user.string(), system.string()});
    EXPECT_EQ(db.TypeForName("a.gone"), "application/octet-stream");
    EXPECT_EQ(db.TypeForName("a.kept"), "application/x-gone");
    EXPECT_EQ(db.TypeForName("a.mine"), "text/x-mine");
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

// A file name that the glob matches: wildcards become "x", a set its first member.
std::string SampleName(const std::string& glob) {
    std::string name;
    for (size_t i = 0; i < glob.size(); ++i) {
        if (glob[i] == '*' || glob[i] == '?') {
            name += 'x';
        } else if (glob[i] == '[' && glob.find(']', i + 2) != std::string::npos) {
            name += glob[i + 1];
            i = glob.find(']', i + 2);
        } else {
            name += glob[i];
        }
    }
    return name;
}

std::string GLibGuess(const std::string& name) {
    gchar* guess = g_content_type_guess(name.c_str(), nullptr, 0, nullptr);
    std::string type = guess;
    g_free(guess);
    return type;
}

std::string Cased(std::string text, int (*change)(int)) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [change](unsigned char c) { return static_cast<char>(change(c)); });
    return text;
}

// Other applications type files by GLib's reading of the same globs; a file must get the
// same type here, in the glob's own case and in upper and lower case.
TEST(MimeDatabaseTest, AgreesWithGLibOnEveryGlobOfTheSystem) {
    std::ifstream globs("/usr/share/mime/globs2");
    ASSERT_TRUE(globs.is_open());
    size_t checked = 0;
    std::vector<std::string> disagreements;
    for (std::string line; std::getline(globs, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        size_t first = line.find(':');
        size_t second = line.find(':', first + 1);
        std::string glob = line.substr(second + 1, line.find(':', second + 1) - second - 1);
        std::string sample = SampleName(glob);
        for (const std::string& name :
             {sample, Cased(sample, ::toupper), Cased(sample, ::tolower)}) {
            std::string ours = MimeDatabase::Shared().TypeForName(name);
            std::string theirs = GLibGuess(name);
            ++checked;
            if (ours != theirs)
                disagreements.push_back(name + ": " + ours + " / " + theirs);
        }
    }
    EXPECT_GT(checked, 1000u);
    EXPECT_TRUE(disagreements.empty())
        << disagreements.size() << " of " << checked << ", e.g. " << disagreements.front();
    for (const std::string& disagreement : disagreements)
        ADD_FAILURE() << disagreement;
}

} // namespace
