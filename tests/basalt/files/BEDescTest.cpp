#include "basalt/files/BEDesc.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

constexpr uint32_t FourCC(const char (&c)[5]) {
    return uint32_t(uint8_t(c[0])) << 24 | uint32_t(uint8_t(c[1])) << 16 |
           uint32_t(uint8_t(c[2])) << 8 | uint32_t(uint8_t(c[3]));
}

namespace {

std::string DataOf(const BEDesc& desc) {
    std::string data(static_cast<size_t>(BEGetDescDataSize(&desc)), '\0');
    BEGetDescData(&desc, data.data(), static_cast<Size>(data.size()));
    return data;
}

TEST(BEDescTest, CreateReplaceDuplicateDispose) {
    BEDesc desc;
    ASSERT_EQ(BECreateDesc(FourCC("TEXT"), "hello", 5, &desc), noErr);
    EXPECT_EQ(desc.descriptorType, static_cast<DescType>(FourCC("TEXT")));
    EXPECT_EQ(DataOf(desc), "hello");

    Handle handle = desc.dataHandle;
    ASSERT_EQ(BEReplaceDescData(FourCC("utf8"), "longer text", 11, &desc), noErr);
    EXPECT_EQ(desc.dataHandle, handle) << "the handle is reused";
    EXPECT_EQ(DataOf(desc), "longer text");

    BEDesc copy;
    ASSERT_EQ(BEDuplicateDesc(&desc, &copy), noErr);
    EXPECT_NE(copy.dataHandle, desc.dataHandle);
    EXPECT_EQ(DataOf(copy), "longer text");

    BEDisposeDesc(&desc);
    EXPECT_EQ(desc.descriptorType, static_cast<DescType>(typeNull));
    EXPECT_EQ(desc.dataHandle, nullptr);
    EXPECT_EQ(DataOf(copy), "longer text");
    BEDisposeDesc(&copy);
}

TEST(BEDescTest, BadArgumentsGiveStatusNotCrash) {
    BEDesc desc;
    EXPECT_EQ(BECreateDesc(FourCC("TEXT"), nullptr, 4, &desc), paramErr);
    EXPECT_EQ(BECreateDesc(FourCC("TEXT"), "x", -1, &desc), paramErr);
    EXPECT_EQ(BEDisposeDesc(nullptr), paramErr);
    EXPECT_EQ(BEGetDescDataSize(nullptr), 0);
    long count = 0;
    BEInitializeDesc(&desc);
    EXPECT_EQ(BECountItems(&desc, &count), errBENotBEList);
}

TEST(BEDescTest, ListsAppendReplaceNestAndIndexFromOne) {
    BEDescList list;
    ASSERT_EQ(BECreateList(nullptr, 0, false, &list), noErr);
    EXPECT_EQ(BEPutPtr(&list, 0, FourCC("TEXT"), "one", 3), noErr);
    EXPECT_EQ(BEPutPtr(&list, 2, FourCC("TEXT"), "two", 3), noErr);
    EXPECT_EQ(BEPutPtr(&list, 4, FourCC("TEXT"), "gap", 3), errBEIllegalIndex);
    EXPECT_EQ(BEPutPtr(&list, 1, FourCC("TEXT"), "uno", 3), noErr);

    BEDescList inner;
    BECreateList(nullptr, 0, false, &inner);
    BEPutPtr(&inner, 0, FourCC("long"), "\x01\x02\x03\x04", 4);
    EXPECT_EQ(BEPutDesc(&list, 0, &inner), noErr);
    BEDisposeDesc(&inner);

    long count = 0;
    ASSERT_EQ(BECountItems(&list, &count), noErr);
    EXPECT_EQ(count, 3);

    char buffer[8] = {};
    DescType type = 0;
    Size size = 0;
    BEKeyword keyword = 0;
    ASSERT_EQ(BEGetNthPtr(&list, 1, typeWildCard, &keyword, &type, buffer, sizeof buffer, &size),
              noErr);
    EXPECT_EQ(std::string(buffer, static_cast<size_t>(size)), "uno");
    EXPECT_EQ(keyword, static_cast<BEKeyword>(keyBEListItem));

    BEDesc nested;
    ASSERT_EQ(BEGetNthDesc(&list, 3, typeWildCard, nullptr, &nested), noErr);
    ASSERT_EQ(BECountItems(&nested, &count), noErr);
    EXPECT_EQ(count, 1);
    BEDisposeDesc(&nested);

    EXPECT_EQ(BEGetNthDesc(&list, 0, typeWildCard, nullptr, &nested), errBEIllegalIndex);
    EXPECT_EQ(BEGetNthDesc(&list, 4, typeWildCard, nullptr, &nested), errBEIllegalIndex);
    EXPECT_EQ(BEGetNthDesc(&list, 1, FourCC("bfrf"), nullptr, &nested), errBECoercionFail);

    EXPECT_EQ(BEDeleteItem(&list, 1), noErr);
    BECountItems(&list, &count);
    EXPECT_EQ(count, 2);
    BEDisposeDesc(&list);
}

TEST(BEDescTest, CorruptListDataIsReported) {
    BEDesc list;
    uint32_t claims = 5; // five items, none present
    BECreateDesc(typeBEList, &claims, sizeof claims, &list);
    long count = 0;
    EXPECT_EQ(BECountItems(&list, &count), errBECorruptData);
    BEDisposeDesc(&list);
}

} // namespace
