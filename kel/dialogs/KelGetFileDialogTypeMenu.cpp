// The open dialog's type popup: its entries, built from the client's type list or type
// identifiers and the client's own items.

#include "basalt/nodes/NodeProperties.h"
#include "basalt/types/BLRegistry.h"
#include "basalt/types/BUTypes.h"
#include "kel/dialogs/KelGetFileDialog.h"

#include <array>

namespace {

constexpr FourCharCode kAnyCreator = NodeCode("****");
constexpr StatusCode kNoKindErr = -5699;

struct GenericKind {
    FourCharCode type;
    const char* titleKey;
};

constexpr std::array<GenericKind, 26> kGenericKinds{{
    {NodeCode("PICT"), "Picture Document"}, {NodeCode("PICS"), "Picture Document"},
    {NodeCode("GIFf"), "Picture Document"}, {NodeCode("8BPS"), "Picture Document"},
    {NodeCode(".SGI"), "Picture Document"}, {NodeCode("BMPf"), "Picture Document"},
    {NodeCode("JPEG"), "Picture Document"}, {NodeCode("PNTG"), "Picture Document"},
    {NodeCode("TPIC"), "Picture Document"}, {NodeCode("qdgz"), "Picture Document"},
    {NodeCode("rbif"), "Picture Document"}, {NodeCode("3DMF"), "Picture Document"},
    {NodeCode("TIFF"), "Picture Document"}, {NodeCode("TEXT"), "Text Document"},
    {NodeCode("ttro"), "Text Document"},    {NodeCode("MooV"), "Movie Document"},
    {NodeCode("AIFF"), "Sound Document"},   {NodeCode("AIFC"), "Sound Document"},
    {NodeCode("dvc!"), "Sound Document"},   {NodeCode("Midi"), "Sound Document"},
    {NodeCode("WAVE"), "Sound Document"},   {NodeCode("sfil"), "Sound Document"},
    {NodeCode("ULAW"), "Sound Document"},   {NodeCode("VfW "), "Sound Document"},
    {NodeCode("Sd2f"), "Sound Document"},   {NodeCode("trak"), "Sound Document"},
}};

TTypeMenuItem Entry(uint16_t kind, const TStringRef& title) {
    TTypeMenuItem item;
    item.kind = kind;
    item.title = title;
    return item;
}

TTypeMenuItem Separator() {
    return Entry(TTypeMenuItem::kSeparator, TStringRef());
}

// The kind of one type of a list, in the words of the list's creator.
StatusCode CopyTypeTitle(FourCharCode creator, FourCharCode type, TStringRef& title) {
    if (creator == kAnyCreator) {
        return KelGetFileDialog::GetGenericKindString(type, title);
    }
    BCStringRef kind = nullptr;
    const StatusCode status = BLCopyKindStringForInfo(type, creator, nullptr, &kind);
    if (status == noErr) {
        title = TStringRef(kind, false);
    }
    return status;
}

} // namespace

StatusCode KelGetFileDialog::GetGenericKindString(unsigned long type, TStringRef& out) {
    for (const GenericKind& kind : kGenericKinds) {
        if (kind.type != type) {
            continue;
        }
        if (TStringRef title = BundleText(kind.titleKey); !title.IsNil()) {
            out = title;
            break;
        }
    }
    return out.Length() == 0 ? kNoKindErr : noErr;
}

void KelGetFileDialog::UpdateTypeMenu(KelTypeList** types,
                                      const TDialogConfiguration* configuration) {
    BCArrayRef identifiers = typeIdentifiers;
    const BCIndex identifierCount = identifiers != nullptr ? BCArrayGetCount(identifiers) : 0;
    // The client's own items stay, in their order, over a rebuild.
    std::erase_if(typeMenuItems, [](const TTypeMenuItem& item) {
        return item.kind != TTypeMenuItem::kClientItem;
    });
    auto cursor = typeMenuItems.begin();
    if (types != nullptr || identifiers != nullptr) {
        cursor = std::next(typeMenuItems.insert(
            cursor, Entry(TTypeMenuItem::kFilterByTypeList, BundleText("All Readable Files"))));
        if (identifiers == nullptr || identifierCount > 0) {
            cursor = std::next(typeMenuItems.insert(cursor, Separator()));
        }
    }
    if (identifiers == nullptr) {
        const std::vector<FourCharCode> listed = TypesOfList(types);
        if (!listed.empty()) {
            const FourCharCode creator = (*types)->componentSignature;
            if (creator != kAnyCreator) {
                TStringRef title = BundleText("All Known Files");
                if (clientName.Length() > 0) {
                    TMutableStringRef named = BundleText("All App").CopyMutable(0);
                    named.ReplaceParam(0, clientName);
                    title = named;
                }
                AddTypeMenuItem(Entry(TTypeMenuItem::kFilterByTypeList, title));
            }
            for (const FourCharCode type : listed) {
                TStringRef title;
                if (CopyTypeTitle(creator, type, title) == noErr) {
                    TTypeMenuItem item = Entry(TTypeMenuItem::kOneType, title);
                    item.creator = creator;
                    item.fileType = type;
                    AddTypeMenuItem(item);
                }
            }
        }
    } else {
        // A line parts the identifiers from the client's items that stayed; items still to
        // come from the configuration bring their own line.
        if (cursor != typeMenuItems.end()) {
            cursor = typeMenuItems.insert(cursor, Separator());
        }
        for (BCIndex index = identifierCount - 1; index >= 0; --index) {
            auto identifier = static_cast<BCStringRef>(BCArrayGetValueAtIndex(identifiers, index));
            TTypeMenuItem item = Entry(TTypeMenuItem::kOneType,
                                       TStringRef(BUTypeCopyDescription(identifier), false));
            item.typeIdentifier = identifier;
            cursor = typeMenuItems.insert(cursor, item);
        }
    }
    if (configuration != nullptr) {
        TBrowseDialog::BuildTypeMenu(*configuration);
    }
    if ((optionFlags & kKelOptAllFilesInPopup) != 0 &&
        (!typeMenuItems.empty() || identifierCount > 0)) {
        AddPopupMenuItemSeperator();
        AddTypeMenuItem(Entry(TTypeMenuItem::kNoFilter, BundleText("All Files")));
    }
}

void KelGetFileDialog::BuildTypeMenu(const TDialogConfiguration& configuration) {
    UpdateTypeMenu(configuration.typeList, &configuration);
}

void KelGetFileDialog::SetUpShowFilterMenu() {
    AttachTypeMenu(typePopup);
}
