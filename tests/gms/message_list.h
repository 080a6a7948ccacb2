#pragma once

#include <memory>
#include <string>
#include <vector>

#include "plxutils/gms/GMSCallbacks.h"
#include "plxutils/gms/GMStoPLX.h"

namespace plx::test {

/// Lists what the error ("E:") and status ("S:") hooks are given, in order, while it lives. One at a time.
class MessageList {
public:
    using Lines = std::vector<std::string>;

    MessageList() {
        lines().clear();
        GMS_SetErrorFunc([](const char* message) { lines().push_back(std::string("E:") + message); });
        GMS_SetStatusFunc([](const char* message) { lines().push_back(std::string("S:") + message); });
    }
    ~MessageList() {
        GMS_SetErrorFunc(nullptr);
        GMS_SetStatusFunc(nullptr);
    }
    MessageList(const MessageList&) = delete;
    MessageList& operator=(const MessageList&) = delete;

    static Lines& lines() {
        static Lines collected;
        return collected;
    }
    /// The errors only.
    static Lines errors() {
        Lines found;
        for (const std::string& line : lines()) {
            if (line[0] == 'E') found.push_back(line);
        }
        return found;
    }
    /// What has come since the last call.
    static Lines take() {
        Lines taken;
        taken.swap(lines());
        return taken;
    }
};

struct ConverterDeleter {
    void operator()(GMStoPLX* converter) const { GMStoPLX_delete(converter); }
};
using Converter = std::unique_ptr<GMStoPLX, ConverterDeleter>;

}  // namespace plx::test
