#pragma once

#include <vector>

#include "conjugate_gradients.h"
#include "model.h"

namespace valley {

/// Conductances (m2/d) from each cell to the next column, row and layer; 0 where either is no cell, at the
/// grid's end, and between two cells of fixed head.
struct Conductances {
    std::vector<double> right, front, lower;
};
Conductances conductances(const Model& model);

/// One time step of one stress period.
struct Step {
    std::size_t period = 0;
    int number = 0;            ///< within the period, from 1
    double length = 0.0;       ///< days
    double period_time = 0.0;  ///< at its end, within the period
    double total_time = 0.0;   ///< at its end, since the start
    bool steady = false;
};

/// The cell of a column of cells that takes its recharge: the highest one; `cells()` when there is none.
std::size_t recharge_cell(const Model& model, std::size_t column);

/// Water released from storage when the head of a cell falls by one metre (m2).
double storage(const Model& model, std::size_t cell);

/// Solves one step. `heads` holds the heads before it and receives those at its end. Returns the number of
/// outer iterations, 0 when they did not settle.
int solve_step(const Model& model, const Conductances& between, const Step& step, std::vector<double>& heads);

}  // namespace valley
