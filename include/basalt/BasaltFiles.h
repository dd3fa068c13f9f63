/*
 * Files for clients of the platform: tagged data descriptors and file references. A C header;
 * the library's public records embed a BEDesc, and a client turns the items of a reply into
 * paths or file URLs with the calls here.
 *
 * Descriptors. A descriptor is a four-character type and a memory handle holding the data. A
 * list is a descriptor of type "list" whose handle holds its items one after another; items
 * are numbered from 1. Every descriptor filled in by a call here owns its handle; BEDisposeDesc
 * frees it and leaves the descriptor of type "null" with no handle.
 *
 * References. A BFRef is an 80-byte opaque value naming a file or folder; every use
 * revalidates it, so a reference to a file that was deleted or replaced reports fnfErr instead
 * of reaching another file. A BFSpec is the older 70-byte form: volume reference number,
 * parent folder id and a name of at most 63 bytes. Paths and names are the file system's
 * bytes.
 */
#ifndef BASALT_FILES_H
#define BASALT_FILES_H

#include <basalt/BasaltCore.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Descriptors ---------------------------------------------------------------------------- */

typedef FourCharCode DescType;
typedef FourCharCode BEKeyword;

typedef struct BEDesc {
    DescType descriptorType;
    Handle dataHandle;
} BEDesc;

typedef BEDesc BEDescList;

/* Also declared by the other basalt headers; whichever comes first defines it. */
#ifndef BASALT_TYPE_WILDCARD_DEFINED
#define BASALT_TYPE_WILDCARD_DEFINED
enum { typeWildCard = 0x2A2A2A2A /* "****" */ };
#endif

enum {
    typeNull = 0x6E756C6C,     /* "null" */
    typeBEList = 0x6C697374,   /* "list" */
    typeBFRef = 0x62667266,    /* "bfrf": an 80-byte BFRef */
    typeFileSpec = 0x62667320, /* "bfs ": a 70-byte BFSpec */
    typeFileURL = 0x6675726C,  /* "furl": a file URL as UTF-8 text */
    keyBEListItem = 0x2D2D2D2D /* "----": the keyword of every list item */
};

enum {
    errBECoercionFail = -1700,
    errBEDescNotFound = -1701,
    errBECorruptData = -1702,
    errBEWrongDataType = -1703,
    errBENotBEList = -1704,
    errBEIllegalIndex = -1719
};

/* Makes the descriptor empty: type "null", no handle. Does not free anything. */
BASALT_EXPORT void BEInitializeDesc(BEDesc* desc);
BASALT_EXPORT StatusCode BECreateDesc(DescType type, const void* data, Size size, BEDesc* result);
/* Replaces type and data, reusing the descriptor's handle when it has one. */
BASALT_EXPORT StatusCode BEReplaceDescData(DescType type, const void* data, Size size,
                                           BEDesc* desc);
BASALT_EXPORT StatusCode BEDuplicateDesc(const BEDesc* desc, BEDesc* result);
BASALT_EXPORT StatusCode BEDisposeDesc(BEDesc* desc);
BASALT_EXPORT Size BEGetDescDataSize(const BEDesc* desc);
/* Copies at most maximumSize bytes of the data. */
BASALT_EXPORT StatusCode BEGetDescData(const BEDesc* desc, void* buffer, Size maximumSize);
/* Converts among "bfrf", "bfs " and "furl"; any type coerces to itself and to "****". */
BASALT_EXPORT StatusCode BECoerceDesc(const BEDesc* desc, DescType toType, BEDesc* result);

/* Lists. Factoring and records are not supported: factoredSize must be 0, isRecord false. */
BASALT_EXPORT StatusCode BECreateList(const void* factoringPtr, Size factoredSize, Boolean isRecord,
                                      BEDescList* result);
BASALT_EXPORT StatusCode BECountItems(const BEDescList* list, long* count);
/* Index 0 or count + 1 appends; an index within the list replaces that item. */
BASALT_EXPORT StatusCode BEPutDesc(BEDescList* list, long index, const BEDesc* desc);
BASALT_EXPORT StatusCode BEPutPtr(BEDescList* list, long index, DescType type, const void* data,
                                  Size size);
/* Item index (from 1), coerced to desiredType unless that is "****". */
BASALT_EXPORT StatusCode BEGetNthDesc(const BEDescList* list, long index, DescType desiredType,
                                      BEKeyword* keyword, BEDesc* result);
BASALT_EXPORT StatusCode BEGetNthPtr(const BEDescList* list, long index, DescType desiredType,
                                     BEKeyword* keyword, DescType* typeCode, void* data,
                                     Size maximumSize, Size* actualSize);
BASALT_EXPORT StatusCode BEDeleteItem(BEDescList* list, long index);

/* ---- File references ------------------------------------------------------------------------ */

typedef struct BFRef {
    uint8_t hidden[80];
} BFRef;

#pragma pack(push, 2)
typedef struct BFSpec {
    int16_t vRefNum;
    int32_t parID;
    Str63 name;
} BFSpec;
#pragma pack(pop)

enum {
    bdNamErr = -37,
    dirNFErr = -120,
    nsvErr = -35,
    errBFRefsDifferent = -1420,
    errBFBadRef = -1421
};

/* The child named name (UTF-16) of the folder parent; the child must exist. */
BASALT_EXPORT StatusCode BFMakeBFRefUnicode(const BFRef* parent, BCIndex nameLength,
                                            const UniChar* name, TextEncoding textEncodingHint,
                                            BFRef* newRef);
/* A reference for an existing path given as file-system bytes, NUL-terminated. */
BASALT_EXPORT StatusCode BFPathMakeRef(const uint8_t* path, BFRef* ref, Boolean* isDirectory);
/* The NUL-terminated path of a reference; -2110 when it does not fit. */
BASALT_EXPORT StatusCode BFRefMakePath(const BFRef* ref, uint8_t* path, uint32_t maxPathSize);
/* noErr when both name the same object, errBFRefsDifferent otherwise. */
BASALT_EXPORT StatusCode BFCompareBFRefs(const BFRef* a, const BFRef* b);
BASALT_EXPORT BCURLRef BCURLCreateFromBFRef(BCAllocatorRef allocator, const BFRef* ref);
BASALT_EXPORT Boolean BCURLGetBFRef(BCURLRef url, BFRef* ref);

/* The reference a file spec (BFSpec) names: its folder itself when the name is empty. */
BASALT_EXPORT StatusCode BFSpecMakeBFRef(const BFSpec* spec, BFRef* ref);
/* The BFSpec of an existing object: its volume, its parent's id and its name. */
BASALT_EXPORT StatusCode BFRefMakeBFSpec(const BFRef* ref, BFSpec* spec);

#ifdef __cplusplus
}
#endif

#endif /* BASALT_FILES_H */
