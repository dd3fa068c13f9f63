#include "tests/support/CoreText.h"

#include <basalt/BasaltCore.h>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace {

std::string Bytes(BCURLRef url) {
    uint8_t buffer[1024];
    if (!BCURLGetFileSystemRepresentation(url, true, buffer, sizeof buffer))
        return "<none>";
    return reinterpret_cast<char*>(buffer);
}

BCURLRef FromBytes(const std::string& path, bool isDirectory = false) {
    return BCURLCreateFromFileSystemRepresentation(kBCAllocatorDefault,
                                                   reinterpret_cast<const uint8_t*>(path.data()),
                                                   static_cast<BCIndex>(path.size()), isDirectory);
}

TEST(BCURL, OddBytesRoundTripThroughEscapes) {
    for (std::string path : {"/tmp/plain", "/tmp/not utf8 \xFF\xFE", "/tmp/100%/#?;x",
                             "/tmp/caf\xC3\xA9/\xE2\x80\xAE"}) {
        BCURLRef url = FromBytes(path);
        ASSERT_NE(url, nullptr) << path;
        EXPECT_EQ(Bytes(url), path);
        EXPECT_EQ(keltest::Utf8(BCURLGetString(url)).find_first_of(" #?\xFF"), std::string::npos);
        BCRelease(url);
    }
    BCURLRef invalid = FromBytes("/tmp/\xFF");
    EXPECT_EQ(keltest::Utf8(BCURLGetString(invalid)), "file:///tmp/%FF");
    // The path text keeps the byte (as an escape character) and makes the same URL again.
    BCStringRef path = BCURLCopyFileSystemPath(invalid, kBCURLPOSIXPathStyle);
    ASSERT_NE(path, nullptr);
    EXPECT_EQ(BCStringGetLength(path), 6);
    BCURLRef again = BCURLCreateWithFileSystemPath(nullptr, path, kBCURLPOSIXPathStyle, false);
    EXPECT_EQ(Bytes(again), "/tmp/\xFF");
    BCURLRef folder = FromBytes("/tmp", true);
    BCStringRef leaf = BCURLCopyLastPathComponent(invalid);
    BCURLRef child = BCURLCreateCopyAppendingPathComponent(nullptr, folder, leaf, false);
    EXPECT_EQ(Bytes(child), "/tmp/\xFF");
    for (BCTypeRef object : {BCTypeRef(path), BCTypeRef(again), BCTypeRef(child), BCTypeRef(folder),
                             BCTypeRef(leaf), BCTypeRef(invalid)})
        BCRelease(object);
}

TEST(BCURL, PathComponents) {
    BCURLRef folder = BCURLCreateWithFileSystemPath(kBCAllocatorDefault, BCSTR("/home/u/Docs"),
                                                    kBCURLPOSIXPathStyle, true);
    EXPECT_EQ(keltest::Utf8(BCURLGetString(folder)), "file:///home/u/Docs/");
    EXPECT_TRUE(BCURLHasDirectoryPath(folder));
    BCURLRef file = BCURLCreateCopyAppendingPathComponent(kBCAllocatorDefault, folder,
                                                          BCSTR("a b\u00E9.txt"), false);
    EXPECT_EQ(keltest::Utf8(BCURLGetString(file)), "file:///home/u/Docs/a%20b%C3%A9.txt");
    EXPECT_EQ(keltest::AdoptUtf8(BCURLCopyLastPathComponent(file)), "a b\u00E9.txt");
    EXPECT_EQ(keltest::AdoptUtf8(BCURLCopyFileSystemPath(file, kBCURLPOSIXPathStyle)),
              "/home/u/Docs/a b\u00E9.txt");
    BCURLRef parent = BCURLCreateCopyDeletingLastPathComponent(kBCAllocatorDefault, file);
    EXPECT_TRUE(BCEqual(parent, folder));
    EXPECT_EQ(keltest::AdoptUtf8(BCURLCopyScheme(file)), "file");

    BCURLRef root = FromBytes("/", true);
    BCURLRef stillRoot = BCURLCreateCopyDeletingLastPathComponent(kBCAllocatorDefault, root);
    EXPECT_EQ(Bytes(stillRoot), "/");
    EXPECT_EQ(keltest::AdoptUtf8(BCURLCopyLastPathComponent(root)), "/");
    for (BCTypeRef object : {folder, file, parent, root, stillRoot})
        BCRelease(object);
}

TEST(BCURL, StringsAndRelativeReferences) {
    BCURLRef base = BCURLCreateWithString(kBCAllocatorDefault, BCSTR("file:///a/b/c.txt"), nullptr);
    BCURLRef sibling = BCURLCreateWithString(kBCAllocatorDefault, BCSTR("d.txt"), base);
    EXPECT_EQ(Bytes(sibling), "/a/b/d.txt");
    BCURLRef web =
        BCURLCreateWithString(kBCAllocatorDefault, BCSTR("https://host.example/x/y?q=1"), nullptr);
    EXPECT_EQ(Bytes(web), "<none>");
    BCURLRef up = BCURLCreateCopyDeletingLastPathComponent(kBCAllocatorDefault, web);
    EXPECT_EQ(keltest::Utf8(BCURLGetString(up)), "https://host.example/x/?q=1");
    // File URLs without a path, or with a relative one, name no file of this machine.
    for (const char* text : {"file://host", "file://loca%relatl", "file:name", "file:"}) {
        BCURLRef pathless =
            BCURLCreateWithBytes(kBCAllocatorDefault, reinterpret_cast<const uint8_t*>(text),
                                 BCIndex(std::strlen(text)), kBCStringEncodingUTF8, nullptr);
        ASSERT_NE(pathless, nullptr) << text;
        EXPECT_EQ(Bytes(pathless), "<none>") << text;
        BCRelease(pathless);
    }
    EXPECT_EQ(BCURLCreateWithString(kBCAllocatorDefault, BCSTR("no scheme"), nullptr), nullptr);
    EXPECT_EQ(BCURLCreateWithString(kBCAllocatorDefault, BCSTR("relative"), nullptr), nullptr);
    for (BCTypeRef object : {base, sibling, web, up})
        BCRelease(object);
}

TEST(BCURL, RelativePathsDotsAndExtensions) {
    BCURLRef base = FromBytes("/home/u", true);
    BCURLRef child = BCURLCreateWithFileSystemPathRelativeToBase(
        kBCAllocatorDefault, BCSTR("Docs/../Music/./a b"), kBCURLPOSIXPathStyle, true, base);
    EXPECT_EQ(keltest::Utf8(BCURLGetString(child)), "file:///home/u/Music/a%20b/");
    BCURLRef absolute = BCURLCreateWithFileSystemPathRelativeToBase(
        kBCAllocatorDefault, BCSTR("/etc/hosts"), kBCURLPOSIXPathStyle, false, base);
    EXPECT_EQ(Bytes(absolute), "/etc/hosts");
    BCURLRef dotted = BCURLCreateWithString(kBCAllocatorDefault,
                                            BCSTR("file:///a/b/../../../c/./d.tar.gz"), nullptr);
    BCURLRef standard = BCURLCopyAbsoluteURL(dotted);
    EXPECT_EQ(keltest::Utf8(BCURLGetString(standard)), "file:///c/d.tar.gz");
    EXPECT_EQ(keltest::AdoptUtf8(BCURLCopyPathExtension(standard)), "gz");
    EXPECT_EQ(BCURLCopyPathExtension(base), nullptr);

    BCDataRef data = BCURLCreateData(kBCAllocatorDefault, child, kBCStringEncodingUTF8, true);
    BCURLRef fromBytes =
        BCURLCreateWithBytes(kBCAllocatorDefault, BCDataGetBytePtr(data), BCDataGetLength(data),
                             kBCStringEncodingUTF8, nullptr);
    EXPECT_TRUE(BCEqual(fromBytes, child));
    for (BCTypeRef object : {base, child, absolute, dotted, standard, fromBytes})
        BCRelease(object);
    BCRelease(data);
}

TEST(BCURL, HomeFolders) {
    BCURLRef mine = BCCopyHomeDirectoryURLForUser(nullptr);
    EXPECT_EQ(Bytes(mine), std::string(std::getenv("HOME")));
    EXPECT_TRUE(BCURLHasDirectoryPath(mine));
    BCURLRef root = BCCopyHomeDirectoryURLForUser(BCSTR("root"));
    EXPECT_EQ(Bytes(root), "/root");
    EXPECT_EQ(BCCopyHomeDirectoryURLForUser(BCSTR("no-such-user-here")), nullptr);
    BCRelease(mine);
    BCRelease(root);
}

} // namespace
