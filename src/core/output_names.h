#pragma once

#include <string>

/// Names of output files and words of output lines that are made up from texts of an input.
namespace plx {

/// A name as one word of a line, whatever the project calls the thing: blanks, tabs and control bytes are
/// underscores.
std::string one_word(std::string name);

/// A file name as one word without double quotes.
std::string clean_name(std::string name);

/// True when a file of that name is created in the stored folder itself and can be found there by its name.
///
/// False for separators, drives and tokens that lead elsewhere, for a name that begins with a dot or would be
/// cut, for wildcards and control bytes and, where stored names are the system's own, for devices, other
/// reserved characters and a dot or blank at the end. Folders are compared without case.
bool stays_in(const std::string& folder, const std::string& name);

}  // namespace plx
