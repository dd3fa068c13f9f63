#pragma once

// Completion of the folder name being typed in a path: only containers are offered, the first
// in the service's order wins, and a completed name always ends in "/".

#include "kel/nodes/TKelNode.h"

// Sets completion to the characters that would complete the last segment of text. base may be
// empty. When the match needed a case-insensitive compare, exactCase comes back false and the
// last segment of text is rewritten in the case of the folder's name.
bool CompleteString(const TKelNode& base, TUniString& text, TUniString& completion,
                    bool& exactCase);

// Finds the container that text begins to name; answers how many characters of the last
// segment the match covers, 0 when there is nothing to complete. The flag is not read.
uint32_t CompleteNode(const TKelNode& base, const TUniString& text, bool, TKelNode& found,
                      bool& exactCase);
