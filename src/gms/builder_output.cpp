#include "gms/builder_output.h"

#include "core/output_names.h"
#include "gms/callbacks.h"
#include "platform/platform.h"

namespace plx {

void report_separator() {
    GMS_ReportStatus("____________________________________________________________\n");
}

void announce_build(const char* announcement) {
    report_separator();
    GMS_ReportStatus("%s", announcement);
}

std::string output_folder(const GMStoPLX& owner, const char* subfolder) {
    std::string folder = owner.destination.GetFilePath().c_str();
    folder.erase(folder.find_last_not_of("\\/") + 1);
    if (folder.empty() || !owner.useSubfolders) return folder;
    folder += std::string("\\") + subfolder;
    platform::make_directory(folder.c_str());
    return folder;
}

std::string last_with_extension(const std::vector<String>& paths, std::string_view extension) {
    std::string last;
    for (const String& path : paths) {
        const std::string_view text = path.c_str();
        const std::size_t dot = text.rfind('.');
        if (dot != std::string_view::npos && text.substr(dot + 1) == extension) last = text;
    }
    return last;
}

void report_group_problem(const char* kind, Hdf5Id group, const std::string& problem) {
    GMS_ReportError("%s : [%s] %s\n", kind, hdf5_path(group).c_str(), problem.c_str());
}

bool BuilderOutput::open(const std::string& folder, const std::string& name, bool compressed,
                         const char* complaint) {
    writer_.reset();
    const std::string path = folder + "\\" + name;
    if (!stays_in(folder, name) || !file_.open(path.c_str(), compressed)) {
        GMS_ReportError(complaint, path.c_str());
        return false;
    }
    name_ = name;
    writer_.emplace(file_.stream());
    return true;
}

bool BuilderOutput::close() {
    if (!writer_) return true;
    writer_->flush();
    const std::int64_t bytes = writer_->bytes();
    writer_.reset();
    const std::string stored = file_.stream().Filename().c_str();
    if (!file_.close()) {
        GMS_ReportError("%s: %s\n", stored.c_str(), file_.fault());
        return false;
    }
    owner_.filesWritten.push_back(stored);
    owner_.bytesWritten += bytes;
    GMS_ReportStatus("   %s", name_.c_str());
    return true;
}

}  // namespace plx
