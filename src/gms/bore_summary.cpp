#include "gms/bore_summary.h"

#include "formats/word_lines.h"
#include "gms/callbacks.h"
#include "gms/dataset_summary.h"
#include "gms/names.h"

namespace plx {

void describe_bores(const std::string& path, std::vector<GmsObjectSummary>& out) {
    WordLines lines;
    if (!lines.open(path.c_str())) {
        GMS_ReportError("Borehole file %s cannot be opened\n", path.c_str());
        return;
    }
    while (lines.find("BEGH") && lines.next()) {
        GmsObjectSummary bore;
        bore.type = "borehole";
        bore.name = lines.word(1);
        bore.file = last_component(path);
        int announced = 0;
        if (!lines.find("CONT")) return;
        lines.integer(1, announced);
        while (bore.points < announced && lines.next() && !lines.word(3).empty()) ++bore.points;
        const bool complete = bore.points >= announced;
        if (!complete) {
            GMS_ReportError("Borehole %s in %s has %lld of %d contacts\n", bore.name.c_str(), path.c_str(),
                            static_cast<long long>(bore.points), announced);
        }
        out.push_back(std::move(bore));
        if (!complete) return;
    }
}

void describe_materials(const std::string& path, std::vector<GmsMaterialSummary>& out) {
    WordLines lines;
    if (!lines.open(path.c_str())) {
        GMS_ReportError("Material file %s cannot be opened\n", path.c_str());
        return;
    }
    while (lines.find("MN")) {
        GmsMaterialSummary material;
        if (!lines.integer(1, material.number)) {
            GMS_ReportError("Material file %s has a line MN without a number\n", path.c_str());
            continue;
        }
        material.name = lines.word(2);
        out.push_back(std::move(material));
    }
}

}  // namespace plx
