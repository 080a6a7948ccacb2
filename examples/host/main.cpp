// A host in its smallest form: converts a MODFLOW 2000 model with the library alone.

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

#include "plxutils/converters/Converter.h"
#include "plxutils/converters/MODFLOW2000_Converter.h"
#include "plxutils/core/VXFile.h"
#include "plxutils/core/VXNativePath.h"

namespace {

void show_step(int done, int total) { std::fprintf(stderr, "step %d of %d\n", done, total); }

/// Tells what was written; false when something asked for is missing.
bool show_report(const plx::ConversionReport& report) {
    for (const std::string& error : report.errors) std::fprintf(stderr, "%s\n", error.c_str());
    for (const std::string& name : report.files)
        std::fprintf(stderr, "wrote %s\n", VXNativePath(name.c_str()).c_str());
    std::fprintf(stderr, "%lld nodes, %lld cells, %d steps\n", static_cast<long long>(report.nodes),
                 static_cast<long long>(report.cells), report.steps);
    return report.errors.empty() && !report.files.empty();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs(
            "usage: convert_model MODEL.nam\n"
            "Writes the model's field files into the folders GENERAL and MODFLOW beside it.\n",
            stderr);
        return 2;
    }
    MODFLOW2000_Converter converter;
    converter.reading_rules = plx::ReadingRules::modflow();
    converter.on_step = show_step;

    // Everything but the transport results, with one porosity for all layers.
    std::array<int, Converter::kOutputs> outputs;
    std::fill(outputs.begin(), outputs.end() - 1, 1);
    outputs.back() = 0;
    double porosity = 0.25;

    VXFile project;
    project.SetFile(argv[1]);
    // The library keeps a trace of its work on standard output; a host that wants none redirects it.
    Converter().create_converter(converter, project, 1, &porosity, false, outputs.data(), false, 0.0, 0.0,
                                 0.0, 0.0);
    return show_report(converter.report) ? 0 : 1;
}
