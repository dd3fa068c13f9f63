#include "basalt/toolbox/events/Event.h"
#include "basalt/toolbox/views/UnicodeText.h"

#include <basalt/BasaltToolbox.h>
#include <gtest/gtest.h>

using namespace basalt::toolbox;

TEST(Scrap, FlavoursRoundTripAndTextReachesTheClipboardPasteboard) {
    ASSERT_EQ(ClearCurrentScrap(), noErr);
    ScrapRef scrap = nullptr;
    GetCurrentScrap(&scrap);
    std::u16string text = u"na\u00EFve";
    ASSERT_EQ(PutScrapFlavor(scrap, kScrapFlavorTypeUnicode, 0, Size(text.size() * 2), text.data()),
              noErr);
    Size size = 0;
    ASSERT_EQ(GetScrapFlavorSize(scrap, kScrapFlavorTypeUnicode, &size), noErr);
    EXPECT_EQ(size, Size(text.size() * 2));
    std::u16string back(text.size(), u'\0');
    GetScrapFlavorData(scrap, kScrapFlavorTypeUnicode, &size, back.data());
    EXPECT_EQ(back, text);
    EXPECT_EQ(GetScrapFlavorSize(scrap, FourCC("PICT"), &size), noTypeErr);

    StringHolder name(MakeBCString(u"" kPasteboardClipboard));
    PasteboardRef board = nullptr;
    ASSERT_EQ(PasteboardCreate(name.get(), &board), noErr);
    PasteboardSynchronize(board);
    unsigned long count = 0;
    PasteboardGetItemCount(board, &count);
    ASSERT_EQ(count, 1u);
    PasteboardItemID item = nullptr;
    PasteboardGetItemIdentifier(board, 1, &item);
    StringHolder plain(MakeBCString(u"public.utf8-plain-text"));
    BCDataRef data = nullptr;
    ASSERT_EQ(PasteboardCopyItemFlavorData(board, item, plain.get(), &data), noErr);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(BCDataGetBytePtr(data)),
                          size_t(BCDataGetLength(data))),
              "na\xC3\xAFve");
    BCRelease(data);
    EXPECT_EQ(PasteboardGetItemIdentifier(board, 2, &item), badPasteboardIndexErr);

    // Text put on the clipboard pasteboard becomes the scrap's.
    PasteboardClear(board);
    BCDataRef bytes = BCDataCreate(nullptr, reinterpret_cast<const uint8_t*>("caf\xC3\xA9"), 5);
    PasteboardPutItemFlavor(board, reinterpret_cast<PasteboardItemID>(7), plain.get(), bytes, 0);
    BCRelease(bytes);
    GetCurrentScrap(&scrap);
    GetScrapFlavorSize(scrap, kScrapFlavorTypeUnicode, &size);
    EXPECT_EQ(size, 8);
    PasteboardRelease(board);
}
