#include "recipients/ReturnedMail.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "mime/Mailbox.h"
#include "mime/ReportBodies.h"
#include "recipients/AddressSpans.h"
#include "recipients/Notice.h"
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

std::string soleRecipientOf(const HeaderFields& header) {
    std::vector<Mailbox> named;
    for (const HeaderField& field : header.all()) {
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
    // The first of the fields was written last, nearest to the failure.
    const HeaderField* received = header.find("Received");
    return received ? envelopeRecipient(*received) : std::string();
}

}  // namespace

ReturnedMail readReturnedMail(std::string_view text) {
    ReturnedMail returned;
    if (text.empty()) return returned;
    returned.isFound = true;
    returned.text = text.substr(HeaderFields::startIn(text));
    returned.header = HeaderFields::ofMessage(returned.text);
    returned.soleRecipient = soleRecipientOf(returned.header);
    const HeaderField* path = returned.header.find("Return-Path");
    const HeaderField* from = returned.header.find("From");
    returned.isNotice = (path && path->unfolded() == "<>") ||
                        (from && containsNoCase(from->unfolded(), "mailer-daemon"));
    return returned;
}

ReturnedMail attachedMail(const Entity& message) {
    return readReturnedMail(bodyOf(message, ReportKind::message, ReportKind::header));
}

ReturnedMail returnedMailOf(const Entity& message, const Notice& notice) {
    ReturnedMail attached = attachedMail(message);
    return attached.isFound ? attached : readReturnedMail(notice.returned());
}

}  // namespace bouncecheck
