/*
 * Catalog information of a file or folder: flags, ids, dates, sizes, its name and its older
 * file spec (BFSpec), as much as whichInfo asks for.
 */
#ifndef BASALT_FILES_BFCATALOGINFO_H
#define BASALT_FILES_BFCATALOGINFO_H

#include "basalt/files/BFRef.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Seconds since 1904-01-01 UTC in 48 bits and a 16-bit fraction. */
#pragma pack(push, 2)
typedef struct UTCDateTime {
    uint16_t highSeconds;
    uint32_t lowSeconds;
    uint16_t fraction;
} UTCDateTime;
#pragma pack(pop)

typedef uint32_t BFCatalogInfoBitmap;
enum {
    kBFCatInfoNodeFlags = 0x00000002,
    kBFCatInfoVolume = 0x00000008,
    kBFCatInfoParentDirID = 0x00000010,
    kBFCatInfoNodeID = 0x00000020,
    kBFCatInfoCreateDate = 0x00000040,
    kBFCatInfoContentMod = 0x00000080,
    kBFCatInfoDataSizes = 0x00004000,
    kBFCatInfoRsrcSizes = 0x00008000,
    kBFCatInfoValence = 0x00020000,
    kBFCatInfoAll = 0x0003FFFF
};
enum { kBFNodeLockedMask = 0x0001, kBFNodeIsDirectoryMask = 0x0010 };

typedef struct BFCatalogInfo {
    uint16_t nodeFlags;
    int16_t volume;
    uint32_t parentDirID;
    uint32_t nodeID;
    UTCDateTime createDate;
    UTCDateTime contentModDate;
    uint64_t dataLogicalSize;
    uint64_t rsrcLogicalSize;
    uint32_t valence; /* the number of entries of a folder */
} BFCatalogInfo;

typedef struct HFSUniStr255 {
    uint16_t length;
    UniChar unicode[255];
} HFSUniStr255;

/* Any of info, outName, spec and parentRef may be null. */
BASALT_EXPORT StatusCode BFGetCatalogInfo(const BFRef* ref, BFCatalogInfoBitmap whichInfo,
                                          BFCatalogInfo* info, HFSUniStr255* outName, BFSpec* spec,
                                          BFRef* parentRef);

#ifdef __cplusplus
}

namespace basalt::files {
UTCDateTime UTCDateTimeFromUnix(int64_t seconds, uint32_t nanoseconds);
}
#endif

#endif /* BASALT_FILES_BFCATALOGINFO_H */
