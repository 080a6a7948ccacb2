#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

#include "plxconvert/info_gms.h"
#include "plxconvert/info_output.h"
#include "plxconvert/print_cut.h"
#include "plxconvert/words.h"

namespace plx::tool {

namespace {

std::string times_of(const GmsDatasetSummary& dataset) {
    if (dataset.times.empty()) return "no time";
    char text[96];
    if (dataset.times.size() == 1) {
        std::snprintf(text, sizeof text, "time %g", dataset.times[0]);
    } else {
        double first = INFINITY, last = -INFINITY;
        for (const double time : dataset.times) {
            first = std::fmin(first, time);
            last = std::fmax(last, time);
        }
        std::snprintf(text, sizeof text, "%zu times, %g to %g", dataset.times.size(), first, last);
    }
    return text;
}

void print_dataset(const GmsDatasetSummary& dataset, const char* indent, bool with_object) {
    char range[64] = "               no values";
    if (dataset.min <= dataset.max)
        std::snprintf(range, sizeof range, "%14g .. %-14g", dataset.min, dataset.max);
    std::printf("%s%-24s %10lld %-32s %s", indent, dataset.name.c_str(),
                static_cast<long long>(dataset.values), range, times_of(dataset).c_str());
    if (dataset.components > 1) std::printf(", %d components", dataset.components);
    if (with_object) {
        std::printf(", for %s %d", dataset.object_type.empty() ? "object" : dataset.object_type.c_str(),
                    dataset.object_id);
    }
    std::printf("\n");
}

void print_objects(const GmsProjectSummary& summary) {
    std::printf("\n  %-16s %-24s %6s %10s %10s   %s\n", "object", "name", "id", "points", "triangles", "in");
    print_cut(summary.objects.size(), "  ", [&summary](std::size_t i) {
        const GmsObjectSummary& object = summary.objects[i];
        std::printf("  %-16s %-24s %6d %10lld %10lld   %s%s\n", object.type.c_str(), object.name.c_str(),
                    object.id, static_cast<long long>(object.points),
                    static_cast<long long>(object.triangles), object.file.c_str(),
                    object.converted ? "" : "  (not converted)");
        print_cut(object.datasets.size(), "      ",
                  [&object](std::size_t k) { print_dataset(object.datasets[k], "      ", false); });
    });
}

void print_materials(const GmsProjectSummary& summary) {
    std::printf("\nmaterials%s\n",
                summary.materials_used ? "" : " (of no use to a conversion: they stand behind the settings)");
    print_cut(summary.materials.size(), "  ", [&summary](std::size_t i) {
        std::printf("  %6d   %s\n", summary.materials[i].number, summary.materials[i].name.c_str());
    });
}

}  // namespace

void print_text(const GmsDescription& project) {
    const GmsProjectSummary& summary = project.summary;
    std::string contents = contents_of(summary);
    if (contents.empty() && summary.kind != "datasets") contents = "no objects";
    std::printf("%s: %s%s%s\n", project.file.c_str(), gms_title(summary.kind).c_str(),
                contents.empty() ? "" : ", ", contents.c_str());
    if (!summary.files.empty()) std::printf("\n  %-10s %s\n", "keyword", "file");
    print_cut(summary.files.size(), "  ", [&summary](std::size_t i) {
        const GmsFileSummary& file = summary.files[i];
        std::printf("  %-10s %s%s\n", file.keyword.c_str(), file.name.c_str(),
                    file.exists ? "" : "  (missing)");
    });
    if (!summary.objects.empty()) print_objects(summary);
    if (!summary.datasets.empty()) {
        const bool alone = summary.kind == "datasets";
        std::printf("\ndatasets%s\n", alone ? "" : " of no object above");
        std::printf("  %-24s %10s %14s .. %s\n", "name", "values", "least", "greatest");
    }
    print_cut(summary.datasets.size(), "  ",
              [&summary](std::size_t i) { print_dataset(summary.datasets[i], "  ", true); });
    if (!summary.materials.empty()) print_materials(summary);
    if (!project.model) return;
    std::printf("\n");
    print_text(*project.model);
}

}  // namespace plx::tool
