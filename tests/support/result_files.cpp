#include "support/result_files.h"

namespace plx::test {

namespace {

template <class T>
void append(std::string& to, T value) {
    to.append(reinterpret_cast<const char*>(&value), sizeof value);
}

}  // namespace

OpenFile open_bytes(std::string_view bytes) {
    OpenFile file(std::tmpfile(), &std::fclose);
    std::fwrite(bytes.data(), 1, bytes.size(), file.get());
    std::rewind(file.get());
    return file;
}

void ResultWriter::integers(const std::vector<int>& values) {
    for (const int v : values) append(record_, v);
}

void ResultWriter::reals(const std::vector<double>& values) {
    for (const double v : values)
        style_.real_bytes == 8 ? append(record_, v) : append(record_, static_cast<float>(v));
}

void ResultWriter::label(std::string_view text) { record_.append(16 - text.size(), ' ').append(text); }

void ResultWriter::end_record() {
    if (record_.empty()) return;
    const int length = static_cast<int>(record_.size());
    if (style_.record_markers) append(bytes_, length);
    bytes_ += record_;
    if (style_.record_markers) append(bytes_, length);
    record_.clear();
}

void ResultWriter::layer(const ResultStamp& at, int layer, const std::vector<double>& values,
                         std::string_view text, int transport_step) {
    if (transport_step > 0) integers({transport_step});
    integers({at.step, at.period});
    if (transport_step == 0) reals({at.time});
    reals({at.time});
    label(text);
    integers({at.columns, at.rows, layer});
    end_record();
    reals(values);
    end_record();
}

void ResultWriter::budget_header(const ResultStamp& at, std::string_view text, int type) {
    integers({at.step, at.period});
    label(text);
    integers({at.columns, at.rows, style_.compact ? -at.layers : at.layers});
    end_record();
    if (!style_.compact) return;
    integers({type});
    reals({at.time, at.time, at.time});
    end_record();
}

void ResultWriter::array(const ResultStamp& at, std::string_view text, const std::vector<double>& values,
                         int type, const std::vector<int>& layers) {
    budget_header(at, text, type);
    integers(layers);
    end_record();
    reals(values);
    end_record();
}

void ResultWriter::list(const ResultStamp& at, std::string_view text, const std::vector<ListEntry>& entries,
                        int type, const std::vector<std::string_view>& names) {
    budget_header(at, text, type);
    if (type == 5) integers({static_cast<int>(names.size()) + 1});
    end_record();
    for (const std::string_view name : names) label(name);
    end_record();
    integers({static_cast<int>(entries.size())});
    end_record();
    for (const ListEntry& entry : entries) {
        integers({entry.cell});
        reals(entry.values);
        end_record();
    }
}

}  // namespace plx::test
