// Icon references: the system icons by type, icons by freedesktop name, and their counts.

#include "basalt/graphics/IconPictures.h"
#include "basalt/graphics/IconRefObject.h"

#include <mutex>
#include <unordered_map>

using basalt::graphics::DrawnIcon;

namespace {

struct SystemIcon {
    OSType type;
    std::vector<std::string> names;
    DrawnIcon drawn;
    bool sharpOnly = false;
};

const std::vector<SystemIcon>& SystemIcons() {
    static const std::vector<SystemIcon> icons = {
        {kBTIconComputer, {"computer"}, DrawnIcon::Device},
        {kBTIconGenericFolder, {"folder"}, DrawnIcon::Folder},
        {kBTIconGenericServer, {"network-server"}, DrawnIcon::Device},
        {kBTIconGenericNetwork, {"network-workgroup"}, DrawnIcon::Device},
        {kBTIconSearch, {"folder-saved-search", "system-search"}, DrawnIcon::Search},
        {kBTIconGenericDocument, {"x-office-document", "text-x-generic"}, DrawnIcon::Document},
        {kBTIconGenericApplication, {"application-x-executable"}, DrawnIcon::Application},
        {kBTIconTrash, {"user-trash"}, DrawnIcon::Trash},
        {kBTIconFullTrash, {"user-trash-full", "user-trash"}, DrawnIcon::Trash},
        {kBTIconHardDisk, {"drive-harddisk"}, DrawnIcon::Device},
        {kBTIconRemovableDisk, {"drive-removable-media"}, DrawnIcon::Device},
        {kBTIconOpticalDisc, {"media-optical"}, DrawnIcon::Device},
        {kBTIconHome, {"user-home", "folder"}, DrawnIcon::Folder},
        {kBTIconDesktop, {"user-desktop", "folder"}, DrawnIcon::Folder},
        {kBTIconDocumentsFolder, {"folder-documents", "folder"}, DrawnIcon::Folder},
        {kBTIconDownloadsFolder, {"folder-download", "folder"}, DrawnIcon::Folder},
        {kBTIconPackage, {"package-x-generic"}, DrawnIcon::Application},
        {kBTIconAlias, {"emblem-symbolic-link"}, DrawnIcon::Document},
        {kBTIconEject, {"media-eject"}, DrawnIcon::Eject},
        {kBTIconLocked, {"changes-prevent", "emblem-readonly"}, DrawnIcon::Document},
        {kBTIconUnknownFile, {"application-x-generic"}, DrawnIcon::Document},
        // An alert's icon is its largest picture: a blurred one would spoil the alert.
        {kBTIconAlertNote, {"dialog-information"}, DrawnIcon::Note, true},
        {kBTIconAlertCaution, {"dialog-warning"}, DrawnIcon::Caution, true},
        {kBTIconAlertStop, {"dialog-error"}, DrawnIcon::Stop, true},
    };
    return icons;
}

// What a freedesktop name looks like when no theme has it.
DrawnIcon DrawnIconForName(const std::string& name) {
    if (name.rfind("folder", 0) == 0 || name == "inode-directory" || name.rfind("user-", 0) == 0)
        return DrawnIcon::Folder;
    if (name.rfind("drive-", 0) == 0 || name.rfind("media-", 0) == 0 ||
        name.rfind("network-", 0) == 0 || name == "computer")
        return DrawnIcon::Device;
    if (name.rfind("application-x-executable", 0) == 0)
        return DrawnIcon::Application;
    return DrawnIcon::Document;
}

class IconTable {
public:
    static IconTable& Shared() {
        static IconTable table;
        return table;
    }

    IconRef Intern(const std::string& key, std::vector<std::string> names, DrawnIcon drawn,
                   bool sharpOnly = false) {
        std::lock_guard lock(mutex_);
        if (auto found = icons_.find(key); found != icons_.end()) {
            ++found->second->owners;
            return found->second;
        }
        auto* icon = new OpaqueIconRef(key, std::move(names), drawn, sharpOnly);
        icons_.emplace(key, icon);
        return icon;
    }

    StatusCode Acquire(IconRef icon) {
        std::lock_guard lock(mutex_);
        if (!Known(icon) || icon->owners == UINT16_MAX)
            return paramErr;
        ++icon->owners;
        return noErr;
    }

    StatusCode Release(IconRef icon) {
        std::lock_guard lock(mutex_);
        if (!Known(icon))
            return paramErr;
        if (--icon->owners == 0) {
            icons_.erase(icon->key);
            delete icon;
        }
        return noErr;
    }

    uint16_t Owners(IconRef icon) {
        std::lock_guard lock(mutex_);
        return Known(icon) ? icon->owners : 0;
    }

private:
    // A released icon is gone from the table, so a stale reference is refused, not used.
    bool Known(IconRef icon) const {
        if (icon == nullptr)
            return false;
        for (const auto& entry : icons_)
            if (entry.second == icon)
                return true;
        return false;
    }

    std::mutex mutex_;
    std::unordered_map<std::string, IconRef> icons_;
};

} // namespace

cairo_surface_t* OpaqueIconRef::PictureFor(int pixelSize) {
    return basalt::graphics::IconPicture(key, names, pixelSize, sharpOnly);
}

extern "C" {

StatusCode GetIconRef(int16_t vRefNum, OSType creator, OSType iconType, IconRef* icon) {
    (void)vRefNum; // system icons live on every volume alike
    if (icon == nullptr)
        return paramErr;
    *icon = nullptr;
    if (creator != kBTSystemIconsCreator && creator != 0)
        return kBTIconNotFoundErr;
    for (const SystemIcon& entry : SystemIcons()) {
        if (entry.type != iconType)
            continue;
        *icon = IconTable::Shared().Intern("type:" + std::to_string(iconType), entry.names,
                                           entry.drawn, entry.sharpOnly);
        return noErr;
    }
    return kBTIconNotFoundErr;
}

StatusCode GetIconRefFromIconName(const char* name, const char* genericName, IconRef* icon) {
    if (icon == nullptr || name == nullptr || *name == '\0')
        return paramErr;
    std::vector<std::string> names = {name};
    if (genericName != nullptr && *genericName != '\0')
        names.emplace_back(genericName);
    const std::string key = "name:" + names.front() + "|" + names.back();
    *icon = IconTable::Shared().Intern(key, std::move(names), DrawnIconForName(name));
    return noErr;
}

StatusCode AcquireIconRef(IconRef icon) {
    return IconTable::Shared().Acquire(icon);
}
StatusCode ReleaseIconRef(IconRef icon) {
    return IconTable::Shared().Release(icon);
}
uint16_t GetIconRefOwners(IconRef icon) {
    return IconTable::Shared().Owners(icon);
}

} // extern "C"
