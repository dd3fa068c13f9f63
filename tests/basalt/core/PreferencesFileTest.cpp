// Preference writes that the disk refuses, and processes whose user may not write: the old file
// stays whole and readable, the caller hears of it, and nothing good is set aside.

#include "basalt/core/PreferencesFile.h"

#include "tests/support/TestEnvironment.h"

#include <basalt/BasaltCore.h>
#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace {

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

class PreferencesFileTest : public ::testing::Test {
protected:
    void SetUp() override {
        config_ = keltest::MakeScratchFolder("config");
        setenv("XDG_CONFIG_HOME", config_.c_str(), 1);
        saved_ = basalt::CurrentPreferencesWriteCalls();
        Write("keep", "old");
        ASSERT_EQ(FileValue("keep"), "old");
    }
    void TearDown() override { basalt::CurrentPreferencesWriteCalls() = saved_; }

    fs::path Folder() const { return config_ / "kel" / "preferences"; }
    fs::path File() const { return Folder() / "com.example.faults.json"; }
    static BCStringRef Domain() { return BCSTR("com.example.faults"); }

    static void Write(const char* key, const char* text) {
        BCStringRef value = BCStringCreateWithCString(nullptr, text, kBCStringEncodingUTF8);
        BCPreferencesSetAppValue(__BCStringMakeConstantString(key), value, Domain());
        BCRelease(value);
    }
    static std::string Value(const char* key) {
        BCTypeRef value = BCPreferencesCopyAppValue(__BCStringMakeConstantString(key), Domain());
        char text[64] = "<none>";
        if (value != nullptr)
            BCStringGetCString(static_cast<BCStringRef>(value), text, sizeof text,
                               kBCStringEncodingUTF8);
        BCRelease(value);
        return text;
    }
    // What another process reads: the file itself.
    std::string FileValue(const char* key) const {
        auto json = nlohmann::json::parse(keltest::ReadFile(File()), nullptr, false);
        return json.is_object() && json.contains(key) ? json[key].get<std::string>() : "<none>";
    }
    std::vector<std::string> Files() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(Folder()))
            names.push_back(entry.path().filename().string());
        return names;
    }

    // A write refused by the disk is reported, leaves the file as it was and no debris, and is
    // written by the first Synchronize after the disk recovers.
    void ExpectRefusedThenRecovered(const std::string& fault) {
        Write("keep", "new");
        EXPECT_EQ(FileValue("keep"), "old") << fault;
        EXPECT_EQ(Files(), std::vector<std::string>{File().filename()}) << fault;
        EXPECT_EQ(Value("keep"), "new") << fault << ": this process keeps what it set";
        EXPECT_FALSE(BCPreferencesAppSynchronize(Domain())) << fault;
        basalt::CurrentPreferencesWriteCalls() = saved_;
        EXPECT_TRUE(BCPreferencesAppSynchronize(Domain())) << fault;
        EXPECT_EQ(FileValue("keep"), "new") << fault;
        Write("keep", "old");
    }

    fs::path config_;
    basalt::PreferencesWriteCalls saved_;
};

TEST_F(PreferencesFileTest, AFullFailingOrReadOnlyDiskLeavesTheOldFileAndReports) {
    auto& calls = basalt::CurrentPreferencesWriteCalls();
    calls.write = [](int, const void*, size_t) -> ssize_t {
        errno = ENOSPC;
        return -1;
    };
    ExpectRefusedThenRecovered("full disk");

    // Half the text fits, then the disk is full.
    calls.write = [](int fd, const void* data, size_t size) -> ssize_t {
        static bool first = true;
        if (std::exchange(first, false))
            return ::write(fd, data, std::min<size_t>(size, 3));
        errno = ENOSPC;
        return -1;
    };
    ExpectRefusedThenRecovered("disk filling up");

    calls.fsync = [](int) {
        errno = EIO;
        return -1;
    };
    ExpectRefusedThenRecovered("I/O error");

    calls.open = [](const char*, int, mode_t) {
        errno = EROFS;
        return -1;
    };
    ExpectRefusedThenRecovered("read-only folder");
}

TEST_F(PreferencesFileTest, AFolderThatVanishesUnderAWriteIsReportedAndMadeAgainLater) {
    basalt::CurrentPreferencesWriteCalls().rename = [this](const char* from, const char* to) {
        fs::remove_all(Folder());
        return ::rename(from, to);
    };
    Write("keep", "new");
    EXPECT_FALSE(fs::exists(Folder()));
    EXPECT_FALSE(BCPreferencesAppSynchronize(Domain()));
    basalt::CurrentPreferencesWriteCalls() = saved_;
    EXPECT_TRUE(BCPreferencesAppSynchronize(Domain()));
    EXPECT_EQ(FileValue("keep"), "new");
}

TEST_F(PreferencesFileTest, AStuckWriterDoesNotHangTheNextOne) {
    int stuck = open(Folder().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_GE(stuck, 0);
    ASSERT_EQ(flock(stuck, LOCK_EX), 0);
    basalt::CurrentPreferencesWriteCalls().lockWait = std::chrono::milliseconds(100);
    Write("keep", "new");
    EXPECT_EQ(FileValue("keep"), "old");
    EXPECT_FALSE(BCPreferencesAppSynchronize(Domain()));
    close(stuck);
    EXPECT_TRUE(BCPreferencesAppSynchronize(Domain()));
    EXPECT_EQ(FileValue("keep"), "new");
}

// Runs body in a forked child with the given real and effective user; the child's exit status,
// or -1 when it could not change user.
int RunAs(uid_t real, uid_t effective, const std::function<bool()>& body) {
    pid_t child = fork();
    if (child == 0) {
        if (setresgid(kNobody, kNobody, 0) != 0 || setresuid(real, effective, 0) != 0)
            _exit(99);
        _exit(body() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) != 99 ? WEXITSTATUS(status) : -1;
}

// Lets another user reach and write a folder of the scratch area: the folders above it, up to
// the scratch root and no further, become searchable.
void OpenToEveryone(const fs::path& folder) {
    chmod(folder.c_str(), 0777);
    const fs::path top = keltest::ScratchHome().parent_path();
    for (fs::path step = folder.parent_path(); step.string().starts_with(top.string());
         step = step.parent_path())
        fs::permissions(step, fs::perms::others_exec, fs::perm_options::add);
}

TEST_F(PreferencesFileTest, NothingIsWrittenWhenTheRealAndEffectiveUserDiffer) {
    if (geteuid() != 0)
        GTEST_SKIP() << "changing the effective user needs root";
    auto fresh = keltest::MakeScratchFolder("setuid-config");
    OpenToEveryone(fresh);
    setenv("XDG_CONFIG_HOME", fresh.c_str(), 1);
    // A set-uid program: the person who ran it is root here, the program runs as nobody.
    int status = RunAs(0, kNobody, [] {
        Write("k", "v");
        return !BCPreferencesAppSynchronize(Domain()) || Value("k") == "<none>";
    });
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(fs::exists(fresh / "kel")) << "the store wrote under a changed effective user";
}

TEST_F(PreferencesFileTest, AFileAnotherUserMayNotReadIsNeitherSetAsideNorReplaced) {
    if (geteuid() != 0)
        GTEST_SKIP() << "changing user needs root";
    chmod(File().c_str(), 0600);
    OpenToEveryone(Folder());
    int status = RunAs(kNobody, kNobody, [] {
        Write("keep", "theirs");
        return Value("keep") == "theirs" && !BCPreferencesAppSynchronize(Domain());
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(FileValue("keep"), "old");
    EXPECT_EQ(Files(), std::vector<std::string>{File().filename()});
}

} // namespace
