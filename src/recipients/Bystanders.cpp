#include "recipients/Bystanders.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "mime/AddressForms.h"
#include "mime/AddressSpans.h"
#include "mime/Entity.h"
#include "mime/HeaderFields.h"
#include "mime/Mailbox.h"
#include "reasons/NamedHost.h"
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
    std::size_t fields = 0;
    for (const HeaderField& field : header.all()) {
        if (!ascii::equalsNoCase(field.name, name)) continue;
        if (set.size() >= mostAddresses || ++fields > mostAddresses) return;
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

/// Adds the address of the list whose identifier is "Name <list.example.org>" (RFC 2919), where
/// '@' stands for the dot that the address has there.
void addList(std::vector<std::string>& set, const HeaderFields& header) {
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
    add(set, std::move(address));
}

}  // namespace

const Bystanders::Addresses& Bystanders::ofSender() const {
    if (ofSender_) return *ofSender_;
    Addresses& all = ofSender_.emplace();
    const HeaderFields& header = reading_.message().header();
    addTo(all, header, "To");
    addTo(all, header, "Delivered-To");
    if (from_ == From::message) return all;
    const HeaderFields& returned = reading_.returned().header();
    addTo(all, returned, "From");
    addTo(all, returned, "Return-Path");
    addTo(all, returned, "Sender");
    return all;
}

const Bystanders::Addresses& Bystanders::ofSystemsAndLists() const {
    if (ofSystemsAndLists_) return *ofSystemsAndLists_;
    Addresses& all = ofSystemsAndLists_.emplace();
    const HeaderFields& header = reading_.message().header();
    addTo(all, header, "From");
    addTo(all, header, "Reply-To");
    if (from_ == From::message) return all;
    const HeaderFields& returned = reading_.returned().header();
    addLinked(all, returned, "List-Post");
    addLinked(all, returned, "List-Unsubscribe");
    addLinked(all, returned, "List-Owner");
    addList(all, returned);
    return all;
}

bool Bystanders::isOfSender(std::string_view address) const { return holds(ofSender(), address); }

bool Bystanders::isDomainOfSenderIn(std::string_view text) const {
    // There are one or two; mail to many is no bounce.
    constexpr std::size_t most = 8;
    const std::span<const std::string> all = ofSender();
    return std::ranges::any_of(
        all.first(std::min(all.size(), most)),
        [&](std::string_view address) { return isHostNamed(text, domainOf(address)); });
}

bool Bystanders::isSystemOrList(std::string_view address) const {
    static constexpr auto daemons = std::to_array<std::string_view>(
        {"mailer-daemon", "mailerdaemon", "mail-daemon", "mdaemon", "noreply", "no-reply"});
    static constexpr auto roles =
        std::to_array<std::string_view>({"postmaster", "abuse", "hostmaster"});
    const auto isLocal = [local = localPartOf(address)](std::string_view known) {
        return ascii::equalsNoCase(local, known);
    };
    if (std::ranges::any_of(daemons, isLocal) || holds(ofSystemsAndLists(), address)) return true;
    if (!std::ranges::any_of(roles, isLocal)) return false;
    const std::string_view sender = domainOf(reading_.message().from().address);
    return sender.empty() || isOfDomain(domainOf(address), sender);
}

}  // namespace bouncecheck
