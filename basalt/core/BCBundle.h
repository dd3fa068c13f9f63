#pragma once

// A bundle is a folder with an Info.json and a Resources/ folder. Bundles found by identifier
// or as the main bundle are registered for the life of the process (immortal); a bundle made
// with BCBundleCreate for an unregistered folder is an ordinary counted object.

#include "basalt/core/BCObject.h"
#include "basalt/core/StringsTable.h"

#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace basalt {

class Bundle final : public BCObject {
public:
    static constexpr TypeID kType = TypeID::Bundle;

    // Reads folder/Info.json; a missing or broken Info.json leaves a bundle with no identifier.
    explicit Bundle(std::filesystem::path folder);
    ~Bundle() override;

    const std::filesystem::path& Folder() const { return folder_; }
    const std::string& Identifier() const { return identifier_; }
    BCStringRef IdentifierString() const { return identifierString_; }
    std::filesystem::path Resources() const { return folder_ / "Resources"; }

    // The first existing file among the localised folders, then Resources/ itself.
    std::optional<std::filesystem::path> FindResource(const std::string& relative) const;
    // The value of key in the first localised table that has it.
    std::optional<std::u16string> Localized(const std::u16string& key,
                                            const std::string& table) const;

    bool Load();
    bool IsLoaded() const;
    void* Symbol(const std::string& name);

    std::string Describe() const override;

private:
    std::vector<std::filesystem::path> LocalizedFolders() const;
    const StringsTable& Table(const std::filesystem::path& file) const;

    const std::filesystem::path folder_;
    std::string identifier_;
    std::string executable_;
    std::string developmentRegion_;
    BCStringRef identifierString_ = nullptr;
    mutable std::mutex mutex_; // guards tables_ and library_
    mutable std::map<std::filesystem::path, StringsTable> tables_;
    void* library_ = nullptr;
};

// Languages the user prefers, most wanted first: from LANGUAGE, else LC_ALL, LC_MESSAGES, LANG;
// each with its region and without ("de_AT" then "de"); "en" always ends the list.
std::vector<std::string> PreferredLanguages();

// Folders searched for bundles by identifier, in order.
std::vector<std::filesystem::path> BundleSearchPath();

} // namespace basalt
