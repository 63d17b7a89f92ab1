#include "recipients/Bystanders.h"

#include <algorithm>
#include <array>
#include <utility>

#include "mime/Entity.h"
#include "mime/HeaderFields.h"
#include "mime/Mailbox.h"
#include "recipients/AddressSpans.h"
#include "recipients/MessageReading.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// Addresses of one field that are read; mail to more of them is no bounce.
constexpr std::size_t mostAddresses = 100;

bool holds(const std::vector<std::string>& set, std::string_view address) {
    return std::ranges::any_of(
        set, [&](const std::string& known) { return ascii::equalsNoCase(known, address); });
}

void add(std::vector<std::string>& set, std::string address) {
    if (!holds(set, address)) set.push_back(std::move(address));
}

void addTo(std::vector<std::string>& set, const HeaderFields& header, std::string_view name) {
    for (const HeaderField& field : header.all()) {
        if (set.size() >= mostAddresses) return;
        if (!ascii::equalsNoCase(field.name, name)) continue;
        for (Mailbox& mailbox : parseMailboxes(field.unfolded(), mostAddresses)) {
            if (!mailbox.address.empty()) add(set, std::move(mailbox.address));
        }
    }
}

/// Adds the addresses of the links in a field of a list (RFC 2369).
void addLinked(std::vector<std::string>& set, const HeaderFields& header, std::string_view name) {
    const HeaderField* field = header.find(name);
    if (!field) return;
    const std::string value = field->unfolded();
    for (const AddressSpan& span : findAddresses(value)) {
        if (set.size() >= 2 * mostAddresses) return;
        add(set, std::string(span.in(value)));
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

const Bystanders::Addresses& Bystanders::known() const {
    if (known_) return *known_;
    Addresses& known = known_.emplace();
    const HeaderFields& header = reading_.message().header();
    addTo(known.addressees, header, "To");
    addTo(known.addressees, header, "Delivered-To");
    addTo(known.others, header, "From");
    addTo(known.others, header, "Reply-To");
    if (from_ == From::messageAndReturned) addReturned(known, reading_.returned().header());
    return known;
}

void Bystanders::addReturned(Addresses& known, const HeaderFields& header) {
    addTo(known.addressees, header, "From");
    addTo(known.addressees, header, "Return-Path");
    addTo(known.addressees, header, "Sender");
    addLinked(known.others, header, "List-Post");
    addLinked(known.others, header, "List-Unsubscribe");
    addLinked(known.others, header, "List-Owner");
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
    add(known.others, std::move(address));
}

bool Bystanders::isAddressee(std::string_view address) const {
    return holds(known().addressees, address);
}

bool Bystanders::isOther(std::string_view address) const {
    static constexpr auto daemons = std::to_array<std::string_view>(
        {"mailer-daemon", "mailerdaemon", "mail-daemon", "mdaemon", "noreply", "no-reply"});
    static constexpr auto roles =
        std::to_array<std::string_view>({"postmaster", "abuse", "hostmaster"});
    const auto isLocal = [local = localPart(address)](std::string_view known) {
        return ascii::equalsNoCase(local, known);
    };
    if (std::ranges::any_of(daemons, isLocal) || holds(known().others, address)) return true;
    if (!std::ranges::any_of(roles, isLocal)) return false;
    const std::string own = ascii::lowerCase(domain(address));
    const std::string sender = ascii::lowerCase(domain(reading_.message().from().address));
    return sender.empty() || isWithin(own, sender) || isWithin(sender, own);
}

}  // namespace bouncecheck
