#include "transport.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <stdexcept>
#include <utility>

namespace valley {
namespace {

/// The kinds of boundary a mass balance tells apart; the first one is the cells of fixed concentration.
constexpr std::array<const char*, 6> kLines = {"FIXED CELLS", "STORAGE",       "WELLS",
                                               "DRAINS",      "RIVER LEAKAGE", "RECHARGE"};
constexpr std::size_t kStorage = 1, kRecharge = 5;
/// Part of the longest possible step that is taken, so that rounding leaves no cell below nothing.
constexpr double kCourant = 0.9;

void count(MassBalance::Line& line, double mass) { (mass > 0.0 ? line.in : line.out) += std::fabs(mass); }

}  // namespace

double MassBalance::discrepancy() const {
    double in = 0.0;
    double out = 0.0;
    for (const Line& line : lines) {
        in += line.in;
        out += line.out;
    }
    const double whole = std::max({before, after, in, out});
    return whole > 0.0 ? (after - before - (in - out)) / whole : 0.0;
}

Transport::Transport(const Model& model, TransportModel transport, const std::filesystem::path& folder)
    : model_(model), transport_(std::move(transport)), concentrations_(transport_.initial) {
    for (std::size_t s = 0; s < transport_.species.size(); ++s) {
        for (std::size_t cell = 0; cell < model_.cells(); ++cell) {
            if (model_.ibound[cell] == 0) concentrations_[s][cell] = transport_.no_cell;
        }
        MassBalance balance;
        for (const char* label : kLines) balance.lines.push_back({label});
        balance.before = mass(s);
        balances_.push_back(std::move(balance));
        char name[32];
        std::snprintf(name, sizeof name, "valley%03zu.ucn", s + 1);
        files_.push_back(std::make_unique<ResultFile>(folder / name));
    }
}

double Transport::water(std::size_t cell) const {
    return transport_.porosity[cell] * model_.thickness(cell) * model_.area(cell);
}

double Transport::mass(std::size_t species) const {
    double sum = 0.0;
    for (std::size_t cell = 0; cell < model_.cells(); ++cell) {
        if (model_.ibound[cell] != 0 && !transport_.fixed[cell]) {
            sum += water(cell) * concentrations_[species][cell];
        }
    }
    return sum;
}

void Transport::add_links(const Term& face, std::size_t stride, Flows& flows) const {
    for (std::size_t cell = 0; cell + stride < model_.cells(); ++cell) {
        const double flow = face.flows[cell];
        if (flow > 0.0) flows.links.push_back({cell, cell + stride, flow});
        if (flow < 0.0) flows.links.push_back({cell + stride, cell, -flow});
    }
}

void Transport::add_exchanges(const Term& term, std::size_t line, Flows& flows) const {
    for (std::size_t i = 0; i < term.flows.size(); ++i) {
        std::size_t cell = i;
        if (term.type == Term::kAuxiliaryList) cell = static_cast<std::size_t>(term.where[i]) - 1;
        if (term.type == Term::kOneLayer) {
            cell += (static_cast<std::size_t>(term.where[i]) - 1) * model_.layer_cells();
        }
        if (term.flows[i] != 0.0 && !transport_.fixed[cell]) {
            flows.exchanges.push_back({cell, line, term.flows[i], i});
        }
    }
}

double Transport::longest_part(const Flows& flows) const {
    std::vector<double> outflow(model_.cells(), 0.0);
    for (const Link& link : flows.links) outflow[link.from] += link.flow;
    for (const Exchange& exchange : flows.exchanges) {
        if (exchange.flow < 0.0) outflow[exchange.cell] -= exchange.flow;
    }
    double longest = std::numeric_limits<double>::infinity();
    for (std::size_t cell = 0; cell < outflow.size(); ++cell) {
        if (outflow[cell] > 0.0 && !transport_.fixed[cell]) {
            longest = std::min(longest, kCourant * water(cell) / outflow[cell]);
        }
    }
    return longest;
}

Transport::Flows Transport::gather(const Step& step, const std::vector<Term>& terms) const {
    Flows flows;
    flows.period = step.period;
    for (const Term& term : terms) {
        if (term.label == "FLOW RIGHT FACE ") add_links(term, 1, flows);
        if (term.label == "FLOW FRONT FACE ") add_links(term, model_.columns, flows);
        if (term.label == "FLOW LOWER FACE ") add_links(term, model_.layer_cells(), flows);
        const auto line = std::find(kLines.begin() + 1, kLines.end(), term.label);
        if (line != kLines.end()) {
            add_exchanges(term, static_cast<std::size_t>(line - kLines.begin()), flows);
        }
    }
    flows.longest = longest_part(flows);
    return flows;
}

double Transport::source_concentration(std::size_t species, const Flows& flows,
                                       const Exchange& exchange) const {
    if (exchange.line == kStorage) return concentrations_[species][exchange.cell];
    return exchange.line == kRecharge ? transport_.recharge[flows.period][species][exchange.column] : 0.0;
}

void Transport::move(std::size_t species, const Flows& flows, double length) {
    std::vector<double>& now = concentrations_[species];
    MassBalance& balance = balances_[species];
    std::vector<double> change(now.size(), 0.0);
    for (const Link& link : flows.links) {
        const double moved = link.flow * length * now[link.from];
        change[link.from] -= moved;
        change[link.to] += moved;
        if (transport_.fixed[link.from] == transport_.fixed[link.to]) continue;
        count(balance.lines.front(), transport_.fixed[link.from] ? moved : -moved);
    }
    for (const Exchange& exchange : flows.exchanges) {
        const double concentration =
            exchange.flow > 0.0 ? source_concentration(species, flows, exchange) : now[exchange.cell];
        const double moved = exchange.flow * length * concentration;
        change[exchange.cell] += moved;
        count(balance.lines[exchange.line], moved);
    }
    for (std::size_t cell = 0; cell < now.size(); ++cell) {
        if (model_.ibound[cell] != 0 && !transport_.fixed[cell]) now[cell] += change[cell] / water(cell);
    }
}

void Transport::advance(const Step& step, const std::vector<Term>& terms) {
    const Flows flows = gather(step, terms);
    const double almost_none = 1e-9 * step.length;
    double time = step.total_time - step.length;
    int part = 0;
    while (step.total_time - time > almost_none) {
        double target = step.total_time;
        bool print = false;
        if (printed_ < transport_.print_times.size()) {
            print = transport_.print_times[printed_] <= target + almost_none;
            if (print) target = transport_.print_times[printed_];
        }
        const double parts = std::max(1.0, std::ceil((target - time) / flows.longest));
        for (int i = 0; i < static_cast<int>(parts); ++i, ++part) {
            for (std::size_t s = 0; s < concentrations_.size(); ++s) move(s, flows, (target - time) / parts);
        }
        time = target;
        if (print) write(step, part, time);
        if (print) ++printed_;
    }
}

void Transport::write(const Step& step, int part, double time) {
    for (std::size_t s = 0; s < files_.size(); ++s) {
        for (std::size_t layer = 0; layer < model_.layers; ++layer) {
            Record record;
            record.integer32(part).integer32(step.number).integer(step.period + 1).real(time);
            record.left_label("CONCENTRATION")
                .integer(model_.columns)
                .integer(model_.rows)
                .integer(layer + 1);
            record.reals(concentrations_[s].data() + layer * model_.layer_cells(), model_.layer_cells());
            files_[s]->write(record);
        }
    }
}

MassBalance Transport::balance(std::size_t species) const {
    MassBalance balance = balances_[species];
    balance.after = mass(species);
    return balance;
}

void Transport::close() {
    if (printed_ < transport_.print_times.size()) {
        throw std::runtime_error("concentrations are asked for after the end of the flows");
    }
    for (const auto& file : files_) file->close();
}

void Transport::publish() {
    for (const auto& file : files_) file->publish();
}

}  // namespace valley
