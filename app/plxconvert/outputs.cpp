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
    static const OutputTable table = [] {
        constexpr std::array<const char*, Converter::kOutputs> kHelp = {
            "elevation of the nodes",
            "layer number of the nodes, from 0",
            "heads, averaged to the nodes",
            "flow through the right, front and lower cell faces, as a vector",
            "top elevation of the cells",
            "bottom elevation of the cells",
            "material number of the cells",
            "porosity of the cells (the transport package's, else --porosity, else 0)",
            "heads of the cells",
            "flows of wells, drains, rivers and other boundaries (needs ccf)",
            "concentrations of MT3D, as field files of their own times",
        };
        OutputTable outputs{};
        for (std::size_t i = 0; i < outputs.size(); ++i) {
            const ConversionOutput& known = conversion_outputs()[i];
            outputs[i] = {known.name, kHelp[i], known.flag};
        }
        return outputs;
    }();
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
