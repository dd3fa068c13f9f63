/*
 * Type identifiers. On this system an identifier is a MIME type name from the shared-mime-info
 * database ("text/plain", "inode/directory"); four-character codes map to identifiers through
 * a table of common codes, and unknown codes get an identifier of their own that conforms to
 * kBUTypeData. Strings returned by Create/Copy functions are owned by the caller.
 */
#ifndef BASALT_TYPES_BUTYPES_H
#define BASALT_TYPES_BUTYPES_H

#include <basalt/BasaltCore.h>

#ifdef __cplusplus
extern "C" {
#endif

#define kBUTypeData BCSTR("application/octet-stream")
#define kBUTypeFolder BCSTR("inode/directory")
#define kBUTypeVolume BCSTR("inode/mount-point")
#define kBUTypePackage BCSTR("inode/x-kel-package")
#define kBUTypeApplication BCSTR("application/x-desktop")
#define kBUTagClassFourCharCode BCSTR("com.velmo.ostype")
#define kBUTagClassFilenameExtension BCSTR("public.filename-extension")
#define kBUTagClassMIMEType BCSTR("public.mime-type")

BASALT_EXPORT Boolean BUTypeConformsTo(BCStringRef identifier, BCStringRef parent);
BASALT_EXPORT Boolean BUTypeEqual(BCStringRef a, BCStringRef b);
/* The four characters of code as a string ("TEXT"). */
BASALT_EXPORT BCStringRef BUCreateStringForFourCharCode(OSType code);
BASALT_EXPORT OSType BUGetFourCharCodeFromString(BCStringRef string);
/* The identifier for a tag of the class (four-character code, extension or MIME type) that
   conforms to conformingTo (may be null); never null for valid arguments. */
BASALT_EXPORT BCStringRef BUTypeCreatePreferredIdentifierForTag(BCStringRef tagClass,
                                                                BCStringRef tag,
                                                                BCStringRef conformingTo);
/* The preferred tag of the class for the identifier, or null. */
BASALT_EXPORT BCStringRef BUTypeCopyPreferredTagWithClass(BCStringRef identifier,
                                                          BCStringRef tagClass);
/* A description for people ("plain text document"), or null if the type has none. */
BASALT_EXPORT BCStringRef BUTypeCopyDescription(BCStringRef identifier);

#ifdef __cplusplus
}

#include <string>
#include <string_view>

namespace basalt::types {

// The identifier of a four-character code; unknown codes give "application/x-kel-ostype-CODE".
std::string TypeForFourCharCode(uint32_t code);
// The code of an identifier; 0 when the table has none.
uint32_t FourCharCodeForType(std::string_view type);
std::string FourCharCodeText(uint32_t code);

// UTF-8 text of a core string, and back.
std::string Utf8(BCStringRef string);
BCStringRef MakeString(std::string_view utf8);

} // namespace basalt::types
#endif

#endif /* BASALT_TYPES_BUTYPES_H */
