#pragma once

#include <cstddef>

/// How far a message is taken apart.
namespace bouncecheck::limits {

/// Multiparts inside each other, the message's own included. Real mail has
/// under ten; the bound keeps walks over the tree shallow. Deeper ones are
/// leaves, whose body is their text.
inline constexpr std::size_t nesting = 64;

/// Parts of one message at all levels. Real mail has under a thousand. Those
/// beyond stay in the raw text of the multipart that they stand in.
inline constexpr std::size_t parts = 10'000;

/// Header fields of one message at all levels, and fields of one report. Real mail
/// has under a thousand; each takes several times the memory of a short line.
/// Those beyond are not read.
inline constexpr std::size_t headerFields = 100'000;

/// Bytes of one field's value. Mail servers take headers of a tenth of that, some
/// as much. What is beyond is not read.
inline constexpr std::size_t fieldValue = 1'048'576;

/// Line ends of a message or a decoded body that are no CRLF yet. Each makes the text
/// longer, one of line ends alone by its own size. What is beyond is not read.
inline constexpr std::size_t lineEnds = 2'097'152;

/// Bytes by which text of another charset may become longer as UTF-8: two million
/// Cyrillic letters make it so, or one million Thai ones. A text of such letters alone
/// can take three times its size. What is beyond is not read.
inline constexpr std::size_t charsetGrowth = 2'097'152;

/// Bytes of an HTML body's text. What is beyond is not read.
inline constexpr std::size_t htmlText = 8'388'608;

/// Words of the name in one mailbox. Those beyond are not read.
inline constexpr std::size_t mailboxWords = 1'000;

/// Parameters of one header field, continuations counted each. Putting
/// continuations in order costs more than linear time without a bound. Those
/// beyond are not read.
inline constexpr std::size_t parameters = 128;

/// Bytes of all facts that one message states, ten thousand recipients with their
/// diagnostics among them. What is beyond is not read.
inline constexpr std::size_t facts = 4'194'304;

/// Recipients that are kept of one report. Servers split a message into
/// deliveries of at most a thousand or so. Those beyond are not read.
inline constexpr std::size_t recipients = 10'000;

/// Bytes of the text that informs people whom a message did not reach. Such notices
/// have a few KB. What is beyond is not read.
inline constexpr std::size_t notice = 262'144;

/// Fields that are kept of a complaint or a receipt, which have about fifteen.
inline constexpr std::size_t reportFields = 1'000;

}  // namespace bouncecheck::limits
