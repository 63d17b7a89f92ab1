#include "tool/Progress.h"

#include <array>
#include <cstdio>
#include <ostream>
#include <string_view>

namespace bouncecheck {

void Progress::update(std::size_t bytes, double fraction) {
    ++messages_;
    bytes_ += static_cast<double>(bytes);
    if (!isShown_) return;
    const Clock::time_point now = Clock::now();
    if (now < next_) return;
    next_ = now + std::chrono::milliseconds(200);
    const double seconds = std::chrono::duration<double>(now - start_).count();
    std::array<char, 160> line;
    int size = std::snprintf(line.data(), line.size(), "%zu messages, %.0f/s, %.1f MB/s", messages_,
                             static_cast<double>(messages_) / seconds, bytes_ / seconds / 1e6);
    if (fraction > 0 && size > 0) {
        const double left = seconds * (1 - fraction) / fraction;
        const auto whole = static_cast<long long>(left);
        const auto used = static_cast<std::size_t>(size);
        size +=
            std::snprintf(line.data() + used, line.size() - used, ", %.0f%% done, %lld:%02lld left",
                          100 * fraction, whole / 60, whole % 60);
    }
    err_ << '\r' << std::string_view(line.data(), static_cast<std::size_t>(size)) << "\x1b[K"
         << std::flush;
    hasLine_ = true;
}

void Progress::clear() {
    if (hasLine_) err_ << "\r\x1b[K" << std::flush;
    hasLine_ = false;
}

}  // namespace bouncecheck
