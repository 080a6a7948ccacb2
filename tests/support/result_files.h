#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace plx::test {

/// A temporary file with these bytes, open for reading at its start.
using OpenFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;
OpenFile open_bytes(std::string_view bytes);

/// How a test's result file is laid out.
struct ResultStyle {
    bool record_markers = false;  ///< each write between two int32 lengths
    int real_bytes = 4;
    bool compact = true;  ///< budget records only
};

/// What the header of every record says; all times of a header are `time`.
struct ResultStamp {
    int step = 1, period = 1;
    double time = 1.0;
    int layers = 1, rows = 1, columns = 1;
};

struct ListEntry {
    int cell;                    ///< 1-based
    std::vector<double> values;  ///< one, or one more than there are names
};

/// Writes head, concentration and budget files byte by byte, in the pieces in which the models write them.
/// Labels stand at the right of their 16 characters.
class ResultWriter {
public:
    explicit ResultWriter(ResultStyle style = {}) : style_(style) {}
    const std::string& bytes() const { return bytes_; }

    /// One layer, from 1, of a head file; of a concentration file when there is a transport step.
    void layer(const ResultStamp& at, int layer, const std::vector<double>& values,
               std::string_view text = "HEAD", int transport_step = 0);
    /// Budget record with the values as given: ITYPE 0, 1 (or not compact) all layers, 4 one layer; 3 one
    /// layer after each cell's layer from 1.
    void array(const ResultStamp& at, std::string_view text, const std::vector<double>& values, int type = 1,
               const std::vector<int>& layers = {});
    /// Budget record of ITYPE 2, or of ITYPE 5 with the names of the further values.
    void list(const ResultStamp& at, std::string_view text, const std::vector<ListEntry>& entries,
              int type = 2, const std::vector<std::string_view>& names = {});

private:
    void integers(const std::vector<int>& values);
    void reals(const std::vector<double>& values);
    void label(std::string_view text);
    void end_record();
    void budget_header(const ResultStamp& at, std::string_view text, int type);

    ResultStyle style_;
    std::string bytes_, record_;
};

}  // namespace plx::test
