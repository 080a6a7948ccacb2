#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "plxutils/converters/ConverterFactory.h"
#include "plxutils/export.h"

namespace plx {

enum class ModelKind {
    kModflow,      ///< MODFLOW-88 and 96: the grid stands in the basic package
    kModflow2000,  ///< MODFLOW-2000, 2005, NWT: the grid stands in a discretization file
    kGms,          ///< a GMS model by its super file
    kGmsHdf5,      ///< the model of a GMS project that is an HDF5 file
    kVisual,       ///< a Visual MODFLOW project
};

/// "modflow", "modflow2000", "gms", "gms_hdf5" or "visual".
PLX_EXPORT const char* kind_word(ModelKind kind);
/// All of them, with "auto" in front.
PLX_EXPORT std::vector<std::string> kind_words();
/// What a modeller calls it.
PLX_EXPORT const char* kind_title(ModelKind kind);

/// True when the first bytes of a file cannot be text; nothing when it cannot be read.
PLX_EXPORT std::optional<bool> is_binary_file(const std::string& file);

/// True for the extensions that only models have: the file is no GMS project, whatever its words look like.
PLX_EXPORT bool has_model_extension(const std::string& file);

/// How a caller's users know what the texts of find_model_kind speak of.
struct ModelKindTerms {
    std::string kind = "kind";               ///< the choice of a kind
    std::string gms_converter = "GMStoPLX";  ///< what converts GMS projects
};

struct ModelKindFinding {
    std::optional<ModelKind> kind;
    std::string problem;  ///< why there is no kind, ready for a message
};

/// Finds out what model a project file belongs to: by its extension, of name files by the file types in it.
/// Does not throw.
///
/// @param project  as a name that the system's own calls open.
/// @param wanted   "auto", or a kind_word, which settles the matter for name files and must fit the
/// extension.
PLX_EXPORT ModelKindFinding find_model_kind(const std::string& project, const std::string& wanted = "auto",
                                            const ModelKindTerms& terms = {});

/// A new converter for models of a kind.
PLX_EXPORT std::unique_ptr<ConverterFactory> make_converter(ModelKind kind);

}  // namespace plx
