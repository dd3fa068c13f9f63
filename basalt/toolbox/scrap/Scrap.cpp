// The scrap and pasteboards. The clipboard's text goes to the backend's clipboard as UTF-8, so
// that it reaches other applications; other flavours stay in the process.

#include "basalt/toolbox/scrap/Scrap.h"

#include "basalt/toolbox/backend/Backend.h"
#include "basalt/toolbox/views/UnicodeText.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <vector>

struct OpaqueScrapRef {
    std::map<ScrapFlavorType, std::vector<uint8_t>> flavors;
};

struct OpaquePasteboardRef {
    std::string name;
    struct Item {
        PasteboardItemID id;
        std::vector<std::pair<std::u16string, std::vector<uint8_t>>> flavors;
    };
    std::vector<Item> items;
    long count = 1;
};

namespace basalt::toolbox::scrap {
namespace {

constexpr char16_t kPlainText[] = u"public.utf8-plain-text";

OpaqueScrapRef& TheScrap() {
    static auto* scrap = new OpaqueScrapRef;
    return *scrap;
}

// What the clipboard showed the last time we looked; a change there means another application
// copied something, which replaces our flavours.
std::string& LastSeen() {
    static auto* seen = new std::string;
    return *seen;
}

void Refresh() {
    std::string now = CurrentBackend().ClipboardText();
    if (now == LastSeen())
        return;
    LastSeen() = now;
    TheScrap().flavors.clear();
    if (now.empty())
        return;
    std::u16string text = FromUTF8(now);
    auto* bytes = reinterpret_cast<const uint8_t*>(text.data());
    TheScrap().flavors[kScrapFlavorTypeUnicode].assign(bytes, bytes + text.size() * 2);
    TheScrap().flavors[kScrapFlavorTypeText].assign(now.begin(), now.end());
}

} // namespace

void PutText(const std::u16string& text) {
    Clear();
    std::string utf8 = ToUTF8(text);
    auto* bytes = reinterpret_cast<const uint8_t*>(text.data());
    TheScrap().flavors[kScrapFlavorTypeUnicode].assign(bytes, bytes + text.size() * 2);
    TheScrap().flavors[kScrapFlavorTypeText].assign(utf8.begin(), utf8.end());
    CurrentBackend().SetClipboardText(utf8);
    LastSeen() = utf8;
}

bool GetText(std::u16string* text) {
    Refresh();
    auto it = TheScrap().flavors.find(kScrapFlavorTypeUnicode);
    if (it == TheScrap().flavors.end())
        return false;
    text->assign(reinterpret_cast<const char16_t*>(it->second.data()), it->second.size() / 2);
    return true;
}

void Clear() {
    TheScrap().flavors.clear();
    CurrentBackend().SetClipboardText("");
    LastSeen().clear();
}

} // namespace basalt::toolbox::scrap

using namespace basalt::toolbox;

extern "C" {

StatusCode GetCurrentScrap(ScrapRef* scrap) {
    if (scrap == nullptr)
        return paramErr;
    scrap::Refresh();
    *scrap = &scrap::TheScrap();
    return noErr;
}

StatusCode ClearCurrentScrap(void) {
    scrap::Clear();
    return noErr;
}

StatusCode GetScrapFlavorFlags(ScrapRef scrap, ScrapFlavorType flavorType,
                               ScrapFlavorFlags* flavorFlags) {
    if (scrap == nullptr)
        return paramErr;
    if (scrap->flavors.count(flavorType) == 0)
        return noTypeErr;
    if (flavorFlags != nullptr)
        *flavorFlags = kScrapFlavorMaskNone;
    return noErr;
}

StatusCode GetScrapFlavorSize(ScrapRef scrap, ScrapFlavorType flavorType, Size* byteCount) {
    if (scrap == nullptr || byteCount == nullptr)
        return paramErr;
    auto it = scrap->flavors.find(flavorType);
    if (it == scrap->flavors.end())
        return noTypeErr;
    *byteCount = Size(it->second.size());
    return noErr;
}

StatusCode GetScrapFlavorData(ScrapRef scrap, ScrapFlavorType flavorType, Size* byteCount,
                              void* destination) {
    if (scrap == nullptr || byteCount == nullptr || destination == nullptr)
        return paramErr;
    auto it = scrap->flavors.find(flavorType);
    if (it == scrap->flavors.end())
        return noTypeErr;
    *byteCount = std::min(*byteCount, Size(it->second.size()));
    std::memcpy(destination, it->second.data(), size_t(*byteCount));
    return noErr;
}

StatusCode PutScrapFlavor(ScrapRef scrap, ScrapFlavorType flavorType, ScrapFlavorFlags,
                          Size flavorSize, const void* flavorData) {
    if (scrap == nullptr || flavorSize < 0 || (flavorData == nullptr && flavorSize > 0))
        return paramErr;
    auto* bytes = static_cast<const uint8_t*>(flavorData);
    scrap->flavors[flavorType].assign(bytes, bytes + flavorSize);
    if (flavorType == kScrapFlavorTypeUnicode) {
        std::u16string text(reinterpret_cast<const char16_t*>(bytes), size_t(flavorSize) / 2);
        std::string utf8 = ToUTF8(text);
        CurrentBackend().SetClipboardText(utf8);
        scrap::LastSeen() = utf8;
    }
    return noErr;
}

// ---- Pasteboards ----------------------------------------------------------------------------

namespace {

bool IsClipboard(const PasteboardRef board) {
    return board->name == kPasteboardClipboard;
}

// The clipboard pasteboard mirrors the scrap's text.
void SyncFromScrap(PasteboardRef board) {
    std::u16string text;
    if (!IsClipboard(board) || !scrap::GetText(&text))
        return;
    std::string utf8 = ToUTF8(text);
    board->items = {
        {reinterpret_cast<PasteboardItemID>(1), {{scrap::kPlainText, {utf8.begin(), utf8.end()}}}}};
}

} // namespace

StatusCode PasteboardCreate(BCStringRef inName, PasteboardRef* outPasteboard) {
    if (outPasteboard == nullptr)
        return paramErr;
    auto* board = new OpaquePasteboardRef;
    board->name = inName != nullptr ? ToUTF8(FromBCString(inName)) : "";
    *outPasteboard = board;
    return noErr;
}

void PasteboardRelease(PasteboardRef inPasteboard) {
    delete inPasteboard;
}

uint32_t PasteboardSynchronize(PasteboardRef inPasteboard) {
    if (inPasteboard == nullptr)
        return 0;
    size_t before = inPasteboard->items.size();
    SyncFromScrap(inPasteboard);
    return inPasteboard->items.size() != before ? uint32_t(kPasteboardModified) : 0;
}

StatusCode PasteboardClear(PasteboardRef inPasteboard) {
    if (inPasteboard == nullptr)
        return paramErr;
    inPasteboard->items.clear();
    if (IsClipboard(inPasteboard))
        scrap::Clear();
    return noErr;
}

StatusCode PasteboardGetItemCount(PasteboardRef inPasteboard, unsigned long* outCount) {
    if (inPasteboard == nullptr || outCount == nullptr)
        return paramErr;
    *outCount = inPasteboard->items.size();
    return noErr;
}

StatusCode PasteboardGetItemIdentifier(PasteboardRef inPasteboard, unsigned long inIndex,
                                       PasteboardItemID* outItem) {
    if (inPasteboard == nullptr || outItem == nullptr)
        return paramErr;
    if (inIndex < 1 || inIndex > inPasteboard->items.size())
        return badPasteboardIndexErr;
    *outItem = inPasteboard->items[inIndex - 1].id;
    return noErr;
}

StatusCode PasteboardPutItemFlavor(PasteboardRef inPasteboard, PasteboardItemID inItem,
                                   BCStringRef inFlavorType, BCDataRef inData, uint32_t) {
    if (inPasteboard == nullptr || inFlavorType == nullptr || inData == nullptr)
        return paramErr;
    auto item = std::find_if(inPasteboard->items.begin(), inPasteboard->items.end(),
                             [&](const auto& existing) { return existing.id == inItem; });
    if (item == inPasteboard->items.end())
        item = inPasteboard->items.insert(inPasteboard->items.end(), {inItem, {}});
    const uint8_t* bytes = BCDataGetBytePtr(inData);
    std::u16string flavor = FromBCString(inFlavorType);
    item->flavors.emplace_back(flavor,
                               std::vector<uint8_t>(bytes, bytes + BCDataGetLength(inData)));
    if (IsClipboard(inPasteboard) && flavor == scrap::kPlainText)
        scrap::PutText(
            FromUTF8({reinterpret_cast<const char*>(bytes), size_t(BCDataGetLength(inData))}));
    return noErr;
}

StatusCode PasteboardCopyItemFlavorData(PasteboardRef inPasteboard, PasteboardItemID inItem,
                                        BCStringRef inFlavorType, BCDataRef* outData) {
    if (inPasteboard == nullptr || inFlavorType == nullptr || outData == nullptr)
        return paramErr;
    std::u16string flavor = FromBCString(inFlavorType);
    for (const auto& item : inPasteboard->items)
        if (item.id == inItem)
            for (const auto& [name, bytes] : item.flavors)
                if (name == flavor) {
                    *outData = BCDataCreate(nullptr, bytes.data(), BCIndex(bytes.size()));
                    return noErr;
                }
    return badPasteboardFlavorErr;
}

StatusCode PasteboardCopyItemFlavors(PasteboardRef inPasteboard, PasteboardItemID inItem,
                                     BCArrayRef* outFlavorTypes) {
    if (inPasteboard == nullptr || outFlavorTypes == nullptr)
        return paramErr;
    for (const auto& item : inPasteboard->items)
        if (item.id == inItem) {
            BCMutableArrayRef flavors = BCArrayCreateMutable(nullptr, 0, &kBCTypeArrayCallBacks);
            for (const auto& entry : item.flavors) {
                StringHolder name(MakeBCString(entry.first));
                BCArrayAppendValue(flavors, name.get());
            }
            *outFlavorTypes = flavors;
            return noErr;
        }
    return badPasteboardIndexErr;
}

} // extern "C"
