#pragma once

#include <string>

#include "plxutils/core/VXFileReader.h"

namespace plx {

/// Date of a REFTIME card in days since 30 December 1899. Year, month, day, hour, minute and second are the
/// card's last six words; newer files put a unit letter and a flag before them. Not-a-number when there is no
/// such date.
double date_of_card(const VXFileReader& reader);

/// File name of a card; a unit number may stand before it.
std::string file_of_card(const VXFileReader& reader);

}  // namespace plx
