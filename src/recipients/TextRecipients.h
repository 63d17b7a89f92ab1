#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "recipients/Bystanders.h"
#include "recipients/Notice.h"

namespace bouncecheck {

/// A recipient whom a notice names.
struct TextRecipient {
    std::string address;
    /// Another address that the mail was sent on to.
    std::string finalAddress{};
    /// What the notice says of the recipient, line by line.
    std::string said{};
    /// Whether nothing says why the address stands there, or which of two a sentence is about.
    bool isLone = false;
    /// Whether others may have been reached behind the address: it is an alias, or a list.
    bool isAlias = false;
};

/// Whom the text of `notice`, which is about mail that was not delivered, names as not reached, in
/// its order, each once.
///
/// Addresses are known by the shape of the lines that they stand in: alone on a line, in front
/// of the reply to them, behind a label, in a line of an SMTP dialogue, and, where there is none
/// of these, in a sentence that says that the address was not reached. What follows an address
/// up to a blank line or the next address is said of it. Those to whom the notice was sent, who
/// are among `others`, are named only where something is said of them.
///
/// Linear in the size of the text, with `limits::recipients` at most.
std::vector<TextRecipient> recipientsNamedIn(const Notice& notice, const Bystanders& others);

}  // namespace bouncecheck
