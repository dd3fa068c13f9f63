/*
 * Metadata query strings: the text a search field turns into, and the attribute names the
 * query language knows. Expressions read like
 *     (kBMItemDisplayName == "rep*"cdw) && (kBMItemContentType != public.vcard)
 * with && and ||, brackets, ! for not, == and != between an attribute and a value, and the
 * constants true and false. A quoted value may hold the wildcards * (any run of characters)
 * and ? (one character), a backslash takes the next character literally, and letters after
 * the closing quote modify the test: c ignores case, d ignores diacritics, w matches at word
 * starts (the words of "AnnualReport-2024" are Annual, Report and 2024) instead of the whole
 * value. A value without quotes is a type identifier such as public.folder or text/plain.
 */
#ifndef BASALT_TYPES_BMQUERY_H
#define BASALT_TYPES_BMQUERY_H

#include <basalt/BasaltCore.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The name as shown, tested against the file's legible name. */
#define kBMItemDisplayName BCSTR("kBMItemDisplayName")
/* The name in the file system. */
#define kBMItemFSName BCSTR("kBMItemFSName")
/* The item's own type identifier. */
#define kBMItemContentType BCSTR("kBMItemContentType")
/* The item's type and every type it conforms to. */
#define kBMItemContentTypeTree BCSTR("kBMItemContentTypeTree")
/* The last change of the item's content, a date; an attribute for results, not for tests. */
#define kBMItemFSContentChangeDate BCSTR("kBMItemFSContentChangeDate")

typedef uint32_t BMQueryStringOptions;
enum { kBMQueryStringMatchAllMetadata = 1 };

enum {
    kBMQuerySyntaxErr = -5720, /* the text is no expression of the query language */
    kBMQueryTooDeepErr = -5721 /* brackets or operators nested beyond any sensible search */
};

/*
 * What the user typed, as an expression that matches items whose shown name has a word
 * starting with each typed word, ignoring case and diacritics; a phrase in double quotes counts
 * as one word. Owned; null when the text holds nothing to search for.
 */
BASALT_EXPORT BCStringRef BMQueryCreateQueryString(BMQueryStringOptions options, BCStringRef text);

/* Zero when text is a well-formed query expression, else why not. */
BASALT_EXPORT StatusCode BMQueryValidateQueryString(BCStringRef text);

#ifdef __cplusplus
}
#endif

#endif /* BASALT_TYPES_BMQUERY_H */
