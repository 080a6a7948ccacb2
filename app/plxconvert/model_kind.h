#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "plxutils/converters/ConverterFactory.h"

namespace plx::tool {

enum class ModelKind {
    kModflow,      ///< MODFLOW-88 and 96: the grid stands in the basic package
    kModflow2000,  ///< MODFLOW-2000, 2005, NWT: the grid stands in a discretization file
};

/// "modflow" or "modflow2000", as on the command line.
const char* kind_word(ModelKind kind);
/// What a modeller calls it.
const char* kind_title(ModelKind kind);

/// True when the first bytes of a file cannot be text.
///
/// @throws InputFault when the file cannot be read.
bool is_binary(const std::filesystem::path& file);

/// Finds out what model a project file belongs to: by its extension, then by the file types in it.
///
/// @param wanted  "auto", or a kind_word that settles the matter for any name file.
/// @throws InputFault when it is not a MODFLOW name file.
ModelKind find_kind(const std::filesystem::path& project, const std::string& wanted);

std::unique_ptr<ConverterFactory> make_factory(ModelKind kind);

}  // namespace plx::tool
