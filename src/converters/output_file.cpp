#include "converters/output_file.h"

#include "core/output_names.h"
#include "gms/callbacks.h"

namespace plx {

bool OutputFile::open(const String& folder, const String& name, bool compressed, const char* complaint) {
    writer_.reset();
    const bool stays = stays_in(folder.c_str(), name.c_str());
    const String path = stays ? VXFile(folder, name).GetFilePath() : folder + "\\" + name;
    if (stays && file_.open(path.c_str(), compressed)) {
        writer_.emplace(file_.stream());
        return true;
    }
    GMS_ReportError(complaint, path.c_str());
    std::string text = complaint;
    text.replace(text.find("%s"), 2, path.c_str());
    text.erase(text.find_last_not_of('\n') + 1);
    factory_.report.errors.push_back(text);
    return false;
}

bool OutputFile::close() {
    if (!writer_) return true;
    writer_->flush();
    const std::int64_t bytes = writer_->bytes();
    writer_.reset();
    const std::string name = file_.stream().Filename().c_str();
    if (!file_.close()) {
        const std::string text = name + ": " + file_.fault();
        GMS_ReportError("%s\n", text.c_str());
        factory_.report.errors.push_back(text);
        return false;
    }
    factory_.report.files.push_back(name);
    factory_.report.bytes += bytes;
    return true;
}

}  // namespace plx
