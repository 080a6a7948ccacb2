#include "support/link_file.h"

namespace plx::test {

namespace {

template <class T>
void append(std::string& to, T value) {
    to.append(reinterpret_cast<const char*>(&value), sizeof value);
}

}  // namespace

LinkWriter::LinkWriter(ResultStyle style, bool old_version) : style_(style) {
    record_ = old_version ? "MT3D3.00.99" : "MT3D4.00.00";
    integers(std::vector<int>(old_version ? 9 : 21, 1));
    end_record();
}

void LinkWriter::integers(const std::vector<int>& values) {
    for (const int v : values) append(record_, v);
}

void LinkWriter::reals(const std::vector<double>& values) {
    for (const double v : values)
        style_.real_bytes == 8 ? append(record_, v) : append(record_, static_cast<float>(v));
}

void LinkWriter::end_record() {
    const int length = static_cast<int>(record_.size());
    if (style_.record_markers) append(bytes_, length);
    bytes_ += record_;
    if (style_.record_markers) append(bytes_, length);
    record_.clear();
}

void LinkWriter::header(const ResultStamp& at, std::string_view text) {
    integers({at.period, at.step, at.columns, at.rows, at.layers});
    record_.append(text).append(16 - text.size(), ' ');
}

void LinkWriter::array(const ResultStamp& at, std::string_view text, const std::vector<double>& values) {
    header(at, text);
    end_record();
    reals(values);
    end_record();
}

void LinkWriter::list(const ResultStamp& at, std::string_view text, const std::vector<LinkEntry>& entries) {
    header(at, text);
    integers({static_cast<int>(entries.size())});
    end_record();
    for (const LinkEntry& entry : entries) {
        integers({entry.layer, entry.row, entry.column});
        reals({entry.flow});
        if (entry.grouped) {
            integers({5});
            reals({2.0});
        }
        end_record();
    }
}

void LinkWriter::layers(const ResultStamp& at, std::string_view text, const std::vector<int>& layers,
                        const std::vector<double>& values) {
    header(at, text);
    end_record();
    integers(layers);
    end_record();
    reals(values);
    end_record();
}

}  // namespace plx::test
