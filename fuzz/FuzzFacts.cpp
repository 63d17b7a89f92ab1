// Facts, recipients and the dates among them: UTF-8, no more of them than the message can state,
// the same however its lines end, and the same when asked again. No address is made up.

#include <algorithm>

#include <bouncecheck/Limits.h>
#include "facts/FactsOf.h"
#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "mime/Entity.h"
#include "mime/MailDate.h"
#include "recipients/Recipients.h"
#include "text/Ascii.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck::fuzz {
namespace {

/// Calls `take` with every text of the facts.
template <class Take>
void forEachText(const Facts& facts, const std::vector<Recipient>& recipients, Take take) {
    for (const Recipient& recipient : recipients) {
        for (const std::string Recipient::*member :
             {&Recipient::address, &Recipient::finalAddress, &Recipient::status,
              &Recipient::diagnostic, &Recipient::remoteMta, &Recipient::lastAttempt,
              &Recipient::willRetryUntil, &Recipient::quote}) {
            take(recipient.*member);
        }
    }
    take(facts.reportingMta);
    for (const ReportField& field : facts.report) {
        take(field.name);
        take(field.value);
    }
    for (const std::string ReturnedMessage::*member :
         {&ReturnedMessage::messageId, &ReturnedMessage::from, &ReturnedMessage::to,
          &ReturnedMessage::subject, &ReturnedMessage::date, &ReturnedMessage::listId,
          &ReturnedMessage::returnPath}) {
        take(facts.returned.*member);
    }
}

/// Whether the text of a message of `lines` may differ from what stands in them.
bool mayBeDecoded(const std::string& lines) {
    return containsNoCase(lines, "content-transfer-encoding") || containsNoCase(lines, "html") ||
           !std::ranges::all_of(lines, ascii::isAscii);
}

const std::vector<VerpPattern>& verpPatterns() {
    static const std::vector<VerpPattern> patterns = {
        *VerpPattern::parse("bounces+{local}={domain}@lists.example.org"),
        *VerpPattern::parse("b-{tag}@x.example"), *VerpPattern::parse("{local}@{domain}")};
    return patterns;
}

void tryDate(const std::string& text) {
    const auto seconds = parseMailDate(ExactBytes(text).view());
    constexpr std::int64_t year = std::int64_t{366} * 86'400;
    require(!seconds || (*seconds > -72 * year && *seconds < 8031 * year), "a date is of this age");
}

}  // namespace
}  // namespace bouncecheck::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bouncecheck;
    using namespace bouncecheck::fuzz;
    std::string lines(Input(data, size).rest());
    std::erase(lines, '\r');
    const Entity email(lines);
    const Facts facts = factsOf(email);
    const std::vector<Recipient> recipients = recipientsOf(email);
    std::size_t bytes = 0;
    forEachText(facts, recipients, [&](const std::string& text) {
        bytes += text.size();
        require(isUtf8(text), "a fact is UTF-8");
        tryDate(text);
    });
    // A byte of some charsets is three characters of three bytes, what is said of a recipient may
    // be stated again as its evidence, and a reply may be that to many.
    require(bytes <= 32 * lines.size() + 200'000, "there is no more than the message states");
    require(bytes <= 3 * limits::facts, "the facts keep to their budget");
    require(recipients.size() <= lines.size() && facts.report.size() <= lines.size(),
            "each recipient and field stands in the message");
    for (const Recipient& recipient : recipients) {
        require(recipient.address.find('@') != std::string::npos, "a recipient has an address");
        require(recipient.address.find_first_of("\r\n") == std::string::npos,
                "an address stands in one line");
        require(recipient.source != RecipientSource::text || mayBeDecoded(lines) ||
                    containsNoCase(lines, recipient.address),
                "an address of the text stands in it");
        require(recipient.advice != Advice::suppress || recipient.basis != ReasonBasis::none,
                "nobody is suppressed without evidence");
    }
    const std::vector<Recipient> returned = recipientsOf(email, verpPatterns());
    for (const Recipient& recipient : returned) {
        require(isUtf8(recipient.address) && isUtf8(recipient.tag), "VERP gives UTF-8");
        require(!recipient.address.empty() || !recipient.tag.empty(),
                "a recipient has an address or a tag");
    }
    require(recipientsOf(email, verpPatterns()) == returned, "asked again, VERP gives the same");
    require(factsOf(email) == facts && recipientsOf(email) == recipients,
            "asked again, the facts are the same");

    std::string wire;
    for (const char c : lines) wire.append(c == '\n' ? "\r" : "").append(1, c);
    std::string old = lines;
    std::ranges::replace(old, '\n', '\r');
    for (std::string* other : {&wire, &old}) {
        const Entity stored(std::move(*other));
        require(factsOf(stored) == facts && recipientsOf(stored) == recipients,
                "line ends do not matter");
    }
    return 0;
}
