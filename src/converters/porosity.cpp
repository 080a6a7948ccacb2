// The porosity of a model: from MT3D's basic-transport file or from a file of its own.

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>

#include "converters/model_state.h"
#include "core/text_number.h"
#include "formats/mt3d_settings.h"
#include "formats/transport_package.h"
#include "platform/platform.h"
#include "plxutils/core/VXFileReader.h"

namespace plx {
namespace {

constexpr const char* kDelimiters = "\r\n\t ,";

/// A fault of the porosity matters when it was asked for.
void complain(ModelState& model, const std::string& text) {
    if (model.factory.out_porosity) model.note(text);
}

std::string at_line(const VXFileReader& reader, const VXFile& file) {
    return std::string(file.GetFileName().c_str()) + ": line " + std::to_string(reader.CurrentLineNumber()) +
           ": ";
}

/// Reads as many numbers as `to` needs from the lines that follow; the number read. A word that is no number
/// ends it.
std::size_t read_numbers(VXFileReader& reader, double* to, std::size_t wanted) {
    std::size_t found = 0;
    while (found < wanted) {
        const int words = reader.ReadLine(kDelimiters, false, true, false);
        if (words < 0) break;
        for (int i = 0; i < words && found < wanted; ++i) {
            const String word = reader.GetWord(i);
            if (parse_double(word.c_str(), word.c_str() + word.length(), to[found]) == nullptr) return found;
            ++found;
        }
    }
    return found;
}

void read_plain_file(ModelState& model) {
    const VXFile& file = model.factory.porosity_file;
    VXFileReader reader;
    bool found = false;
    if (reader.Open(file.GetFilePath().c_str())) {
        while (!found && reader.ReadLine(kDelimiters, false, true, false) >= 0) {
            found = reader.GetWord(0) == "POROSITY";
        }
    }
    std::vector<double> values(model.size().cells());
    const std::size_t read = found ? read_numbers(reader, values.data(), values.size()) : 0;
    if (read == 0) std::printf("MODFLOW::read_POR no porosity values found in .ptk file\n");
    if (read < values.size()) {
        complain(model, (found ? at_line(reader, file) : file.GetFileName().c_str() + std::string(": ")) +
                            std::to_string(values.size()) + " porosity values expected, " +
                            std::to_string(read) + " found");
    }
    if (read > 0) model.porosity = std::move(values);
}

/// Reads one porosity array of the package as the plain rules see it: a control line, then ten values a line.
bool read_plain_layer(VXFileReader& reader, double* layer, std::size_t cells) {
    if (reader.ReadLine(kDelimiters, false, true, false) < 0) return false;
    if (reader.GetWord(0) != "0") return read_numbers(reader, layer, cells) == cells;
    double constant = 0.0;
    reader.WordToDouble(1, constant);
    std::fill(layer, layer + cells, constant);
    return true;
}

/// Passes over words, then lines, of a text; false when it ends first.
using Skip = std::function<bool(VXFileReader& reader, int words, int lines)>;

/// Passes over the seven lines and the arrays before the porosity.
bool skip_to_porosity(VXFileReader& reader, const GridSize& size, const Skip& skip) {
    if (!skip(reader, 0, 7)) return false;
    for (int array = 0; array < size.layers + 3; ++array) {
        if (reader.ReadLine(kDelimiters, false, true, false) < 0) return false;
        if (reader.GetWord(0) == "0") continue;
        // The widths are passed over as if the rows' came first, and the later arrays with a line before
        // their values: deliberate, the packages that hosts convert by the plain rules are laid out so.
        const int words = array == 0 ? size.rows : array == 1 ? size.columns : size.rows * size.columns;
        if (!skip(reader, words, array < 2 ? 0 : 1)) return false;
    }
    return true;
}

/// Reads the package by the plain rules, which know every array's place by the number of lines and words
/// before it.
void read_plain_package(ModelState& model, const VXFile& file, const Skip& skip) {
    VXFileReader reader;
    if (!reader.Open(file.GetFilePath().c_str())) {
        complain(model, std::string(file.GetFileName().c_str()) + ": the transport package cannot be opened");
        return;
    }
    const GridSize size = model.size();
    std::vector<double> values(size.cells());
    bool whole = skip_to_porosity(reader, size, skip);
    for (std::size_t first = 0; first < values.size() && whole; first += size.per_layer()) {
        whole = read_plain_layer(reader, values.data() + first, size.per_layer());
    }
    if (whole) {
        model.porosity = std::move(values);
    } else {
        complain(model, at_line(reader, file) + "the transport package ends before the porosity does");
    }
}

/// Reads the package by its own layout.
void read_package(ModelState& model, const std::string& path) {
    const std::unique_ptr<std::FILE, SpeciesFile::Closer> stream(platform::open_file(path.c_str(), "rb"));
    if (!stream) {
        complain(model, display_name(path) + ": the transport package cannot be opened");
        return;
    }
    TextSource in(stream.get(), display_name(path));
    model.factory.report.rules_used.obey_array_formats = true;
    read_package_porosity(in, model.size(), true, model.porosity, model.problems);
    if (!model.factory.out_porosity) model.problems.clear();
    model.report_problems();
}

}  // namespace
}  // namespace plx

void ConverterFactory::parsePOR() {
    std::printf("Generic parsePOR\t\t\t\t\t\t\t\t\t\t\t\t\t\r");
    plx::ModelState& m = model();
    m.porosity.clear();
    if (porosity_file.GetFilePath().length() == 0) {
        std::printf("POR file does not exist.\n");
        return;
    }
    if (m.size().cells() == 0) return;
    if (porosity_file.GetFileExtension() != "mts") return plx::read_plain_file(m);
    plx::Mt3dSettings settings;
    plx::Problems ignored;  // the date is another reader's business
    if (!plx::read_mt3d_settings(porosity_file, settings, ignored)) {
        std::printf("MODFLOW::read_POR error opening .mts file\n");
        plx::complain(
            m, std::string(porosity_file.GetFileName().c_str()) + ": the MT3D settings cannot be opened");
        return;
    }
    if (settings.transport_package.empty()) {
        plx::complain(
            m, std::string(porosity_file.GetFileName().c_str()) + ": names no transport package (BTN)");
        return;
    }
    mt3d_transport_file = VXFile(settings.transport_package.c_str());
    if (reading_rules.obey_array_formats) return plx::read_package(m, settings.transport_package);
    plx::read_plain_package(m, mt3d_transport_file, [this](VXFileReader& reader, int words, int lines) {
        return skip(reader, words, lines);
    });
}
