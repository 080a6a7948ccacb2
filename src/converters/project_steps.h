#pragma once

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

/// Reads the factory's name file into model.name_entries; false after the prescribed message.
bool read_name_entries(ModelState& model);

/// Opens the file of a name-file line at its unit; a binary file's role is noted. False after a message.
bool open_entry(ModelState& model, const NameFileEntry& entry, const NameFileTexts& texts);

/// Scans heads and flows as far as outputs ask for them and files are there, switches off what cannot be
/// served, and finds the transport results.
void scan_results(ModelState& model);

/// The unit's text; null after a problem was noted.
TextSource* text_input(ModelState& model, int unit, const char* what);

}  // namespace plx
