#pragma once

// The file-name codec lives in core, where file URLs need it too; the node and file modules
// know it by these names.

#include "basalt/core/NameCodec.h"

namespace basalt::files {

using basalt::DecodeName;
using basalt::DisplayName;
using basalt::EncodeName;

} // namespace basalt::files
