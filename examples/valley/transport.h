#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "results.h"
#include "transport_inputs.h"

namespace valley {

/// What became of a species' mass (g) in the cells whose concentration is free.
struct MassBalance {
    struct Line {
        std::string label;
        double in = 0.0, out = 0.0;
    };
    std::vector<Line> lines;  ///< by the kind of boundary, over the whole run
    double before = 0.0, after = 0.0;
    /// What the two masses differ by that no boundary explains, relative to the larger of them and the
    /// inflow.
    double discrepancy() const;
};

/// Carries the dissolved species with the flows of each step: explicit, upstream weighted, in parts of a step
/// in which no cell's water is replaced more than once. Water that goes into storage takes its cell's
/// concentration with it and comes back with it; wells, rivers and drains bring none.
///
/// Writes the concentrations of each species as MT3DMS does, one file a species: "valley001.ucn" and so on.
class Transport {
public:
    /// Throws std::runtime_error when a file cannot be made.
    Transport(const Model& model, TransportModel transport, const std::filesystem::path& folder);
    /// Goes on to the end of a step. `terms` is its budget.
    void advance(const Step& step, const std::vector<Term>& terms);
    MassBalance balance(std::size_t species) const;
    const std::vector<std::string>& species() const { return transport_.species; }
    /// Throws std::runtime_error when not everything could be written.
    void close();
    void publish();

private:
    /// Water that goes from one cell to another (m3/d).
    struct Link {
        std::size_t from, to;
        double flow;
    };
    /// Water that comes into a cell (or leaves it: negative) from outside.
    struct Exchange {
        std::size_t cell, line;
        double flow;
        std::size_t column;  ///< recharge only
    };
    struct Flows {
        std::size_t period = 0;
        std::vector<Link> links;
        std::vector<Exchange> exchanges;
        double longest = 0.0;  ///< days until the first cell's water is replaced
    };

    Flows gather(const Step& step, const std::vector<Term>& terms) const;
    void add_links(const Term& face, std::size_t stride, Flows& flows) const;
    void add_exchanges(const Term& term, std::size_t line, Flows& flows) const;
    double longest_part(const Flows& flows) const;
    void move(std::size_t species, const Flows& flows, double length);
    double source_concentration(std::size_t species, const Flows& flows, const Exchange& exchange) const;
    double water(std::size_t cell) const;
    double mass(std::size_t species) const;
    void write(const Step& step, int part, double time);

    const Model& model_;
    TransportModel transport_;
    std::vector<std::vector<double>> concentrations_;  ///< by species, then by cell
    std::vector<MassBalance> balances_;
    std::vector<std::unique_ptr<ResultFile>> files_;
    std::size_t printed_ = 0;
};

}  // namespace valley
