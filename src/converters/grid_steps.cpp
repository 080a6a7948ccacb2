#include "converters/grid_steps.h"

#include <array>
#include <cstdio>
#include <utility>

#include "converters/grid_helpers.h"
#include "formats/basic_package.h"
#include "formats/block_centered_flow.h"
#include "formats/discretization.h"

namespace plx {

void read_grid(ModelState& m, TextSource& in, const std::function<void()>& tell) {
    Discretization dis;
    const bool read = read_discretization(in, m.streams, m.text_rules(), m.text_used, dis, m.problems);
    m.note_text_rules();
    tell();
    ConverterFactory& f = m.factory;
    f.nper = static_cast<int>(dis.periods.periods.size());
    if (!read) return;
    f.nlay = dis.size.layers;
    f.nrow = dis.size.rows;
    f.ncol = dis.size.columns;
    f.time_units = time_unit_word(dis.time_unit).c_str();
    f.length_units = length_unit_word(dis.length_unit).c_str();
    store_geometry(m, in.name(), dis.delr, dis.delc, std::move(dis.tops), std::move(dis.bottoms));
    store_periods(m, std::move(dis.periods));
}

void read_active_cells(ModelState& m, TextSource& in, const char* cross_section) {
    const Bas6Options options = read_bas6_options(in);
    m.free_format = options.free_format;
    if (options.cross_section) {
        std::printf("%s", cross_section);
        m.factory.report.warnings.push_back("cross sections (XSECTION) are not converted: the mesh is empty");
        return;
    }
    const TextRules rules = m.text_rules();
    m.flags.resize(m.size());
    const auto store = [&m](int layer, const std::vector<double>& values) { store_ibound(m, layer, values); };
    read_ibound(in, m.streams, rules, m.text_used, m.size(), store, m.problems);
    m.no_flow_head = read_no_flow_head(in, rules);
    m.has_no_flow_head = true;
    read_starting_heads(in, m.streams, rules, m.text_used, m.size(), m.problems);
    m.note_text_rules();
}

void find_dry_head(ModelState& model) {
    static constexpr std::array<const char*, 5> kPackages = {"BCF6", "LPF", "UPW", "HUF", "HUF2"};
    for (const NameFileEntry& entry : model.name_entries) {
        for (const char* package : kPackages) {
            TextSource* in = entry.type == package ? model.streams.unit(entry.unit) : nullptr;
            double value = 0.0;
            if (in != nullptr && read_flow_package_dry_head(*in, value)) model.dry_head = value;
        }
    }
}

}  // namespace plx
