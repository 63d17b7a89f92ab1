#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include <bouncecheck/ByteStore.h>
#include <bouncecheck/Export.h>
#include <bouncecheck/LogBase.h>

namespace bouncecheck {

/// A log that keeps every event in memory, in order.
///
/// Warnings and errors are kept as information lines. The texts are copies; a
/// null text reads as "".
class BOUNCECHECK_EXPORT LogTrace final : public LogBase {
public:
    enum class Kind { enter, leave, info, data };

    struct Event {
        Kind kind;
        /// The context's name (both for enter and leave), the line, or the tag.
        std::string text;
        /// The value of a tag, else empty. Events hold a long text once that is logged
        /// several times in a row.
        ByteStore value;

        bool operator==(const Event&) const = default;
    };

    void LogInfo(const char* text) override;
    void LogWarning(const char* text) override;
    void LogError(const char* text) override;
    void EnterContext(const char* name, bool show) override;
    void LeaveContext() override;
    void LogData(const char* tag, const char* value) override;

    std::span<const Event> events() const noexcept { return events_; }
    /// Hands the events out and begins anew.
    std::vector<Event> takeEvents() noexcept;
    /// How many contexts are open.
    std::size_t depth() const noexcept { return open_.size(); }

private:
    BOUNCECHECK_HIDDEN ByteStore valueOf(const char* value);

    std::vector<Event> events_;
    /// The last value that was long.
    ByteStore longValue_;
    /// The events that opened the contexts that are open, outermost first.
    std::vector<std::size_t> open_;
    /// Contexts that were entered when there was no memory to record it; leaving them is
    /// not recorded either.
    std::size_t unopened_ = 0;
};

}  // namespace bouncecheck
