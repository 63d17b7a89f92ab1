#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace bouncecheck {

/// Whether the word at `at` of a reply, of `length` bytes, is said of a host by its IP address:
/// "Mail from 192.0.2.1 is blocked", "blocked: [2001:db8::1]".
bool isSaidOfHost(std::string_view text, std::size_t at, std::size_t length);

/// Whether the words at `at` of a reply are said of `name`, which is called one of `kinds` there,
/// or begins the reply: "The domain x.example does not exist", "550 User \"ann\" unknown". Not
/// where something of it is meant: "the key of user ann is not found".
bool isSaidOf(std::string_view text, std::size_t at, std::string_view name,
              std::span<const std::string_view> kinds);

/// The same of what is somebody's: "The account for ann is closed", "mailbox of user ann".
bool isSaidOfOwned(std::string_view text, std::size_t at, std::string_view name,
                   std::span<const std::string_view> kinds);

/// Whether the words at `at` of a reply are said of no more than one of `kinds`, with which a
/// sentence begins: "La cuenta no existe", but not "La clave de la cuenta". The kinds are as
/// ReplyText has them.
bool isSaidOfKind(std::string_view text, std::size_t at, std::span<const std::string_view> kinds);

/// The same where a name stands between: "La cuenta de correo <ann@x.example> no existe".
bool isSaidOfNamedKind(std::string_view text, std::size_t at, std::string_view name,
                       std::span<const std::string_view> kinds);

/// Whether "Sender:", or what else belongs to the sender's side, stands right in front of the words
/// at `at`: "Reply-To: address unknown", "HELO-Adresse unbekannt".
bool isSaidOfSender(std::string_view text, std::size_t at);

/// Whether the words at `at`, which begin with a mailbox, are said of something of it that is none
/// of `kinds`: "License for user unknown", but not "Mailbox of user unknown".
bool isSaidOfPart(std::string_view text, std::size_t at, std::span<const std::string_view> kinds);

/// Whether the words at `at`, which begin with a mailbox, only suppose something of it: "if the
/// mailbox was deleted".
bool isSupposed(std::string_view text, std::size_t at);

/// Whether the words at `at` begin a sentence, or are said of no more than one of `kinds`, by a
/// "we" at most: "Not found: ann", "Recipient is unknown: ann", but not "Key not found: ann".
bool isSaidOfNothingElse(std::string_view text, std::size_t at,
                         std::span<const std::string_view> kinds);

/// Whether a sentence ends at `at`, or goes on with no more than "here".
bool endsClause(std::string_view text, std::size_t at);

/// Whether the words that end at `at` go on in a way that makes them less: "at the moment".
bool goesOnOtherwise(std::string_view text, std::size_t at);

/// Whether `name` is the next word behind `at`, and ends the sentence: "No user ann", "No mailbox
/// <ann@x.example>".
bool isFollowedBy(std::string_view text, std::size_t at, std::string_view name);

/// Whether `text` has `host`, or one within it, as a word of its own, and not as the domain of an
/// address.
bool isNamed(std::string_view text, std::string_view host);

}  // namespace bouncecheck
