#include <memory>

#include "formats/gms_objects.h"
#include "gms/bore_summary.h"
#include "gms/callbacks.h"
#include "gms/dataset_summary.h"
#include "gms/names.h"
#include "gms/project_lines.h"
#include "gms/project_summary.h"
#include "plxutils/core/VXFile.h"

namespace plx {

namespace {

// Objects that datasets belong to.
constexpr const char* kTin = "TIN";
constexpr const char* kScatter = "2-D scatter set";

struct ConverterDeleter {
    void operator()(GMStoPLX* converter) const { GMStoPLX_delete(converter); }
};

void describe_tins(const ProjectLine& line, std::vector<GmsObjectSummary>& out) {
    WordLines lines;
    if (!lines.open(line.path.c_str())) {
        GMS_ReportError("TIN file %s cannot be opened\n", line.name.c_str());
        return;
    }
    GmsTin tin;
    for (GmsRead read{}; (read = read_tin(lines, tin, [](const GmsTin&) {})) != GmsRead::kEnd;) {
        if (read != GmsRead::kObject) {
            GMS_ReportError("TIN %s in %s: its %s are cut short\n", tin.name.c_str(), line.name.c_str(),
                            read == GmsRead::kBadPoints ? "nodes" : "triangles");
            continue;
        }
        GmsObjectSummary object;
        object.type = kTin;
        object.name = tin.name;
        object.id = tin.id;
        object.file = last_component(line.name);
        object.points = static_cast<std::int64_t>(tin.nodes.x.size());
        object.triangles = static_cast<std::int64_t>(tin.triangles.size());
        out.push_back(std::move(object));
    }
}

void describe_scatter_sets(const ProjectLine& line, std::vector<GmsObjectSummary>& out) {
    WordLines lines;
    if (!lines.open(line.path.c_str())) {
        GMS_ReportError("2-D scatter file %s cannot be opened\n", line.name.c_str());
        return;
    }
    GmsScatter set;
    for (GmsRead read{}; (read = read_scatter(lines, set)) != GmsRead::kEnd;) {
        if (read != GmsRead::kObject) {
            GMS_ReportError("2-D scatter set %s in %s: its points are cut short\n", set.name.c_str(),
                            line.name.c_str());
            return;
        }
        GmsObjectSummary object;
        object.type = kScatter;
        object.name = set.name;
        object.id = set.id;
        object.file = last_component(line.name);
        object.points = static_cast<std::int64_t>(set.points.x.size());
        out.push_back(std::move(object));
    }
}

std::string extension_of(const std::string& name) {
    const std::size_t dot = name.find_last_of('.');
    return dot == std::string::npos ? "" : name.substr(dot + 1);
}

void describe_line(const ProjectLine& line, GmsProjectSummary& summary) {
    if (line.keyword == "TIN") {
        describe_tins(line, summary.objects);
    } else if (line.keyword == "SCAT2D") {
        describe_scatter_sets(line, summary.objects);
    } else if (line.keyword == "BHOLE" || line.keyword == "MAT") {
        // As in the conversion, the extension tells what such a file holds.
        if (extension_of(line.name) == "mat") describe_materials(line.path, summary.materials);
        if (extension_of(line.name) == "bor") describe_bores(line.path, summary.objects);
    } else if (line.keyword != "STNGS" && line.keyword != "DATA") {
        GmsObjectSummary object;
        object.type = project_keyword_title(line.keyword);
        object.name = object.file = last_component(line.name);
        object.converted = false;
        summary.objects.push_back(std::move(object));
    }
}

bool belongs(const GmsDatasetSummary& dataset, const GmsObjectSummary& object) {
    if (object.type == kTin) return dataset.object_type == "tin" && dataset.object_id == object.id;
    if (object.type == kScatter) return dataset.object_type == "scat2d" && dataset.object_id == object.id;
    return false;
}

/// Hands the datasets to their objects; two objects of one number both get them, as in the conversion.
void assign_datasets(std::vector<GmsDatasetSummary> datasets, GmsProjectSummary& summary) {
    for (GmsDatasetSummary& dataset : datasets) {
        bool owned = false;
        for (GmsObjectSummary& object : summary.objects) {
            if (!belongs(dataset, object)) continue;
            object.datasets.push_back(dataset);
            owned = true;
        }
        if (!owned) summary.datasets.push_back(std::move(dataset));
    }
}

}  // namespace

void describe_text_project(const std::string& stored, bool lenient, GmsProjectSummary& summary) {
    std::vector<ProjectLine> lines;
    if (!read_project_lines(stored, lines)) {
        summary.problem = "the file cannot be opened";
        return;
    }
    const std::unique_ptr<GMStoPLX, ConverterDeleter> converter(GMStoPLX_new());
    if (!converter) {
        summary.problem = "there is no memory to read it";
        return;
    }
    converter->SetProject(stored.c_str());
    converter->lenientDatasets = lenient;
    std::vector<GmsDatasetSummary> datasets;
    for (const ProjectLine& line : lines) {
        const bool exists = !line.name.empty() && VXFile(line.path.c_str()).FileExists();
        summary.files.push_back({line.keyword, line.name, exists});
        describe_line(line, summary);
        if (line.keyword == "DATA") describe_datasets(*converter, line.name, datasets);
    }
    assign_datasets(std::move(datasets), summary);
}

}  // namespace plx
