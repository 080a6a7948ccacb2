#include "plxutils/core/WholeFile.h"

#include <string>

#include "platform/host_path.h"
#include "platform/part_file.h"

namespace plx {

WholeFile::WholeFile() : part_(std::make_unique<platform::PartFile>()) {}

WholeFile::~WholeFile() { discard(); }

bool WholeFile::open(const char* name, bool compressed) {
    discard();
    fault_ = "";
    stream_.file.SetFile(name);
    const std::string native = platform::target_path(stream_.file.GetFilePath().c_str());
    in_place_ = platform::is_device(native);
    if (in_place_) {
        open_ = stream_.Open(name, compressed, false);
        return open_;
    }
    const int descriptor = part_->create(native);
    if (descriptor < 0) return false;
    open_ = stream_.OpenDescriptor(descriptor, compressed);
    if (!open_) part_->remove();
    return open_;
}

bool WholeFile::close() {
    if (!open_) return false;
    open_ = false;
    stream_.Close();
    fault_ = "";
    if (stream_.Failed()) {
        fault_ = kNotAllWritten;
        part_->remove();
    } else if (!in_place_ && !part_->put_in_place()) {
        fault_ = "the complete file could not be given its name";
    }
    return *fault_ == '\0';
}

void WholeFile::discard() {
    if (!open_) return;
    open_ = false;
    stream_.Close();
    part_->remove();
}

void remove_unfinished_files() noexcept { platform::remove_part_files(); }

}  // namespace plx
