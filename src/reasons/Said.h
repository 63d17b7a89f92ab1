#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "reasons/Words.h"

namespace bouncecheck {

/// Words of a reply, and of whom they are said, by what stands in front of them.
class Said {
public:
    /// The words at the byte `at` of `text`, which outlives this.
    Said(std::string_view text, std::size_t at) : front_(textBefore(text, at)) {}

    /// Whether they are said of `name`, which is called one of `kinds` there, or begins the reply:
    /// "The domain x.example does not exist", "550 User \"ann\" unknown". Not where something of it
    /// is meant: "the key of user ann is not found".
    bool isOf(std::string_view name, std::span<const std::string_view> kinds) const;
    /// The same of what is somebody's: "The account for ann is closed", "mailbox of user ann".
    bool isOfOwned(std::string_view name, std::span<const std::string_view> kinds) const;
    /// Whether they are said of no more than one of `kinds`, with which a sentence begins: "La
    /// cuenta no existe", but not "La clave de la cuenta". The kinds are as ReplyText has them.
    bool isOfKind(std::span<const std::string_view> kinds) const;
    /// The same where a name stands between: "La cuenta de correo <ann@x.example> no existe".
    bool isOfNamedKind(std::string_view name, std::span<const std::string_view> kinds) const;
    /// Whether they begin a sentence, or are said of no more than one of `kinds`, by a "we" at
    /// most: "Not found: ann", "Recipient is unknown: ann", but not "Key not found: ann".
    bool isOfNothingElse(std::span<const std::string_view> kinds) const;
    /// Whether "Sender:", or what else belongs to the sender's side, stands right in front of them:
    /// "Reply-To: address unknown", "HELO-Adresse unbekannt".
    bool isOfSender() const;

    /// Whether the words, which begin with a mailbox, are said of something of it that is none of
    /// `kinds`: "License for user unknown", but not "Mailbox of user unknown".
    bool isOfPart(std::span<const std::string_view> kinds) const;
    /// Whether the words, which begin with a mailbox, only suppose something of it: "if the mailbox
    /// was deleted".
    bool isSupposed() const;

private:
    std::string_view front_;
};

}  // namespace bouncecheck
