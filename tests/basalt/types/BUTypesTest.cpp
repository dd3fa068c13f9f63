#include "basalt/types/BUTypes.h"

#include <gtest/gtest.h>

using basalt::types::MakeString;
using basalt::types::Utf8;

namespace {

std::string Take(BCStringRef string) {
    std::string text = Utf8(string);
    if (string != nullptr)
        BCRelease(string);
    return text;
}

constexpr OSType Code(const char (&c)[5]) {
    return uint32_t(uint8_t(c[0])) << 24 | uint32_t(uint8_t(c[1])) << 16 |
           uint32_t(uint8_t(c[2])) << 8 | uint32_t(uint8_t(c[3]));
}

std::string IdentifierForCode(OSType code) {
    BCStringRef tag = BUCreateStringForFourCharCode(code);
    std::string type =
        Take(BUTypeCreatePreferredIdentifierForTag(kBUTagClassFourCharCode, tag, kBUTypeData));
    BCRelease(tag);
    return type;
}

TEST(BUTypesTest, FourCharCodesMapToIdentifiersAndBack) {
    EXPECT_EQ(IdentifierForCode(Code("TEXT")), "text/plain");
    EXPECT_EQ(IdentifierForCode(Code("JPEG")), "image/jpeg");
    std::string unknown = IdentifierForCode(Code("zq#!"));
    EXPECT_EQ(unknown.rfind("application/x-kel-ostype-", 0), 0u);
    BCStringRef unknownRef = MakeString(unknown);
    EXPECT_TRUE(BUTypeConformsTo(unknownRef, kBUTypeData));
    BCRelease(unknownRef);

    BCStringRef png = MakeString("image/png");
    EXPECT_EQ(Take(BUTypeCopyPreferredTagWithClass(png, kBUTagClassFourCharCode)), "PNGf");
    EXPECT_EQ(Take(BUTypeCopyPreferredTagWithClass(png, kBUTagClassFilenameExtension)), "png");
    BCRelease(png);
    EXPECT_EQ(BUGetFourCharCodeFromString(BCSTR("MooV")), Code("MooV"));
    EXPECT_EQ(BUGetFourCharCodeFromString(BCSTR("toolong")), 0u);
}

TEST(BUTypesTest, ConstantsConformAsTheFilterExpects) {
    BCStringRef source = MakeString("text/x-csrc");
    EXPECT_TRUE(BUTypeConformsTo(source, BCSTR("text/plain")));
    EXPECT_TRUE(BUTypeConformsTo(source, kBUTypeData));
    EXPECT_FALSE(BUTypeConformsTo(kBUTypeFolder, kBUTypeData));
    EXPECT_FALSE(BUTypeConformsTo(nullptr, kBUTypeData));
    EXPECT_TRUE(BUTypeConformsTo(kBUTypePackage, kBUTypePackage));
    BCRelease(source);
}

TEST(BUTypesTest, DescriptionsComeFromTheDatabase) {
    EXPECT_EQ(Take(BUTypeCopyDescription(BCSTR("text/plain"))), "plain text document");
    EXPECT_EQ(BUTypeCopyDescription(BCSTR("application/x-kel-nothing")), nullptr);
    EXPECT_EQ(Take(BUTypeCreatePreferredIdentifierForTag(kBUTagClassFilenameExtension, BCSTR("PDF"),
                                                         nullptr)),
              "application/pdf");
    EXPECT_EQ(Take(BUTypeCreatePreferredIdentifierForTag(kBUTagClassFilenameExtension,
                                                         BCSTR("zzqx"), nullptr)),
              "application/octet-stream")
        << "an unknown extension is plain data, as a file of that name is";
}

} // namespace
