#include "kel/nodes/NameCompletion.h"

#include "KelNodeTesting.h"
#include "kel/nodes/TNodePathHelper.h"
#include "tests/support/TestEnvironment.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace kelnodetest;
namespace fs = std::filesystem;

namespace {

class NameCompletionTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(TKelNode::InitializeCatalog(), noErr);
        folder = keltest::MakeScratchFolder("complete");
        fs::create_directory(folder / "Projects");
        fs::create_directory(folder / "alpha1");
        fs::create_directory(folder / "alpha2");
        keltest::WriteFile(folder / "report.txt", "x");
    }

    // The completion of text, or "<none>"; text is updated as the caller's would be.
    std::u16string Complete(std::u16string& text, bool* exact = nullptr,
                            const TKelNode& base = TKelNode()) {
        TUniString typed = Text(text);
        TUniString completion;
        bool exactCase = true;
        bool completed = CompleteString(base, typed, completion, exactCase);
        text = Chars(typed);
        if (exact != nullptr) {
            *exact = exactCase;
        }
        return completed ? Chars(completion) : u"<none>";
    }

    fs::path folder;
};

TEST_F(NameCompletionTest, CompletesTheFirstFolderThatBeginsWithTheLastSegment) {
    std::u16string text = PathText(folder / "Proj");
    bool exact = false;
    EXPECT_EQ(Complete(text, &exact), u"ects/");
    EXPECT_TRUE(exact);
    text = PathText(folder / "alp");
    EXPECT_EQ(Complete(text), u"ha1/") << "the first in the service's order wins";
    text = PathText(folder / "rep");
    EXPECT_EQ(Complete(text), u"<none>") << "files are never offered";
    text = PathText(folder / "Projects") + u"/";
    EXPECT_EQ(Complete(text), u"<none>") << "nothing is left to add";
    text = PathText(folder / "nowhere" / "x");
    EXPECT_EQ(Complete(text), u"<none>");
}

TEST_F(NameCompletionTest, ACaseDifferentPrefixTakesTheFoldersCase) {
    std::u16string text = PathText(folder / "pro");
    bool exact = true;
    EXPECT_EQ(Complete(text, &exact), u"jects/");
    EXPECT_FALSE(exact);
    EXPECT_EQ(text, PathText(folder / "Pro")) << "the typed text now has the folder's case";
}

TEST_F(NameCompletionTest, SlashTildeAndRelativeTextsFindTheirStart) {
    TKelNode found;
    bool exact = false;
    EXPECT_EQ(CompleteNode(TKelNode(), Text(u"/"), false, found, exact), 0u);
    EXPECT_TRUE(found.IsRoot());
    EXPECT_EQ(CompleteNode(TKelNode(), Text(u"~"), false, found, exact), 0u);
    EXPECT_EQ(found, NodeAt(keltest::ScratchHome()));
    std::u16string tilde = u"~";
    EXPECT_EQ(Complete(tilde), u"<none>");

    fs::create_directory(keltest::ScratchHome() / "Documents");
    std::u16string home = u"~/Doc";
    EXPECT_EQ(Complete(home), u"uments/");
    std::u16string relative = u"Proj";
    EXPECT_EQ(Complete(relative, nullptr, NodeAt(folder)), u"ects/");
}

TEST_F(NameCompletionTest, NetworkIsOfferedAtTheTopAndTheBootLevel) {
    TKelNode network(TKelNode::GetNetworkNodeRef(), true);
    TKelNode found;
    bool exact = false;
    TKelNode root(TKelNode::GetRootNodeRef(), true);
    EXPECT_EQ(CompleteNode(root, Text(u"Netw"), false, found, exact), 4u);
    EXPECT_EQ(found, network);
    std::u16string text = u"/Netw";
    EXPECT_EQ(Complete(text, nullptr, TKelNode::GetBootNode()), u"ork/");
}

TEST_F(NameCompletionTest, VolumesAreOfferedAtTheTop) {
    std::u16string bootName = Property(TKelNode::GetBootNode(), "dnam");
    ASSERT_GE(bootName.size(), 2u);
    size_t typed = std::min<size_t>(3, bootName.size() - 1);
    std::u16string text = u"/" + bootName.substr(0, typed);
    EXPECT_EQ(Complete(text), bootName.substr(typed) + u"/");
}

// A name that is not UTF-8 shows legibly ("caf\xE9" as "café"); the completed text must lead
// back to that folder.
TEST_F(NameCompletionTest, CompletedTextLeadsBackToANameThatIsNotUtf8) {
    fs::create_directory(folder / "caf\xE9 dir");
    std::u16string text = PathText(folder / "caf");
    std::u16string completion = Complete(text);
    EXPECT_EQ(completion, u"\u00E9 dir/");
    std::u16string whole = text + completion;
    TNodePathHelper helper(TStringRef(BCStringCreateWithCharacters(
                                          nullptr, reinterpret_cast<const UniChar*>(whole.data()),
                                          BCIndex(whole.size())),
                                      false)
                               .AsBCStringRef());
    ASSERT_TRUE(helper.IsComplete());
    EXPECT_EQ(helper.NodePath().back(), NodeAt(folder / "caf\xE9 dir"));
}

} // namespace
