#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "formats/gms_steps.h"
#include "formats/record_file.h"

namespace plx {

/// The concentration file of one species, open for reading.
struct SpeciesFile {
    struct Closer {
        void operator()(std::FILE* f) const { std::fclose(f); }
    };
    int number = 0;  ///< of the species, from 1
    std::unique_ptr<std::FILE, Closer> stream;
    std::unique_ptr<RecordFile> file;  ///< of an MT3D file; null for one of GMS
    std::unique_ptr<GmsSteps> steps;   ///< of a GMS dataset file
    /// Size of an MT3D file's first transport time, all layers; 0 when the file is shorter.
    std::int64_t time_bytes = 0;
    bool told_layers = false;  ///< that records name other layers than their place does was warned of

    const std::string& name() const { return steps ? steps->name() : file->name(); }
    bool at_end() const { return steps ? steps->left() == 0 : file->at_end(); }
    /// Times that are whole.
    std::int64_t times() const {
        if (steps) return steps->count();
        return time_bytes > 0 ? file->size() / time_bytes : 0;
    }
};

/// Transport results of a conversion: one open file per species that was found.
struct TransportResults {
    /// How the transport model names its files: 0 and 1 see species_file_names, anything else is the third
    /// way.
    int naming_style = 2;
    std::vector<SpeciesFile> species;
    bool settings_read = false;     ///< parseMTS has run
    std::string time_units;         ///< as the MT3D settings give them; dates follow the flow model's unit
    bool told_other_times = false;  ///< species that stand at different times were warned of
};

}  // namespace plx
