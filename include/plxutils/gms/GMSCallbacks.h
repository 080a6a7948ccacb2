#pragma once

// The hooks are plain C, so that scripts can register them.
#include "plxutils/c/GMSCallbacks.h"
