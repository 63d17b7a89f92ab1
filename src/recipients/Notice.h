#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "recipients/Cues.h"
#include "recipients/NoticeLine.h"

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

    /// The lines in front of the returned message.
    const std::vector<NoticeLine>& lines() const noexcept { return lines_; }
    /// Those of all these lines.
    Cues cues() const noexcept { return cues_; }
    /// All that they are, as it stands.
    std::string_view text() const noexcept { return text_; }
    /// The message that came back within the text, from its header on; "" without one.
    std::string_view returned() const noexcept { return returned_; }
    /// The paragraph of which a line begins with a reply of SMTP about a failure; "" without one,
    /// or with several that differ.
    std::string_view quotedReply() const;

private:
    std::size_t divide();
    std::size_t announced() const;
    bool announces(std::size_t line) const;
    bool beginsReturned(std::size_t line) const;
    void cut(std::size_t line);

    std::string whole_;
    std::string_view text_;
    std::string_view returned_;
    std::vector<NoticeLine> lines_;
    Cues cues_;
};

}  // namespace bouncecheck
