#include "inputs.h"

#include <map>
#include <stdexcept>

#include "text_input.h"

namespace valley {
namespace {

using Packages = std::map<std::string, std::filesystem::path>;

Packages read_name_file(const std::filesystem::path& path) {
    Packages packages;
    std::ifstream file(path);
    if (!file) throw std::runtime_error(path.string() + ": cannot be opened");
    std::string type, unit, name;
    for (std::string rest; file >> type; std::getline(file, rest)) {
        if (type[0] != '#' && file >> unit >> name) packages[type] = path.parent_path() / name;
    }
    return packages;
}

TextInput open(const Packages& packages, const std::string& type) {
    const auto found = packages.find(type);
    if (found == packages.end()) throw std::runtime_error("the name file has no line " + type);
    return TextInput(found->second);
}

void append(std::vector<double>& to, const std::vector<double>& values) {
    to.insert(to.end(), values.begin(), values.end());
}

std::size_t count(const TextInput& in, double value, double largest) {
    if (!(value >= 1.0 && value <= largest))
        in.fail("a size of " + std::to_string(value) + " is not possible");
    return static_cast<std::size_t>(value);
}

/// A line of numbers, one a layer, that must all be 0.
void expect_zeros(TextInput& in, std::size_t layers, const char* what) {
    for (const double value : in.numbers(layers)) {
        if (value != 0.0) in.fail(std::string(what) + " other than 0 is left out by this solver");
    }
}

void read_discretization(TextInput in, Model& model) {
    const std::vector<double> sizes = in.numbers(6);
    model.layers = count(in, sizes[0], 100);
    model.rows = count(in, sizes[1], 2000);
    model.columns = count(in, sizes[2], 2000);
    if (sizes[4] != 4.0 || sizes[5] != 2.0) in.fail("days and metres (4 2) are expected");
    expect_zeros(in, model.layers, "LAYCBD");
    model.column_widths = in.array(1, model.columns);
    model.row_widths = in.array(1, model.rows);
    model.top = in.array(model.rows, model.columns);
    for (std::size_t k = 0; k < model.layers; ++k) append(model.bottom, in.array(model.rows, model.columns));
    for (std::size_t cell = 0; cell < model.cells(); ++cell) {
        if (!(model.thickness(cell) > 0.0)) in.fail("cell " + std::to_string(cell + 1) + " has no thickness");
    }
    for (std::size_t p = 0; p < count(in, sizes[3], 1000); ++p) {
        const std::vector<std::string> words = in.words(4);
        Period period;
        period.length = in.number(words[0]);
        period.steps = static_cast<int>(in.number(words[1]));
        period.factor = in.number(words[2]);
        period.steady = words[3] == "SS" || words[3] == "ss";
        if (!(period.length > 0.0 && period.factor > 0.0) || period.steps < 1) in.fail("not a stress period");
        model.periods.push_back(period);
    }
}

void read_basic_package(TextInput in, Model& model) {
    in.words(0);  // options
    for (std::size_t k = 0; k < model.layers; ++k) {
        for (const double flag : in.array(model.rows, model.columns))
            model.ibound.push_back(static_cast<int>(flag));
    }
    model.no_flow_head = in.numbers(1)[0];
    for (std::size_t k = 0; k < model.layers; ++k)
        append(model.starting_heads, in.array(model.rows, model.columns));
}

void read_flow_package(TextInput in, Model& model) {
    if (in.numbers(3)[2] != 0.0) in.fail("parameters are left out by this solver");
    expect_zeros(in, model.layers, "LAYTYP");
    expect_zeros(in, model.layers, "LAYAVG");
    in.numbers(model.layers);  // CHANI: one conductivity along rows and columns
    expect_zeros(in, model.layers, "LAYVKA");
    expect_zeros(in, model.layers, "LAYWET");
    for (std::size_t k = 0; k < model.layers; ++k) {
        append(model.conductivity, in.array(model.rows, model.columns));
        append(model.vertical_conductivity, in.array(model.rows, model.columns));
        append(model.specific_storage, in.array(model.rows, model.columns));
    }
}

void read_list(TextInput in, const Model& model, ListPackage& package) {
    const std::vector<std::string> head = in.words(2);
    for (std::size_t i = 2; i + 1 < head.size(); ++i) {
        if (head[i] == "AUXILIARY" || head[i] == "AUX") package.auxiliary.push_back(head[i + 1]);
    }
    const std::size_t values = package.own_values + package.auxiliary.size();
    for (std::size_t p = 0; p < model.periods.size(); ++p) {
        const double entries = in.numbers(1)[0];
        if (entries < 0.0 && p == 0) in.fail("the first period has no list to repeat");
        package.periods.push_back(entries < 0.0 ? package.periods[p - 1] : std::vector<ListEntry>());
        for (std::size_t n = 0; static_cast<double>(n) < entries; ++n) {
            const std::vector<double> line = in.numbers(3 + values);
            const std::size_t layer = count(in, line[0], static_cast<double>(model.layers)) - 1;
            const std::size_t row = count(in, line[1], static_cast<double>(model.rows)) - 1;
            const std::size_t column = count(in, line[2], static_cast<double>(model.columns)) - 1;
            package.periods[p].push_back(
                {(layer * model.rows + row) * model.columns + column, {line.begin() + 3, line.end()}});
        }
    }
}

void read_recharge(TextInput in, Model& model) {
    if (in.numbers(2)[0] != 3.0) in.fail("recharge goes to the highest cell (NRCHOP 3) in this solver");
    for (std::size_t p = 0; p < model.periods.size(); ++p) {
        const bool repeated = in.numbers(1)[0] < 0.0;
        if (repeated && p == 0) in.fail("the first period has no recharge to repeat");
        model.recharge.push_back(repeated ? model.recharge[p - 1] : in.array(model.rows, model.columns));
    }
}

Leak well(const ListEntry& entry, double) { return {0.0, entry.values[0]}; }

Leak drain(const ListEntry& entry, double head) {
    const double elevation = entry.values[0];
    const double conductance = entry.values[1];
    return head > elevation ? Leak{conductance, conductance * elevation} : Leak{};
}

Leak river(const ListEntry& entry, double head) {
    const double stage = entry.values[0];
    const double conductance = entry.values[1];
    const double bed = entry.values[2];
    // Once the aquifer falls below the bed, the loss no longer depends on its head.
    return head > bed ? Leak{conductance, conductance * stage} : Leak{0.0, conductance * (stage - bed)};
}

}  // namespace

Model read_model(const std::filesystem::path& name_file) {
    const Packages packages = read_name_file(name_file);
    Model model;
    read_discretization(open(packages, "DIS"), model);
    read_basic_package(open(packages, "BAS6"), model);
    read_flow_package(open(packages, "LPF"), model);
    model.lists = {
        {"WELLS", 1, well, {}, {}}, {"DRAINS", 2, drain, {}, {}}, {"RIVER LEAKAGE", 3, river, {}, {}}};
    const char* types[] = {"WEL", "DRN", "RIV"};
    for (std::size_t i = 0; i < model.lists.size(); ++i)
        read_list(open(packages, types[i]), model, model.lists[i]);
    read_recharge(open(packages, "RCH"), model);
    TextInput solver = open(packages, "PCG");
    const std::vector<double> limits = solver.numbers(2);
    model.outer_iterations = static_cast<int>(limits[0]);
    model.inner_iterations = static_cast<int>(limits[1]);
    const std::vector<double> tolerances = solver.numbers(2);
    model.head_tolerance = tolerances[0];
    model.flow_tolerance = tolerances[1];
    return model;
}

}  // namespace valley
