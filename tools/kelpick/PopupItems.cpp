#include "tools/kelpick/PopupItems.h"

#include "basalt/types/BUTypes.h"

#include <fnmatch.h>

namespace {

std::string ExtensionOf(const std::string& name) {
    const size_t dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? std::string() : name.substr(dot + 1);
}

std::string Lowered(std::string text) {
    for (char& c : text) {
        c = (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c;
    }
    return text;
}

// What a person reads for a type: its description, capitalised as an item begins, and the
// extension it gives; without a description, the extension or the type itself.
std::string TypeTitle(BCStringRef identifier, const std::string& type,
                      const std::string& extension) {
    BCStringRef description = BUTypeCopyDescription(identifier);
    if (description == nullptr) {
        return extension.empty() ? type : "." + extension;
    }
    std::string title = basalt::types::Utf8(description);
    BCRelease(description);
    if (!title.empty() && title[0] >= 'a' && title[0] <= 'z') {
        title[0] = char(title[0] - 'a' + 'A');
    }
    return extension.empty() ? title : title + " (." + extension + ")";
}

} // namespace

BCStringRef CreateTypeIdentifier(const std::string& type) {
    BCStringRef tag = basalt::types::MakeString(type);
    BCStringRef identifier =
        type.find('/') != std::string::npos
            ? BCStringRef(BCRetain(tag))
            : BUTypeCreatePreferredIdentifierForTag(kBUTagClassFilenameExtension, tag, nullptr);
    BCRelease(tag);
    return identifier;
}

std::string WithExtension(const std::string& name, const std::string& extension) {
    const std::string old = ExtensionOf(name);
    const std::string stem = old.empty() ? name : name.substr(0, name.size() - old.size() - 1);
    return extension.empty() ? name : stem + "." + extension;
}

PopupItems PopupItems::FromFilters(const std::vector<FileFilter>& filters) {
    PopupItems popup;
    for (const FileFilter& filter : filters) {
        popup.items.push_back({filter.name, filter.patterns, {}});
    }
    return popup;
}

PopupItems PopupItems::FromSaveTypes(const std::vector<std::string>& types) {
    PopupItems popup;
    for (const std::string& type : types) {
        BCStringRef identifier = CreateTypeIdentifier(type);
        std::string extension = type;
        if (type.find('/') != std::string::npos) {
            BCStringRef tag =
                BUTypeCopyPreferredTagWithClass(identifier, kBUTagClassFilenameExtension);
            extension = tag != nullptr ? basalt::types::Utf8(tag) : std::string();
            if (tag != nullptr) {
                BCRelease(tag);
            }
        }
        popup.items.push_back({TypeTitle(identifier, type, extension), {}, extension});
        BCRelease(identifier);
    }
    return popup;
}

BCArrayRef PopupItems::CreateTitles() const {
    BCMutableArrayRef titles = BCArrayCreateMutable(nullptr, 0, &kBCTypeArrayCallBacks);
    for (const Item& item : items) {
        BCStringRef title = basalt::types::MakeString(item.title);
        BCArrayAppendValue(titles, title);
        BCRelease(title);
    }
    return titles;
}

size_t PopupItems::ItemForName(const std::string& name) const {
    const std::string extension = Lowered(ExtensionOf(name));
    for (size_t index = 0; !extension.empty() && index < items.size(); ++index) {
        if (Lowered(items[index].extension) == extension) {
            return index;
        }
    }
    return 0;
}

void PopupItems::Choose(size_t index) {
    if (index < items.size()) {
        chosen = index;
    }
}

bool PopupItems::Shows(const std::string& fileName) const {
    if (chosen >= items.size() || items[chosen].patterns.empty()) {
        return true;
    }
    for (const std::string& pattern : items[chosen].patterns) {
        if (fnmatch(pattern.c_str(), fileName.c_str(), FNM_CASEFOLD) == 0) {
            return true;
        }
    }
    return false;
}

std::string PopupItems::Extension() const {
    return chosen < items.size() ? items[chosen].extension : std::string();
}
