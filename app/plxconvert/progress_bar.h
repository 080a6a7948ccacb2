#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace plx::tool {

/// One line on standard error that is drawn over again and leaves nothing behind. Does nothing unless
/// switched on.
class ProgressBar {
public:
    explicit ProgressBar(bool on) : on_(on) {}
    ~ProgressBar() { erase(); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// Shows a text without a bar.
    void say(const std::string& text);
    /// Shows `done` of `total` time steps or other things; redrawn at most twenty times a second.
    void show(int done, int total, const char* what = "step");
    void erase();

private:
    void draw(const std::string& text);

    bool on_;
    std::size_t drawn_ = 0;
    std::chrono::steady_clock::time_point last_;
};

}  // namespace plx::tool
