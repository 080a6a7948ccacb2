#include "plxconvert/model_kind.h"

#include <optional>

#include "plxconvert/messages.h"

namespace plx::tool {

bool is_binary(const std::filesystem::path& file) {
    const std::optional<bool> binary = is_binary_file(file.string());
    if (!binary) throw InputFault("'" + file.string() + "' cannot be opened for reading");
    return *binary;
}

ModelKind find_kind(const std::filesystem::path& project, const std::string& wanted) {
    const ModelKindFinding finding =
        find_model_kind(project.string(), wanted, {"--kind", "'plxconvert gms'"});
    if (!finding.kind) throw InputFault(finding.problem);
    return *finding.kind;
}

}  // namespace plx::tool
