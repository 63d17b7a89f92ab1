#include "recipients/ReturnedMail.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "mime/AddressSpans.h"
#include "mime/Mailbox.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// The recipient of the envelope that servers note: "for <a@b.example>; Thu, 1 Jan".
std::string envelopeRecipient(const HeaderField& received) {
    const std::string value = received.unfolded();
    const std::size_t at = value.rfind(" for ");
    if (at == npos) return {};
    const std::string_view rest = std::string_view(value).substr(at);
    const std::vector<AddressSpan> spans = findAddresses(rest.substr(0, rest.find(';')));
    return spans.size() == 1 ? std::string(spans.front().in(rest)) : std::string();
}

}  // namespace

ReturnedMail::ReturnedMail(std::string_view text) : isFound_(!text.empty()) {
    if (!isFound_) return;
    text_ = text.substr(HeaderFields::startIn(text));
    header_ = HeaderFields::ofMessage(text_);
}

std::string ReturnedMail::soleRecipient() const {
    // The first of the fields was written last, nearest to the failure.
    const HeaderField* received = header_.find("Received");
    std::string noted = received ? envelopeRecipient(*received) : std::string();
    // On a list, To names whom somebody answers.
    const bool isOfList = header_.find("List-Id") || header_.find("List-Post");
    if (isOfList && !noted.empty()) return noted;
    std::vector<Mailbox> named;
    for (const HeaderField& field : header_.all()) {
        const bool isAddressee =
            ascii::equalsNoCase(field.name, "To") || ascii::equalsNoCase(field.name, "Cc");
        if (!isAddressee) continue;
        // The end of what is read of a field may cut an address.
        if (field.isCut()) return {};
        std::ranges::move(parseMailboxes(field.unfolded(), 2), std::back_inserter(named));
        if (named.size() > 1) return {};
    }
    if (!named.empty() && findAddresses(named.front().address).size() == 1) {
        return std::move(named.front().address);
    }
    return noted;
}

bool ReturnedMail::isNotice() const {
    const HeaderField* path = header_.find("Return-Path");
    if (path && path->unfolded() == "<>") return true;
    const HeaderField* from = header_.find("From");
    return from && containsNoCase(from->unfolded(), "mailer-daemon");
}

}  // namespace bouncecheck
