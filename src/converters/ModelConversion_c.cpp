#include "plxutils/c/ModelConversion.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "core/c_boundary.h"
#include "gms/callbacks.h"
#include "platform/platform.h"
#include "plxutils/converters/Converter.h"
#include "plxutils/converters/ErrorTexts.h"
#include "plxutils/converters/ModelKind.h"
#include "plxutils/converters/finish_report.h"
#include "plxutils/core/VXFile.h"
#include "plxutils/core/VXNativePath.h"

struct PLX_ConversionReport {
    plx::ConversionReport report;
};

namespace {

using plx::guarded, plx::text_or_empty;

/// What keeps a conversion from beginning; becomes an error of the report.
struct Fault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A conversion as it was asked for, checked.
struct Request {
    std::string project;      // absolute native paths
    std::string destination;  // empty: beside the project
    plx::ModelKind kind = plx::ModelKind::kModflow;
    plx::ReadingRules rules;
    std::array<int, Converter::kOutputs> outputs{};
    std::vector<double> porosity;
    std::array<double, 4> box{};
    bool crop = false, compress = false;
    plx::ConversionRequest wishes;
};

/// Adds what the error hook says to a collection, the host's own function being told as ever.
class Listening {
public:
    explicit Listening(plx::ErrorTexts& heard)
        : before_(std::exchange(plx::gms_hooks().error_listener,
                                [&heard](const char* text) { heard.add(text); })) {}
    ~Listening() { plx::gms_hooks().error_listener = std::move(before_); }
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;

private:
    std::function<void(const char*)> before_;
};

std::string in_quotes(const std::string& text) { return "'" + text + "'"; }

enum class Entry { kMissing, kFile, kFolder, kOther };

Entry entry_of(const std::string& native) {
    const std::string utf8 = plx::platform::utf8_path(native);
    std::error_code error;
    const auto status = std::filesystem::status(std::u8string(utf8.begin(), utf8.end()), error);
    if (!std::filesystem::exists(status)) return Entry::kMissing;
    if (std::filesystem::is_directory(status)) return Entry::kFolder;
    return std::filesystem::is_regular_file(status) ? Entry::kFile : Entry::kOther;
}

/// The absolute native path of something that is there and that the library finds by the name it stores.
std::string usable_path(const std::string& given, bool folder) {
    if (given.empty()) throw Fault("an empty path names no file");
    std::string path = plx::platform::full_path(given);
    while (path.size() > 1 && (path.back() == '/' || path.back() == '\\')) path.pop_back();
    const Entry entry = entry_of(path);
    if (entry == Entry::kMissing) throw Fault(in_quotes(given) + " does not exist");
    if (folder && entry != Entry::kFolder) throw Fault(in_quotes(given) + " is not a folder");
    if (!folder && entry == Entry::kFolder) {
        throw Fault(in_quotes(given) + " is a folder; give the model's name file in it");
    }
    if (entry == Entry::kOther) throw Fault(in_quotes(given) + " is not a regular file");
    String why;
    if (VXCanStorePath(path.c_str(), why) && VXFindsPathAgain(path.c_str(), why)) return path;
    throw Fault("path " + in_quotes(path) + " cannot be used: " + why.c_str());
}

plx::ReadingRules rules_of(const char* word) {
    const std::string rules = word != nullptr ? word : "modflow";
    if (rules == "modflow") return plx::ReadingRules::modflow();
    if (rules == "prescribed") return plx::ReadingRules::prescribed();
    throw Fault("rules " + in_quotes(rules) + " are not known; there are modflow and prescribed");
}

void take_porosity(Request& request, const double* porosity, int count) {
    if (porosity != nullptr && count > 0) request.porosity.assign(porosity, porosity + count);
    for (const double value : request.porosity) {
        if (!(value >= 0.0 && value <= 1.0)) throw Fault("porosity: values are fractions from 0 to 1");
    }
    request.wishes.porosities = request.porosity.size();
}

void take_outputs(Request& request, const int* outputs) {
    const plx::ConversionOutputs& table = plx::conversion_outputs();
    bool flows = false, boundary_flows = false;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const bool needs_value = table[i].flag == &ConverterFactory::out_porosity;
        const bool wanted = outputs != nullptr ? outputs[i] != 0 : !needs_value || !request.porosity.empty();
        request.outputs[i] = wanted ? 1 : 0;
        request.wishes.named[i] = outputs != nullptr && wanted;
        flows = flows || (wanted && table[i].flag == &ConverterFactory::out_ccf);
        boundary_flows = boundary_flows || (wanted && table[i].flag == &ConverterFactory::out_boundary_flows);
    }
    if (boundary_flows && !flows) {
        throw Fault("outputs: boundary_flows needs ccf: both come from the flow file");
    }
}

void take_extents(Request& request, const double* extents) {
    request.crop = extents != nullptr;
    if (!request.crop) return;
    std::copy_n(extents, request.box.size(), request.box.begin());
    for (const double edge : request.box) {
        if (!std::isfinite(edge)) throw Fault("extents: coordinates must be finite");
    }
    if (request.box[0] > request.box[2] || request.box[1] > request.box[3]) {
        throw Fault("extents: xmin must not exceed xmax, nor ymin ymax");
    }
}

void find_kind(Request& request, const char* word) {
    const plx::ModelKindFinding finding =
        plx::find_model_kind(request.project, word != nullptr ? word : "auto");
    if (!finding.kind) throw Fault(finding.problem);
    request.kind = *finding.kind;
}

plx::ConversionReport run(Request& request, PLX_StepFunc step, void* user) {
    const std::unique_ptr<ConverterFactory> factory = plx::make_converter(request.kind);
    factory->reading_rules = request.rules;
    if (!request.destination.empty()) {
        factory->output_folder = request.destination.c_str();
        // A destination of its own means that nothing appears beside the project.
        factory->keep_log = false;
    }
    if (step != nullptr) {
        factory->on_step = [step, user](int done, int total) { plx::call_host(step, done, total, user); };
    }
    plx::ErrorTexts heard;
    {
        const Listening listening(heard);
        VXFile project(request.project.c_str());
        const auto& box = request.box;
        Converter().create_converter(*factory, project, static_cast<int>(request.porosity.size()),
                                     request.porosity.empty() ? nullptr : request.porosity.data(),
                                     request.compress, request.outputs.data(), request.crop, box[0], box[2],
                                     box[1], box[3]);
    }
    plx::finish_report(*factory, heard, request.wishes);
    return std::move(factory->report);
}

/// What can be opened with the system's own calls, where there is such a name.
void make_names_native(std::vector<std::string>& files) {
    for (std::string& file : files) {
        const String native = VXNativePath(file.c_str());
        if (native.GetLength() > 0) file = native.c_str();
    }
}

const std::vector<std::string>* texts_of(const PLX_ConversionReport* report, int which) {
    if (report == nullptr) return nullptr;
    switch (which) {
        case PLX_REPORT_ERRORS:
            return &report->report.errors;
        case PLX_REPORT_WARNINGS:
            return &report->report.warnings;
        case PLX_REPORT_FILES:
            return &report->report.files;
        default:
            return nullptr;
    }
}

}  // namespace

PLX_ConversionReport* PLX_convert_modflow(const char* project, const char* kind, const int* outputs,
                                          const double* porosity, int porosity_count, const double* extents,
                                          int compress, const char* rules, const char* destination,
                                          PLX_StepFunc step, void* user) {
    std::unique_ptr<PLX_ConversionReport> result(new (std::nothrow) PLX_ConversionReport);
    if (!result) return nullptr;
    // Without memory for the text of an error there is no report that could be trusted.
    return guarded<PLX_ConversionReport*>(nullptr, [&] {
        try {
            Request request;
            request.compress = compress != 0;
            request.rules = rules_of(rules);
            take_porosity(request, porosity, porosity_count);
            take_outputs(request, outputs);
            take_extents(request, extents);
            request.project = usable_path(text_or_empty(project), false);
            if (*text_or_empty(destination) != '\0') request.destination = usable_path(destination, true);
            find_kind(request, kind);
            result->report = run(request, step, user);
            make_names_native(result->report.files);
        } catch (const std::exception& fault) {
            result->report.errors.emplace_back(fault.what());
        }
        std::fflush(stdout);
        return result.release();
    });
}

void PLX_report_delete(PLX_ConversionReport* report) {
    guarded([report] { delete report; });
}

int PLX_report_count(const PLX_ConversionReport* report, PLX_ReportTexts texts) {
    const std::vector<std::string>* const all = texts_of(report, texts);
    return all != nullptr ? static_cast<int>(all->size()) : 0;
}

int PLX_report_text(const PLX_ConversionReport* report, PLX_ReportTexts texts, int i, char* dst, int len) {
    const std::vector<std::string>* const all = texts_of(report, texts);
    if (all == nullptr || i < 0 || static_cast<std::size_t>(i) >= all->size()) return -1;
    const std::string& text = (*all)[static_cast<std::size_t>(i)];
    if (dst != nullptr && len > 0) {
        const std::size_t length = std::min(text.size(), static_cast<std::size_t>(len) - 1);
        std::memcpy(dst, text.data(), length);
        dst[length] = '\0';
    }
    return static_cast<int>(text.size());
}

long long PLX_report_number(const PLX_ConversionReport* report, PLX_ReportNumber number) {
    if (report == nullptr) return 0;
    switch (static_cast<int>(number)) {
        case PLX_REPORT_NODES:
            return report->report.nodes;
        case PLX_REPORT_CELLS:
            return report->report.cells;
        case PLX_REPORT_STEPS:
            return report->report.steps;
        case PLX_REPORT_TRANSPORT_TIMES:
            return report->report.transport_times;
        case PLX_REPORT_BYTES:
            return report->report.bytes;
        default:
            return 0;
    }
}
