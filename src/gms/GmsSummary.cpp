#include "plxutils/gms/GmsSummary.h"

#include <exception>
#include <memory>
#include <new>

#include "formats/gms_cards.h"
#include "formats/hdf5_reader.h"
#include "gms/callbacks.h"
#include "gms/dataset_summary.h"
#include "gms/datasets.h"
#include "gms/project_lines.h"
#include "gms/project_summary.h"
#include "plxutils/core/VXFile.h"
#include "plxutils/core/VXFileReader.h"
#include "plxutils/core/VXInputFile.h"

namespace plx {

namespace {

/// Keeps the host's status function from messages about a mere look.
class StatusSilence {
public:
    StatusSilence() { ++gms_hooks().silent_statuses; }
    ~StatusSilence() { --gms_hooks().silent_statuses; }
    StatusSilence(const StatusSilence&) = delete;
    StatusSilence& operator=(const StatusSilence&) = delete;
};

std::string stored_path(const char* path) { return VXFile(path).GetFilePath().c_str(); }

bool is_binary_datasets(const std::string& stored) {
    VXInputFile in;
    int first = 0, second = 0;
    if (!in.Open(stored.c_str()) || !in.ReadRawInt(first) || !in.ReadRawInt(second)) return false;
    // The first card is one of the file's own, so that numbers by chance are told from a dataset file.
    if (first == kBinaryVersion) return second >= 100 && second <= 250;
    return first == kFirstRecord && second == kBinaryVersion;
}

/// "text", "datasets" or empty.
std::string kind_of_text(const std::string& stored) {
    constexpr int kLooked = 1000;
    VXFileReader reader;
    if (!reader.Open(stored.c_str())) return "";
    for (int i = 0; i < kLooked && reader.ReadLine("\r\n\t ,", true, true, false) >= 0; ++i) {
        const std::string word = reader.GetWord(0).c_str();
        if (i == 0 && word == "DATASET") return "datasets";
        if (project_keyword_title(word) == nullptr) continue;
        // A model's name file has a unit number there.
        const std::string name = reader.GetWord(1).c_str();
        if (name.find_first_not_of("+-0123456789") != std::string::npos) return "text";
    }
    return "";
}

template <class Describe>
GmsProjectSummary guarded(const char* kind, Describe describe) {
    GmsProjectSummary summary;
    const StatusSilence silence;
    const Hdf5Silence hdf5_silence;
    try {
        summary.kind = kind;
        describe(summary);
    } catch (const std::exception&) {
        summary.problem = "there is not enough memory to read it";
    }
    return summary;
}

}  // namespace

std::string gms_file_kind(const char* path) {
    try {
        const Hdf5Silence silence;
        const std::string stored = stored_path(path);
        if (hdf5_kind(stored.c_str()) > 0) return "hdf5";
        return is_binary_datasets(stored) ? "datasets" : kind_of_text(stored);
    } catch (const std::exception&) {
        return "";
    }
}

GmsProjectSummary summarize_gms_project(const char* path, bool lenient) {
    return guarded("text", [&](GmsProjectSummary& summary) {
        const std::string stored = stored_path(path);
        const int hdf5 = hdf5_kind(stored.c_str());
        if (hdf5 > 0) {
            summary.kind = "hdf5";
            describe_hdf5_project(stored, summary);
        } else if (hdf5 == 0) {
            describe_text_project(stored, lenient, summary);
        } else {
            summary.problem = "the file cannot be read";
        }
    });
}

GmsProjectSummary summarize_gms_datasets(const char* path, bool lenient) {
    return guarded("datasets", [&](GmsProjectSummary& summary) {
        const std::unique_ptr<GMStoPLX, decltype(&GMStoPLX_delete)> converter(GMStoPLX_new(),
                                                                              &GMStoPLX_delete);
        if (!converter) throw std::bad_alloc();
        converter->lenientDatasets = lenient;
        const bool complete = describe_datasets(*converter, stored_path(path), summary.datasets);
        if (!complete && summary.datasets.empty()) summary.problem = "no dataset could be read";
    });
}

}  // namespace plx
