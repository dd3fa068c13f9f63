#include "kel/nodes/TNodeFilter.h"

#include "KelNodeTesting.h"
#include "basalt/types/BUTypes.h"
#include "kel/foundation/TArrayRef.h"
#include "kel/foundation/TKelPrefs.h"
#include "tests/support/TestEnvironment.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>

using namespace kelnodetest;
namespace fs = std::filesystem;

namespace {

// What the client's filter saw, node by node, and what it answers.
struct ClientFilter {
    struct Call {
        TKelNode node;
        DescType descType;
        KelFileOrFolderInfo info;
    };
    std::vector<Call> seen;
    bool answer = true;

    static Boolean Proc(BEDesc* item, void* info, void* clientData, short) {
        auto* self = static_cast<ClientFilter*>(clientData);
        self->seen.push_back({TKelNode(GetBEDescAsNode(item), false), item->descriptorType,
                              *static_cast<KelFileOrFolderInfo*>(info)});
        return self->answer;
    }

    const Call& About(const TKelNode& node) const {
        static const Call none{};
        auto found = std::find_if(seen.begin(), seen.end(),
                                  [&](const Call& call) { return call.node == node; });
        EXPECT_NE(found, seen.end()) << "the client was not asked";
        return found != seen.end() ? *found : none;
    }
};

// Reads a field of the packed record by value, as it may sit at an odd address.
template <class T>
T Copy(T value) {
    return value;
}

// A type list in a relocatable block, as clients pass it.
class TypeList {
public:
    TypeList(FourCharCode signature, std::vector<FourCharCode> types) {
        const size_t size = offsetof(KelTypeList, osTypes) + std::max<size_t>(types.size(), 1) * 4;
        handle = NewHandleClear(static_cast<Size>(size));
        KelTypeList* block = *Handle();
        block->componentSignature = signature;
        block->typeCount = int16_t(types.size());
        std::copy(types.begin(), types.end(), block->osTypes);
    }
    ~TypeList() { DisposeHandle(handle); }
    KelTypeList** Handle() { return reinterpret_cast<KelTypeList**>(handle); }

private:
    ::Handle handle;
};

class TNodeFilterTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(TKelNode::InitializeCatalog(), noErr);
        folder = keltest::MakeScratchFolder("filter");
        keltest::WriteFile(folder / "notes.txt", "hello");
        keltest::WriteFile(folder / "main.c", "int main;");
        keltest::WriteFile(folder / "photo.png", "png");
        keltest::WriteFile(folder / ".secret", "x");
        fs::create_directory(folder / "sub");
        fs::create_directory(folder / "Tool.app");
        fs::create_directory_symlink(folder / "sub", folder / "sub link");
        fs::create_symlink(folder / "missing", folder / "dangling");
    }

    std::unique_ptr<TNodeFilter> MakeFilter(unsigned long flags, KelTypeList** types = nullptr,
                                            NodeFilterMaskSet masks = {}) {
        return std::make_unique<TNodeFilter>(client, flags, masks, types, 0);
    }

    TKelNode At(const char* name) const { return NodeAt(folder / name); }

    fs::path folder;
    ClientFilter recorder;
    TKelClient client{nullptr, nullptr, &ClientFilter::Proc, &recorder, NodeCode("bfrf")};
};

TEST_F(TNodeFilterTest, WithoutTypesEveryFileGoesToTheClientAndItsAnswerDecides) {
    auto filter = MakeFilter(0);
    EXPECT_EQ(filter->Mode(), TNodeFilter::kNoTypes);
    EXPECT_TRUE(filter->CanSelect(At("photo.png"), 0));
    EXPECT_TRUE(filter->CanSelect(At("notes.txt"), 0));
    EXPECT_EQ(recorder.seen.size(), 2u);
    recorder.answer = false;
    EXPECT_FALSE(filter->CanSelect(At("notes.txt"), 0));
    EXPECT_FALSE(filter->CanSelect(At("dangling"), 0)) << "a broken link is refused outright";
}

TEST_F(TNodeFilterTest, TheRootIsSelectableAndEnterableButNeverChosenOrShownToTheClient) {
    NodeFilterMaskSet masks{0x3F, 0x1F, 0x3F, 0x3F};
    auto filter = MakeFilter(0, nullptr, masks);
    TKelNode root(TKelNode::GetRootNodeRef(), true);
    recorder.answer = false;
    EXPECT_TRUE(filter->CanSelect(root, 0));
    EXPECT_TRUE(recorder.seen.empty());
    EXPECT_TRUE(filter->CanTarget(root));
    EXPECT_FALSE(filter->CanChoose(root));
}

TEST_F(TNodeFilterTest, TypeListMatchesFourCharacterCodesAndCreators) {
    TypeList list(0, {NodeCode("TEXT")});
    auto filter = MakeFilter(0, list.Handle());
    EXPECT_EQ(filter->Mode(), TNodeFilter::kTypeList);
    EXPECT_TRUE(filter->CanSelect(At("notes.txt"), 0));
    EXPECT_FALSE(filter->CanSelect(At("photo.png"), 0));
    EXPECT_TRUE(filter->CanSelect(At("sub"), 0)) << "folders skip the type stage";
    EXPECT_TRUE(filter->CanSelect(At("sub link"), 0));
    filter->SetMode(TNodeFilter::kTypeList, NodeCode("ABCD"), 0, nullptr);
    EXPECT_FALSE(filter->CanSelect(At("notes.txt"), 0)) << "the creator must match";
    filter->SetMode(TNodeFilter::kTypeListAnyCreator, NodeCode("ABCD"), 0, nullptr);
    EXPECT_EQ(filter->Mode(), TNodeFilter::kTypeList);
    EXPECT_TRUE(filter->CanSelect(At("notes.txt"), 0));

    TypeList empty(0, {});
    auto any = MakeFilter(0, empty.Handle());
    EXPECT_TRUE(any->CanSelect(At("photo.png"), 0)) << "an empty list takes any typed file";
}

TEST_F(TNodeFilterTest, IdentifiersMatchByConformanceAndTurnMetaTypesOff) {
    TypeList movies(0, {NodeCode("MooV")});
    auto filter = MakeFilter(0, movies.Handle());
    EXPECT_TRUE(filter->UsesMetaType());
    EXPECT_FALSE(filter->CanSelect(At("photo.png"), 0))
        << "without the movie library nothing counts as a movie or image";
    BCStringRef plainText = BCSTR("text/plain");
    TArrayRef identifiers(BCArrayCreate(nullptr, reinterpret_cast<const void**>(&plainText), 1,
                                        &kBCTypeArrayCallBacks),
                          false);
    filter->SetTypeIdentifiers(identifiers.AsBCArrayRef());
    EXPECT_FALSE(filter->UsesMetaType());
    EXPECT_TRUE(filter->CanSelect(At("notes.txt"), 0));
    EXPECT_TRUE(filter->CanSelect(At("main.c"), 0)) << "C source is a kind of plain text";
    EXPECT_FALSE(filter->CanSelect(At("photo.png"), 0));

    filter->SetMode(TNodeFilter::kOneType, 0, NodeCode("TEXT"), BCSTR("image/png"));
    EXPECT_FALSE(filter->CanSelect(At("notes.txt"), 0))
        << "with identifiers, one type is matched by identifier alone";
    EXPECT_TRUE(filter->CanSelect(At("photo.png"), 0));
    filter->SetTypeIdentifiers(nullptr);
    filter->SetMode(TNodeFilter::kOneType, 0, NodeCode("TEXT"), nullptr);
    EXPECT_TRUE(filter->CanSelect(At("notes.txt"), 0));
    EXPECT_FALSE(filter->CanSelect(At("photo.png"), 0));
}

TEST_F(TNodeFilterTest, PackagesStandInForFoldersOrFiles) {
    TypeList list(0, {NodeCode("TEXT")});
    auto asFolder = MakeFilter(kKelOptPackagesSelectable | kKelOptPackagesBrowsable, list.Handle(),
                               NodeFilterMaskSet{0x3F, 0x3F, 0x04, 0x1F});
    EXPECT_TRUE(asFolder->CanSelect(At("Tool.app"), 0)) << "no type test for a folder proxy";
    EXPECT_TRUE(asFolder->CanChoose(At("Tool.app")));
    auto asFile = MakeFilter(kKelOptPackagesSelectable, list.Handle(),
                             NodeFilterMaskSet{0x3F, 0x3F, 0x04, 0x1F});
    EXPECT_FALSE(asFile->CanSelect(At("Tool.app"), 0)) << "a file proxy meets the type test";
    EXPECT_FALSE(asFile->CanChoose(At("Tool.app")));
    auto plain = MakeFilter(0, nullptr, NodeFilterMaskSet{0x37, 0x37, 0x37, 0x37});
    EXPECT_FALSE(plain->CanSelect(At("Tool.app"), 0)) << "a package is no folder by default";
}

TEST_F(TNodeFilterTest, TheClientRecordDescribesFilesFoldersAndAliases) {
    auto filter = MakeFilter(kKelOptShowInvisible);
    for (const char* name : {"notes.txt", "sub", "sub link", ".secret", "Tool.app"}) {
        filter->CanSelect(At(name), 0);
    }
    const KelFileOrFolderInfo& file = recorder.About(At("notes.txt")).info;
    EXPECT_EQ(Copy(file.version), 1);
    EXPECT_EQ(Copy(file.isFolder), 0);
    EXPECT_EQ(Copy(file.visible), 1);
    EXPECT_EQ(Copy(file.fileAndFolder.file.dataSize), 5u);
    EXPECT_EQ(Copy(file.fileAndFolder.file.type), NodeCode("TEXT"));
    EXPECT_NE(Copy(file.modificationDate), 0u);
    EXPECT_EQ(recorder.About(At("notes.txt")).descType, NodeCode("bfrf"));

    const KelFileOrFolderInfo& sub = recorder.About(At("sub")).info;
    EXPECT_EQ(Copy(sub.isFolder), 1);
    EXPECT_EQ(Copy(sub.fileAndFolder.folder.readable), 1);
    EXPECT_EQ(Copy(sub.fileAndFolder.folder.writeable), 1);
    EXPECT_EQ(Copy(sub.fileAndFolder.folder.folderType), NodeCode("????"));
    EXPECT_NE(Copy(recorder.About(At("Tool.app")).info.fileAndFolder.folder.folderType),
              NodeCode("????"));

    const KelFileOrFolderInfo& link = recorder.About(At("sub link")).info;
    EXPECT_EQ(Copy(link.isFolder), 1) << "an alias to a folder says so, in the file form";
    EXPECT_EQ(Copy(link.fileAndFolder.file.type), NodeCode("fldr"));
    EXPECT_EQ(Copy(recorder.About(At(".secret")).info.visible), 0);
}

TEST_F(TNodeFilterTest, InvisibleItemsShowOnlyWhenAsked) {
    auto filter = MakeFilter(0);
    EXPECT_TRUE(filter->CanSee(At("notes.txt")));
    EXPECT_FALSE(filter->CanSee(At(".secret")));
    keltest::WriteFile(folder / ".hidden", "notes.txt\n");
    NodeSync(NodeAt(folder).PeekNodeRef());
    EXPECT_FALSE(filter->CanSee(At("notes.txt"))) << "listed in the folder's .hidden";
    EXPECT_TRUE(MakeFilter(kKelOptShowInvisible)->CanSee(At(".secret")));
    BCPreferencesSetAppValue(TKelPrefs::ShowAllFilesKey(), BCSTR("YES"),
                             kBCPreferencesAnyApplication);
    EXPECT_TRUE(MakeFilter(0)->CanSee(At(".secret")));
    BCPreferencesSetAppValue(TKelPrefs::ShowAllFilesKey(), nullptr, kBCPreferencesAnyApplication);
}

TEST_F(TNodeFilterTest, BrokenAliasesCannotBeEnteredOrChosen) {
    auto filter = MakeFilter(0);
    EXPECT_TRUE(filter->CanTarget(At("sub link")));
    EXPECT_TRUE(filter->CanChoose(At("notes.txt")));
    EXPECT_FALSE(filter->CanTarget(At("dangling")));
    EXPECT_FALSE(filter->CanChoose(At("dangling")));
}

TEST_F(TNodeFilterTest, SearchLimitsFollowTheMode) {
    EXPECT_EQ(MakeFilter(0)->CopyCurrentFilterIdentifiers(), nullptr);
    TypeList list(0, {NodeCode("TEXT")});
    auto filter = MakeFilter(kKelOptPackagesSelectable, list.Handle());
    TArrayRef limits(filter->CopyCurrentFilterIdentifiers(), false);
    ASSERT_EQ(limits.Count(), 2);
    EXPECT_TRUE(BUTypeConformsTo(limits.IndexAsSafeString(0).AsBCStringRef(), BCSTR("text/plain")));
    EXPECT_EQ(BCStringCompare(limits.IndexAsSafeString(1).AsBCStringRef(), kBUTypePackage, 0), 0);
    filter->SetMode(TNodeFilter::kOneType, 0, 0, BCSTR("image/png"));
    TArrayRef one(filter->CopyCurrentFilterIdentifiers(), false);
    ASSERT_EQ(one.Count(), 2);
    EXPECT_EQ(BCStringCompare(one.IndexAsSafeString(0).AsBCStringRef(), BCSTR("image/png"), 0), 0);
}

} // namespace
