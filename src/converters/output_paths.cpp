#include "converters/output_paths.h"

#include <string>

#include "core/output_names.h"
#include "platform/platform.h"

namespace plx {

OutputPaths::OutputPaths(const ConverterFactory& factory)
    : root(factory.output_folder.length() == 0 ? factory.project_file.GetDirectoryName()
                                               : VXFile(factory.output_folder, "x").GetDirectoryName()),
      title(clean_name(factory.project_file.GetFileTitle().c_str()).c_str()) {}

VXFile OutputPaths::below(const char* folder, const String& name) const {
    return VXFile(this->folder(folder), name);
}

void OutputPaths::make_folder(const char* name) const { platform::make_directory(folder(name).c_str()); }

std::string general_reference(const VXFile& file) {
    return "..\\GENERAL\\" + std::string(file.GetFileName().c_str());
}

}  // namespace plx
