#include "gms/hdf5_objects.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>

#include "core/output_names.h"

namespace plx {
namespace {

/// Reads a dataset, or says which one could not be read and what was wanted.
template <class T>
bool require(Hdf5Id group, const char* path, const char* wanted, Hdf5Array<T>& out, std::string& problem) {
    if (read_hdf5(group, path, out)) return true;
    problem = std::string(path) + ": no readable " + wanted;
    return false;
}

bool read_name(Hdf5Id group, std::string& name, std::string& problem) {
    constexpr const char* kPath = "PROPERTIES/Name";
    Hdf5Array<std::string> names;
    if (!require(group, kPath, "text", names, problem)) return false;
    if (names.values.empty()) {
        problem = std::string(kPath) + ": it holds no text";
        return false;
    }
    name = std::move(names.values.front());
    return true;
}

/// Reads a table of at least `columns` columns.
template <class T>
bool read_table(Hdf5Id group, const char* path, std::size_t columns, Hdf5Array<T>& table,
                std::string& problem) {
    if (!require(group, path, "numbers", table, problem)) return false;
    if (table.shape.size() == 2 && table.shape[1] >= columns) return true;
    std::string found;
    for (const std::size_t length : table.shape)
        found += (found.empty() ? "" : " x ") + std::to_string(length);
    problem = std::string(path) + ": a table with " + std::to_string(columns) +
              " or more columns expected, found " + (found.empty() ? "a single value" : found);
    return false;
}

std::vector<double> column(const Hdf5Array<double>& table, std::size_t index) {
    std::vector<double> values(table.shape[0]);
    for (std::size_t row = 0; row < values.size(); ++row) {
        values[row] = table.values[row * table.shape[1] + index];
    }
    return values;
}

bool read_triangles(Hdf5Id group, std::vector<std::array<int, 3>>& triangles, std::string& problem) {
    Hdf5Array<int> table;
    if (!read_table(group, "Elements/Nodeids", 3, table, problem)) return false;
    triangles.resize(table.shape[0]);
    for (std::size_t row = 0; row < triangles.size(); ++row) {
        const int* nodes = &table.values[row * table.shape[1]];
        triangles[row] = {zero_based(nodes[0]), zero_based(nodes[1]), zero_based(nodes[2])};
    }
    return true;
}

/// The object of one member of a module; a lack of memory makes it unusable, like a damaged dataset.
template <class Read>
bool within_memory(std::string& problem, Read read) {
    try {
        return read();
    } catch (const std::bad_alloc&) {
        problem = "not enough memory";
        return false;
    }
}

/// Makes the counts add up to `contacts`: later bores get what is left, and the last one what is too many.
void distribute(std::size_t contacts, std::vector<int>& counts) {
    if (counts.empty() && contacts > 0) counts.push_back(0);
    std::size_t left = contacts;
    for (int& count : counts) {
        count = static_cast<int>(std::min(static_cast<std::size_t>(std::max(count, 0)), left));
        left -= static_cast<std::size_t>(count);
    }
    if (left > 0) counts.back() += static_cast<int>(left);
}

bool read_contacts(Hdf5Id group, Hdf5Bores& bores, std::string& problem) {
    Hdf5Array<double> x, y, z;
    Hdf5Array<int> materials;
    if (!require(group, "X Locations", "numbers", x, problem) ||
        !require(group, "Y Locations", "numbers", y, problem) ||
        !require(group, "Z Locations", "numbers", z, problem) ||
        !require(group, "Material", "numbers", materials, problem))
        return false;
    // What one of them lacks is no contact; int counts them from here on.
    const std::size_t count =
        std::min({x.values.size(), y.values.size(), z.values.size(), materials.values.size(),
                  static_cast<std::size_t>(std::numeric_limits<int>::max())});
    x.values.resize(count);
    y.values.resize(count);
    z.values.resize(count);
    materials.values.resize(count);
    bores.contacts = {std::move(x.values), std::move(y.values), std::move(z.values)};
    bores.materials = std::move(materials.values);
    return true;
}

/// All elements of a list but the first, which GMS keeps for itself.
template <class From, class To, class Convert>
void copy_tail(const std::vector<From>& from, VX1DArray<To>& to, Convert convert) {
    const std::size_t count = std::min(from.empty() ? 0 : from.size() - 1,
                                       static_cast<std::size_t>(std::numeric_limits<int>::max()));
    if (!to.SetSize(static_cast<int>(count), To())) return;
    for (std::size_t i = 0; i < count; ++i) to[static_cast<int>(i)] = convert(from[i + 1]);
}

/// First value of the time step nearest to `time`: the tables have a row for each entry of "Times".
std::size_t start_of_step(Hdf5Id datasets, const std::string& name, const Hdf5Array<double>& table,
                          double time) {
    Hdf5Array<double> times;
    if (table.shape.size() < 2 || !read_hdf5(datasets, name + "/Times", times) ||
        times.values.size() != table.shape[0] || times.values.empty()) {
        return 0;
    }
    const auto farther = [time](double a, double b) { return std::fabs(a - time) < std::fabs(b - time); };
    const auto nearest = std::min_element(times.values.begin(), times.values.end(), farther);
    return static_cast<std::size_t>(nearest - times.values.begin()) * (table.values.size() / table.shape[0]);
}

bool read_hdf5_values(Hdf5Id datasets, const std::string& name, std::size_t count, const double* time,
                      std::vector<double>& values) {
    Hdf5Array<double> table;
    if (!read_hdf5(datasets, name + "/Values", table)) return false;
    const std::size_t first = time == nullptr ? 0 : start_of_step(datasets, name, table, *time);
    const std::size_t known = std::min(count, table.values.size() - first);
    try {
        // Only these are kept: a table holds every time step.
        values.assign(count, kMissingValue);
    } catch (const std::bad_alloc&) {
        return false;
    }
    std::copy_n(table.values.begin() + static_cast<std::ptrdiff_t>(first), known, values.begin());
    return true;
}

}  // namespace

bool read_hdf5_tin(Hdf5Id group, GmsTin& tin, std::string& problem) {
    tin = {};
    return within_memory(problem, [&] {
        Hdf5Array<double> nodes;
        if (!read_name(group, tin.name, problem) || !read_table(group, "Nodes/NodeLocs", 3, nodes, problem) ||
            !read_triangles(group, tin.triangles, problem))
            return false;
        tin.nodes = {column(nodes, 0), column(nodes, 1), column(nodes, 2)};
        return true;
    });
}

bool read_hdf5_scatter(Hdf5Id group, GmsScatter& set, std::string& problem) {
    set = {};
    return within_memory(problem, [&] {
        Hdf5Array<double> nodes;
        if (!read_name(group, set.name, problem) || !read_table(group, "Nodes/NodeLocs", 2, nodes, problem))
            return false;
        set.points.x = column(nodes, 0);
        set.points.y = column(nodes, 1);
        return true;
    });
}

std::vector<DataColumn> read_hdf5_columns(Hdf5Id group, std::size_t count, const double* time,
                                          std::vector<std::string>* problems) {
    std::vector<DataColumn> columns;
    const auto leave_out = [problems](const std::string& problem) {
        if (problems != nullptr) problems->push_back(problem);
    };
    const Hdf5Handle datasets = open_hdf5_group(group, "Datasets");
    if (!datasets) {
        leave_out("Datasets: there is no such group");
        return columns;
    }
    for (const std::string& name : hdf5_members(datasets.id())) {
        if (name == "Guid" || !is_hdf5_group(datasets.id(), name)) continue;
        DataColumn column{name, {}};
        if (!read_hdf5_values(datasets.id(), name, count, time, column.values)) {
            leave_out("Datasets/" + name + "/Values: no readable numbers");
            continue;
        }
        columns.push_back(std::move(column));
    }
    return columns;
}

bool read_hdf5_bores(Hdf5Id group, Hdf5Bores& bores, std::string& problem) {
    bores = {};
    return within_memory(problem, [&] {
        Hdf5Array<int> counts;
        Hdf5Array<std::string> names;
        if (!read_contacts(group, bores, problem) ||
            !require(group, "Number of Contacts", "numbers", counts, problem) ||
            !require(group, "Name", "texts", names, problem))
            return false;
        bores.contacts_of_bore = std::move(counts.values);
        distribute(bores.contacts.x.size(), bores.contacts_of_bore);
        for (std::string& name : names.values) bores.names.push_back(one_word(std::move(name)));
        bores.names.resize(bores.contacts_of_bore.size());
        return true;
    });
}

void read_hdf5_materials(Hdf5Id group, VX1DArray<int>& ids, VX1DArray<String>& names) {
    Hdf5Array<int> numbers;
    Hdf5Array<std::string> texts;
    read_hdf5(group, "Id", numbers);
    read_hdf5(group, "Name", texts);
    copy_tail(numbers.values, ids, [](int id) { return id; });
    copy_tail(texts.values, names, [](const std::string& name) { return String(one_word(name).c_str()); });
}

}  // namespace plx
