#pragma once

#include "plxutils/core/VXString.h"
#include "plxutils/export.h"

/// Finds the world file of an image in the current directory: the image's title with the first of tfw, tiw,
/// tifw, tiffw, jpw, jpgw, jpegw, jgw, bpw, bmw, bmpw, pgw, pngw and pnw that begins as the image's extension
/// does and names an existing file.
///
/// @param imageName  any name that VXFile takes; the image need not exist.
/// @return the name without a directory, lower-cased; empty when there is none.
PLX_EXPORT String getWorldFile(const char* imageName);
