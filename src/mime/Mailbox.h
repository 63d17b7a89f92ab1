#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace bouncecheck {

/// One entry of an address field, in UTF-8.
struct Mailbox {
    /// The display name, else the comment beside a bare address, without quotes
    /// and with encoded words decoded; "" when there is none.
    std::string name;
    /// local-part@domain without brackets, source route, comments and white
    /// space; "" when the entry is only a name.
    std::string address;
};

/// The first `limit` mailboxes of an address field (RFC 5322, section 3.4), read
/// as a person would: brackets may be missing or doubled, quotes and comments
/// left open, commas stand in names; names of groups, and groups without members,
/// do not count.
/// `field` is unfolded, its encoded words as they are. Linear in its size.
std::vector<Mailbox> parseMailboxes(std::string_view field, std::size_t limit);

/// The first mailbox of a From field, as above; one without name and address when there is
/// none. A field of one word is an address rather than a name: a user of the host that
/// wrote it, such as MAILER-DAEMON.
Mailbox parseSender(std::string_view field);

}  // namespace bouncecheck
