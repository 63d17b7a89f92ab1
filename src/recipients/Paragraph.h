#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "recipients/Cues.h"
#include "recipients/NoticeLine.h"

namespace bouncecheck {

/// Lines of a notice without a blank one between them, and what they say together. Refers to the
/// notice.
class Paragraph {
public:
    Paragraph() = default;
    /// The first of `lines`, which are not empty.
    explicit Paragraph(std::span<const NoticeLine> lines);

    Cues cues() const noexcept { return cues_; }
    /// What it says from one of its lines on.
    std::string_view from(const NoticeLine& line) const;
    /// Whether it says that something was not delivered, or why not.
    bool reportsFailure() const;

    /// Notes that `sentence` names a recipient; the first one counts.
    void noteNaming(std::string_view sentence) {
        if (naming_.empty()) naming_ = sentence;
    }
    /// Whether `sentence`, in `line` and with `cues`, only goes on behind the one that names who
    /// failed: "a@x.example has gone. Mail reaches us at b@x.example." `lineBefore` may have the
    /// end of that one.
    bool isAside(std::string_view sentence, Cues cues, std::string_view line,
                 std::string_view lineBefore) const;

private:
    std::string_view text_;
    Cues cues_;
    /// Whether it says why; nothing while that has not been asked.
    mutable std::optional<bool> isExplained_;
    std::string_view naming_;
    /// Whether that sentence says that something failed; nothing while that has not been asked.
    mutable std::optional<bool> isTroubleNamed_;
};

}  // namespace bouncecheck
