#include "tests/support/TestEnvironment.h"

#include <basalt/BasaltCore.h>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class BCPreferencesTest : public ::testing::Test {
protected:
    void SetUp() override {
        config_ = keltest::MakeScratchFolder("config");
        setenv("XDG_CONFIG_HOME", config_.c_str(), 1);
    }

    fs::path Folder() const { return config_ / "kel" / "preferences"; }

    std::string Read(const std::string& key, BCStringRef domain) {
        BCStringRef value = static_cast<BCStringRef>(
            BCPreferencesCopyAppValue(__BCStringMakeConstantString(key.c_str()), domain));
        char text[256] = "<none>";
        if (value != nullptr)
            BCStringGetCString(value, text, sizeof text, kBCStringEncodingUTF8);
        BCRelease(value);
        return text;
    }

    void Write(const std::string& key, const char* text, BCStringRef domain) {
        BCStringRef value =
            text ? BCStringCreateWithCString(kBCAllocatorDefault, text, kBCStringEncodingUTF8)
                 : nullptr;
        BCPreferencesSetAppValue(__BCStringMakeConstantString(key.c_str()), value, domain);
        BCRelease(value);
    }

    std::vector<std::string> Files() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(Folder()))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    bool HasTemporaryFile() const {
        std::error_code error;
        for (fs::directory_iterator entry(Folder(), error), end; !error && entry != end;
             entry.increment(error)) {
            if (entry->path().filename().string().find(".tmp-") != std::string::npos) {
                return true;
            }
        }
        return false;
    }

    fs::path config_;
};

TEST_F(BCPreferencesTest, TypedValuesRoundTripThroughTheFile) {
    const uint8_t bytes[] = {0, 1, 2, 0xFF, 0xFE};
    int64_t integer = -3;
    double real = 2.5, whole = 4.0;
    BCDataRef data = BCDataCreate(kBCAllocatorDefault, bytes, sizeof bytes);
    BCNumberRef number = BCNumberCreate(kBCAllocatorDefault, kBCNumberSInt64Type, &integer);
    BCNumberRef fraction = BCNumberCreate(kBCAllocatorDefault, kBCNumberDoubleType, &real);
    BCNumberRef wholeReal = BCNumberCreate(kBCAllocatorDefault, kBCNumberDoubleType, &whole);
    BCDateRef date = BCDateCreate(kBCAllocatorDefault, 123.5);
    const void* items[] = {BCSTR("x"), number, kBCBooleanFalse};
    BCArrayRef array = BCArrayCreate(kBCAllocatorDefault, items, 3, &kBCTypeArrayCallBacks);
    const void* keys[] = {BCSTR("nested"), BCSTR("when")};
    const void* values[] = {array, date};
    BCDictionaryRef dictionary = BCDictionaryCreate(kBCAllocatorDefault, keys, values, 2);

    BCStringRef domain = BCSTR("com.example.typed");
    const void* all[] = {data,      number, fraction, wholeReal, kBCBooleanTrue, BCSTR("caf\u00E9"),
                         dictionary};
    for (size_t i = 0; i < std::size(all); ++i)
        BCPreferencesSetAppValue(__BCStringMakeConstantString(std::to_string(i).c_str()), all[i],
                                 domain);
    // Read back what another process would see: the file, not this process's cache.
    auto json = nlohmann::json::parse(keltest::ReadFile(Folder() / "com.example.typed.json"));
    EXPECT_EQ(json["0"], nlohmann::json({{"$data", "AAEC//4="}}));
    EXPECT_TRUE(json["1"].is_number_integer());
    EXPECT_TRUE(json["3"].is_number_float());
    ASSERT_TRUE(BCPreferencesAppSynchronize(domain));
    for (size_t i = 0; i < std::size(all); ++i) {
        BCTypeRef back = BCPreferencesCopyAppValue(
            __BCStringMakeConstantString(std::to_string(i).c_str()), domain);
        EXPECT_TRUE(BCEqual(back, all[i])) << i;
        if (all[i] == wholeReal) {
            EXPECT_TRUE(BCNumberIsFloatType(static_cast<BCNumberRef>(back)));
        }
        BCRelease(back);
    }
    for (BCTypeRef object :
         {(BCTypeRef)data, (BCTypeRef)number, (BCTypeRef)fraction, (BCTypeRef)wholeReal,
          (BCTypeRef)date, (BCTypeRef)array, (BCTypeRef)dictionary})
        BCRelease(object);
}

TEST_F(BCPreferencesTest, NullRemovesAndTypedGettersCheckFormat) {
    BCStringRef domain = BCSTR("TKGlobal");
    Write("gone", "soon", domain);
    Write("gone", nullptr, domain);
    EXPECT_EQ(Read("gone", domain), "<none>");
    Write("flag", "YES", domain);
    Write("count", "17", domain);
    Write("junk", "seventeen", domain);
    Boolean valid = false;
    EXPECT_TRUE(BCPreferencesGetAppBooleanValue(BCSTR("flag"), domain, &valid));
    EXPECT_TRUE(valid);
    EXPECT_EQ(BCPreferencesGetAppIntegerValue(BCSTR("count"), domain, &valid), 17);
    EXPECT_EQ(BCPreferencesGetAppIntegerValue(BCSTR("junk"), domain, &valid), 0);
    EXPECT_FALSE(valid);
    EXPECT_FALSE(BCPreferencesGetAppBooleanValue(BCSTR("absent"), domain, &valid));
    EXPECT_FALSE(valid);
    EXPECT_TRUE(fs::exists(Folder() / "TKGlobal.json"));
}

TEST_F(BCPreferencesTest, DomainsMapToTheirFiles) {
    Write("k", "global", kBCPreferencesAnyApplication);
    Write("k", "mine", kBCPreferencesCurrentApplication);
    EXPECT_EQ(Read("k", kBCPreferencesAnyApplication), "global");
    EXPECT_EQ(Read("k", kBCPreferencesCurrentApplication), "mine");
    EXPECT_TRUE(fs::exists(Folder() / ".GlobalPreferences.json"));
    // Without a main bundle identifier the domain is the executable's name.
    EXPECT_TRUE(fs::exists(Folder() / "basalt_core_tests.json"));
    Write("k", "escape", BCSTR("../outside"));
    EXPECT_FALSE(fs::exists(config_ / "kel" / "outside.json"));
}

TEST_F(BCPreferencesTest, ACorruptFileReadsAsDefaultsAndTheNextWriterSetsItAside) {
    keltest::WriteFile(Folder() / "com.example.bad.json", "{\"half\": ");
    keltest::WriteFile(Folder() / "com.example.bad.json.corrupt-1", "older damage");
    BCStringRef domain = BCSTR("com.example.bad");
    EXPECT_EQ(Read("half", domain), "<none>");
    EXPECT_EQ(keltest::ReadFile(Folder() / "com.example.bad.json"), "{\"half\": ")
        << "a reader changes nothing";
    Write("fresh", "value", domain);
    EXPECT_EQ(keltest::ReadFile(Folder() / "com.example.bad.json.corrupt-2"), "{\"half\": ");
    EXPECT_EQ(keltest::ReadFile(Folder() / "com.example.bad.json.corrupt-1"), "older damage");
    EXPECT_TRUE(BCPreferencesAppSynchronize(domain));
    EXPECT_EQ(Read("fresh", domain), "value");

    // A file that holds JSON but not an object is as unusable as broken text.
    keltest::WriteFile(Folder() / "com.example.list.json", "[1, 2]");
    EXPECT_EQ(Read("x", BCSTR("com.example.list")), "<none>");
    Write("x", "1", BCSTR("com.example.list"));
    EXPECT_TRUE(fs::exists(Folder() / "com.example.list.json.corrupt-1"));
}

TEST_F(BCPreferencesTest, ReadingMakesNoFolderAndLeavesAFileItCannotReadAlone) {
    EXPECT_EQ(Read("k", BCSTR("com.example.none")), "<none>");
    EXPECT_TRUE(BCPreferencesAppSynchronize(BCSTR("com.example.none")));
    EXPECT_FALSE(fs::exists(config_ / "kel")) << "a read made the preferences folder";

    // A domain whose file cannot be read (here a folder stands in its place) is neither set
    // aside nor replaced: the reader gets defaults and the writer a failure.
    fs::create_directories(Folder() / "com.example.odd.json");
    BCStringRef domain = BCSTR("com.example.odd");
    EXPECT_EQ(Read("k", domain), "<none>");
    EXPECT_FALSE(BCPreferencesAppSynchronize(domain));
    Write("k", "v", domain);
    EXPECT_FALSE(BCPreferencesAppSynchronize(domain));
    EXPECT_EQ(Read("k", domain), "v") << "this process still sees what it set";
    EXPECT_EQ(Files(), std::vector<std::string>{"com.example.odd.json"});
    EXPECT_TRUE(fs::is_directory(Folder() / "com.example.odd.json"));
}

TEST_F(BCPreferencesTest, WritersInTwoProcessesKeepEachOthersKeys) {
    BCStringRef domain = BCSTR("com.example.shared");
    Write("parent-before", "1", domain);
    pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        for (int i = 0; i < 20; ++i)
            Write("child-" + std::to_string(i), "c", domain);
        _exit(0);
    }
    for (int i = 0; i < 20; ++i)
        Write("parent-" + std::to_string(i), "p", domain);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    BCPreferencesAppSynchronize(domain);
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(Read("child-" + std::to_string(i), domain), "c");
        EXPECT_EQ(Read("parent-" + std::to_string(i), domain), "p");
    }
    EXPECT_EQ(Read("parent-before", domain), "1");
    EXPECT_EQ(Files(), std::vector<std::string>{"com.example.shared.json"});
}

TEST_F(BCPreferencesTest, AWriterKilledMidWriteLeavesTheOldFileWhole) {
    BCStringRef domain = BCSTR("com.example.killed");
    Write("keep", "safe", domain);
    pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        std::string big(1 << 20, 'x');
        for (int i = 0;; ++i)
            Write("big", (big + std::to_string(i)).c_str(), domain);
    }
    // Kill it while it is writing: once its temporary file exists.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    bool midWrite = false;
    while (!(midWrite = HasTemporaryFile()) && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::yield();
    }
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    ASSERT_TRUE(midWrite) << "the writer never started a write";

    auto text = keltest::ReadFile(Folder() / "com.example.killed.json");
    auto json = nlohmann::json::parse(text, nullptr, false);
    ASSERT_TRUE(json.is_object());
    EXPECT_EQ(json["keep"], "safe");
    // The next writer clears whatever the dead one left behind.
    Write("after", "yes", domain);
    EXPECT_EQ(Files(), std::vector<std::string>{"com.example.killed.json"});
}

} // namespace
