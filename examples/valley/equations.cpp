#include "equations.h"

#include <algorithm>
#include <cmath>

namespace valley {
namespace {

/// Two half cells of transmissivity t and width w in a row, over a face of the given length.
double in_series(double t1, double w1, double t2, double w2, double face) {
    return t1 > 0.0 && t2 > 0.0 ? 2.0 * face * t1 * t2 / (t1 * w2 + t2 * w1) : 0.0;
}

struct Equations {
    SevenPointMatrix matrix;
    std::vector<double> right_side;
};

/// Moves the link between two neighbours into the equations of those whose head is unknown.
void link(const Model& model, const std::vector<double>& heads, std::size_t a, std::size_t b,
          double conductance, double& between, Equations& e) {
    const bool unknown_a = model.ibound[a] > 0;
    const bool unknown_b = model.ibound[b] > 0;
    if (unknown_a) e.matrix.diagonal[a] += conductance;
    if (unknown_b) e.matrix.diagonal[b] += conductance;
    if (unknown_a && unknown_b) {
        between = conductance;
    } else if (unknown_a) {
        e.right_side[a] += conductance * heads[b];
    } else if (unknown_b) {
        e.right_side[b] += conductance * heads[a];
    }
}

Equations assemble(const Model& model, const Conductances& between, const Step& step,
                   const std::vector<double>& before, const std::vector<double>& heads) {
    const std::size_t n = model.cells();
    const std::vector<double> zeros(n, 0.0);
    Equations e{{model.columns, model.layer_cells(), zeros, zeros, zeros, zeros}, zeros};
    for (std::size_t cell = 0; cell < n; ++cell) {
        if (between.right[cell] > 0.0)
            link(model, heads, cell, cell + 1, between.right[cell], e.matrix.right[cell], e);
        if (between.front[cell] > 0.0) {
            link(model, heads, cell, cell + model.columns, between.front[cell], e.matrix.front[cell], e);
        }
        if (between.lower[cell] > 0.0) {
            link(model, heads, cell, cell + model.layer_cells(), between.lower[cell], e.matrix.lower[cell],
                 e);
        }
        if (!step.steady && model.ibound[cell] > 0) {
            const double released = storage(model, cell) / step.length;
            e.matrix.diagonal[cell] += released;
            e.right_side[cell] += released * before[cell];
        }
    }
    for (const ListPackage& package : model.lists) {
        for (const ListEntry& entry : package.periods[step.period]) {
            if (model.ibound[entry.cell] <= 0) continue;
            const Leak leak = package.leak(entry, heads[entry.cell]);
            e.matrix.diagonal[entry.cell] += leak.conductance;
            e.right_side[entry.cell] += leak.constant;
        }
    }
    for (std::size_t column = 0; column < model.layer_cells(); ++column) {
        const std::size_t cell = recharge_cell(model, column);
        if (cell < n) e.right_side[cell] += model.recharge[step.period][column] * model.area(cell);
    }
    // Cells without an equation keep their head.
    for (std::size_t cell = 0; cell < n; ++cell) {
        if (model.ibound[cell] > 0) continue;
        e.matrix.diagonal[cell] = 1.0;
        e.right_side[cell] = heads[cell];
    }
    return e;
}

}  // namespace

Conductances conductances(const Model& model) {
    const std::size_t n = model.cells();
    Conductances c{std::vector<double>(n), std::vector<double>(n), std::vector<double>(n)};
    const auto transmissivity = [&](std::size_t cell) {
        return model.ibound[cell] == 0 ? 0.0 : model.conductivity[cell] * model.thickness(cell);
    };
    const auto half_resistance = [&](std::size_t cell) {
        return 0.5 * model.thickness(cell) / model.vertical_conductivity[cell];
    };
    const auto linked = [&](std::size_t a, std::size_t b) {
        return model.ibound[a] != 0 && model.ibound[b] != 0 && (model.ibound[a] > 0 || model.ibound[b] > 0);
    };
    for (std::size_t cell = 0; cell < n; ++cell) {
        const std::size_t j = cell % model.columns;
        const std::size_t i = cell % model.layer_cells() / model.columns;
        const double width = model.column_widths[j];
        const double height = model.row_widths[i];
        if (j + 1 < model.columns && linked(cell, cell + 1)) {
            c.right[cell] = in_series(transmissivity(cell), width, transmissivity(cell + 1),
                                      model.column_widths[j + 1], height);
        }
        if (const std::size_t next = cell + model.columns; i + 1 < model.rows && linked(cell, next)) {
            c.front[cell] =
                in_series(transmissivity(cell), height, transmissivity(next), model.row_widths[i + 1], width);
        }
        if (const std::size_t next = cell + model.layer_cells(); next < n && linked(cell, next)) {
            c.lower[cell] = width * height / (half_resistance(cell) + half_resistance(next));
        }
    }
    return c;
}

std::size_t recharge_cell(const Model& model, std::size_t column) {
    for (std::size_t cell = column; cell < model.cells(); cell += model.layer_cells()) {
        if (model.ibound[cell] != 0) return model.ibound[cell] > 0 ? cell : model.cells();
    }
    return model.cells();
}

double storage(const Model& model, std::size_t cell) {
    return model.specific_storage[cell] * model.thickness(cell) * model.area(cell);
}

int solve_step(const Model& model, const Conductances& between, const Step& step,
               std::vector<double>& heads) {
    const std::vector<double> before = heads;
    for (int iteration = 1; iteration <= model.outer_iterations; ++iteration) {
        const Equations e = assemble(model, between, step, before, heads);
        std::vector<double> solution = heads;
        if (!solve(e.matrix, e.right_side, model.flow_tolerance, model.inner_iterations, solution)) return 0;
        double change = 0.0;
        for (std::size_t cell = 0; cell < heads.size(); ++cell) {
            change = std::max(change, std::fabs(solution[cell] - heads[cell]));
        }
        heads = std::move(solution);
        if (change <= model.head_tolerance) return iteration;
    }
    return 0;
}

}  // namespace valley
