#pragma once

#include "plxutils/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The version of the library that is loaded, as "0.1.0"; the macros PLX_VERSION, PLX_VERSION_MAJOR,
 * PLX_VERSION_MINOR and PLX_VERSION_PATCH tell that of the headers. The text belongs to the library. */
PLX_EXPORT const char* PLX_version(void);

#ifdef __cplusplus
}
#endif
