// The classes and the C interface in one file, the classes first: it only has to compile.
#include "plxutils/PLXUtils.h"
//
#include "plxutils/c/plxutils_c.h"
