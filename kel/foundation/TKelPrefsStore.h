#pragma once

// The two preference domains the dialogs use: the current application's, and the one shared by
// all applications of the current user on any host. Writers do nothing when the real and the
// effective user differ, so a program running with another user's rights never changes the
// files of the person who started it.

#include "kel/foundation/TStringRef.h"

namespace kel_prefs {

bool MayWrite();

BCTypeRef CopyAppValue(const TStringRef& key);
void SetAppValue(const TStringRef& key, BCTypeRef value);
void RemoveAppValue(const TStringRef& key);

BCTypeRef CopySharedValue(const TStringRef& key);
// The shared value as it is on disk now: other applications may have changed it since this
// process read it.
BCTypeRef CopySharedValueFromDisk(const TStringRef& key);
// Written through at once, since nothing else synchronises the shared domain.
void SetSharedValue(const TStringRef& key, BCTypeRef value);

// A whole number from a number, or from a string of digits.
bool GetInteger(BCTypeRef value, int32_t& out);
// True for a string equal to "yes" in any case, or to "1".
bool IsAffirmative(BCTypeRef value);

} // namespace kel_prefs
