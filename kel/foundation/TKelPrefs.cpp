#include "kel/foundation/TKelPrefs.h"

#include "kel/foundation/KelBundle.h"
#include "kel/foundation/TKelPrefsStore.h"
#include "kel/foundation/TMutableStringRef.h"

#include <array>
#include <cstring>

BCStringRef kKelPrefDialogPosition = nullptr;
BCStringRef kKelPrefDialogSize = nullptr;
BCStringRef kKelPrefDialogPath = nullptr;
BCStringRef kKelPrefDialogHomeDirectoryPath = nullptr;
BCStringRef kKelPrefWindowMinimized = nullptr;
BCStringRef kKelPrefExtensionHidden = nullptr;

namespace {

void MakeKeyLeaves() {
    if (kKelPrefDialogPosition != nullptr) {
        return;
    }
    kKelPrefDialogPosition = BCSTR("Position");
    kKelPrefDialogSize = BCSTR("Size");
    kKelPrefDialogPath = BCSTR("Path");
    kKelPrefDialogHomeDirectoryPath = BCSTR("HomeDirectoryPath");
    kKelPrefWindowMinimized = BCSTR("Disclosure");
    kKelPrefExtensionHidden = BCSTR("ExtensionHidden");
}

void PutBigEndian(uint8_t* out, int16_t value) {
    out[0] = static_cast<uint8_t>(static_cast<uint16_t>(value) >> 8);
    out[1] = static_cast<uint8_t>(value);
}

int16_t GetBigEndian(const uint8_t* in) {
    return static_cast<int16_t>((in[0] << 8) | in[1]);
}

} // namespace

TKelPrefs::TKelPrefs() {
    MakeKeyLeaves();
    TStringRef key =
        KelBundle::GetStringResourceNonLocalized(BCSTR("VelmoMaximumRecentFoldersKey"));
    uint16_t stored = 0;
    uint8_t failed = false;
    GetPreferenceData(key, sizeof stored, &stored, failed);
    if (!failed) {
        maximumRecentFolders = stored;
    }
}

void TKelPrefs::SetClientKeys(const TStringRef& panel, const TStringRef& client) {
    panelKey = panel.Copy();
    clientKey = client.Copy();
}

TStringRef TKelPrefs::CreateKey(const TStringRef& leaf) const {
    TMutableStringRef key = TStringRef(BCSTR("VelmoKelServices")).CopyMutable(0);
    for (const TStringRef* part : {&panelKey, &clientKey, &leaf}) {
        key.Append(BCSTR(":"));
        key.Append(*part);
    }
    return key;
}

void TKelPrefs::GetPreferenceData(const TStringRef& key, uint32_t size, void* out,
                                  uint8_t& failed) const {
    TObjectRef value(kel_prefs::CopyAppValue(key), false);
    if (value.IsNil()) {
        failed = true;
        return;
    }
    auto data = static_cast<BCDataRef>(value.Get());
    if (BCGetTypeID(data) != BCDataGetTypeID() || BCDataGetLength(data) != size) {
        kel_prefs::RemoveAppValue(key);
        failed = true;
        return;
    }
    std::memcpy(out, BCDataGetBytePtr(data), size);
}

void TKelPrefs::SetPreferenceData(const TStringRef& key, uint32_t size, const void* data) const {
    TObjectRef value(BCDataCreate(kBCAllocatorDefault, static_cast<const uint8_t*>(data), size),
                     false);
    kel_prefs::SetAppValue(key, value.Get());
}

Point TKelPrefs::GetDialogLocationPref() const {
    std::array<uint8_t, 4> bytes{};
    uint8_t failed = false;
    GetPreferenceData(CreateKey(kKelPrefDialogPosition), bytes.size(), bytes.data(), failed);
    if (failed) {
        return Point{0, 0};
    }
    return Point{GetBigEndian(&bytes[0]), GetBigEndian(&bytes[2])};
}

void TKelPrefs::SetDialogLocationPref(Point location) const {
    std::array<uint8_t, 4> bytes{};
    PutBigEndian(&bytes[0], location.v);
    PutBigEndian(&bytes[2], location.h);
    SetPreferenceData(CreateKey(kKelPrefDialogPosition), bytes.size(), bytes.data());
}

Rect TKelPrefs::GetDialogSizePref() const {
    std::array<uint8_t, 8> bytes{};
    uint8_t failed = false;
    GetPreferenceData(CreateKey(kKelPrefDialogSize), bytes.size(), bytes.data(), failed);
    if (failed) {
        return Rect{0, 0, -1, -1};
    }
    return Rect{GetBigEndian(&bytes[0]), GetBigEndian(&bytes[2]), GetBigEndian(&bytes[4]),
                GetBigEndian(&bytes[6])};
}

void TKelPrefs::SetDialogSizePref(const Rect& bounds) const {
    std::array<uint8_t, 8> bytes{};
    PutBigEndian(&bytes[0], bounds.top);
    PutBigEndian(&bytes[2], bounds.left);
    PutBigEndian(&bytes[4], bounds.bottom);
    PutBigEndian(&bytes[6], bounds.right);
    SetPreferenceData(CreateKey(kKelPrefDialogSize), bytes.size(), bytes.data());
}

uint8_t TKelPrefs::GetByte(const TStringRef& leaf, uint8_t absent) const {
    uint8_t stored = 0;
    uint8_t failed = false;
    GetPreferenceData(CreateKey(leaf), 1, &stored, failed);
    return failed ? absent : stored;
}

void TKelPrefs::SetByte(const TStringRef& leaf, uint8_t value) const {
    SetPreferenceData(CreateKey(leaf), 1, &value);
}

bool TKelPrefs::GetWindowMinimizedPref() const {
    return GetByte(kKelPrefWindowMinimized, 1) != 0;
}

void TKelPrefs::SetWindowMinimizedPref(bool minimized) const {
    SetByte(kKelPrefWindowMinimized, minimized ? 1 : 0);
}

bool TKelPrefs::GetExtensionHiddenPref() const {
    return GetByte(kKelPrefExtensionHidden, 1) == 1;
}

void TKelPrefs::SetExtensionHiddenPref(bool hidden) const {
    SetByte(kKelPrefExtensionHidden, hidden ? 1 : 0);
}
