#include "converters/output_file.h"

#include "gms/callbacks.h"
#include "platform/host_path.h"

namespace plx {

bool OutputFile::open(const String& path, bool compressed, const char* complaint) {
    close();
    if (platform::fits_stored_form(path.c_str()) && stream_.Open(path.c_str(), compressed, false)) {
        writer_.emplace(stream_);
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
    factory_.report.bytes += writer_->bytes();
    writer_.reset();
    stream_.Close();
    const std::string name = stream_.Filename().c_str();
    if (stream_.Failed()) {
        const std::string text = name + ": not all of it could be written (is the disk full?)";
        GMS_ReportError("%s\n", text.c_str());
        factory_.report.errors.push_back(text);
        return false;
    }
    factory_.report.files.push_back(name);
    return true;
}

}  // namespace plx
