#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
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

    /// Made of what was logged when they are asked for, so not by several threads at once.
    /// Valid until more is logged. Throws std::bad_alloc when memory runs out, and may be asked
    /// again then.
    std::span<const Event> events() const;
    /// Hands the events out and begins anew. Throws as `events` does; nothing is lost then.
    std::vector<Event> takeEvents();
    /// How many contexts are open.
    std::size_t depth() const noexcept { return depth_; }

private:
    /// The kinds of events, those of a long value apart.
    enum class Line : char { enter, leave, info, data, longData, sameLongData };

    BOUNCECHECK_HIDDEN void add(Line line, std::string_view text, std::string_view value = {});
    BOUNCECHECK_HIDDEN void makeEvents() const;
    BOUNCECHECK_HIDDEN Event eventOf(Line line, std::string_view text,
                                     std::string_view value) const;

    /// What was logged: of each line its kind, its text and its value, each with a NUL behind it.
    /// To log is cheap that way, and most traces are read once or never.
    std::string lines_;
    std::size_t lineCount_ = 0;
    /// Values that are too long for that, each once.
    std::vector<ByteStore> longValues_;
    std::size_t depth_ = 0;
    /// Contexts that were entered when there was no memory to record it; leaving them is
    /// not recorded either.
    std::size_t unopened_ = 0;

    mutable std::vector<Event> events_;
    /// How much of the lines and of the long values has become events.
    mutable std::size_t madeBytes_ = 0;
    mutable std::size_t madeLongValues_ = 0;
    /// The events that opened the contexts that are open after the last one, outermost first.
    mutable std::vector<std::size_t> open_;
};

}  // namespace bouncecheck
