#pragma once

#include <optional>

#include "recipients/Bystanders.h"
#include "recipients/Notice.h"
#include "recipients/Origin.h"
#include "recipients/ReturnedMail.h"

namespace bouncecheck {

class Entity;

/// What recipients and facts both read of a message: each part of it once, when it is first asked
/// for. Refers to the message; what it hands out lives as long as both. One thread at a time.
class MessageReading {
public:
    /// What is read once can be given as an entity.
    MessageReading(const Entity& message) noexcept : message_(message) {}
    // What was read refers into it.
    MessageReading(const MessageReading&) = delete;
    MessageReading& operator=(const MessageReading&) = delete;

    const Entity& message() const noexcept { return message_; }
    Author author() const;
    /// Whether a mail system wrote it, for all that is known.
    bool isBySystem() const { return author() != Author::person; }
    /// What the message says to people.
    const Notice& notice() const;
    /// Whether the subject says that mail was not delivered, or not yet.
    bool subjectSaysTrouble() const;
    /// Whether the message is about a delivery: a system wrote it, or its text holds the reply of
    /// one.
    bool isNotice() const;
    /// Whether its first text says that a reply came after the message was sent. That is read
    /// without the rest of what a notice says.
    bool saysReplyToData() const;
    /// Whether all that a server refuses, by the dialogue or the notes in that text, is the sender,
    /// before any recipient was named.
    bool saysReplyToSender() const;
    /// The first message or header attached.
    const ReturnedMail& attached() const;
    /// The same, or else the one that stands in the text of the notice.
    const ReturnedMail& returned() const;
    /// Those whom the message and the returned one mention for other reasons.
    const Bystanders& bystanders() const noexcept { return bystanders_; }

private:
    std::string_view firstText() const;

    const Entity& message_;
    Bystanders bystanders_{*this, Bystanders::From::messageAndReturned};
    mutable std::optional<Author> author_;
    mutable std::optional<Notice> notice_;
    mutable std::optional<bool> subjectSaysTrouble_;
    mutable std::optional<bool> isNotice_;
    mutable std::optional<bool> saysReplyToData_;
    mutable std::optional<bool> saysReplyToSender_;
    mutable std::optional<ReturnedMail> attached_;
    mutable std::optional<ReturnedMail> inNotice_;
};

}  // namespace bouncecheck
