#pragma once

#include <optional>
#include <string>
#include <vector>

#include "plxutils/converters/ModelSummary.h"
#include "plxutils/gms/GmsSummary.h"

namespace plx::tool {

/// A model with its name and kind.
struct ModelDescription {
    std::string file;   ///< name without folder
    std::string kind;   ///< as on the command line
    std::string title;  ///< what a modeller calls the kind
    ModelSummary summary;
};

/// A GMS project or dataset file with its name.
struct GmsDescription {
    std::string file;  ///< name without folder
    GmsProjectSummary summary;
    std::vector<std::string> errors;        ///< what the readers reported
    std::optional<ModelDescription> model;  ///< its MODFLOW model, when it could be read
};

/// What a person calls a kind of GMS file: "GMS project (text)".
std::string gms_title(const std::string& kind);

/// Print to standard output: tables for people, in which long lists are cut in the middle.
void print_text(const ModelDescription& model);
void print_text(const ResultSummary& result);
void print_text(const GmsDescription& project);

/// Print one JSON object to standard output; everything is in it.
void print_json(const ModelDescription& model);
void print_json(const ResultSummary& result);
void print_json(const GmsDescription& project);

}  // namespace plx::tool
