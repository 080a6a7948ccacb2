#pragma once

#include <algorithm>
#include <cstdio>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "gms/datasets.h"
#include "plxutils/gms/GMSCallbacks.h"
#include "plxutils/gms/GMStoPLX.h"
#include "support/temp_folder.h"

namespace plx::test {

using Lines = std::vector<std::string>;

/// Lists what the error ("E:") and status ("S:") hooks are given, in order, while it lives. One at a time.
class MessageLog {
public:
    MessageLog() {
        lines().clear();
        GMS_SetErrorFunc([](const char* message) { lines().push_back(std::string("E:") + message); });
        GMS_SetStatusFunc([](const char* message) { lines().push_back(std::string("S:") + message); });
    }
    ~MessageLog() {
        GMS_SetErrorFunc(nullptr);
        GMS_SetStatusFunc(nullptr);
    }
    static Lines& lines() {
        static Lines collected;
        return collected;
    }
    /// What has come since the last call.
    static Lines take() { return std::exchange(lines(), {}); }
    static std::string text() {
        std::string joined;
        for (const std::string& line : lines()) joined += line;
        return joined;
    }
};

struct ConverterDeleter {
    void operator()(GMStoPLX* converter) const { GMStoPLX_delete(converter); }
};
using Converter = std::unique_ptr<GMStoPLX, ConverterDeleter>;

inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

/// A reader's result as one text: its messages with the path as P, then each dataset with its steps, such as
/// "[depth id 3.01 | 5: 1 2; cells 10]" (the first ten cells).
template <class Reader>
std::string outcome(Reader reader, const std::string& path, bool lenient) {
    const MessageLog log;
    DataSetList list;
    std::string result = reader(path.c_str(), list, lenient) ? "ok " : "failed ";
    result += replaced(MessageLog::text(), path, "P");
    const auto add = [&result](const char* before, double v) {
        char digits[32];
        std::snprintf(digits, sizeof digits, "%s%g", before, v);
        result += digits;
    };
    for (const auto& set : list) {
        result += "[" + std::string(set->name);
        add(" id ", set->Key());
        for (int i = 0; i < set->timeSteps.GetCount(); ++i) {
            const TimeStep& step = *set->timeSteps.GetAt(i);
            add(" | ", step.time);
            result += ":";
            for (int at = 0; at < step.numValues * step.components; ++at)
                add(at % step.components ? "," : " ", step.Value(at / step.components, at % step.components));
            if (step.numCells > 0) result += "; cells ";
            for (int cell = 0; cell < std::min(step.numCells, 10); ++cell)
                result += step.Active(cell) ? '1' : '0';
        }
        result += "]";
    }
    return result;
}

/// The builder that a test looks at; the others are switched off.
enum class Only { kScat3d, kScat2d, kTin, kBorehole };

/// A project in a folder of its own that is converted into the folder's "out".
class SmallProject {
public:
    using Files = std::initializer_list<std::pair<std::string, std::string>>;

    explicit SmallProject(Files files = {}) {
        std::filesystem::create_directory(folder.path() / "out");
        write(files);
    }
    void write(Files files) const {
        for (const auto& [name, text] : files) folder.write(name, text);
    }
    /// Converts a project file of the folder and returns the messages from the builder's announcement on, the
    /// folder's stored form as <folder>.
    std::string convert(const char* project, Only only,
                        const std::function<void(GMStoPLX*)>& prepare = {}) const {
        const MessageLog log;
        const Converter converter(GMStoPLX_new());
        GMStoPLX_Set_Project(converter.get(), folder.file(project).c_str());
        GMStoPLX_Set_Destination(converter.get(), folder.file("out").c_str());
        GMStoPLX_Object_Types(converter.get(), 0, 0, 0, 0, only == Only::kScat3d, only == Only::kScat2d, 0,
                              only == Only::kTin, only == Only::kBorehole);
        if (prepare) prepare(converter.get());
        GMStoPLX_parse_project(converter.get());
        const String stored = VXFile(folder.path().string().c_str()).GetFilePath();
        const std::string separator = "S:" + std::string(60, '_') + "\n";
        const std::string text = replaced(MessageLog::text(), stored.c_str(), "<folder>");
        const std::size_t at = text.rfind(separator);
        return at == std::string::npos ? text : text.substr(at + separator.size());
    }
    /// Text of an output, its line ends as LF; "(none)" when it is not there.
    std::string output(const std::string& name) const {
        return std::filesystem::exists(folder.path() / "out" / name) ? folder.text("out/" + name) : "(none)";
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
