#include "kel/nodes/TKelNodeQuery.h"

#include "KelNodeTesting.h"
#include "basalt/nodes/NodeIterator.h"
#include "basalt/nodes/NodeQueries.h"
#include "basalt/nodes/NodeQueryState.h"
#include "basalt/types/BUTypes.h"
#include "tests/support/TestEnvironment.h"
#include "tests/support/WaitUntil.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>

using namespace kelnodetest;
namespace fs = std::filesystem;

namespace {

constexpr const char* kAllExclusions = " && (kBMItemContentType != com.velmo.mail.msgx)"
                                       " && (kBMItemContentType != public.vcard)"
                                       " && (kBMItemContentType != com.velmo.contacts.person)"
                                       " && (kBMItemContentType != com.velmo.parley.parley)";

class Strings {
public:
    ~Strings() {
        for (BCTypeRef object : made_)
            BCRelease(object);
    }
    BCStringRef Text(const std::string& text) { return Keep(basalt::types::MakeString(text)); }
    BCArrayRef Array(const std::vector<std::string>& items) {
        BCMutableArrayRef array = BCArrayCreateMutable(nullptr, 0, &kBCTypeArrayCallBacks);
        for (const std::string& item : items)
            BCArrayAppendValue(array, Text(item));
        return static_cast<BCArrayRef>(Keep(array));
    }
    template <typename T>
    T Keep(T object) {
        made_.push_back(object);
        return object;
    }

private:
    std::vector<BCTypeRef> made_;
};

std::string QueryFor(const char* typed, BCArrayRef types) {
    Strings strings;
    BCStringRef query = CreateSearchQueryString(typed ? strings.Text(typed) : nullptr, types);
    std::string text = basalt::types::Utf8(query);
    BCRelease(query);
    return text;
}

TEST(SearchQueryStringTest, FollowsTheTypedWordsWithTheTypeRestrictionAndTheExclusions) {
    Strings strings;
    const std::string words = "((kBMItemDisplayName == \"rep*\"cdw))";
    EXPECT_EQ(QueryFor("rep", nullptr), words + kAllExclusions);
    EXPECT_EQ(QueryFor("rep", strings.Array({})),
              words + " && ( kBMItemContentTypeTree == public.folder)" + kAllExclusions);
    EXPECT_EQ(QueryFor("rep", strings.Array({"text/plain"})),
              words +
                  " && (kBMItemContentTypeTree == text/plain || kBMItemContentType == text/plain"
                  " ||  kBMItemContentTypeTree == public.folder)" +
                  kAllExclusions);
}

TEST(SearchQueryStringTest, ATypeTheClientNamesIsNoLongerExcluded) {
    Strings strings;
    std::string query = QueryFor("rep", strings.Array({"public.vcard"}));
    EXPECT_EQ(query.find("!= public.vcard"), std::string::npos);
    for (const char* kept :
         {"!= com.velmo.mail.msgx", "!= com.velmo.contacts.person", "!= com.velmo.parley.parley"})
        EXPECT_NE(query.find(kept), std::string::npos) << kept;
}

TEST(SearchQueryStringTest, TextWithNothingToSearchForFindsNothing) {
    Strings strings;
    EXPECT_EQ(QueryFor("", nullptr), "false");
    EXPECT_EQ(QueryFor("   ", strings.Array({"text/plain"})), "false");
    EXPECT_EQ(QueryFor(nullptr, nullptr), "false");
}

// Searches on a real tree through TKelNode.
class PerformQueryTest : public ::testing::Test {
protected:
    void SetUp() override { root_ = keltest::MakeScratchFolder("perform"); }
    void TearDown() override {
        holder_ = TKelNode();
        EXPECT_TRUE(keltest::WaitUntil([] { return basalt::nodes::RunningQueryWalks() == 0; }));
    }

    std::vector<std::u16string> Hits(const TKelNode& hits) {
        EXPECT_TRUE(
            keltest::WaitUntil([&] { return !NodeQueryIsGathering(holder_.PeekNodeRef()); }));
        std::vector<std::u16string> names;
        NodeIteratorRef iterator = nullptr;
        if (NewNodeIterator(hits.PeekNodeRef(), &iterator, 0, false) != noErr)
            return names;
        for (NodeRef hit = NodeIteratorFirst(iterator); hit != nullptr;
             hit = NodeIteratorNext(iterator))
            names.push_back(Property(TKelNode(hit, false), "dnam"));
        DisposeNodeIterator(iterator);
        return names;
    }

    fs::path root_;
    TKelNode holder_;
    Strings strings_;
};

TEST_F(PerformQueryTest, TheFirstSearchMakesTheQueryNodeAndLaterOnesRenewIt) {
    keltest::WriteFile(root_ / "b/beta report.txt", "x");
    keltest::WriteFile(root_ / "Alpha report.txt", "x");
    keltest::WriteFile(root_ / "other.txt", "x");
    TKelNode scope = NodeAt(root_);
    TKelNode hits =
        holder_.PerformQuery(strings_.Text("report"), NodeCode("dnam"), true, scope, nullptr);
    ASSERT_TRUE(NodeIsQuery(holder_.PeekNodeRef()));
    EXPECT_TRUE(NodeIsQueryHitsContainer(hits.PeekNodeRef()));
    EXPECT_EQ(hits.savedQueryRef, nullptr);
    EXPECT_EQ(Hits(hits), (std::vector<std::u16string>{u"Alpha report.txt", u"beta report.txt"}));
    EXPECT_EQ(Property(hits, "dnam"), u"report");

    OpaqueNodeRef* first = holder_.PeekNodeRef();
    TKelNode again =
        holder_.PerformQuery(strings_.Text("report"), NodeCode("dnam"), false, scope, nullptr);
    EXPECT_EQ(holder_.PeekNodeRef(), first);
    EXPECT_EQ(again, hits);
    EXPECT_EQ(Hits(again), (std::vector<std::u16string>{u"beta report.txt", u"Alpha report.txt"}));
}

TEST_F(PerformQueryTest, ANodeThatIsNoQueryIsLeftAloneWithAMessage) {
    TKelNode plain = NodeAt(root_);
    holder_ = plain;
    testing::internal::CaptureStdout();
    TKelNode hits =
        holder_.PerformQuery(strings_.Text("x"), NodeCode("dnam"), true, TKelNode(), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Queries can only be performed on Empty nodes or existing query nodes\n");
    EXPECT_TRUE(hits.IsEmpty());
    EXPECT_EQ(holder_, plain);
}

TEST_F(PerformQueryTest, ASavedSearchRunsItsOwnQueryAndScopeAndRemembersItsFile) {
    fs::path searched = root_ / "searched";
    keltest::WriteFile(searched / "Plan.txt", "x");
    keltest::WriteFile(root_ / "elsewhere/Plan.txt", "x");
    keltest::WriteFile(root_ / "Plans.kelsearch",
                       R"({"query": "kBMItemFSName == \"plan*\"c", "scope": [")" +
                           searched.string() + R"("]})");
    TKelNode saved = NodeAt(root_ / "Plans.kelsearch");
    TKelNode hits = holder_.PerformSavedQuery(saved, NodeCode("pnam"), true);
    EXPECT_EQ(hits.savedQueryRef, saved.PeekNodeRef());
    EXPECT_EQ(Property(hits, "dnam"), u"PerformedSavedQuery");
    EXPECT_EQ(Hits(hits), (std::vector<std::u16string>{u"Plan.txt"}));
}

TEST_F(PerformQueryTest, AnUnreadableSavedSearchFindsNothing) {
    keltest::WriteFile(root_ / "Broken.kelsearch", "{");
    TKelNode hits =
        holder_.PerformSavedQuery(NodeAt(root_ / "Broken.kelsearch"), NodeCode("dnam"), true);
    ASSERT_TRUE(NodeIsQueryHitsContainer(hits.PeekNodeRef()));
    EXPECT_TRUE(Hits(hits).empty());
}

} // namespace
