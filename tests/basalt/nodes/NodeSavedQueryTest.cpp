#include "QueryTestSupport.h"

#include <gtest/gtest.h>

using namespace querytest;
namespace fs = std::filesystem;

namespace {

class NodeSavedQueryTest : public ::testing::Test {
protected:
    void SetUp() override { root_ = keltest::MakeScratchFolder("saved"); }

    // Reads the saved search written with text; the dictionary, or null with the status.
    BCDictionaryRef Read(const std::string& name, const std::string& text, StatusCode& status) {
        keltest::WriteFile(root_ / name, text);
        Held node = nodetest::NodeAt(root_ / name);
        BCDictionaryRef dictionary = nullptr;
        status = NodeCopyQueryDictionaries(node.get(), &dictionary, 0);
        return dictionary;
    }

    fs::path root_;
};

TEST_F(NodeSavedQueryTest, ReadsTheQueryAndTheScope) {
    StatusCode status = 0;
    BCDictionaryRef saved =
        Read("Reports.kelsearch",
             R"j({"query": "(kBMItemDisplayName == \"rep*\"cdw)", "scope": ["/srv", "/home/ann"],
            "comment": "members this reader does not know are ignored"})j",
             status);
    ASSERT_EQ(status, noErr);
    ASSERT_NE(saved, nullptr);
    auto query = static_cast<BCStringRef>(BCDictionaryGetValue(saved, kNodeQueryStringKey));
    EXPECT_EQ(basalt::types::Utf8(query), "(kBMItemDisplayName == \"rep*\"cdw)");
    auto scope = static_cast<BCArrayRef>(BCDictionaryGetValue(saved, kNodeQueryScopeArrayKey));
    ASSERT_NE(scope, nullptr);
    ASSERT_EQ(BCArrayGetCount(scope), 2);
    EXPECT_EQ(basalt::types::Utf8(static_cast<BCStringRef>(BCArrayGetValueAtIndex(scope, 1))),
              "/home/ann");
    BCRelease(saved);
}

TEST_F(NodeSavedQueryTest, ASearchWithoutScopeRunsEverywhere) {
    StatusCode status = 0;
    BCDictionaryRef saved = Read("All.KELSEARCH", R"({"query": "true", "scope": null})", status);
    ASSERT_EQ(status, noErr);
    EXPECT_FALSE(BCDictionaryContainsKey(saved, kNodeQueryScopeArrayKey));
    BCRelease(saved);
}

TEST_F(NodeSavedQueryTest, RefusesFilesThatAreNoSavedSearch) {
    struct Case {
        const char* name;
        const char* text;
    };
    for (Case c :
         {Case{"plain.json", R"({"query": "true"})"},
          Case{"broken.kelsearch", R"({"query": "true")"}, Case{"list.kelsearch", R"(["query"])"},
          Case{"noquery.kelsearch", R"({"scope": ["/srv"]})"},
          Case{"number.kelsearch", R"({"query": 7})"},
          Case{"scope.kelsearch", R"({"query": "true", "scope": "/srv"})"},
          Case{"relative.kelsearch", R"({"query": "true", "scope": ["srv"]})"},
          Case{"mixed.kelsearch", R"({"query": "true", "scope": ["/srv", 3]})"}}) {
        StatusCode status = 0;
        BCDictionaryRef saved = Read(c.name, c.text, status);
        EXPECT_EQ(status, kNodeNotSavedQueryErr) << c.name;
        EXPECT_EQ(saved, nullptr) << c.name;
    }
    fs::create_directory(root_ / "folder.kelsearch");
    Held folder = nodetest::NodeAt(root_ / "folder.kelsearch");
    EXPECT_FALSE(NodeIsSavedQuery(folder.get()));
    BCDictionaryRef none = nullptr;
    EXPECT_EQ(NodeCopyQueryDictionaries(folder.get(), &none, 0), kNodeNotSavedQueryErr);
}

TEST_F(NodeSavedQueryTest, RefusesAFileTooLargeToBeASearch) {
    StatusCode status = 0;
    std::string padding(2 << 20, ' ');
    BCDictionaryRef saved = Read("huge.kelsearch", R"({"query": "true"})" + padding, status);
    EXPECT_EQ(status, kNodeNotSavedQueryErr);
    EXPECT_EQ(saved, nullptr);
}

} // namespace
