/*
 * Descriptors live in the client header; the platform's own sources keep including them by
 * this name.
 */
#ifndef BASALT_FILES_BEDESC_H
#define BASALT_FILES_BEDESC_H

#include <basalt/BasaltFiles.h>

#endif /* BASALT_FILES_BEDESC_H */
