#include "basalt/files/BFCatalogInfo.h"

#include "tests/support/TestEnvironment.h"

#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

BFRef RefOf(const fs::path& path) {
    BFRef ref{};
    BFPathMakeRef(reinterpret_cast<const uint8_t*>(path.c_str()), &ref, nullptr);
    return ref;
}

TEST(BFCatalogInfoTest, FlagsIdsNamesSizesAndSpec) {
    fs::path folder = keltest::MakeScratchFolder("catalog");
    keltest::WriteFile(folder / "inner" / "file.txt", "12345");
    BFRef file = RefOf(folder / "inner" / "file.txt");
    BFRef inner = RefOf(folder / "inner");

    BFCatalogInfo fileInfo, innerInfo;
    HFSUniStr255 name;
    BFSpec spec;
    BFRef parent;
    ASSERT_EQ(BFGetCatalogInfo(&file, kBFCatInfoAll, &fileInfo, &name, &spec, &parent), noErr);
    ASSERT_EQ(BFGetCatalogInfo(&inner, kBFCatInfoAll, &innerInfo, nullptr, nullptr, nullptr),
              noErr);
    EXPECT_EQ(fileInfo.nodeFlags & kBFNodeIsDirectoryMask, 0);
    EXPECT_NE(innerInfo.nodeFlags & kBFNodeIsDirectoryMask, 0);
    EXPECT_EQ(fileInfo.dataLogicalSize, 5u);
    EXPECT_EQ(innerInfo.valence, 1u);
    EXPECT_EQ(fileInfo.parentDirID, innerInfo.nodeID);
    EXPECT_EQ(std::u16string(reinterpret_cast<char16_t*>(name.unicode), name.length), u"file.txt");
    EXPECT_EQ(BFCompareBFRefs(&parent, &inner), noErr);
    int32_t parentID = spec.parID; // a packed field: copy before comparing
    EXPECT_EQ(parentID, static_cast<int32_t>(innerInfo.nodeID));
    EXPECT_EQ(std::string(reinterpret_cast<char*>(spec.name + 1), spec.name[0]), "file.txt");
    uint32_t modified = fileInfo.contentModDate.lowSeconds;
    EXPECT_GT(modified, 3000000000u) << "seconds since 1904";

    // A spec naming the folder by its own id and no name is the folder.
    BFSpec folderSpec{};
    folderSpec.vRefNum = spec.vRefNum;
    folderSpec.parID = static_cast<int32_t>(innerInfo.nodeID);
    BFRef again;
    ASSERT_EQ(BFSpecMakeBFRef(&folderSpec, &again), noErr);
    EXPECT_EQ(BFCompareBFRefs(&again, &inner), noErr);
    folderSpec.parID = 0x7FFFFFF0;
    EXPECT_EQ(BFSpecMakeBFRef(&folderSpec, &again), dirNFErr);
}

TEST(BFCatalogInfoTest, VanishedFileReportsNotFound) {
    fs::path folder = keltest::MakeScratchFolder("vanish");
    keltest::WriteFile(folder / "f", "x");
    BFRef ref = RefOf(folder / "f");
    fs::remove(folder / "f");
    BFCatalogInfo info;
    EXPECT_EQ(BFGetCatalogInfo(&ref, kBFCatInfoAll, &info, nullptr, nullptr, nullptr), fnfErr);
}

} // namespace
