#pragma once

#include <string>
#include <vector>

#include "support/result_files.h"

namespace plx::test {

/// Writes a flow-transport link file byte by byte, in the pieces in which the models write it.
struct LinkWriter {
    using Numbers = std::vector<std::int32_t>;

    explicit LinkWriter(ResultStyle style = {}, bool old_version = false) : style(style) {
        record((old_version ? "MT3D3.00.99" : "MT3D4.00.00") + raw(Numbers(old_version ? 9 : 21, 1)));
    }
    /// `layers`: those of the labels that have one for each cell.
    void array(const ResultStamp& at, const char* text, const std::vector<double>& values,
               const Numbers& layers = {}) {
        record(header(at, text));
        if (!layers.empty()) record(raw(layers));
        record(reals(values));
    }
    /// One entry with the same flow for each place (layer, row and column); `more` stands behind it.
    void list(const ResultStamp& at, const char* text, const std::vector<Numbers>& places, double flow,
              const char* more = "") {
        record(header(at, text) + raw(Numbers{static_cast<std::int32_t>(places.size())}));
        for (const Numbers& place : places) record(raw(place) + reals({flow}) + more);
    }

    ResultStyle style;
    std::string bytes;

private:
    template <class T>
    static std::string raw(const std::vector<T>& values) {
        return {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(T)};
    }
    static std::string header(const ResultStamp& at, std::string text) {
        text.resize(16, ' ');
        return raw(Numbers{at.period, at.step, at.columns, at.rows, at.layers}) + text;
    }
    std::string reals(const std::vector<double>& values) const {
        return style.real_bytes == 8 ? raw(values) : raw(std::vector<float>(values.begin(), values.end()));
    }
    void record(const std::string& piece) {
        const std::string marker =
            style.record_markers ? raw(Numbers{static_cast<std::int32_t>(piece.size())}) : "";
        bytes += marker + piece + marker;
    }
};

}  // namespace plx::test
