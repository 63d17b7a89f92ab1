#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "recipients/tables/NoticeCues.h"

namespace bouncecheck {

class Entity;

/// The text of a message that informs people about a delivery, divided into lines, and what its
/// phrases say about each line. In UTF-8, of the text parts that are no report and no returned
/// message; the first HTML part as text where no plain one says anything. `limits::notice`
/// bytes of it are read.
class Notice {
public:
    explicit Notice(const Entity& message);
    // The lines refer into the text.
    Notice(const Notice&) = delete;
    Notice& operator=(const Notice&) = delete;

    struct Line {
        /// Without its line end.
        std::string_view text;
        /// Bits of cues.
        unsigned cues = 0;

        bool isBlank() const noexcept;
        bool has(Cue cue) const noexcept { return (cues >> static_cast<unsigned>(cue) & 1) != 0; }
    };

    /// The lines in front of the returned message.
    const std::vector<Line>& lines() const noexcept { return lines_; }
    /// Whether a line of them has the cue.
    bool has(Cue cue) const noexcept { return (cues_ >> static_cast<unsigned>(cue) & 1) != 0; }
    /// All that they are, as it stands.
    std::string_view text() const noexcept { return text_; }
    /// The message that came back within the text, from its header on; "" without one.
    std::string_view returned() const noexcept { return returned_; }

private:
    void divide(std::string_view text);
    void findCues();
    void cutReturned();
    bool beginsReturned(std::size_t line) const;

    std::string whole_;
    std::string_view text_;
    std::string_view returned_;
    std::vector<Line> lines_;
    unsigned cues_ = 0;
};

/// `text`, which has no line end, as a line with its cues.
Notice::Line cuesIn(std::string_view text);

}  // namespace bouncecheck
