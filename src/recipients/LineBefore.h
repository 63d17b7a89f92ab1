#pragma once

#include <string_view>

#include "recipients/Cues.h"

namespace bouncecheck {

/// The last line of a notice that was not blank, and what it says of the addresses below it. Refers
/// to the notice.
class LineBefore {
public:
    /// Puts the line `text`, which has `cues`, in its place. `goesOn`: within a paragraph.
    void replace(std::string_view text, Cues cues, bool goesOn);

    /// Without white space around it; "" in front of the first line.
    std::string_view text() const noexcept { return text_; }
    bool reportsFailure() const noexcept { return cues_.has(Cue::failure); }
    /// Whether it reports a failure or a delay.
    bool reportsTrouble() const noexcept { return cues_.haveTrouble(); }
    /// Whether it ends with a colon.
    bool isIntroduction() const noexcept;
    /// The whole line, where it is the heading of a list and says why mail failed; else "".
    std::string_view heading() const;
    /// Whether it ends a heading of two lines whose last sentence begins in the first and says why
    /// mail failed: "The addresses below are unknown (please check\nthem):".
    bool endsLongHeading() const;
    /// Whether the addresses are those of people who help: "Please contact:".
    bool tellsContact() const;
    /// Whether an address of the sender may follow: "A message that you sent"
    bool isAboutSender() const noexcept { return cues_.has(Cue::sender) && !reportsFailure(); }
    /// Whether it ends as in front of somebody who sent something: "A message sent by".
    bool endsWithFrom() const noexcept;

private:
    std::string_view text_;
    /// The line in front of it, of the same paragraph.
    std::string_view front_;
    Cues cues_;
};

}  // namespace bouncecheck
