#pragma once

#include <string>

#include "converters/model_state.h"

namespace plx {

/// What a converter prints when a file of its name file cannot be opened; each holds one "%s" for the path.
struct NameFileTexts {
    const char* basic;
    const char* discretization;
    const char* heads;
    const char* flows;
    const char* other;
};

/// Reads the factory's name file into model.name_entries; false after a message when it is not set or cannot
/// be opened.
bool read_name_entries(ModelState& model, const char* missing = "MODFLOW:: No NAM file detected.\n",
                       const char* unopened = "MODFLOW:: Error opening NAM file.\n");

/// Notes where basic package and discretization file of a MODFLOW-2000 model are, when the line names one.
void note_grid_package(ModelState& model, const NameFileEntry& entry);

/// Opens the file of a name-file line at its unit; a binary file's role is noted. False after a message.
bool open_entry(ModelState& model, const NameFileEntry& entry, const NameFileTexts& texts);

enum class ResultRole { kNone, kHeads, kFlows };
/// The converters' plain rule: the extension as it is spelt.
ResultRole role_by_extension(const ModelState& model, const std::string& name);

/// Which result file is scanned first.
enum class ScanOrder { kHeadsFirst, kFlowsFirst };

/// Scans heads and flows as far as outputs ask for them and files are there, and switches off what cannot be
/// served.
void scan_results(ModelState& model, ScanOrder order = ScanOrder::kHeadsFirst);

/// The unit's text; null after a problem was noted.
TextSource* text_input(ModelState& model, int unit, const char* what);

}  // namespace plx
