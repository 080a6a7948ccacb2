#include "plxconvert/outputs.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <stdexcept>

#include "plxconvert/words.h"

namespace plx::tool {

namespace {

std::size_t index_of(bool ConverterFactory::*flag) {
    const auto& table = output_table();
    const auto found = std::find_if(table.begin(), table.end(),
                                    [flag](const Output& output) { return output.flag == flag; });
    return static_cast<std::size_t>(found - table.begin());
}

std::size_t index_of_name(const std::string& name) {
    const auto& table = output_table();
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&name](const Output& output) { return name == output.name; });
    if (found != table.end()) return static_cast<std::size_t>(found - table.begin());
    std::string names;
    for (const Output& output : table) names += std::string(output.name) + ", ";
    throw std::invalid_argument("--outputs: '" + name + "' is not known; the names are " + names +
                                "all and none");
}

}  // namespace

const OutputTable& output_table() {
    static const OutputTable table{{
        {"elevation", "elevation of the nodes", &ConverterFactory::out_elevation},
        {"geo_layer", "layer number of the nodes, from 0", &ConverterFactory::out_geo_layer},
        {"head_nodes", "heads, averaged to the nodes", &ConverterFactory::out_head_nodes},
        {"ccf", "flow through the right, front and lower cell faces, as a vector",
         &ConverterFactory::out_ccf},
        {"elev_top", "top elevation of the cells", &ConverterFactory::out_elev_top},
        {"elev_bottom", "bottom elevation of the cells", &ConverterFactory::out_elev_bottom},
        {"material", "material number of the cells", &ConverterFactory::out_material},
        {"porosity", "porosity of the cells (the transport package's, else --porosity, else 0)",
         &ConverterFactory::out_porosity},
        {"head_cells", "heads of the cells", &ConverterFactory::out_head_cells},
        {"boundary_flows", "flows of wells, drains, rivers and other boundaries (needs ccf)",
         &ConverterFactory::out_boundary_flows},
        {"mt3d", "concentrations of MT3D, as field files of their own times", &ConverterFactory::out_mt3d},
    }};
    return table;
}

OutputChoice parse_outputs(const std::string& list, bool porosity_given) {
    OutputChoice choice;
    const std::size_t porosity = index_of(&ConverterFactory::out_porosity);
    const auto words = split(lower(list), ',');
    const bool alone = words.size() == 1;
    if (alone && words[0] == "all") {
        choice.flags.fill(1);
        choice.flags[porosity] = 0;
    } else if (!(alone && words[0] == "none")) {
        for (const std::string& word : words) {
            if (word == "all" || word == "none") {
                throw std::invalid_argument("--outputs: '" + word + "' stands alone, without other names");
            }
            const std::size_t index = index_of_name(word);
            choice.flags[index] = 1;
            choice.named[index] = true;
        }
        if (choice.named[index_of(&ConverterFactory::out_boundary_flows)] &&
            !choice.named[index_of(&ConverterFactory::out_ccf)]) {
            throw std::invalid_argument("--outputs: boundary_flows needs ccf: both come from the flow file");
        }
    }
    if (porosity_given) choice.flags[porosity] = 1;
    return choice;
}

std::string outputs_help() {
    std::string text;
    for (const Output& output : output_table()) {
        char line[128];
        std::snprintf(line, sizeof line, "  %-16s%s\n", output.name, output.help);
        text += line;
    }
    return text +
           "  all             everything that the model has (the default); porosity with --porosity only\n"
           "  none            the mesh without values\n"
           "Whatever is chosen, GENERAL gets the mesh and MODFLOW a field file for each saved step; with "
           "mt3d\n"
           "or none alone these hold no values. (--rules prescribed writes no steps without heads.)\n";
}

}  // namespace plx::tool
