#pragma once

// The query text of a search: what the user typed as a metadata expression, restricted to
// the filter's types (folders always pass) and cleared of the kinds of item that only a
// client that names them wants to see.

#include <basalt/BasaltCore.h>

// Owned. typeIdentifiers may be null (no restriction) or empty (folders only).
BCStringRef CreateSearchQueryString(BCStringRef text, BCArrayRef typeIdentifiers);
