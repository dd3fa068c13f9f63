#include "kel/foundation/AppTextEncoding.h"

TextEncoding AppTextEncoding() {
    return GetApplicationTextEncoding();
}
