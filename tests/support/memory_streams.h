#pragma once

#include <map>
#include <memory>
#include <sstream>
#include <string>

#include "formats/array_record.h"

namespace plx::test {

/// Streams over texts, by unit number and by file name.
class MemoryStreams : public ArrayStreams {
public:
    std::map<int, std::string> units;
    std::map<std::string, std::string> files;
    std::map<std::string, Hdf5Id> hdf5;

    TextSource* unit(int number) override {
        auto& source = opened_[number];
        if (!source && units.contains(number)) {
            source = std::make_unique<TextSource>(TextSource::of_text(units[number], "unit"));
        }
        return source.get();
    }

    TextSource* open(const std::string& name) override {
        if (!files.contains(name)) return nullptr;
        file_ = std::make_unique<TextSource>(TextSource::of_text(files[name], name));
        return file_.get();
    }

    Hdf5Id hdf5_file(const std::string& name, const TextSource&) override {
        return hdf5.contains(name) ? hdf5[name] : -1;
    }

private:
    std::map<int, std::unique_ptr<TextSource>> opened_;
    std::unique_ptr<TextSource> file_;
};

/// "1 2.5 -3", to compare and to show.
inline std::string text_of(const std::vector<double>& values) {
    std::ostringstream text;
    text.precision(12);
    for (const double value : values) text << (text.tellp() > 0 ? " " : "") << value;
    return text.str();
}

/// Every rule on that serves all models.
inline constexpr TextRules kModelRules{true, true, true, true, true};

}  // namespace plx::test
