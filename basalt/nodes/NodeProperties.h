#pragma once

// Node properties by four-character code, read lazily and cached per node until a change
// event for it arrives. Getters leave the value alone on failure, so callers preset it.
//
//   "pnam" name in the file system (bytes that are not UTF-8 as U+DC80+byte, so it finds the
//          node again)       "dnam" the name as shown (legible; extension cut when "hext")
//   "utid" type identifier (MIME type) from the name      "asty" / "fcrt" type and creator
//   "ascd" / "modd" creation / modification date           "attr" 1 locked, 0x10 folder
//   "fflg" 0x8000 alias, 0x4000 invisible                   "labl" colour label
//   "dats" / "ress" data and resource sizes                 "aslk" locked  "hext" hidden ext
//   "icon" the node's icon, through GetNodePropertyAsIconRef

#include "basalt/files/BFCatalogInfo.h"
#include "basalt/nodes/NodeService.h"

#include <basalt/BasaltGraphics.h>

constexpr FourCharCode NodeCode(const char (&c)[5]) {
    return uint32_t(uint8_t(c[0])) << 24 | uint32_t(uint8_t(c[1])) << 16 |
           uint32_t(uint8_t(c[2])) << 8 | uint32_t(uint8_t(c[3]));
}

// Writes at most capacity UTF-16 units; length gets the full length.
StatusCode GetNodePropertyAsStringNew(NodeRef node, FourCharCode code, BCIndex capacity,
                                      BCIndex* length, UniChar* chars, uint32_t options);
StatusCode GetNodePropertyAsFourCharCode(NodeRef node, FourCharCode code, FourCharCode* value,
                                         uint32_t options);
StatusCode GetNodePropertyAsInt16(NodeRef node, FourCharCode code, int16_t* value,
                                  uint32_t options);
StatusCode GetNodePropertyAsInt64(NodeRef node, FourCharCode code, int64_t* value,
                                  uint32_t options);
// Local time, seconds since 1904-01-01.
StatusCode GetNodePropertyAsDateTime(NodeRef node, FourCharCode code, uint32_t* value,
                                     uint32_t options);
StatusCode GetNodePropertyAsUTCDateTime(NodeRef node, FourCharCode code, UTCDateTime* value,
                                        uint32_t options);
StatusCode GetNodePropertyAsBoolean(NodeRef node, FourCharCode code, Boolean* value,
                                    uint32_t options);

// The icon of the node's kind: the computer, volumes by kind, special folders, folders,
// packages, and files by their type's icon from the icon themes; an alias shows what it leads
// to. Owned by the caller (ReleaseIconRef).
StatusCode GetNodePropertyAsIconRef(NodeRef node, FourCharCode code, IconRef* icon,
                                    uint32_t options);
// The same icon for a file reference; the name, catalog info and flags are accepted and not
// needed, as the reference itself says everything. outLabel (may be null) gets 0.
StatusCode GetIconRefFromFileInfo(const BFRef* ref, BCIndex nameLength, const UniChar* name,
                                  uint32_t whichInfo, const BFCatalogInfo* info,
                                  uint32_t usageFlags, IconRef* icon, int16_t* outLabel);

enum : uint32_t {
    kNodePermissionUnlocked = 0x1000, // the node's lock is off, so it may be changed
    kNodePermissionAddChild = 0x4000, // new items can be made in the folder
    kNodePermissionWrite = 0x8000,
    kNodePermissionRead = 0x10000
};
// In and out: clears the asked-for bits that the process does not hold.
StatusCode NodeGetPermissions(NodeRef node, uint32_t* bits);
// 1 for a case-sensitive file system, 0 for one that ignores case.
StatusCode NodeGetNameSyntaxHint(NodeRef node, uint32_t* hint);

typedef int16_t (*NodeStringCompareProc)(unsigned long lengthA, const UniChar* charsA,
                                         unsigned long lengthB, const UniChar* charsB);
int16_t NodeStringCompare(NodeRef a, NodeRef b, FourCharCode code, NodeStringCompareProc compare);
// The collation key of a string property (UCGetCollationKey, standard options), cached per
// node, for sorting many nodes. A key ends in its only zero byte, which length counts, so keys
// compare with memcmp or strcmp alike; a key that could not be made has length 0. Valid until
// the node is disposed or changes.
StatusCode NodeGetSortKey(NodeRef node, FourCharCode code, const uint8_t** key, BCIndex* length);
