#include "formats/link_records.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>

#include "formats/layer_records.h"
#include "formats/record_checks.h"
#include "platform/platform.h"

namespace plx {

namespace {

constexpr std::size_t kVersionBytes = 11;
constexpr int kOldNumbers = 9, kNewNumbers = 21;
/// KPER, KSTP, NCOL, NROW, NLAY and the label.
constexpr std::int64_t kRecordHeaderBytes = 36;

enum class LinkForm { kArray, kList, kLayerArray, kWideList, kUnknown };

struct LinkTerm {
    const char* label;
    LinkForm form;
    BudgetSlot slot;
};
constexpr std::array<LinkTerm, 12> kLinkTerms{{
    {"THKSAT", LinkForm::kArray, kNoSlot},
    {"QXX", LinkForm::kArray, kFlowRightFace},
    {"QYY", LinkForm::kArray, kFlowFrontFace},
    {"QZZ", LinkForm::kArray, kFlowLowerFace},
    {"STO", LinkForm::kArray, kStorage},
    {"CNH", LinkForm::kList, kConstantHead},
    {"WEL", LinkForm::kList, kWells},
    {"DRN", LinkForm::kList, kDrains},
    {"RIV", LinkForm::kList, kRiverLeakage},
    {"GHB", LinkForm::kList, kGeneralHead},
    {"RCH", LinkForm::kLayerArray, kRecharge},
    {"EVT", LinkForm::kLayerArray, kEt},
}};

const LinkTerm* find_term(const std::string& label) {
    const auto found = std::find_if(kLinkTerms.begin(), kLinkTerms.end(),
                                    [&label](const LinkTerm& term) { return label == term.label; });
    return found == kLinkTerms.end() ? nullptr : &*found;
}

/// Which of the two versions the eleven characters name, by its count of numbers; 0 for neither.
int numbers_of_version(const char* text) {
    std::string version(text, kVersionBytes);
    std::transform(version.begin(), version.end(), version.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    if (version == "MT3D3.00.99") return kOldNumbers;
    return version == "MT3D4.00.00" ? kNewNumbers : 0;
}

bool read_header(RecordFile& in, BudgetHeader& h) {
    std::array<char, kLabelBytes> label{};
    std::int32_t layers = 0;
    h = {};
    if (!in.read_int(h.period) || !in.read_int(h.step) || !in.read_int(h.columns) || !in.read_int(h.rows) ||
        !in.read_int(layers) || !in.read(label.data(), label.size())) {
        return false;
    }
    h.layers = layers;
    h.label = trimmed_label({label.data(), label.size()});
    return plausible_step(h.period) && plausible_step(h.step) && layers > 0 &&
           plausible_extents(h.columns, h.rows, layers) && plausible_label({label.data(), label.size()});
}

bool pass_over(RecordFile& in, LinkForm form, BudgetRecord& record) {
    const std::int64_t cells = std::int64_t{record.header.columns} * record.header.rows;
    const std::int64_t reals = in.layout().real_bytes;
    if (form == LinkForm::kArray) return in.skip(cells * record.header.layers * reals);
    if (form == LinkForm::kLayerArray) return in.skip(cells * 4) && in.skip(cells * reals);
    std::int32_t entries = 0;
    if (!in.read_int(entries) || entries < 0) return false;
    const std::int64_t entry_bytes = 12 + reals + (form == LinkForm::kWideList ? 4 + reals : 0);
    if (entries > in.remaining() / entry_bytes) return false;
    record.entries = entries;
    return in.skip(entries * entry_bytes);
}

/// Goes back behind a record's header and label.
bool seek_data(RecordFile& in, const BudgetRecord& record) {
    return in.seek(record.position) && in.skip(kRecordHeaderBytes);
}

/// True where another record of the grid begins; the position is then in it.
bool record_follows(RecordFile& in, const BudgetHeader& grid) {
    BudgetHeader next;
    return in.at_record_start() && read_header(in, next) && next.columns == grid.columns &&
           next.rows == grid.rows && next.layers == grid.layers;
}

/// Passes over a record whose label says nothing of its form; a record that follows is proof, the end of the
/// file less.
bool pass_over_unknown(RecordFile& in, BudgetRecord& record) {
    for (const bool end_counts : {false, true}) {
        for (const LinkForm form :
             {LinkForm::kList, LinkForm::kWideList, LinkForm::kLayerArray, LinkForm::kArray}) {
            if (!seek_data(in, record) || !pass_over(in, form, record)) continue;
            const std::int64_t next = in.position();
            const bool fits = end_counts ? in.at_end() : record_follows(in, record.header);
            if (fits) return in.seek(next);
        }
    }
    return false;
}

/// Does the first record fit, when its reals are of the layout's size?
bool first_record_fits(RecordFile& in) {
    BudgetRecord record;
    return next_link_record(in, record) == LinkNext::kRecord &&
           (in.at_end() || record_follows(in, record.header));
}

}  // namespace

bool is_text_link(std::FILE* file) {
    const KeepPosition keep(file);
    std::array<char, 6> begin{};
    return platform::seek(file, 0, SEEK_SET) &&
           std::fread(begin.data(), 1, begin.size(), file) == begin.size() &&
           std::memcmp(begin.data(), " 'MT3D", begin.size()) == 0;
}

/// First bytes of an MT3D flow-link file: binary, behind a Fortran record marker, or as text (which is
/// refused later).
bool begins_as_link(std::FILE* file, bool markers_too) {
    std::array<char, 15> head{};
    platform::seek(file, 0, SEEK_SET);
    const std::size_t got = std::fread(head.data(), 1, head.size(), file);
    platform::seek(file, 0, SEEK_SET);
    const bool text = got > 2 && head[0] == ' ' && head[1] == '\'';
    for (const std::size_t at : {std::size_t{0}, std::size_t{2}, std::size_t{4}}) {
        if (got < at + 11 || (at == 2 && !text) || (at == 4 && !markers_too)) continue;
        std::string label(head.data() + at, 11);
        for (char& c : label) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
        if (label == "MT3D3.00.99" || label == "MT3D4.00.00") return true;
    }
    return false;
}

std::optional<ResultLayout> detect_link_layout(std::FILE* file) {
    const KeepPosition keep(file);
    std::optional<ResultLayout> best;
    for (const bool markers : {false, true}) {
        for (const int real_bytes : {4, 8}) {
            RecordFile in(file, {});
            const ResultLayout layout{markers, real_bytes};
            in.set_layout(layout);
            bool old_version = false;
            if (!read_link_header(in, old_version)) continue;
            if (first_record_fits(in)) return layout;
            if (!best) best = layout;
        }
    }
    return best;
}

bool read_link_header(RecordFile& in, bool& old_version) {
    std::array<char, kVersionBytes> version{};
    std::array<std::int32_t, kNewNumbers> numbers{};
    if (!in.read(version.data(), version.size())) return false;
    const int count = numbers_of_version(version.data());
    if (count == 0 || !in.read(numbers.data(), static_cast<std::size_t>(count) * sizeof(std::int32_t)))
        return false;
    old_version = count == kOldNumbers;
    return in.at_record_start();
}

LinkNext next_link_record(RecordFile& in, BudgetRecord& record) {
    record = {};
    if (in.at_end()) return LinkNext::kEnd;
    record.position = in.position();
    if (!read_header(in, record.header)) return LinkNext::kCutShort;
    record.data = in.position();
    const LinkTerm* term = find_term(record.header.label);
    if (term == nullptr) return pass_over_unknown(in, record) ? LinkNext::kRecord : LinkNext::kUnknown;
    record.header.compact = term->form != LinkForm::kArray;
    if (record.header.compact) record.header.type = term->form == LinkForm::kList ? 2 : 3;
    return pass_over(in, term->form, record) ? LinkNext::kRecord : LinkNext::kCutShort;
}

BudgetSlot slot_of_link_label(const std::string& label) {
    const LinkTerm* term = find_term(label);
    return term == nullptr ? kNoSlot : term->slot;
}

bool read_link_list(RecordFile& in, const BudgetRecord& record, std::vector<BudgetEntry>& entries) {
    const BudgetHeader& h = record.header;
    std::int32_t count = 0;
    // The count stands in the same record as the header, so that the header is passed again.
    if (!h.compact || h.type != 2 || !seek_data(in, record) || !in.read_int(count) ||
        count != record.entries) {
        return false;
    }
    const std::size_t before = entries.size();
    entries.reserve(before + static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i) {
        std::array<std::int32_t, 3> at{};  // layer, row, column
        BudgetEntry entry;
        if (!in.read(at.data(), sizeof at) || !in.read_real(entry.flow)) {
            entries.resize(before);
            return false;
        }
        const bool inside = at[0] >= 1 && at[0] <= h.layers && at[1] >= 1 && at[1] <= h.rows && at[2] >= 1 &&
                            at[2] <= h.columns;
        if (inside) entry.cell = ((at[0] - 1) * h.rows + at[1] - 1) * h.columns + at[2];
        entries.push_back(entry);
    }
    return true;
}

}  // namespace plx
