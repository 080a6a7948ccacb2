#include "link_file.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace valley {
namespace {

// What stands for the saturated thickness where a layer keeps its own, and where there is no cell.
constexpr double kWholeThickness = -111.0;
constexpr double kNoCell = 1.0e30;

Record begin(const Model& model, const Step& step, const char* label) {
    Record record;
    record.integer(step.period + 1).integer32(step.number);
    record.integer(model.columns).integer(model.rows).integer(model.layers).left_label(label);
    return record;
}

const Term& term_of(const std::vector<Term>& terms, const std::string& label) {
    const auto found =
        std::find_if(terms.begin(), terms.end(), [&](const Term& term) { return term.label == label; });
    if (found == terms.end()) throw std::runtime_error("no " + label + " in the budget of a step");
    return *found;
}

Record array(const Model& model, const Step& step, const char* label, const std::vector<double>& values) {
    return begin(model, step, label).reals(values.data(), values.size());
}

Record list(const Model& model, const Step& step, const char* label, const Term& term) {
    Record record = begin(model, step, label);
    record.integer(term.flows.size());
    for (std::size_t i = 0; i < term.flows.size(); ++i) {
        const auto cell = static_cast<std::size_t>(term.where[i]) - 1;
        record.integer(cell / model.layer_cells() + 1)
            .integer(cell % model.layer_cells() / model.columns + 1);
        record.integer(cell % model.columns + 1).real(term.flows[i]);
    }
    return record;
}

Record one_layer(const Model& model, const Step& step, const char* label, const Term& term) {
    Record record = begin(model, step, label);
    for (const std::int32_t layer : term.where) record.integer32(layer);
    return record.reals(term.flows.data(), term.flows.size());
}

}  // namespace

LinkFile::LinkFile(const std::filesystem::path& path, const Model& model) : file_(path) {
    const auto fixed_heads =
        std::count_if(model.ibound.begin(), model.ibound.end(), [](int b) { return b < 0; });
    Record header;
    header.characters("MT3D4.00.00");
    // Wells, drains, recharge, evapotranspiration, rivers, general heads; then the fixed heads' count.
    for (const std::int32_t used : {1, 1, 1, 0, 1, 0}) header.integer32(used);
    header.integer32(static_cast<std::int32_t>(fixed_heads));
    // Not steady throughout, so that every step has a storage record.
    header.integer32(0).integer(model.periods.size());
    for (int other_package = 0; other_package < 12; ++other_package) header.integer32(0);
    file_.write(header);
}

void LinkFile::write(const Model& model, const Step& step, const std::vector<Term>& terms) {
    std::vector<double> thickness(model.cells(), kWholeThickness);
    for (std::size_t cell = 0; cell < model.cells(); ++cell) {
        if (model.ibound[cell] == 0) thickness[cell] = kNoCell;
    }
    file_.write(array(model, step, "THKSAT", thickness));
    file_.write(array(model, step, "QXX", term_of(terms, "FLOW RIGHT FACE ").flows));
    file_.write(array(model, step, "QYY", term_of(terms, "FLOW FRONT FACE ").flows));
    file_.write(array(model, step, "QZZ", term_of(terms, "FLOW LOWER FACE ").flows));
    const std::vector<double> none(model.cells(), 0.0);
    file_.write(array(model, step, "STO", step.steady ? none : term_of(terms, "STORAGE").flows));
    file_.write(list(model, step, "CNH", term_of(terms, "CONSTANT HEAD")));
    file_.write(list(model, step, "WEL", term_of(terms, "WELLS")));
    file_.write(list(model, step, "DRN", term_of(terms, "DRAINS")));
    file_.write(one_layer(model, step, "RCH", term_of(terms, "RECHARGE")));
    file_.write(list(model, step, "RIV", term_of(terms, "RIVER LEAKAGE")));
}

}  // namespace valley
