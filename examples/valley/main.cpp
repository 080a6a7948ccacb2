#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "equations.h"
#include "inputs.h"
#include "link_file.h"
#include "results.h"
#include "transport.h"

namespace {

using namespace valley;

constexpr double kMostDiscrepancy = 0.1;  // percent
constexpr double kMostMassLost = 1.0e-6;

/// Prints a line on the screen and in the listing.
class Listing {
public:
    explicit Listing(const std::filesystem::path& path) : file_(std::fopen(path.string().c_str(), "w")) {
        if (file_ == nullptr) throw std::runtime_error(path.string() + ": cannot be written");
    }
    Listing(const Listing&) = delete;
    Listing& operator=(const Listing&) = delete;
    ~Listing() { std::fclose(file_); }
    void line(const std::string& text) {
        std::fprintf(stdout, "%s\n", text.c_str());
        std::fprintf(file_, "%s\n", text.c_str());
    }

private:
    std::FILE* file_;
};

template <typename... Values>
std::string print(const char* format, Values... values) {
    char text[200];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

/// Lists what went in and out in a step; the difference in percent of their mean.
double list_balance(Listing& listing, const Step& step, int iterations, const std::vector<Term>& terms) {
    listing.line(print("period %zu step %2d   time %10.3f d   outer iterations %d", step.period + 1,
                       step.number, step.total_time, iterations));
    double total_in = 0.0;
    double total_out = 0.0;
    for (const Term& term : terms) {
        if (term.is_face()) continue;
        double in = 0.0;
        double out = 0.0;
        for (const double flow : term.flows) (flow > 0.0 ? in : out) += std::fabs(flow);
        listing.line(print("  %-16s in %12.3f   out %12.3f m3/d", term.label.c_str(), in, out));
        total_in += in;
        total_out += out;
    }
    const double mean = 0.5 * (total_in + total_out);
    const double percent = mean > 0.0 ? 100.0 * (total_in - total_out) / mean : 0.0;
    listing.line(print("  %-16s in %12.3f   out %12.3f m3/d   discrepancy %.6f %%", "total", total_in,
                       total_out, percent));
    return percent;
}

double first_step(const Period& period) {
    if (period.factor == 1.0) return period.length / period.steps;
    return period.length * (period.factor - 1.0) / (std::pow(period.factor, period.steps) - 1.0);
}

/// Lists what became of a species; what is left unexplained.
double list_species(Listing& listing, const std::string& name, const MassBalance& balance) {
    listing.line(
        print("mass of %s   before %12.4e   after %12.4e g", name.c_str(), balance.before, balance.after));
    for (const MassBalance::Line& line : balance.lines) {
        listing.line(print("  %-16s in %12.4e   out %12.4e g", line.label.c_str(), line.in, line.out));
    }
    listing.line(print("  discrepancy %.1e", balance.discrepancy()));
    return std::fabs(balance.discrepancy());
}

/// All that a run writes.
struct Results {
    Results(const std::filesystem::path& folder, const Model& model)
        : flow(folder / "valley.hds", folder / "valley.cbb"),
          link(folder / "valley.ftl", model),
          transport(model, read_transport(folder / "valley.mts", model), folder) {}
    void write(const Model& model, const Step& step, const std::vector<double>& heads,
               const std::vector<Term>& terms) {
        flow.write_heads(model, step, heads);
        flow.write_budget(model, step, terms);
        link.write(model, step, terms);
        transport.advance(step, terms);
    }
    void finish() {
        flow.close();
        link.close();
        transport.close();
        flow.publish();
        link.publish();
        transport.publish();
    }

    ResultFiles flow;
    LinkFile link;
    Transport transport;
};

/// Solves all steps; the largest discrepancy of a step's water balance in percent.
double solve_steps(const Model& model, Listing& listing, Results& results) {
    const Conductances between = conductances(model);
    std::vector<double> heads = model.starting_heads;
    for (std::size_t cell = 0; cell < model.cells(); ++cell) {
        if (model.ibound[cell] == 0) heads[cell] = model.no_flow_head;
    }
    Step step;
    double worst = 0.0;
    for (step.period = 0; step.period < model.periods.size(); ++step.period) {
        const Period& period = model.periods[step.period];
        step.steady = period.steady;
        step.length = first_step(period);
        step.period_time = 0.0;
        for (step.number = 1; step.number <= period.steps; ++step.number) {
            step.period_time += step.length;
            step.total_time += step.length;
            const std::vector<double> before = heads;
            const int iterations = solve_step(model, between, step, heads);
            if (iterations == 0) throw std::runtime_error("the heads of a step did not settle");
            const std::vector<Term> terms = budget(model, between, step, before, heads);
            worst = std::max(worst, std::fabs(list_balance(listing, step, iterations, terms)));
            results.write(model, step, heads, terms);
            step.length *= period.factor;
        }
    }
    return worst;
}

void run(const std::filesystem::path& folder) {
    const Model model = read_model(folder / "valley.nam");
    Listing listing(folder / "valley.lst");
    Results results(folder, model);
    const double worst = solve_steps(model, listing, results);
    if (!(worst < kMostDiscrepancy)) throw std::runtime_error(print("mass balance off by %.3f %%", worst));
    for (std::size_t s = 0; s < results.transport.species().size(); ++s) {
        const std::string& name = results.transport.species()[s];
        const double lost = list_species(listing, name, results.transport.balance(s));
        if (!(lost < kMostMassLost)) throw std::runtime_error(print("mass of %s is off", name.c_str()));
    }
    results.finish();
    listing.line(print("largest discrepancy %.6f %%", worst));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 || argv[1][0] == '-') {
        std::fputs(
            "usage: valley_solver FOLDER\n"
            "Solves the model FOLDER/valley.nam and writes valley.hds (heads), valley.cbb (cell-by-cell "
            "flows),\n"
            "valley.ftl (flows for transport), valley001.ucn and valley002.ucn (concentrations)\n"
            "and valley.lst (balances of water and mass) beside it.\n",
            stderr);
        return 2;
    }
    try {
        run(argv[1]);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "valley_solver: %s\n", problem.what());
        return 1;
    }
    return 0;
}
