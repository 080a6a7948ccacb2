#include "transport_inputs.h"

#include <algorithm>
#include <stdexcept>

#include "text_input.h"

namespace valley {
namespace {

struct Settings {
    std::vector<std::string> species;
    std::filesystem::path basic, sources;
};

Settings read_settings(const std::filesystem::path& path) {
    TextInput in(path);
    Settings settings;
    for (std::vector<std::string> card = in.words(1); card[0] != "END"; card = in.words(1)) {
        if (card[0] == "SPC" && card.size() > 1) settings.species.push_back(card[1]);
        if (card[0] == "BTN" && card.size() > 1) settings.basic = path.parent_path() / card[1];
        if (card[0] == "SSM" && card.size() > 1) settings.sources = path.parent_path() / card[1];
    }
    if (settings.species.empty() || settings.basic.empty() || settings.sources.empty()) {
        in.fail("a species, BTN and SSM were expected");
    }
    return settings;
}

void pass_over(TextInput& in, std::size_t rows, std::size_t columns, std::size_t arrays) {
    for (std::size_t i = 0; i < arrays; ++i) in.transport_array(rows, columns);
}

/// One array for each layer.
std::vector<double> layers(TextInput& in, const Model& model) {
    std::vector<double> values;
    for (std::size_t k = 0; k < model.layers; ++k) {
        const std::vector<double> layer = in.transport_array(model.rows, model.columns);
        values.insert(values.end(), layer.begin(), layer.end());
    }
    return values;
}

void read_print_times(TextInput& in, TransportModel& transport) {
    const double count = in.numbers(1)[0];
    while (static_cast<double>(transport.print_times.size()) < count) {
        for (const std::string& word : in.words(1)) transport.print_times.push_back(in.number(word));
    }
    if (!std::is_sorted(transport.print_times.begin(), transport.print_times.end())) {
        in.fail("the print times have to rise");
    }
}

void read_basic_package(TextInput in, const Model& model, TransportModel& transport) {
    in.words(0);
    in.words(0);
    const std::vector<double> sizes = in.numbers(6);
    const std::size_t given[] = {model.layers,
                                 model.rows,
                                 model.columns,
                                 model.periods.size(),
                                 transport.species.size(),
                                 transport.species.size()};
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        if (sizes[i] != static_cast<double>(given[i])) in.fail("other sizes than those of the flow model");
    }
    for (int line = 0; line < 3; ++line) in.words(0);  // units, packages, layer types
    // The flow model has told the widths, the top and the thicknesses.
    pass_over(in, 1, model.columns, 1);
    pass_over(in, 1, model.rows, 1);
    pass_over(in, model.rows, model.columns, 1 + model.layers);
    transport.porosity = layers(in, model);
    for (const double flag : layers(in, model)) transport.fixed.push_back(flag < 0.0);
    for (std::size_t s = 0; s < transport.species.size(); ++s) transport.initial.push_back(layers(in, model));
    transport.no_cell = in.numbers(2)[0];
    in.words(0);  // what the listing holds
    read_print_times(in, transport);
}

void read_sources(TextInput in, const Model& model, TransportModel& transport) {
    in.words(0);  // packages
    in.words(1);  // room for point sources
    for (std::size_t p = 0; p < model.periods.size(); ++p) {
        if (in.numbers(1)[0] >= 0.0) {
            transport.recharge.emplace_back();
            for (std::size_t s = 0; s < transport.species.size(); ++s) {
                transport.recharge[p].push_back(in.transport_array(model.rows, model.columns));
            }
        } else if (p > 0) {
            transport.recharge.push_back(transport.recharge[p - 1]);
        } else {
            in.fail("the first period has no recharge to repeat");
        }
        if (in.numbers(1)[0] > 0.0) in.fail("point sources are left out in this solver");
    }
}

void check(const Model& model, const std::filesystem::path& package, const TransportModel& transport) {
    for (std::size_t cell = 0; cell < model.cells(); ++cell) {
        if (model.ibound[cell] == 0) continue;
        const bool possible = transport.porosity[cell] > 0.0 && transport.porosity[cell] <= 1.0;
        if (!possible) throw std::runtime_error(package.filename().string() + ": a porosity that cannot be");
        if (model.ibound[cell] < 0 && !transport.fixed[cell]) {
            throw std::runtime_error(package.filename().string() +
                                     ": a cell of fixed head needs a fixed concentration");
        }
    }
}

}  // namespace

TransportModel read_transport(const std::filesystem::path& settings_file, const Model& model) {
    const Settings settings = read_settings(settings_file);
    TransportModel transport;
    transport.species = settings.species;
    read_basic_package(TextInput(settings.basic), model, transport);
    read_sources(TextInput(settings.sources), model, transport);
    check(model, settings.basic, transport);
    return transport;
}

}  // namespace valley
