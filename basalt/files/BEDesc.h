/*
 * Tagged data descriptors: a four-character type and a memory handle holding the data. A list
 * is a descriptor of type "list" whose handle holds its items one after another; items are
 * numbered from 1. A C header, so that the public records of the library can embed a BEDesc.
 *
 * Ownership: every descriptor filled in by a call here owns its handle; BEDisposeDesc frees it
 * and leaves the descriptor of type "null" with no handle.
 */
#ifndef BASALT_FILES_BEDESC_H
#define BASALT_FILES_BEDESC_H

#include <basalt/BasaltCore.h>

#ifdef __cplusplus
extern "C" {
#endif

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

#ifdef __cplusplus
}
#endif

#endif /* BASALT_FILES_BEDESC_H */
