#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "plxutils/converters/ConverterFactory.h"

namespace plx::tool {

enum class ModelKind {
    kModflow,      ///< MODFLOW-88 and 96: the grid stands in the basic package
    kModflow2000,  ///< MODFLOW-2000, 2005, NWT: the grid stands in a discretization file
    kGms,          ///< a GMS model by its super file
    kGmsHdf5,      ///< the model of a GMS project that is an HDF5 file
    kVisual,       ///< a Visual MODFLOW project
};

/// "modflow", "modflow2000", "gms", "gms_hdf5" or "visual", as on the command line.
const char* kind_word(ModelKind kind);
/// All of them, with "auto" in front.
std::vector<std::string> kind_words();
/// What a modeller calls it.
const char* kind_title(ModelKind kind);

/// True when the first bytes of a file cannot be text.
///
/// @throws InputFault when the file cannot be read.
bool is_binary(const std::filesystem::path& file);

/// True for the extensions that only models have: the file is no GMS project, whatever its words look like.
bool has_model_extension(const std::filesystem::path& file);

/// Finds out what model a project file belongs to: by its extension, of name files by the file types in it.
///
/// @param wanted  "auto", or a kind_word, which settles the matter for name files and must fit the extension.
/// @throws InputFault when it is no file that gives a model.
ModelKind find_kind(const std::filesystem::path& project, const std::string& wanted);

std::unique_ptr<ConverterFactory> make_factory(ModelKind kind);

}  // namespace plx::tool
