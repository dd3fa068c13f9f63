#pragma once

#include <basalt/BasaltCore.h>

// The encoding of the application's legacy (non-Unicode) text.
TextEncoding AppTextEncoding();
