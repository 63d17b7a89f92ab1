#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "mime/AddressSpans.h"
#include "recipients/tables/NoticeLabels.h"

namespace bouncecheck {

/// How addresses stand in a line of a notice.
class LineShape {
public:
    enum class Kind {
        /// Nothing but addresses, and what lists and links put around them.
        alone,
        /// The line begins with an address, and something is said of it.
        leading,
        /// An SMTP reply that holds an address.
        reply,
        /// A label and an address.
        labelled,
        /// A name and an address in brackets: "Ann Bee <a@b.example>".
        named,
        /// An address among words, or none.
        sentence,
    };

    /// `spans` are the addresses of `line`, which must outlive the shape.
    LineShape(std::string_view line, std::vector<AddressSpan> spans);

    Kind kind() const noexcept { return kind_; }
    std::span<const AddressSpan> spans() const noexcept { return spans_; }
    std::string_view first() const noexcept { return spans_.front().in(line_); }
    /// What follows an address of the line, without the punctuation beside it.
    std::string_view restBehind(const AddressSpan& span) const;
    /// Whether punctuation, such as a colon, stands between a leading address and what is said
    /// of it.
    bool isSeparated() const noexcept { return isSeparated_; }
    /// Whether a reply of SMTP follows a leading address at once: "a@b.example 550 unknown".
    bool isAnswered() const noexcept { return isAnswered_; }
    /// Of a reply: whether only codes are in front of its address: "550 <a@b.example> unknown".
    bool beginsReply() const noexcept;
    /// Of a reply: whether its code is that of a failure.
    bool isFailureReply() const noexcept;
    /// Of a labelled line: what its label says.
    LabelKind label() const noexcept { return label_; }
    /// Whether the line is a label and an address, and nothing else: "Original Sender: <a@b>".
    bool isField() const noexcept { return isField_; }
    /// Whether the label is a command of SMTP: "RCPT TO:".
    bool isCommand() const noexcept { return isCommand_; }
    /// The addresses that belong to the label: the first, and those which only commas divide
    /// from it.
    std::span<const AddressSpan> labelledSpans() const;
    /// Whether only a comma or an "and" stands between the address of that number, which is not
    /// the first, and the one before.
    bool isJoined(std::size_t number) const;
    /// Whether the words in front of `span` say that the address is a sender's.
    bool isOfSender(const AddressSpan& span) const;

private:
    Kind kindOf();
    bool isAlone() const;
    bool isNamed() const;
    bool findLabel(std::string_view before);

    std::string_view line_;
    std::vector<AddressSpan> spans_;
    LabelKind label_ = LabelKind::unlisted;
    bool isSeparated_ = false;
    bool isAnswered_ = false;
    bool isCommand_ = false;
    bool isField_ = false;
    Kind kind_;
};

}  // namespace bouncecheck
