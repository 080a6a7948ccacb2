#pragma once

#include <string>

#include "plxutils/converters/ModelSummary.h"

namespace plx::tool {

/// A model with its name and kind.
struct ModelDescription {
    std::string file;   ///< name without folder
    std::string kind;   ///< as on the command line
    std::string title;  ///< what a modeller calls the kind
    ModelSummary summary;
};

/// Print to standard output: tables for people, in which long lists are cut in the middle.
void print_text(const ModelDescription& model);
void print_text(const ResultSummary& result);

/// Print one JSON object to standard output; everything is in it.
void print_json(const ModelDescription& model);
void print_json(const ResultSummary& result);

}  // namespace plx::tool
