#pragma once

#include <cstddef>

namespace bouncecheck {

/// Lines of a notice that are said of one recipient.
struct RecipientBlock {
    /// Their number among the recipients that were stated.
    std::size_t recipient;
    /// That of the line which names them.
    std::size_t indent;
    /// Whether another address stands directly in front, of which nothing is said.
    bool isListed = false;
    /// Whether the mail was for them at first.
    bool isOriginal = false;
    bool hasWords = false;
    /// Whether a blank line has followed.
    bool isListClosed = false;
    /// Whether it followed words that introduce more of them.
    bool isIntroduced = false;

    /// Whether an address in the line below stands in the same list.
    bool isOpenList() const noexcept { return !hasWords && !isListClosed; }
    /// Whether whom the mail was for at first may be named below.
    bool mayBeSentOn() const noexcept { return !isOriginal && !isListed; }
    /// Whether a line with that indent is about them, whoever it names.
    bool isContinuedAt(std::size_t lineIndent) const noexcept {
        return hasWords && !isIntroduced && lineIndent > indent;
    }
    /// Notes a blank line; false where the lines behind it are about somebody else. The last words
    /// may introduce more: "The error was:".
    bool goesOnBehindBlank(bool isIntroduction) noexcept {
        isListClosed = true;
        isIntroduced = hasWords;
        return !hasWords || isIntroduction;
    }
};

}  // namespace bouncecheck
