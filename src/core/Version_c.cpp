#include "plxutils/c/Version.h"

const char* PLX_version(void) { return PLX_VERSION; }
