#pragma once

#include <functional>
#include <string>

#include "gms/dataset_messages.h"
#include "plxutils/gms/GMStoPLX.h"
#include "support/temp_folder.h"

namespace plx::test {

/// The builder that a test looks at; the others are switched off.
enum class Only { kScat3d, kScat2d, kTin, kBorehole };

/// A project in a folder of its own that is converted into the folder's "out".
class SmallProject {
public:
    SmallProject() { std::filesystem::create_directory(folder.path() / "out"); }

    /// Converts a project file of the folder and returns the messages from the builder's announcement on.
    std::string convert(const char* project, Only only,
                        const std::function<void(GMStoPLX*)>& prepare = {}) const {
        const MessageLog log;
        GMStoPLX* converter = GMStoPLX_new();
        GMStoPLX_Set_Project(converter, folder.file(project).c_str());
        GMStoPLX_Set_Destination(converter, folder.file("out").c_str());
        GMStoPLX_Object_Types(converter, 0, 0, 0, 0, only == Only::kScat3d, only == Only::kScat2d, 0,
                              only == Only::kTin, only == Only::kBorehole);
        if (prepare) prepare(converter);
        GMStoPLX_parse_project(converter);
        GMStoPLX_delete(converter);
        const std::string separator = "S:" + std::string(60, '_') + "\n";
        const std::size_t at = MessageLog::text().rfind(separator);
        return at == std::string::npos ? MessageLog::text()
                                       : MessageLog::text().substr(at + separator.size());
    }
    /// The folder's stored form, in front of a name.
    std::string stored(const std::string& name) const {
        return VXFile(folder.file(name).c_str()).GetFilePath().c_str();
    }
    /// Text of an output, its line ends as LF; "(none)" when it is not there.
    std::string output(const std::string& name) const {
        if (!std::filesystem::exists(folder.path() / "out" / name)) return "(none)";
        std::string text = folder.read("out/" + name);
        std::erase(text, '\r');
        return text;
    }

    TempFolder folder;
};

/// An ASCII dataset file with one step.
inline std::string ascii_dataset(const std::string& type, int id, const std::string& name,
                                 const std::string& values, int count) {
    return "DATASET\nOBJTYPE " + type + "\nBEGSCL\nOBJID " + std::to_string(id) + "\nND " +
           std::to_string(count) + "\nNAME \"" + name + "\"\nTS 0 1.0\n" + values + "ENDDS\n";
}

}  // namespace plx::test
