#pragma once

#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "formats/array_record.h"
#include "formats/text_source.h"
#include "plxutils/core/VX1DArray.h"

namespace plx {

/// Last component of a stored name as it is spelt on disk, for messages.
std::string display_name(const std::string& stored);

/// The streams of a conversion by Fortran unit number. The C streams stand in the factory's own array; this
/// class opens and closes them and keeps the block reader of each text.
class UnitStreams final : public ArrayStreams {
public:
    /// Higher unit numbers are taken for damage: the array of streams is indexed by them.
    static constexpr int kMaxUnit = 99'999;

    /// @param files   the factory's streams.
    /// @param folder  gives the folder that names in OPEN/CLOSE records are relative to.
    UnitStreams(VX1DArray<std::FILE*>& files, std::function<std::string()> folder);
    ~UnitStreams() override;
    UnitStreams(const UnitStreams&) = delete;
    UnitStreams& operator=(const UnitStreams&) = delete;

    /// Opens a stored name for reading at a unit, closing what was open there. Texts are opened like
    /// binaries; line ends are the readers' work. False when the file cannot be opened or the unit is out of
    /// range.
    bool open_unit(int number, const std::string& path);
    /// The C stream of a unit; null when nothing is open there.
    std::FILE* file(int number) const;
    /// Stored name of what is open at a unit.
    std::string path(int number) const;
    /// Block reader of a C stream, made on first use.
    TextSource* text_of(std::FILE* file);

    TextSource* unit(int number) override;
    TextSource* open(const std::string& name) override;
    /// A file that is not beside the input is looked for in the folder of OPEN/CLOSE files. The last few stay
    /// open: all arrays of a model are in one file as a rule.
    Hdf5Id hdf5_file(const std::string& name, const TextSource& from) override;
    /// A model's arrays and results hold at least some bytes for each cell, once it is larger than constants
    /// alone are good for.
    long long most_cells() const override;

private:
    struct Closer {
        void operator()(std::FILE* f) const { std::fclose(f); }
    };
    struct OpenHdf5 {
        std::string path;
        Hdf5Handle file;
    };
    void close_unit(int number);
    std::string folder_of(const TextSource& text) const;

    VX1DArray<std::FILE*>& files_;
    std::function<std::string()> folder_;
    std::map<int, std::string> paths_;
    std::map<std::FILE*, std::unique_ptr<TextSource>> texts_;
    std::unique_ptr<std::FILE, Closer> opened_;
    std::unique_ptr<TextSource> opened_text_;
    std::vector<OpenHdf5> hdf5_;
    std::set<std::string> not_hdf5_;  ///< paths that could not be opened: thousands of records may name one
};

}  // namespace plx
