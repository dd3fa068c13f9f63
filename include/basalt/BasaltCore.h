/*
 * Basalt core: reference-counted core objects (strings in UTF-16, arrays, dictionaries, data,
 * numbers, booleans, dates, URLs), bundles, preferences, memory handles, text encodings and
 * collation. A C header, so that clients written in C can build the values an options record
 * needs.
 *
 * Ownership: a function whose name contains Create or Copy returns a reference the caller owns
 * and must BCRelease; a Get function returns a reference the caller does not own.
 */
#ifndef BASALT_CORE_H
#define BASALT_CORE_H

#include <stdarg.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define BASALT_EXPORT __attribute__((visibility("default")))

/* ---- Basic types ------------------------------------------------------------------------- */

typedef int32_t StatusCode;
typedef uint32_t FourCharCode;
typedef FourCharCode OSType;
typedef FourCharCode ResType;
typedef uint16_t UniChar;
typedef uint8_t Boolean;
typedef unsigned char Str255[256];
typedef unsigned char Str63[64];
typedef unsigned char Str31[32];
typedef const unsigned char* ConstStr255Param;

typedef long BCIndex;
typedef unsigned long BCTypeID;
typedef unsigned long BCHashCode;
typedef uint32_t BCOptionFlags;
typedef uint32_t BCStringEncoding;
typedef uint32_t TextEncoding;
typedef int16_t ScriptCode;
typedef double BCTimeInterval;
typedef double BCAbsoluteTime;

typedef struct BCRange {
    BCIndex location;
    BCIndex length;
} BCRange;

static inline BCRange BCRangeMake(BCIndex location, BCIndex length) {
    BCRange range;
    range.location = location;
    range.length = length;
    return range;
}

typedef enum BCComparisonResult {
    kBCCompareLessThan = -1,
    kBCCompareEqualTo = 0,
    kBCCompareGreaterThan = 1
} BCComparisonResult;

enum { kBCNotFound = -1 };

/* Status values shared by the platform. */
enum {
    noErr = 0,
    paramErr = -50,
    memFullErr = -108,
    userCanceledErr = -128,
    fnfErr = -43,
    dupFNErr = -48,
    permErr = -54,
    nilHandleErr = -109,
    eventNotHandledErr = -9874,
    eventLoopTimedOutErr = -9875,
    kBCUnimpErr = -4
};

/* ---- Objects ----------------------------------------------------------------------------- */

typedef const void* BCTypeRef;
typedef const struct BCOpaqueAllocator* BCAllocatorRef;
typedef const struct BCOpaqueString* BCStringRef;
typedef struct BCOpaqueString* BCMutableStringRef;
typedef const struct BCOpaqueArray* BCArrayRef;
typedef struct BCOpaqueArray* BCMutableArrayRef;
typedef const struct BCOpaqueDictionary* BCDictionaryRef;
typedef struct BCOpaqueDictionary* BCMutableDictionaryRef;
typedef const struct BCOpaqueData* BCDataRef;
typedef struct BCOpaqueData* BCMutableDataRef;
typedef const struct BCOpaqueNumber* BCNumberRef;
typedef const struct BCOpaqueBoolean* BCBooleanRef;
typedef const struct BCOpaqueDate* BCDateRef;
typedef const struct BCOpaqueURL* BCURLRef;
typedef struct BCOpaqueBundle* BCBundleRef;
typedef struct BCOpaqueRunLoop* BCRunLoopRef;

/* Allocators are accepted for signature's sake; all objects come from the C++ heap. */
#define kBCAllocatorDefault ((BCAllocatorRef)0)

BASALT_EXPORT BCTypeRef BCRetain(BCTypeRef object);
BASALT_EXPORT void BCRelease(BCTypeRef object);
BASALT_EXPORT BCIndex BCGetRetainCount(BCTypeRef object);
BASALT_EXPORT BCTypeID BCGetTypeID(BCTypeRef object);
BASALT_EXPORT Boolean BCEqual(BCTypeRef a, BCTypeRef b);
BASALT_EXPORT BCHashCode BCHash(BCTypeRef object);
/* A readable description, for debugging and messages. */
BASALT_EXPORT BCStringRef BCCopyDescription(BCTypeRef object);

BASALT_EXPORT BCTypeID BCStringGetTypeID(void);
BASALT_EXPORT BCTypeID BCArrayGetTypeID(void);
BASALT_EXPORT BCTypeID BCDictionaryGetTypeID(void);
BASALT_EXPORT BCTypeID BCDataGetTypeID(void);
BASALT_EXPORT BCTypeID BCNumberGetTypeID(void);
BASALT_EXPORT BCTypeID BCBooleanGetTypeID(void);
BASALT_EXPORT BCTypeID BCDateGetTypeID(void);
BASALT_EXPORT BCTypeID BCURLGetTypeID(void);
BASALT_EXPORT BCTypeID BCBundleGetTypeID(void);

/* ---- Strings ----------------------------------------------------------------------------- */

enum {
    kBCStringEncodingMacRoman = 0,
    kBCStringEncodingWindowsLatin1 = 0x0500,
    kBCStringEncodingISOLatin1 = 0x0201,
    kBCStringEncodingASCII = 0x0600,
    kBCStringEncodingUnicode = 0x0100,
    kBCStringEncodingUTF8 = 0x08000100,
    kBCStringEncodingUTF16 = 0x0100,
    kBCStringEncodingUTF16BE = 0x10000100,
    kBCStringEncodingUTF16LE = 0x14000100
};
/* Beyond the range of a C enumerator. */
#define kBCStringEncodingInvalidId 0xFFFFFFFFu

/* BCStringCompare / BCStringFind options. */
enum {
    kBCCompareCaseInsensitive = 1,
    kBCCompareBackwards = 4,
    kBCCompareAnchored = 8,
    kBCCompareNonliteral = 16,
    kBCCompareLocalized = 32,
    kBCCompareNumerically = 64
};

BASALT_EXPORT BCStringRef BCStringCreateWithCString(BCAllocatorRef allocator, const char* cString,
                                                    BCStringEncoding encoding);
BASALT_EXPORT BCStringRef BCStringCreateWithPascalString(BCAllocatorRef allocator,
                                                         ConstStr255Param pString,
                                                         BCStringEncoding encoding);
BASALT_EXPORT BCStringRef BCStringCreateWithCharacters(BCAllocatorRef allocator,
                                                       const UniChar* chars, BCIndex numChars);
BASALT_EXPORT BCStringRef BCStringCreateWithBytes(BCAllocatorRef allocator, const uint8_t* bytes,
                                                  BCIndex numBytes, BCStringEncoding encoding,
                                                  Boolean isExternalRepresentation);
BASALT_EXPORT BCStringRef BCStringCreateCopy(BCAllocatorRef allocator, BCStringRef string);
BASALT_EXPORT BCStringRef BCStringCreateWithSubstring(BCAllocatorRef allocator, BCStringRef string,
                                                      BCRange range);
/* printf-like; "%@" formats a core object by its description. */
BASALT_EXPORT BCStringRef BCStringCreateWithFormat(BCAllocatorRef allocator,
                                                   BCDictionaryRef formatOptions,
                                                   BCStringRef format, ...);
BASALT_EXPORT BCStringRef BCStringCreateWithFormatAndArguments(BCAllocatorRef allocator,
                                                               BCDictionaryRef formatOptions,
                                                               BCStringRef format,
                                                               va_list arguments);
BASALT_EXPORT BCMutableStringRef BCStringCreateMutable(BCAllocatorRef allocator, BCIndex maxLength);
BASALT_EXPORT BCMutableStringRef BCStringCreateMutableCopy(BCAllocatorRef allocator,
                                                           BCIndex maxLength, BCStringRef string);

BASALT_EXPORT BCIndex BCStringGetLength(BCStringRef string);
BASALT_EXPORT UniChar BCStringGetCharacterAtIndex(BCStringRef string, BCIndex index);
BASALT_EXPORT void BCStringGetCharacters(BCStringRef string, BCRange range, UniChar* buffer);
/* The string's own UTF-16 storage, or null when it cannot be had without a copy. */
BASALT_EXPORT const UniChar* BCStringGetCharactersPtr(BCStringRef string);
BASALT_EXPORT Boolean BCStringGetCString(BCStringRef string, char* buffer, BCIndex bufferSize,
                                         BCStringEncoding encoding);
BASALT_EXPORT Boolean BCStringGetPascalString(BCStringRef string, unsigned char* buffer,
                                              BCIndex bufferSize, BCStringEncoding encoding);
/* Converts a range; returns characters converted, stores the bytes used. */
BASALT_EXPORT BCIndex BCStringGetBytes(BCStringRef string, BCRange range, BCStringEncoding encoding,
                                       uint8_t lossByte, Boolean isExternalRepresentation,
                                       uint8_t* buffer, BCIndex maxBufLen, BCIndex* usedBufLen);
BASALT_EXPORT BCIndex BCStringGetMaximumSizeForEncoding(BCIndex length, BCStringEncoding encoding);
BASALT_EXPORT BCStringEncoding BCStringGetSystemEncoding(void);

BASALT_EXPORT BCComparisonResult BCStringCompare(BCStringRef a, BCStringRef b,
                                                 BCOptionFlags options);
BASALT_EXPORT BCRange BCStringFind(BCStringRef string, BCStringRef toFind, BCOptionFlags options);
/* Searches within rangeToSearch; true and the match in *result (which may be null) if found. */
BASALT_EXPORT Boolean BCStringFindWithOptions(BCStringRef string, BCStringRef toFind,
                                              BCRange rangeToSearch, BCOptionFlags options,
                                              BCRange* result);
BASALT_EXPORT Boolean BCStringHasPrefix(BCStringRef string, BCStringRef prefix);
BASALT_EXPORT Boolean BCStringHasSuffix(BCStringRef string, BCStringRef suffix);
BASALT_EXPORT int32_t BCStringGetIntValue(BCStringRef string);

BASALT_EXPORT void BCStringAppend(BCMutableStringRef string, BCStringRef appended);
BASALT_EXPORT void BCStringAppendCharacters(BCMutableStringRef string, const UniChar* chars,
                                            BCIndex numChars);
BASALT_EXPORT void BCStringAppendCString(BCMutableStringRef string, const char* cString,
                                         BCStringEncoding encoding);
BASALT_EXPORT void BCStringInsert(BCMutableStringRef string, BCIndex index, BCStringRef inserted);
BASALT_EXPORT void BCStringDelete(BCMutableStringRef string, BCRange range);
BASALT_EXPORT void BCStringReplace(BCMutableStringRef string, BCRange range,
                                   BCStringRef replacement);
BASALT_EXPORT void BCStringReplaceAll(BCMutableStringRef string, BCStringRef replacement);
/* Replaces every occurrence within range; returns how many were replaced. */
BASALT_EXPORT BCIndex BCStringFindAndReplace(BCMutableStringRef string, BCStringRef toFind,
                                             BCStringRef replacement, BCRange rangeToSearch,
                                             BCOptionFlags options);
BASALT_EXPORT void BCStringLowercase(BCMutableStringRef string, const void* localeUnused);
BASALT_EXPORT void BCStringUppercase(BCMutableStringRef string, const void* localeUnused);
/* Removes white space (Unicode's White_Space property) from both ends. */
BASALT_EXPORT void BCStringTrimWhitespace(BCMutableStringRef string);

/* A compile-time constant string, made once per literal and never freed. */
BASALT_EXPORT BCStringRef __BCStringMakeConstantString(const char* cString);
#define BCSTR(cStr) __BCStringMakeConstantString("" cStr "")

/* ---- Arrays ------------------------------------------------------------------------------ */

typedef const void* (*BCArrayRetainCallBack)(BCAllocatorRef allocator, const void* value);
typedef void (*BCArrayReleaseCallBack)(BCAllocatorRef allocator, const void* value);
typedef BCStringRef (*BCArrayCopyDescriptionCallBack)(const void* value);
typedef Boolean (*BCArrayEqualCallBack)(const void* value1, const void* value2);

typedef struct BCArrayCallBacks {
    BCIndex version;
    BCArrayRetainCallBack retain;
    BCArrayReleaseCallBack release;
    BCArrayCopyDescriptionCallBack copyDescription;
    BCArrayEqualCallBack equal;
} BCArrayCallBacks;

/* Retains and releases the values as core objects. A null callbacks pointer keeps raw values. */
BASALT_EXPORT extern const BCArrayCallBacks kBCTypeArrayCallBacks;

typedef BCComparisonResult (*BCComparatorFunction)(const void* a, const void* b, void* context);

BASALT_EXPORT BCArrayRef BCArrayCreate(BCAllocatorRef allocator, const void** values,
                                       BCIndex numValues, const BCArrayCallBacks* callBacks);
BASALT_EXPORT BCArrayRef BCArrayCreateCopy(BCAllocatorRef allocator, BCArrayRef array);
BASALT_EXPORT BCMutableArrayRef BCArrayCreateMutable(BCAllocatorRef allocator, BCIndex capacity,
                                                     const BCArrayCallBacks* callBacks);
BASALT_EXPORT BCMutableArrayRef BCArrayCreateMutableCopy(BCAllocatorRef allocator, BCIndex capacity,
                                                         BCArrayRef array);
BASALT_EXPORT BCIndex BCArrayGetCount(BCArrayRef array);
BASALT_EXPORT const void* BCArrayGetValueAtIndex(BCArrayRef array, BCIndex index);
BASALT_EXPORT Boolean BCArrayContainsValue(BCArrayRef array, BCRange range, const void* value);
BASALT_EXPORT BCIndex BCArrayGetFirstIndexOfValue(BCArrayRef array, BCRange range,
                                                  const void* value);
BASALT_EXPORT void BCArrayAppendValue(BCMutableArrayRef array, const void* value);
BASALT_EXPORT void BCArrayInsertValueAtIndex(BCMutableArrayRef array, BCIndex index,
                                             const void* value);
BASALT_EXPORT void BCArraySetValueAtIndex(BCMutableArrayRef array, BCIndex index,
                                          const void* value);
BASALT_EXPORT void BCArrayRemoveValueAtIndex(BCMutableArrayRef array, BCIndex index);
BASALT_EXPORT void BCArrayRemoveAllValues(BCMutableArrayRef array);
BASALT_EXPORT void BCArraySortValues(BCMutableArrayRef array, BCRange range,
                                     BCComparatorFunction comparator, void* context);

/* ---- Dictionaries ------------------------------------------------------------------------ */

/* Keys and values are core objects, retained; keys compare with BCEqual. */
BASALT_EXPORT BCMutableDictionaryRef BCDictionaryCreateMutable(BCAllocatorRef allocator,
                                                               BCIndex capacity);
BASALT_EXPORT BCDictionaryRef BCDictionaryCreate(BCAllocatorRef allocator, const void** keys,
                                                 const void** values, BCIndex numValues);
BASALT_EXPORT BCMutableDictionaryRef BCDictionaryCreateMutableCopy(BCAllocatorRef allocator,
                                                                   BCIndex capacity,
                                                                   BCDictionaryRef dictionary);
BASALT_EXPORT BCIndex BCDictionaryGetCount(BCDictionaryRef dictionary);
BASALT_EXPORT const void* BCDictionaryGetValue(BCDictionaryRef dictionary, const void* key);
BASALT_EXPORT Boolean BCDictionaryContainsKey(BCDictionaryRef dictionary, const void* key);
/* Fills keys and values (either may be null) in the dictionary's order of insertion. */
BASALT_EXPORT void BCDictionaryGetKeysAndValues(BCDictionaryRef dictionary, const void** keys,
                                                const void** values);
BASALT_EXPORT void BCDictionarySetValue(BCMutableDictionaryRef dictionary, const void* key,
                                        const void* value);
BASALT_EXPORT void BCDictionaryRemoveValue(BCMutableDictionaryRef dictionary, const void* key);
BASALT_EXPORT void BCDictionaryRemoveAllValues(BCMutableDictionaryRef dictionary);

/* ---- Data, numbers, booleans, dates ------------------------------------------------------- */

BASALT_EXPORT BCDataRef BCDataCreate(BCAllocatorRef allocator, const uint8_t* bytes,
                                     BCIndex length);
BASALT_EXPORT BCMutableDataRef BCDataCreateMutable(BCAllocatorRef allocator, BCIndex capacity);
BASALT_EXPORT BCIndex BCDataGetLength(BCDataRef data);
BASALT_EXPORT const uint8_t* BCDataGetBytePtr(BCDataRef data);
BASALT_EXPORT uint8_t* BCDataGetMutableBytePtr(BCMutableDataRef data);
BASALT_EXPORT void BCDataGetBytes(BCDataRef data, BCRange range, uint8_t* buffer);
BASALT_EXPORT void BCDataSetLength(BCMutableDataRef data, BCIndex length);
BASALT_EXPORT void BCDataAppendBytes(BCMutableDataRef data, const uint8_t* bytes, BCIndex length);

typedef enum BCNumberType {
    kBCNumberSInt8Type = 1,
    kBCNumberSInt16Type = 2,
    kBCNumberSInt32Type = 3,
    kBCNumberSInt64Type = 4,
    kBCNumberFloat32Type = 5,
    kBCNumberFloat64Type = 6,
    kBCNumberCharType = 7,
    kBCNumberShortType = 8,
    kBCNumberIntType = 9,
    kBCNumberLongType = 10,
    kBCNumberLongLongType = 11,
    kBCNumberFloatType = 12,
    kBCNumberDoubleType = 13,
    kBCNumberBCIndexType = 14
} BCNumberType;

BASALT_EXPORT BCNumberRef BCNumberCreate(BCAllocatorRef allocator, BCNumberType type,
                                         const void* valuePtr);
/* Converts to the type asked for; false when the value does not fit exactly. */
BASALT_EXPORT Boolean BCNumberGetValue(BCNumberRef number, BCNumberType type, void* valuePtr);
BASALT_EXPORT Boolean BCNumberIsFloatType(BCNumberRef number);

BASALT_EXPORT extern const BCBooleanRef kBCBooleanTrue;
BASALT_EXPORT extern const BCBooleanRef kBCBooleanFalse;
BASALT_EXPORT Boolean BCBooleanGetValue(BCBooleanRef boolean);

/* Seconds since 2001-01-01 00:00:00 UTC. */
BASALT_EXPORT BCAbsoluteTime BCAbsoluteTimeGetCurrent(void);
BASALT_EXPORT BCDateRef BCDateCreate(BCAllocatorRef allocator, BCAbsoluteTime at);
BASALT_EXPORT BCAbsoluteTime BCDateGetAbsoluteTime(BCDateRef date);
/* The order of two dates; context is unused. */
BASALT_EXPORT BCComparisonResult BCDateCompare(BCDateRef a, BCDateRef b, void* context);

/* ---- URLs -------------------------------------------------------------------------------- */

typedef enum BCURLPathStyle { kBCURLPOSIXPathStyle = 0 } BCURLPathStyle;

/* File URLs hold the path percent-escaped; paths are bytes, so any name round-trips. */
BASALT_EXPORT BCURLRef BCURLCreateWithString(BCAllocatorRef allocator, BCStringRef urlString,
                                             BCURLRef baseURL);
/* The URL of the text of bytes in an encoding, resolved against baseURL when relative. */
BASALT_EXPORT BCURLRef BCURLCreateWithBytes(BCAllocatorRef allocator, const uint8_t* bytes,
                                            BCIndex length, BCStringEncoding encoding,
                                            BCURLRef baseURL);
/* A relative path is resolved against the working directory. */
BASALT_EXPORT BCURLRef BCURLCreateWithFileSystemPath(BCAllocatorRef allocator, BCStringRef filePath,
                                                     BCURLPathStyle pathStyle, Boolean isDirectory);
/* A relative path is resolved against baseURL, a folder; "." and ".." steps are removed. */
BASALT_EXPORT BCURLRef BCURLCreateWithFileSystemPathRelativeToBase(BCAllocatorRef allocator,
                                                                   BCStringRef filePath,
                                                                   BCURLPathStyle pathStyle,
                                                                   Boolean isDirectory,
                                                                   BCURLRef baseURL);
BASALT_EXPORT BCURLRef BCURLCreateFromFileSystemRepresentation(BCAllocatorRef allocator,
                                                               const uint8_t* buffer,
                                                               BCIndex bufLen, Boolean isDirectory);
BASALT_EXPORT BCURLRef BCURLCreateCopyAppendingPathComponent(BCAllocatorRef allocator, BCURLRef url,
                                                             BCStringRef pathComponent,
                                                             Boolean isDirectory);
BASALT_EXPORT BCURLRef BCURLCreateCopyDeletingLastPathComponent(BCAllocatorRef allocator,
                                                                BCURLRef url);
BASALT_EXPORT BCStringRef BCURLGetString(BCURLRef url);
/* The URL with "." and ".." steps of its path removed. */
BASALT_EXPORT BCURLRef BCURLCopyAbsoluteURL(BCURLRef url);
/* The URL's text as bytes in an encoding (the text is ASCII, so any ASCII superset works). */
BASALT_EXPORT BCDataRef BCURLCreateData(BCAllocatorRef allocator, BCURLRef url,
                                        BCStringEncoding encoding, Boolean escapeWhitespace);
/* The text after the last dot of the last path component; null when there is none. */
BASALT_EXPORT BCStringRef BCURLCopyPathExtension(BCURLRef url);
/* The home folder of the named user, or of the current user for a null name; null if none. */
BASALT_EXPORT BCURLRef BCCopyHomeDirectoryURLForUser(BCStringRef userName);
/* Null when the path is not valid UTF-8: use BCURLGetFileSystemRepresentation for bytes. */
BASALT_EXPORT BCStringRef BCURLCopyFileSystemPath(BCURLRef url, BCURLPathStyle pathStyle);
BASALT_EXPORT Boolean BCURLGetFileSystemRepresentation(BCURLRef url, Boolean resolveAgainstBase,
                                                       uint8_t* buffer, BCIndex maxBufLen);
BASALT_EXPORT BCStringRef BCURLCopyLastPathComponent(BCURLRef url);
BASALT_EXPORT BCStringRef BCURLCopyScheme(BCURLRef url);
BASALT_EXPORT Boolean BCURLHasDirectoryPath(BCURLRef url);

/* ---- Bundles ----------------------------------------------------------------------------- */

/*
 * A bundle is a folder with an Info.json ({"identifier": ..., "executable": ...}) and a
 * Resources/ folder. Bundles are found by identifier on the search path: $KEL_BUNDLE_PATH
 * (colon-separated), the build tree, then <prefix>/share/kel/bundles.
 * The main bundle is the folder named by $KEL_MAIN_BUNDLE, else the executable's folder if it
 * holds an Info.json; a process with neither has a main bundle with no identifier.
 */
BASALT_EXPORT BCBundleRef BCBundleGetMainBundle(void);
BASALT_EXPORT BCBundleRef BCBundleGetBundleWithIdentifier(BCStringRef identifier);
BASALT_EXPORT BCBundleRef BCBundleCreate(BCAllocatorRef allocator, BCURLRef bundleURL);
BASALT_EXPORT BCStringRef BCBundleGetIdentifier(BCBundleRef bundle);
BASALT_EXPORT BCURLRef BCBundleCopyBundleURL(BCBundleRef bundle);
BASALT_EXPORT BCURLRef BCBundleCopyResourcesDirectoryURL(BCBundleRef bundle);
/* Resources/<subDir>/<name>.<type>, preferring the localised copy in <lang>.lproj. */
BASALT_EXPORT BCURLRef BCBundleCopyResourceURL(BCBundleRef bundle, BCStringRef resourceName,
                                               BCStringRef resourceType, BCStringRef subDirName);
/* The value of key in Resources/<lang>.lproj/<table>.strings; value (or key) when absent. */
BASALT_EXPORT BCStringRef BCBundleCopyLocalizedString(BCBundleRef bundle, BCStringRef key,
                                                      BCStringRef value, BCStringRef tableName);
BASALT_EXPORT Boolean BCBundleLoadExecutable(BCBundleRef bundle);
BASALT_EXPORT Boolean BCBundleIsExecutableLoaded(BCBundleRef bundle);
BASALT_EXPORT void* BCBundleGetFunctionPointerForName(BCBundleRef bundle, BCStringRef name);

/* ---- Preferences ------------------------------------------------------------------------- */

/*
 * One JSON file per domain under $XDG_CONFIG_HOME/kel/preferences/: <identifier>.json, the
 * current application's identifier (else its executable's name), .GlobalPreferences.json for
 * any application, ByHost/<domain>.<host>.json for the current host. There is one store per
 * user; the any-user domain is the current user's. Every set writes through at once, merged
 * with others' writes; Synchronize re-reads the file after writing sets the disk refused, false
 * while it cannot. Reads never change the disk; sets do nothing when real and effective user
 * differ; a writer sets an unparsable file aside as <file>.corrupt-N. Null removes the key.
 */
BASALT_EXPORT extern const BCStringRef kBCPreferencesCurrentApplication;
BASALT_EXPORT extern const BCStringRef kBCPreferencesAnyApplication;
BASALT_EXPORT extern const BCStringRef kBCPreferencesCurrentUser;
BASALT_EXPORT extern const BCStringRef kBCPreferencesAnyUser;
BASALT_EXPORT extern const BCStringRef kBCPreferencesCurrentHost;
BASALT_EXPORT extern const BCStringRef kBCPreferencesAnyHost;

BASALT_EXPORT BCTypeRef BCPreferencesCopyAppValue(BCStringRef key, BCStringRef applicationID);
BASALT_EXPORT void BCPreferencesSetAppValue(BCStringRef key, BCTypeRef value,
                                            BCStringRef applicationID);
BASALT_EXPORT Boolean BCPreferencesGetAppBooleanValue(BCStringRef key, BCStringRef applicationID,
                                                      Boolean* keyExistsAndHasValidFormat);
BASALT_EXPORT BCIndex BCPreferencesGetAppIntegerValue(BCStringRef key, BCStringRef applicationID,
                                                      Boolean* keyExistsAndHasValidFormat);
BASALT_EXPORT Boolean BCPreferencesAppSynchronize(BCStringRef applicationID);
BASALT_EXPORT BCTypeRef BCPreferencesCopyValue(BCStringRef key, BCStringRef applicationID,
                                               BCStringRef userName, BCStringRef hostName);
BASALT_EXPORT void BCPreferencesSetValue(BCStringRef key, BCTypeRef value,
                                         BCStringRef applicationID, BCStringRef userName,
                                         BCStringRef hostName);
BASALT_EXPORT Boolean BCPreferencesSynchronize(BCStringRef applicationID, BCStringRef userName,
                                               BCStringRef hostName);

/* ---- Run loops --------------------------------------------------------------------------- */

/* One run loop per thread; the main run loop is the one of the thread that ran main(). */
BASALT_EXPORT BCRunLoopRef BCRunLoopGetCurrent(void);
BASALT_EXPORT BCRunLoopRef BCRunLoopGetMain(void);

/* ---- Memory handles ---------------------------------------------------------------------- */

typedef char* Ptr;
typedef Ptr* Handle;
typedef long Size;

BASALT_EXPORT Handle NewHandle(Size byteCount);
BASALT_EXPORT Handle NewHandleClear(Size byteCount);
BASALT_EXPORT void DisposeHandle(Handle h);
BASALT_EXPORT Size GetHandleSize(Handle h);
BASALT_EXPORT void SetHandleSize(Handle h, Size newSize);
BASALT_EXPORT void HLock(Handle h);
BASALT_EXPORT void HUnlock(Handle h);
BASALT_EXPORT StatusCode MemError(void);
BASALT_EXPORT StatusCode PtrToHand(const void* srcPtr, Handle* dstHndl, long size);
/* Replaces *theHndl with a new handle holding a copy of its contents. */
BASALT_EXPORT StatusCode HandToHand(Handle* theHndl);
BASALT_EXPORT Ptr NewPtr(Size byteCount);
BASALT_EXPORT Ptr NewPtrClear(Size byteCount);
BASALT_EXPORT void DisposePtr(Ptr p);

/* ---- Text encodings and collation -------------------------------------------------------- */

enum {
    smSystemScript = -1,
    smRoman = 0,
    kTextLanguageDontCare = -128,
    kTextRegionDontCare = -128,
    kTextEncodingMacRoman = 0,
    kTextEncodingUnicodeDefault = 0x0100,
    smSysScript = 18,
    smKeyScript = 22,
    kTextUnsupportedEncodingErr = -8738,
    kTextMalformedInputErr = -8739,
    kTECOutputBufferFullStatus = -8785
};

typedef struct OpaqueTextToUnicodeInfo* TextToUnicodeInfo;

/* The encoding of the application's legacy text: $KEL_TEXT_ENCODING if set, else MacRoman. */
BASALT_EXPORT TextEncoding GetApplicationTextEncoding(void);
/* smSysScript and smKeyScript answer the script of the application's text encoding. */
BASALT_EXPORT ScriptCode GetScriptManagerVariable(int16_t selector);
BASALT_EXPORT StatusCode UpgradeScriptInfoToTextEncoding(ScriptCode script, int16_t language,
                                                         int16_t region, ConstStr255Param font,
                                                         TextEncoding* encoding);
BASALT_EXPORT StatusCode CreateTextToUnicodeInfoByEncoding(TextEncoding encoding,
                                                           TextToUnicodeInfo* info);
/* Converts bytes to UTF-16; outputBufLen and outputLen are in bytes. */
BASALT_EXPORT StatusCode ConvertFromTextToUnicode(TextToUnicodeInfo info, BCIndex sourceLen,
                                                  const void* source, uint32_t controlFlags,
                                                  BCIndex offsetCount, const BCIndex* offsets,
                                                  BCIndex* offsetOutCount, BCIndex* offsetsOut,
                                                  BCIndex outputBufLen, BCIndex* sourceRead,
                                                  BCIndex* outputLen, UniChar* output);
BASALT_EXPORT StatusCode DisposeTextToUnicodeInfo(TextToUnicodeInfo* info);

/* The format field of an encoding: 0 for 8-bit and UTF-16 forms, 2 for UTF-8. */
BASALT_EXPORT uint32_t GetTextEncodingFormat(TextEncoding encoding);
/* Guesses the encoding of bytes (ICU's detector) with a confidence from 0 to 1, and the length
   of the bytes that end on a whole character. kTextUnsupportedEncodingErr when the guess is
   not an encoding this platform converts. */
BASALT_EXPORT StatusCode TECSniffEncodingAndLanguage(const void* bytes, BCIndex byteCount,
                                                     TextEncoding* encoding, float* confidence,
                                                     BCIndex* usableLength);

/* Collation options: bit 1 ignore case, bits 2-3 ignore accents/width, 0x38000 locale rules. */
typedef uint32_t UCCollateOptions;
enum {
    kUCCollateComposeInsensitiveMask = 1u << 1,
    kUCCollateWidthInsensitiveMask = 1u << 2,
    kUCCollateCaseInsensitiveMask = 1u << 3,
    kUCCollateDiacritInsensitiveMask = 1u << 4,
    kUCCollateDigitsOverrideMask = 1u << 16,
    kUCCollateDigitsAsNumberMask = 1u << 17,
    kUCCollateStandardOptions = 0x38006
};

/* Compares under the current locale's rules (ICU). */
BASALT_EXPORT StatusCode UCCompareTextDefault(UCCollateOptions options, const UniChar* text1,
                                              BCIndex text1Length, const UniChar* text2,
                                              BCIndex text2Length, Boolean* equivalent,
                                              int32_t* order);
/* A binary sort key for the text under the same rules; keys compare with memcmp. Returns the
   key's length, which may exceed capacity (then nothing is written past capacity). */
BASALT_EXPORT BCIndex UCGetCollationKey(UCCollateOptions options, const UniChar* text,
                                        BCIndex textLength, uint8_t* key, BCIndex capacity);

#ifdef __cplusplus
}
#endif

#endif /* BASALT_CORE_H */
