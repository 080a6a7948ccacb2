#pragma once

#include <algorithm>
#include <cstdio>
#include <string>

#include "gms/datasets.h"
#include "plxutils/gms/GMSCallbacks.h"

namespace plx::test {

/// Collects what the error and status hooks are given, until it is destroyed. One at a time.
class MessageLog {
public:
    MessageLog() {
        text().clear();
        GMS_SetErrorFunc([](const char* message) { text() += std::string("E:") + message; });
        GMS_SetStatusFunc([](const char* message) { text() += std::string("S:") + message; });
    }
    ~MessageLog() {
        GMS_SetErrorFunc(nullptr);
        GMS_SetStatusFunc(nullptr);
    }
    static std::string& text() {
        static std::string collected;
        return collected;
    }
};

/// A reader's result as one text: its messages, then each dataset with its steps, such as
/// "[depth id 3.01 | 5: 1 2; cells 10]" (the first ten cells).
inline std::string describe(const DataSetList& list) {
    std::string result;
    const auto number = [](double v) {
        char digits[32];
        std::snprintf(digits, sizeof digits, "%g", v);
        return std::string(digits);
    };
    for (const auto& set : list) {
        result += "[" + std::string(set->name) + " id " + number(set->Key());
        for (int i = 0; i < set->timeSteps.GetCount(); ++i) {
            const TimeStep& step = *set->timeSteps.GetAt(i);
            result += " | " + number(step.time) + ":";
            for (int row = 0; row < step.numValues; ++row) {
                for (int c = 0; c < step.components; ++c)
                    result += (c ? "," : " ") + number(step.Value(row, c));
            }
            if (step.numCells > 0) result += "; cells ";
            for (int cell = 0; cell < std::min(step.numCells, 10); ++cell)
                result += step.Active(cell) ? '1' : '0';
        }
        result += "]";
    }
    return result;
}

/// What a reader makes of a file.
template <class Reader>
std::string outcome(Reader reader, const std::string& path, bool lenient) {
    const MessageLog log;
    DataSetList list;
    const bool good = reader(path.c_str(), list, lenient);
    return (good ? "ok " : "failed ") + MessageLog::text() + describe(list);
}

}  // namespace plx::test
