#include <basalt/BasaltCore.h>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace {

struct EncodingVariable {
    explicit EncodingVariable(const char* value) {
        if (value != nullptr)
            setenv("KEL_TEXT_ENCODING", value, 1);
        else
            unsetenv("KEL_TEXT_ENCODING");
    }
    ~EncodingVariable() { unsetenv("KEL_TEXT_ENCODING"); }
};

TEST(TextEncoding, ApplicationEncodingComesFromTheEnvironment) {
    {
        EncodingVariable unset(nullptr);
        EXPECT_EQ(GetApplicationTextEncoding(), kTextEncodingMacRoman);
        TextEncoding encoding = 99;
        EXPECT_EQ(UpgradeScriptInfoToTextEncoding(smSystemScript, kTextLanguageDontCare,
                                                  kTextRegionDontCare, nullptr, &encoding),
                  noErr);
        EXPECT_EQ(encoding, kTextEncodingMacRoman);
    }
    {
        EncodingVariable latin("windows-1252");
        EXPECT_EQ(GetApplicationTextEncoding(), TextEncoding(kBCStringEncodingWindowsLatin1));
    }
    {
        EncodingVariable cyrillic("x-mac-cyrillic");
        EXPECT_EQ(GetScriptManagerVariable(smSysScript), 7);
    }
    {
        EncodingVariable nonsense("no-such-encoding");
        EXPECT_EQ(GetApplicationTextEncoding(), kTextEncodingMacRoman);
    }
    TextEncoding encoding = 0;
    EXPECT_EQ(UpgradeScriptInfoToTextEncoding(1000, 0, 0, nullptr, &encoding),
              kTextUnsupportedEncodingErr);
}

TEST(TextEncoding, ConvertsScriptTextAndReportsAFullBuffer) {
    TextToUnicodeInfo info = nullptr;
    ASSERT_EQ(CreateTextToUnicodeInfoByEncoding(kTextEncodingMacRoman, &info), noErr);
    const unsigned char roman[] = {'A', 0x8E, 0xA5, 'z'}; // A e-acute bullet z
    UniChar out[8];
    BCIndex read = 0, written = 0;
    ASSERT_EQ(ConvertFromTextToUnicode(info, 4, roman, 0, 0, nullptr, nullptr, nullptr, sizeof out,
                                       &read, &written, out),
              noErr);
    EXPECT_EQ(read, 4);
    ASSERT_EQ(written, 8);
    EXPECT_EQ(std::u16string(reinterpret_cast<char16_t*>(out), 4), u"A\u00E9\u2022z");
    EXPECT_EQ(ConvertFromTextToUnicode(info, 4, roman, 0, 0, nullptr, nullptr, nullptr, 4, &read,
                                       &written, out),
              kTECOutputBufferFullStatus);
    EXPECT_EQ(read, 2);
    EXPECT_EQ(written, 4);
    EXPECT_EQ(DisposeTextToUnicodeInfo(&info), noErr);
    EXPECT_EQ(info, nullptr);

    ASSERT_EQ(CreateTextToUnicodeInfoByEncoding(kBCStringEncodingUTF8, &info), noErr);
    const char broken[] = "ok\xC3";
    EXPECT_EQ(ConvertFromTextToUnicode(info, 3, broken, 0, 0, nullptr, nullptr, nullptr, sizeof out,
                                       &read, &written, out),
              kTextMalformedInputErr);
    // An emoji never splits across a full buffer.
    const char emoji[] = "a\xF0\x9F\x98\x80";
    EXPECT_EQ(ConvertFromTextToUnicode(info, 5, emoji, 0, 0, nullptr, nullptr, nullptr, 4, &read,
                                       &written, out),
              kTECOutputBufferFullStatus);
    EXPECT_EQ(written, 2);
    EXPECT_EQ(read, 1);
    DisposeTextToUnicodeInfo(&info);
    EXPECT_EQ(CreateTextToUnicodeInfoByEncoding(0x7FFF, &info), kTextUnsupportedEncodingErr);
}

TEST(TextEncoding, SniffsUTF8AndStopsBeforeACutCharacter) {
    std::string text = "Gr\xC3\xBC\xC3\x9F"
                       "e aus K\xC3\xB6ln, sch\xC3\xB6ne Gr\xC3\xBC\xC3\x9F"
                       "e, \xE2\x80\x9Cquoted\xE2\x80\x9D \xE2\x80\xA6";
    std::string cut = text.substr(0, text.size() - 1); // ends inside the ellipsis
    TextEncoding encoding = 0;
    float confidence = 0;
    BCIndex usable = 0;
    ASSERT_EQ(TECSniffEncodingAndLanguage(cut.data(), BCIndex(cut.size()), &encoding, &confidence,
                                          &usable),
              noErr);
    EXPECT_EQ(GetTextEncodingFormat(encoding), 2u);
    EXPECT_GT(confidence, 0.0f);
    EXPECT_LE(confidence, 1.0f);
    EXPECT_EQ(usable, BCIndex(text.size() - 3));
    EXPECT_EQ(GetTextEncodingFormat(kTextEncodingMacRoman), 0u);
    EXPECT_EQ(TECSniffEncodingAndLanguage(nullptr, 4, &encoding, nullptr, nullptr), paramErr);
}

} // namespace
