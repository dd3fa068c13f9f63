#pragma once

// kelpick's own items in a dialog's type popup, and what choosing one does: a file filter shows
// only the files whose names match one of its patterns; a save type gives the name its extension.

#include "tools/kelpick/KelpickOptions.h"

#include <basalt/BasaltCore.h>
#include <string>
#include <vector>

// The type identifier that an extension ("txt") or a MIME type names; owned by the caller.
BCStringRef CreateTypeIdentifier(const std::string& type);

class PopupItems {
public:
    static PopupItems FromFilters(const std::vector<FileFilter>& filters);
    // Lower-case extensions and MIME types, as --types gives them.
    static PopupItems FromSaveTypes(const std::vector<std::string>& types);

    bool Empty() const { return items.empty(); }
    // The titles, for the creation options' popup extension; owned by the caller.
    BCArrayRef CreateTitles() const;
    // The item whose extension the name has already, else the first.
    size_t ItemForName(const std::string& name) const;
    // An item number the dialog reports; numbers that are not kelpick's change nothing.
    void Choose(size_t index);
    // Whether the chosen filter lets the file of that name be seen; no filter shows everything.
    bool Shows(const std::string& fileName) const;
    // The extension, without its dot, that the chosen item gives a name; empty for none.
    std::string Extension() const;

private:
    struct Item {
        std::string title;
        std::vector<std::string> patterns;
        std::string extension;
    };
    std::vector<Item> items;
    size_t chosen = 0;
};

// The name with its extension, if any, replaced by extension: "a.txt" and "md" give "a.md". A
// leading dot starts a name, not an extension.
std::string WithExtension(const std::string& name, const std::string& extension);
