#pragma once

// Moves records between the two generations for the routed road of the blocking calls: an older
// options record to the current form, and a reply of file references back to file specs. The
// converted options record owns its strings; ReleaseConvertedDialogOptions gives them back.

#include <basalt/BasaltFiles.h>
#include <kel/KelServices.h>

// Fills to with the second implementation's defaults, then what from says. The status is the
// default fetch's.
StatusCode ConvertDialogOptions(const KelDialogOptions* from, KelDialogCreationOptions* to);
void ReleaseConvertedDialogOptions(KelDialogCreationOptions* options);

// For clients of the older record: each folder of a valid reply's selection becomes a "bfs "
// item naming saveFileName (or nothing) inside it; other items stay. The first failure's status.
StatusCode ConvertReply(KelReplyRecord* reply);

// The older record naming name (nil: nothing) inside folder, the name in UTF-8 cut between
// characters to what the record holds.
StatusCode MakeChildSpec(const BFRef& folder, BCStringRef name, BFSpec& spec);

// Puts the file on the application registry's recent documents.
StatusCode AddFileToRecents(const BFRef& file);
