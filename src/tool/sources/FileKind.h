#pragma once

#include <string_view>

namespace bouncecheck {

/// What a file is known to hold before its first byte is read.
enum class FileKind {
    /// A mailbox when it begins with an envelope, otherwise one message.
    byContent,
    /// One message, which may quote others but is never split.
    message,
    /// A mailbox, even without an envelope in front.
    mailbox,
    /// A stretch of a mailbox, from anywhere on. What a message is does not depend on where the
    /// stretch begins: a Content-Length is not heeded, and lines end in LF or CRLF.
    mailboxPart,
};

/// What the name at the end of `path` says, in any letter case and with or without
/// the ending of a compressed file: "*.eml" is a message, "*.mbox" and "mbox*" are
/// mailboxes. Other names say nothing.
FileKind kindOfName(std::string_view path) noexcept;

/// What a member of an archive or a folder is known to hold: one message in the folders of a
/// Maildir, "cur" and "new"; else as a file of that name.
FileKind kindOfMember(std::string_view path) noexcept;

}  // namespace bouncecheck
