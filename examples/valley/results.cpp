#include "results.h"

#include <array>

namespace valley {
namespace {

Term face(const char* label, const std::vector<double>& between, std::size_t stride,
          const std::vector<double>& heads) {
    Term term{label, Term::kAllCells, std::vector<double>(heads.size()), {}, {}, {}};
    for (std::size_t cell = 0; cell < heads.size(); ++cell) {
        if (between[cell] > 0.0) term.flows[cell] = between[cell] * (heads[cell] - heads[cell + stride]);
    }
    return term;
}

/// What each cell of fixed head gives to its neighbours, from the face flows.
Term constant_head(const Model& model, const std::array<const Term*, 3>& faces) {
    const std::size_t strides[] = {1, model.columns, model.layer_cells()};
    Term term{"CONSTANT HEAD", Term::kCellList, {}, {}, {}, {}};
    for (std::size_t cell = 0; cell < model.cells(); ++cell) {
        if (model.ibound[cell] >= 0) continue;
        double flow = 0.0;
        for (std::size_t f = 0; f < faces.size(); ++f) {
            flow += faces[f]->flows[cell];
            if (cell >= strides[f]) flow -= faces[f]->flows[cell - strides[f]];
        }
        term.flows.push_back(flow);
        term.where.push_back(static_cast<std::int32_t>(cell + 1));
    }
    return term;
}

Term list_term(const Model& model, const ListPackage& package, const Step& step,
               const std::vector<double>& heads) {
    Term term{package.label, Term::kAuxiliaryList, {}, {}, package.auxiliary, {}};
    for (const ListEntry& entry : package.periods[step.period]) {
        const double head = heads[entry.cell];
        const Leak leak = model.ibound[entry.cell] > 0 ? package.leak(entry, head) : Leak{};
        term.flows.push_back(leak.constant - leak.conductance * head);
        term.where.push_back(static_cast<std::int32_t>(entry.cell + 1));
        for (std::size_t i = package.own_values; i < entry.values.size(); ++i) {
            term.auxiliary_values.push_back(entry.values[i]);
        }
    }
    return term;
}

Term recharge_term(const Model& model, const Step& step) {
    const std::size_t n = model.layer_cells();
    Term term{"RECHARGE", Term::kOneLayer, std::vector<double>(n), std::vector<std::int32_t>(n, 1), {}, {}};
    for (std::size_t column = 0; column < n; ++column) {
        const std::size_t cell = recharge_cell(model, column);
        if (cell == model.cells()) continue;
        term.flows[column] = model.recharge[step.period][column] * model.area(cell);
        term.where[column] = static_cast<std::int32_t>(cell / n + 1);
    }
    return term;
}

Term storage_term(const Model& model, const Step& step, const std::vector<double>& before,
                  const std::vector<double>& heads) {
    Term term{"STORAGE", Term::kAllCells, std::vector<double>(model.cells()), {}, {}, {}};
    for (std::size_t cell = 0; cell < model.cells(); ++cell) {
        if (model.ibound[cell] > 0) {
            term.flows[cell] = storage(model, cell) / step.length * (before[cell] - heads[cell]);
        }
    }
    return term;
}

/// ITYPE 2 and 5: cell number and values of each entry; 5 names the auxiliary values first.
void add_list(Record& record, const Term& term) {
    const std::size_t extra = term.auxiliary.size();
    if (term.type == Term::kAuxiliaryList) {
        record.integer(1 + extra);
        for (const std::string& name : term.auxiliary) record.label(name);
    }
    record.integer(term.flows.size());
    for (std::size_t i = 0; i < term.flows.size(); ++i) {
        record.integer32(term.where[i])
            .real(term.flows[i])
            .reals(term.auxiliary_values.data() + i * extra, extra);
    }
}

}  // namespace

std::vector<Term> budget(const Model& model, const Conductances& between, const Step& step,
                         const std::vector<double>& before, const std::vector<double>& heads) {
    const Term right = face("FLOW RIGHT FACE ", between.right, 1, heads);
    const Term front = face("FLOW FRONT FACE ", between.front, model.columns, heads);
    const Term lower = face("FLOW LOWER FACE ", between.lower, model.layer_cells(), heads);
    std::vector<Term> terms;
    if (!step.steady) terms.push_back(storage_term(model, step, before, heads));
    terms.push_back(constant_head(model, {&right, &front, &lower}));
    terms.insert(terms.end(), {right, front, lower});
    for (const ListPackage& package : model.lists) terms.push_back(list_term(model, package, step, heads));
    terms.push_back(recharge_term(model, step));
    return terms;
}

ResultFiles::ResultFiles(const std::filesystem::path& heads, const std::filesystem::path& budget)
    : heads_(heads), budget_(budget) {}

void ResultFiles::write_heads(const Model& model, const Step& step, const std::vector<double>& heads) {
    for (std::size_t layer = 0; layer < model.layers; ++layer) {
        Record record;
        record.integer32(step.number).integer(step.period + 1).real(step.period_time).real(step.total_time);
        record.label("HEAD").integer(model.columns).integer(model.rows).integer(layer + 1);
        record.reals(heads.data() + layer * model.layer_cells(), model.layer_cells());
        heads_.write(record);
    }
}

void ResultFiles::write_budget(const Model& model, const Step& step, const std::vector<Term>& terms) {
    for (const Term& term : terms) {
        Record record;
        record.integer32(step.number).integer(step.period + 1).label(term.label);
        // A negative number of layers marks the compact form.
        record.integer(model.columns).integer(model.rows).integer32(-static_cast<std::int32_t>(model.layers));
        record.integer32(term.type).real(step.length).real(step.period_time).real(step.total_time);
        if (term.type == Term::kCellList || term.type == Term::kAuxiliaryList) {
            add_list(record, term);
        } else {
            for (const std::int32_t layer : term.where) record.integer32(layer);
            record.reals(term.flows.data(), term.flows.size());
        }
        budget_.write(record);
    }
}

void ResultFiles::close() {
    heads_.close();
    budget_.close();
}

void ResultFiles::publish() {
    heads_.publish();
    budget_.publish();
}

}  // namespace valley
