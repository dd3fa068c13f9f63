// Typed text paths over a small tree of odd names: any text resolves or not without harm; a
// path that resolves leads back to itself from its URL and from the text made of its leaf.

#include "FuzzScratch.h"
#include "kel/foundation/TStringRef.h"
#include "kel/nodes/NameCompletion.h"
#include "kel/nodes/TKelNode.h"
#include "kel/nodes/TNodePathHelper.h"

#include <basalt/BasaltCore.h>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

// Names that text paths find awkward: spaces, colons (typed as "/"), bytes that are not UTF-8,
// decomposed accents, links, a link loop, a file where a folder is expected.
void MakeTree(const fs::path& tree) {
    for (const char* folder : {"Folder/Sub/Deep", "with space", "a:b", "\xff\xfe", "Cafe\xcc\x81",
                               "Caf\xc3\xa9", "UPPER", ".hidden"})
        fs::create_directories(tree / folder);
    std::ofstream(tree / "file.txt") << "text";
    std::ofstream(tree / "Folder" / "x.odt") << "odt";
    fs::create_directory_symlink(tree / "Folder", tree / "link-to-folder");
    fs::create_symlink(tree / "file.txt", tree / "link-to-file");
    fs::create_symlink(tree / "loop", tree / "loop");
    fs::create_symlink(tree / "missing", tree / "dangling");
}

// The text of the input after its first byte: UTF-8 where it is, else the bytes taken as
// UTF-16 units (lone surrogates included).
TStringRef InputText(const uint8_t* data, size_t size) {
    BCStringRef text =
        BCStringCreateWithBytes(nullptr, data, BCIndex(size), kBCStringEncodingUTF8, false);
    if (text == nullptr) {
        std::vector<UniChar> units(size / 2);
        for (size_t i = 0; i < units.size(); ++i)
            units[i] = UniChar(data[2 * i] | data[2 * i + 1] << 8);
        text = BCStringCreateWithCharacters(nullptr, units.data(), BCIndex(units.size()));
    }
    return TStringRef(text, false);
}

TStringRef Prefixed(const std::string& prefix, const TStringRef& text) {
    BCMutableStringRef joined = BCStringCreateMutable(nullptr, 0);
    BCStringAppendCString(joined, prefix.c_str(), kBCStringEncodingUTF8);
    BCStringAppend(joined, text.AsBCStringRef());
    return TStringRef(joined, false);
}

void CheckResolvedPath(TNodePathHelper& helper) {
    const TKelNodeArray& path = helper.NodePath();
    if (path.size() < 2)
        return;
    const TKelNode leaf = path.back();
    // Virtual folders ("/Volumes", "/Network") have no URL; every other place leads back.
    if (BCURLRef url = helper.CopyURL()) {
        TNodePathHelper fromURL(url);
        BCRelease(url);
        if (!fromURL.IsComplete())
            std::abort();
    }

    TNodePathHelper fromLeaf(leaf.PeekNodeRef());
    TNodePathHelper again(fromLeaf.TextPath());
    if (!again.IsComplete() || again.NodePath().empty() || again.NodePath().back() != leaf)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::string tree = [] {
        const std::string folder = fuzz::FreshFolder("tree");
        MakeTree(folder);
        TKelNode::InitializeCatalog();
        return folder;
    }();
    if (size == 0)
        return 0;
    const TStringRef input = InputText(data + 1, size - 1);
    TStringRef text = input;
    switch (data[0] % 3) {
    case 0:
        text = Prefixed("~/tree/", input);
        break;
    case 1:
        text = Prefixed(tree + "/", input);
        break;
    default:
        break;
    }

    TNodePathHelper helper(text.AsBCStringRef());
    if (helper.IsComplete())
        CheckResolvedPath(helper);

    TUniString typed(text.AsBCStringRef()), completion;
    bool exactCase = true;
    CompleteString(TKelNode(), typed, completion, exactCase);
    return 0;
}
