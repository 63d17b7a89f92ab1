#include "recipients/Bystanders.h"

#include <array>

#include "mime/Entity.h"
#include "mime/HeaderFields.h"
#include "mime/Mailbox.h"
#include "recipients/AddressSpans.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// Addresses of one field that are read; mail to more of them is no bounce.
constexpr std::size_t mostAddresses = 100;

void addTo(std::unordered_set<std::string>& set, const HeaderFields& header,
           std::string_view name) {
    for (const HeaderField& field : header.all()) {
        if (set.size() >= mostAddresses) return;
        if (!ascii::equalsNoCase(field.name, name)) continue;
        for (const Mailbox& mailbox : parseMailboxes(field.unfolded(), mostAddresses)) {
            if (!mailbox.address.empty()) set.insert(ascii::lowerCase(mailbox.address));
        }
    }
}

/// Adds the addresses of the links in a field of a list (RFC 2369).
void addLinked(std::unordered_set<std::string>& set, const HeaderFields& header,
               std::string_view name) {
    const HeaderField* field = header.find(name);
    if (!field) return;
    const std::string value = field->unfolded();
    for (const AddressSpan& span : findAddresses(value)) {
        if (set.size() >= 2 * mostAddresses) return;
        set.insert(ascii::lowerCase(span.in(value)));
    }
}

std::string_view localPart(std::string_view address) {
    return address.substr(0, address.rfind('@'));
}
std::string_view domain(std::string_view address) {
    const std::size_t at = address.rfind('@');
    return at == npos ? std::string_view() : address.substr(at + 1);
}

/// Whether `domain` is `other` or a part of it.
bool isWithin(std::string_view domain, std::string_view other) {
    if (other.empty() || !domain.ends_with(other)) return false;
    return domain.size() == other.size() || domain[domain.size() - other.size() - 1] == '.';
}

}  // namespace

Bystanders::Bystanders(const Entity& message) {
    addTo(addressees_, message.header(), "To");
    addTo(addressees_, message.header(), "Delivered-To");
    addTo(others_, message.header(), "From");
    addTo(others_, message.header(), "Reply-To");
    senderDomain_ = ascii::lowerCase(domain(message.from().address));
}

void Bystanders::addReturned(const HeaderFields& header) {
    addTo(addressees_, header, "From");
    addTo(addressees_, header, "Return-Path");
    addTo(addressees_, header, "Sender");
    addLinked(others_, header, "List-Post");
    addLinked(others_, header, "List-Unsubscribe");
    addLinked(others_, header, "List-Owner");
    // "Name <list.example.org>" (RFC 2919) is the list's address where '@' stands for the dot
    // that the address has there.
    const HeaderField* id = header.find("List-Id");
    if (!id) return;
    const std::string value = ascii::lowerCase(id->unfolded());
    const std::size_t begin = value.rfind('<');
    const std::size_t end = value.find('>', begin == npos ? 0 : begin);
    if (begin == npos || end == npos) return;
    std::string address = value.substr(begin + 1, end - begin - 1);
    const std::size_t dot = address.find('.');
    if (dot == npos || contains(address, "@")) return;
    address[dot] = '@';
    others_.insert(std::move(address));
}

bool Bystanders::isAddressee(std::string_view address) const {
    return addressees_.contains(ascii::lowerCase(address));
}

bool Bystanders::isOther(std::string_view address) const {
    const std::string lower = ascii::lowerCase(address);
    if (others_.contains(lower)) return true;
    static constexpr auto daemons = std::to_array<std::string_view>(
        {"mailer-daemon", "mailerdaemon", "mail-daemon", "mdaemon", "noreply", "no-reply"});
    const std::string_view local = localPart(lower);
    for (const std::string_view daemon : daemons) {
        if (local == daemon) return true;
    }
    const bool isRole = local == "postmaster" || local == "abuse" || local == "hostmaster";
    return isRole && (senderDomain_.empty() || isWithin(domain(lower), senderDomain_) ||
                      isWithin(senderDomain_, domain(lower)));
}

}  // namespace bouncecheck
