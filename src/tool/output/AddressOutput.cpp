#include <ostream>
#include <set>
#include <string>
#include <string_view>

#include <bouncecheck/BounceType.h>
#include "tool/output/Address.h"
#include "tool/output/Output.h"

namespace bouncecheck {
namespace {

bool isFailure(int type) noexcept {
    return type == BOUNCE_HARD || type == BOUNCE_SOFT || type == BOUNCE_NO_RECIPIENT ||
           type == BOUNCE_BLOCKED;
}

class AddressOutput final : public Output {
public:
    AddressOutput(std::ostream& out, bool ofFailures) : out_(out), ofFailures_(ofFailures) {}

    Wanted wanted() const override { return {.recipients = true, .header = true}; }

    void show(const Classified& message) override {
        const bool isWanted = !ofFailures_ || isFailure(message.type);
        if (isWanted && !isSystem(bareAddress(message.address), message.from)) {
            add(message.address);
        }
        for (const Recipient& recipient : message.recipients) {
            if (recipient.outcome == Outcome::failed) add(recipient.address);
        }
    }

    void finish() override {
        for (const std::string& address : addresses_) out_ << address << '\n';
    }

private:
    bool add(std::string_view found) {
        const std::string_view address = bareAddress(found);
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
