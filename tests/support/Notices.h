#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mime/Entity.h"
#include "recipients/Recipients.h"

namespace bouncecheck {

/// A part of a multipart whose boundary is "b".
inline std::string part(const std::string& type, const std::string& body) {
    return "--b\nContent-Type: " + type + "\n\n" + body + "\n";
}

inline std::string report(const std::string& parts, const std::string& header = "") {
    return header + "Content-Type: multipart/report; boundary=b\n\n" + parts + "--b--\n";
}

inline std::string statusReport(const std::string& status) {
    return report(part("text/plain", "Sorry.") + part("message/delivery-status", status));
}

/// A notice to me@own.example with that text.
inline std::string notice(const std::string& text, const std::string& type = "text/plain") {
    return "From: Mail System <MAILER-DAEMON@mx.example>\nTo: me@own.example\n"
           "Subject: Returned mail\nContent-Type: " +
           type + "\n\n" + text;
}

/// What `write` makes of each, with "; " between.
template <class Write>
std::string joined(const std::vector<Recipient>& recipients, Write write) {
    std::string all;
    for (const Recipient& recipient : recipients) {
        if (!all.empty()) all += "; ";
        all += recipient.address;
        if (!recipient.finalAddress.empty()) all += "->" + recipient.finalAddress;
        write(all, recipient);
    }
    return all;
}

/// "user@x.example failed text", one after the other.
inline std::string named(const std::string& message) {
    return joined(recipientsOf(Entity(message)), [](std::string& all, const Recipient& recipient) {
        all.append(" ").append(nameOf(recipient.outcome));
        all.append(" ").append(nameOf(recipient.source));
    });
}

/// "user@x.example unknown-mailbox suppress", one after the other.
inline std::string advised(const std::string& message) {
    return joined(recipientsOf(Entity(message)), [](std::string& all, const Recipient& recipient) {
        all.append(" ").append(nameOf(recipient.reason));
        all.append(" ").append(nameOf(recipient.advice));
    });
}

/// The addresses alone.
inline std::string addressesIn(const std::string& message) {
    return joined(recipientsOf(Entity(message)), [](std::string&, const Recipient&) {});
}

}  // namespace bouncecheck
