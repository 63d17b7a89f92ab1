#pragma once

#include <chrono>
#include <cstddef>
#include <iosfwd>

namespace bouncecheck {

/// Shows on a terminal how far the work is, at what rate it goes and how long it
/// will take, once it has taken over a second.
class Progress {
public:
    /// Nothing is shown when `isShown` is false.
    Progress(std::ostream& err, bool isShown) noexcept : err_(err), isShown_(isShown) {}
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { clear(); }

    /// One more message of `bytes`; `fraction` of the whole is done, 0 when that is
    /// not known.
    void update(std::size_t bytes, double fraction);
    /// Takes the line away, for something else to be written.
    void clear();

private:
    using Clock = std::chrono::steady_clock;

    std::ostream& err_;
    bool isShown_;
    bool hasLine_ = false;
    std::size_t messages_ = 0;
    double bytes_ = 0;
    Clock::time_point start_ = Clock::now();
    Clock::time_point next_ = start_ + std::chrono::seconds(1);
};

}  // namespace bouncecheck
