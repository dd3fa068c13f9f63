#include "basalt/files/BEDesc.h"
#include "basalt/files/BFRef.h"
#include "tests/support/TestEnvironment.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

BEDesc RefDesc(const fs::path& path) {
    BFRef ref;
    EXPECT_EQ(BFPathMakeRef(reinterpret_cast<const uint8_t*>(path.c_str()), &ref, nullptr), noErr);
    BEDesc desc;
    BECreateDesc(typeBFRef, &ref, sizeof ref, &desc);
    return desc;
}

std::string PathOfDesc(const BEDesc& desc) {
    BEDesc asRef;
    if (BECoerceDesc(&desc, typeBFRef, &asRef) != noErr)
        return {};
    BFRef ref;
    BEGetDescData(&asRef, &ref, sizeof ref);
    BEDisposeDesc(&asRef);
    uint8_t buffer[4096];
    return BFRefMakePath(&ref, buffer, sizeof buffer) == noErr ? reinterpret_cast<char*>(buffer)
                                                               : "";
}

TEST(BECoercionTest, RoundTripsAmongRefSpecAndURL) {
    fs::path folder = keltest::MakeScratchFolder("coerce");
    fs::path file = folder / "na\xEFve: %20 r\xC3\xA9sum\xC3\xA9.txt";
    keltest::WriteFile(file, "x");
    BEDesc ref = RefDesc(file);

    BEDesc spec, url, fromSpec, fromURL;
    ASSERT_EQ(BECoerceDesc(&ref, typeFileSpec, &spec), noErr);
    EXPECT_EQ(BEGetDescDataSize(&spec), 70);
    ASSERT_EQ(BECoerceDesc(&ref, typeFileURL, &url), noErr);
    std::string text(static_cast<size_t>(BEGetDescDataSize(&url)), '\0');
    BEGetDescData(&url, text.data(), static_cast<Size>(text.size()));
    EXPECT_EQ(text.rfind("file:///", 0), 0u);
    EXPECT_NE(text.find("%EF"), std::string::npos) << text;

    ASSERT_EQ(BECoerceDesc(&spec, typeFileURL, &fromSpec), noErr);
    ASSERT_EQ(BECoerceDesc(&url, typeFileSpec, &fromURL), noErr);
    EXPECT_EQ(PathOfDesc(fromSpec), file.string());
    EXPECT_EQ(PathOfDesc(fromURL), file.string());
    for (BEDesc* d : {&ref, &spec, &url, &fromSpec, &fromURL})
        BEDisposeDesc(d);
}

TEST(BECoercionTest, NamesLongerThanASpecHoldDoNotCoerce) {
    fs::path file = keltest::MakeScratchFolder("spec") / std::string(100, 'n');
    keltest::WriteFile(file, "x");
    BEDesc desc = RefDesc(file), out;
    EXPECT_EQ(BECoerceDesc(&desc, typeFileSpec, &out), errBECoercionFail);
    BEDisposeDesc(&desc);
}

TEST(BECoercionTest, StaleAndForeignDescriptorsFail) {
    fs::path folder = keltest::MakeScratchFolder("stale");
    keltest::WriteFile(folder / "gone", "x");
    BEDesc ref = RefDesc(folder / "gone");
    fs::remove(folder / "gone");
    BEDesc out;
    EXPECT_EQ(BECoerceDesc(&ref, typeFileURL, &out), errBECoercionFail);
    EXPECT_EQ(BECoerceDesc(&ref, typeWildCard, &out), noErr) << "wildcard is a plain copy";
    BEDisposeDesc(&out);
    BEDisposeDesc(&ref);

    BEDesc http;
    BECreateDesc(typeFileURL, "http://example.org/x", 20, &http);
    EXPECT_EQ(BECoerceDesc(&http, typeBFRef, &out), errBECoercionFail);
    BEDisposeDesc(&http);
}

} // namespace
