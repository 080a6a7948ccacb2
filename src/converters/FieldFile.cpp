#include "plxutils/converters/FieldFile.h"

#include <exception>

#include "converters/field_file_writer.h"
#include "core/block_writer.h"
#include "platform/host_path.h"
#include "platform/platform.h"
#include "plxutils/core/WholeFile.h"

namespace plx {
namespace {

bool has_drive(const std::string& name) { return name.size() > 1 && name[1] == ':'; }

/// The name to open; empty when it would be cut or changed on its way to the system.
std::string openable(const char* path) {
    if (path == nullptr || *path == '\0') return {};
    if (has_drive(path)) return platform::fits_stored_form(path) ? path : "";
    const std::string native = platform::full_path(path);
    std::string why;
    return platform::storable(native, why) ? native : std::string();
}

}  // namespace

struct FieldFile::Parts {
    WholeFile file;
    BlockWriter out{file.stream()};
    FieldFileWriter writer{out};
    FieldHeader header;
};

FieldFile::FieldFile() : exceptions_(std::uncaught_exceptions()) {}

FieldFile::~FieldFile() {
    // A fault on the way leaves half a file.
    if (std::uncaught_exceptions() > exceptions_) return;
    close();
}

bool FieldFile::open(const char* path, bool compress) {
    close();
    fault_ = "";
    const std::string name = openable(path);
    auto parts = std::make_unique<Parts>();
    if (name.empty() || !parts->file.open(name.c_str(), compress)) return false;
    parts_ = std::move(parts);
    return true;
}

void FieldFile::begin_nodes(const FieldHeader& header) {
    if (!parts_) return;
    parts_->header = header;
    parts_->writer.begin_own_nodes(parts_->header);
}

void FieldFile::node_data_definitions() {
    if (parts_) parts_->writer.node_data_definitions(parts_->header);
}

void FieldFile::begin_node_data() {
    if (parts_) parts_->writer.begin_node_data(parts_->header);
}

void FieldFile::begin_cells() {
    if (parts_) parts_->writer.begin_own_cells(parts_->header);
}

void FieldFile::begin_cell_data() {
    if (parts_) parts_->writer.begin_cell_data(parts_->header);
}

void FieldFile::value(double v) {
    if (parts_) parts_->out.fixed(v).put(' ');
}

void FieldFile::integer(int i) {
    if (parts_) parts_->out.integer(i).put(' ');
}

void FieldFile::end_line() {
    if (parts_) parts_->out.put('\n');
}

bool FieldFile::close() {
    if (!parts_) return false;
    const auto parts = std::move(parts_);
    parts->out.flush();
    const bool whole = parts->file.close();
    fault_ = parts->file.fault();
    return whole;
}

void FieldFile::discard() { parts_.reset(); }

}  // namespace plx
