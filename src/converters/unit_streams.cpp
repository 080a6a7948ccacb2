#include "converters/unit_streams.h"

#include <algorithm>
#include <set>

#include "formats/name_file.h"
#include "platform/host_path.h"
#include "platform/platform.h"

namespace plx {

std::string display_name(const std::string& stored) {
    std::string name = platform::native_path(stored);
    if (name.empty()) name = stored;
    return name.substr(name.find_last_of("/\\") + 1);
}

UnitStreams::UnitStreams(VX1DArray<std::FILE*>& files, std::function<std::string()> folder)
    : files_(files), folder_(std::move(folder)) {}

UnitStreams::~UnitStreams() {
    while (!paths_.empty()) close_unit(paths_.begin()->first);
}

void UnitStreams::close_unit(int number) {
    if (std::FILE* open = file(number)) {
        texts_.erase(open);
        std::fclose(open);
        files_[number] = nullptr;
    }
    paths_.erase(number);
}

bool UnitStreams::open_unit(int number, const std::string& path) {
    if (number < 0 || number > kMaxUnit) return false;
    close_unit(number);
    std::FILE* opened = platform::open_file(path.c_str(), "rb");
    if (opened == nullptr) return false;
    files_[number] = opened;
    paths_[number] = path;
    return true;
}

std::FILE* UnitStreams::file(int number) const {
    return number >= 0 && number < files_.size ? files_.data[number] : nullptr;
}

std::string UnitStreams::path(int number) const {
    const auto found = paths_.find(number);
    return found == paths_.end() ? std::string() : found->second;
}

TextSource* UnitStreams::text_of(std::FILE* file) {
    if (file == nullptr) return nullptr;
    auto& text = texts_[file];
    if (!text) {
        std::string name;
        for (const auto& [number, path] : paths_) {
            if (this->file(number) == file) name = display_name(path);
        }
        text = std::make_unique<TextSource>(file, name);
    }
    return text.get();
}

TextSource* UnitStreams::unit(int number) { return text_of(file(number)); }

TextSource* UnitStreams::open(const std::string& name) {
    const std::string path = resolve_beside(String(folder_().c_str()), name);
    opened_text_.reset();
    opened_.reset(platform::open_file(path.c_str(), "rb"));
    if (!opened_) return nullptr;
    opened_text_ = std::make_unique<TextSource>(opened_.get(), display_name(path));
    return opened_text_.get();
}

std::string UnitStreams::folder_of(const TextSource& text) const {
    for (const auto& [number, path] : paths_) {
        const auto found = texts_.find(file(number));
        if (found != texts_.end() && found->second.get() == &text)
            return path.substr(0, std::min(path.find_last_of("/\\"), path.size()));
    }
    return folder_();
}

Hdf5Id UnitStreams::hdf5_file(const std::string& name, const TextSource& from) {
    constexpr std::size_t kMostOpen = 4;
    for (const std::string& folder : {folder_of(from), folder_()}) {
        const std::string path = resolve_beside(String(folder.c_str()), name);
        const auto open =
            std::find_if(hdf5_.begin(), hdf5_.end(), [&](const OpenHdf5& one) { return one.path == path; });
        if (open != hdf5_.end()) return open->file.id();
        if (not_hdf5_.contains(path)) continue;
        Hdf5Handle file = open_hdf5_file(path.c_str());
        if (!file) {
            not_hdf5_.insert(path);
            continue;
        }
        if (hdf5_.size() == kMostOpen) hdf5_.erase(hdf5_.begin());
        hdf5_.push_back({path, std::move(file)});
        return hdf5_.back().file.id();
    }
    return -1;
}

long long UnitStreams::most_cells() const {
    constexpr long long kFree = 5'000'000, kCellsPerByte = 16;
    long long bytes = 0;
    // The grid's size is read before the first array names its HDF5 file.
    for (const std::string& name :
         platform::folder_names(folder_().c_str()).value_or(std::vector<std::string>())) {
        if (!name.ends_with(".h5")) continue;
        const std::unique_ptr<std::FILE, Closer> arrays(
            platform::open_file((folder_() + "\\" + name).c_str(), "rb"));
        if (arrays) bytes += std::max<std::int64_t>(platform::file_size(arrays.get()), 0);
    }
    for (const auto& [number, path] : paths_)
        bytes += std::max<std::int64_t>(platform::file_size(file(number)), 0);
    return std::min(kFree + kCellsPerByte * bytes, kMaxCells);
}

}  // namespace plx
