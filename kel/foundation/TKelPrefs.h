#pragma once

// What the dialogs remember between runs, kept in the preferences store.
//
// Per-dialog values live in the current application's domain under keys made by CreateKey
// ("VelmoKelServices:<panel>:<client>:<leaf>"); settings shared by every application live in the
// any-application domain of the current user. Window geometry is stored as big-endian 16-bit
// fields. A stored value of the wrong kind or size counts as damage and is removed on reading.
// Nothing is written when the real and effective user differ.

#include "kel/foundation/TStringRef.h"

#include <basalt/BasaltGraphics.h>
#include <cstdint>

class TKelNodeArray;

// The leaves of the per-dialog keys, made by the first TKelPrefs and kept for the process.
extern BCStringRef kKelPrefDialogPosition;
extern BCStringRef kKelPrefDialogSize;
extern BCStringRef kKelPrefDialogPath;
extern BCStringRef kKelPrefDialogHomeDirectoryPath;
extern BCStringRef kKelPrefWindowMinimized;
extern BCStringRef kKelPrefExtensionHidden;

class TKelPrefs {
public:
    enum View : int32_t { kColumnView = 1, kListView = 2 };
    enum QueryScope : int32_t {
        kQueryScopeEverywhere = 0,
        kQueryScopeHome = 1,
        kQueryScopeCurrentFolder = 2
    };
    static constexpr uint16_t kDefaultMaximumRecentFolders = 10;

    TKelPrefs();
    TKelPrefs(const TKelPrefs&) = delete;
    TKelPrefs& operator=(const TKelPrefs&) = delete;
    virtual ~TKelPrefs() = default;

    // panelKey names the kind of dialog ("GetFile", "PutFile", ...), clientKey the client's
    // preference key in decimal.
    void SetClientKeys(const TStringRef& panelKey, const TStringRef& clientKey);
    TStringRef CreateKey(const TStringRef& leaf) const;

    // Copies a data value of exactly size bytes into out. A missing value sets failed; a value of
    // another kind or size is removed from the store and sets failed. failed is never cleared.
    void GetPreferenceData(const TStringRef& key, uint32_t size, void* out, uint8_t& failed) const;
    void SetPreferenceData(const TStringRef& key, uint32_t size, const void* data) const;

    // The window's place; (0, 0) when none is stored.
    Point GetDialogLocationPref() const;
    void SetDialogLocationPref(Point location) const;
    // The window's bounds; (0, 0, -1, -1) when none is stored.
    Rect GetDialogSizePref() const;
    void SetDialogSizePref(const Rect& bounds) const;
    // Whether the save dialog shows collapsed; true when nothing is stored.
    bool GetWindowMinimizedPref() const;
    void SetWindowMinimizedPref(bool minimized) const;
    // True when nothing is stored; a stored byte means true only when it is 1.
    bool GetExtensionHiddenPref() const;
    void SetExtensionHiddenPref(bool hidden) const;

    // Shared by all applications; key is one of the file list mode keys.
    View GetView(BCStringRef key) const;
    void SetView(View view, BCStringRef key) const;
    // False when no width is stored; the caller then keeps its own.
    bool GetDefaultColumnViewColumnWidth(uint16_t* width) const;
    void SetDefaultColumnViewColumnWidth(uint16_t width) const;
    // Stored and answered as given, unknown values included.
    QueryScope GetQueryScope() const;
    void SetQueryScope(QueryScope scope) const;
    // Whether the user asked to see invisible items everywhere.
    static bool GetInvisiblePrefs();

    uint16_t MaximumRecentFolders() const { return maximumRecentFolders; }

    // Puts a complete path at the front of the shared recent folders, unless a stored entry
    // already leads to the same folder; the oldest entry makes room when the list is full.
    void AddRecentPath(const TKelNodeArray& path) const;
    // The location stored under key, when it still leads somewhere; out is left alone otherwise.
    bool CopyPathWithKey(const TStringRef& key, TKelNodeArray& out) const;
    // The dialog's last location: the one relative to home first, else the full one.
    bool CopyDefaultPath(TKelNodeArray& out) const;

    // The preference names of the shared settings, as the bundle's "KelServices" table maps
    // them; looked up once and kept for the process.
    static BCStringRef MaximumRecentFoldersKey();
    static BCStringRef RecentFoldersKey();
    static BCStringRef ShowAllFilesKey();
    static BCStringRef ExpertModeKey();

private:
    static void MakeKeyLeaves();
    uint8_t GetByte(const TStringRef& leaf, uint8_t absent) const;
    void SetByte(const TStringRef& leaf, uint8_t value) const;

    TStringRef panelKey;
    TStringRef clientKey;
    uint16_t maximumRecentFolders = kDefaultMaximumRecentFolders;
};
