#include <algorithm>
#include <ostream>
#include <set>
#include <string>
#include <string_view>

#include "bounce/BounceType.h"
#include "text/Ascii.h"
#include "text/Utf8.h"
#include "tool/output/Output.h"

namespace bouncecheck {
namespace {

/// Whether a line that holds `text` is one address and nothing else.
bool isAddress(std::string_view text) {
    const std::size_t at = text.rfind('@');
    const bool isPair = at != std::string_view::npos && at > 0 && at + 1 < text.size();
    return isPair && isUtf8(text) && std::ranges::none_of(text, [](char c) {
               return ascii::isSpace(c) || ascii::isControl(c) ||
                      std::string_view("<>,;:").find(c) != std::string_view::npos;
           });
}

/// `text` without what sentences leave around an address.
std::string_view withoutPunctuation(std::string_view text) noexcept {
    text.remove_prefix(std::min(text.find_first_not_of('<'), text.size()));
    return text.substr(0, text.find_last_not_of(">,;:.") + 1);
}

std::string withLowerDomain(std::string_view address) {
    const std::size_t domain = address.rfind('@') + 1;
    return std::string(address.substr(0, domain)) + ascii::lowerCase(address.substr(domain));
}

bool isFailure(int type) noexcept {
    return type == BOUNCE_HARD || type == BOUNCE_SOFT || type == BOUNCE_NO_RECIPIENT ||
           type == BOUNCE_BLOCKED;
}

class AddressOutput final : public Output {
public:
    AddressOutput(std::ostream& out, bool ofFailures) : out_(out), ofFailures_(ofFailures) {}

    Wanted wanted() const override { return {.facts = true}; }

    void show(const Classified& message) override {
        if (!ofFailures_ || isFailure(message.type)) add(message.address);
        for (const RecipientFacts& recipient : message.facts.recipients) {
            if (recipient.action != "failed") continue;
            // The address that the sender knows, as the verdict has it.
            if (!add(recipient.originalRecipient)) add(recipient.finalRecipient);
        }
    }

    void finish() override {
        for (const std::string& address : addresses_) out_ << address << '\n';
    }

private:
    bool add(std::string_view found) {
        const std::string_view address = withoutPunctuation(found);
        if (!isAddress(address)) return false;
        addresses_.insert(withLowerDomain(address));
        return true;
    }

    std::ostream& out_;
    bool ofFailures_;
    std::set<std::string> addresses_;
};

}  // namespace

std::unique_ptr<Output> makeAddressOutput(std::ostream& out, bool ofFailures) {
    return std::make_unique<AddressOutput>(out, ofFailures);
}

}  // namespace bouncecheck
