#include "plxconvert/progress_bar.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace plx::tool {

void ProgressBar::draw(const std::string& whole) {
    // A line that wraps could not be erased.
    constexpr std::size_t kScreen = 79;
    std::size_t shown = std::min(whole.size(), kScreen);
    const auto inside_letter = [&whole](std::size_t at) {
        return (static_cast<unsigned char>(whole[at]) & 0xc0) == 0x80;
    };
    while (shown < whole.size() && shown > 0 && inside_letter(shown)) --shown;
    const std::string text = whole.substr(0, shown);
    std::string line = "\r" + text;
    // Blanks rather than a terminal's own codes: every terminal knows them.
    if (text.size() < drawn_) line.append(drawn_ - text.size(), ' ');
    std::fputs(line.c_str(), stderr);
    std::fflush(stderr);
    drawn_ = std::max(drawn_, text.size());
}

void ProgressBar::say(const std::string& text) {
    if (on_) draw(text);
}

void ProgressBar::show(int done, int total, const char* what) {
    if (!on_ || total < 1) return;
    const auto now = std::chrono::steady_clock::now();
    if (done < total && now - last_ < std::chrono::milliseconds(50)) return;
    last_ = now;
    constexpr std::int64_t kWidth = 40;
    const std::int64_t part = std::clamp<std::int64_t>(done, 0, total);
    const auto full = static_cast<std::size_t>(part * kWidth / total);
    draw("[" + std::string(full, '#') + std::string(kWidth - full, '.') + "]  " + what + " " +
         std::to_string(done) + " of " + std::to_string(total));
}

void ProgressBar::erase() {
    if (drawn_ == 0) return;
    draw("");
    std::fputs("\r", stderr);
    std::fflush(stderr);
    drawn_ = 0;
}

}  // namespace plx::tool
