#include "recipients/ReportRecipients.h"

#include <array>
#include <utility>

#include "mime/AddressForms.h"
#include "mime/AddressSpans.h"
#include "mime/HeaderFields.h"
#include "text/Ascii.h"
#include "text/ByteSet.h"
#include "text/Controls.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

constexpr ByteSet blanks(" \t");
constexpr ByteSet wordEnds(" \t(");
/// What the type in front of a value has not.
constexpr ByteSet noTypeBytes("@ \t<\"");

bool hasOneOf(const ByteSet& set, std::string_view text) {
    return lengthBefore(set, text) < text.size();
}

std::string_view firstWord(std::string_view text) {
    return text.substr(0, lengthBefore(wordEnds, text));
}

std::string nameIn(std::string_view value) { return std::string(withoutType(value)); }

/// "mx.x.example" of "dns; mx.x.example (192.0.2.1, the server for the domain)"; all where the
/// first word is no name or number of a host.
std::string hostIn(std::string_view value) {
    value = ascii::trim(withoutType(value));
    std::string_view host = value;
    if (host.starts_with('(')) host.remove_prefix(1);
    host = host.substr(0, host.find_first_of(" \t(),"));
    if (!contains(host, ".") && !contains(host, ":")) return std::string(value);
    if (host.ends_with('.')) host.remove_suffix(1);
    return std::string(host);
}

std::string actionIn(std::string_view value) { return ascii::lowerCase(firstWord(value)); }
std::string codeIn(std::string_view value) { return std::string(firstWord(value)); }
std::string wholeOf(std::string_view value) { return std::string(value); }

struct RecipientField {
    std::string_view name;
    std::string ReportedRecipient::*member;
    std::string (*read)(std::string_view);
};

constexpr auto recipientFields = std::to_array<RecipientField>({
    {"Original-Recipient", &ReportedRecipient::original, reportedAddress},
    {"Final-Recipient", &ReportedRecipient::final, reportedAddress},
    {"Action", &ReportedRecipient::action, actionIn},
    {"Status", &ReportedRecipient::status, codeIn},
    {"Diagnostic-Code", &ReportedRecipient::diagnostic, nameIn},
    {"Remote-MTA", &ReportedRecipient::remoteMta, hostIn},
    {"Last-Attempt-Date", &ReportedRecipient::lastAttempt, wholeOf},
    {"Will-Retry-Until", &ReportedRecipient::willRetryUntil, wholeOf},
});

const RecipientField* recipientField(std::string_view name) {
    for (const RecipientField& field : recipientFields) {
        if (ascii::equalsNoCase(field.name, name)) return &field;
    }
    return nullptr;
}

/// Collects the recipients of a delivery status, group by group.
class GroupReader {
public:
    GroupReader(std::vector<ReportedRecipient>& recipients, TextBudget& budget)
        : recipients_(recipients), budget_(budget) {}

    /// Takes the `fields` between two blank lines; false when no more are kept.
    bool take(const HeaderFields& fields) {
        inGroup_ = false;
        for (const HeaderField& field : fields.all()) {
            if (field.isCut()) continue;
            const RecipientField* known = recipientField(field.name);
            if (known && !take(*known, field)) return false;
        }
        return true;
    }

private:
    bool take(const RecipientField& known, const HeaderField& field) {
        const auto index = static_cast<std::size_t>(&known - recipientFields.data());
        const bool namesRecipient = index < 2;
        // In a group only another address begins the next recipient; in a new one, any field that
        // the last has already does so, too.
        const bool isGiven = given_[index];
        const bool begins = inGroup_ ? namesRecipient && isGiven : namesRecipient || isGiven;
        const bool isNext = recipients_.empty() || (isNamed_ && begins);
        if (isNext) {
            const bool isFull = recipients_.size() >= limits::recipients;
            if (isFull || !budget_.spend(sizeof(ReportedRecipient))) return false;
            recipients_.emplace_back();
            given_ = {};
            isNamed_ = false;
        }
        inGroup_ = true;
        isNamed_ = isNamed_ || namesRecipient;
        std::string& value = recipients_.back().*known.member;
        if (!std::exchange(given_[index], true) && value.empty()) {
            value = budget_.keep(known.read(field.decodedIn(room_)));
        }
        return !budget_.isSpent();
    }

    std::vector<ReportedRecipient>& recipients_;
    TextBudget& budget_;
    std::string room_;
    /// Whether the last recipient has fields of the group that is being read.
    bool inGroup_ = false;
    /// Which fields it has.
    std::array<bool, recipientFields.size()> given_{};
    /// Whether the last recipient has an address field, of whatever value.
    bool isNamed_ = false;
};

}  // namespace

std::string_view withoutType(std::string_view value) {
    const std::size_t end = value.find(';');
    const std::string_view type = ascii::trim(value.substr(0, end));
    // A ';' behind an '@' or a blank belongs to a value without a type.
    if (end == npos || hasOneOf(noTypeBytes, type)) return value;
    return ascii::trim(value.substr(end + 1));
}

std::string reportedAddress(std::string_view value) {
    const std::string_view type = ascii::trim(value.substr(0, value.find(';')));
    const std::string_view encoded = withoutType(value);
    const bool isUtf8 = ascii::equalsNoCase(type, "utf-8");
    const std::string address = isUtf8 ? decodeUtf8Address(encoded) : decodeXtext(encoded);
    if (findControl(address).at != npos) return {};
    std::string_view word = address;
    if (word.ends_with(')')) word = ascii::trimRight(word.substr(0, word.find('(')));
    // Of brackets one is missing at times.
    if (word.starts_with('<')) word = ascii::trimLeft(word.substr(1));
    if (word.ends_with('>')) word = ascii::trimRight(word.substr(0, word.size() - 1));
    const bool isWord = word.starts_with('"') || !hasOneOf(blanks, word);
    const bool isPipe = word.starts_with('|') || word.starts_with("\"|");
    const std::size_t at = word.rfind('@');
    if (isWord && !isPipe && at != npos && at > 0) return std::string(word);
    // "Name <a@b.example>"
    const std::vector<AddressSpan> spans = findAddresses(address);
    const bool isMailbox = spans.size() == 1 && spans.front().isBracketed;
    return isMailbox ? std::string(spans.front().in(address)) : std::string();
}

std::vector<ReportedRecipient> readDeliveryStatus(std::string_view text, TextBudget& budget) {
    std::vector<ReportedRecipient> recipients;
    GroupReader reader(recipients, budget);
    while (!text.empty()) {
        const HeaderFields fields = HeaderFields::ofGroup(text);
        if (!reader.take(fields)) break;
        text.remove_prefix(fields.size());
    }
    return recipients;
}

}  // namespace bouncecheck
