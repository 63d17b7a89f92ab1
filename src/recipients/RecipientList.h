#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <bouncecheck/Recipient.h>
#include "mime/TextBudget.h"
#include "recipients/TextRecipients.h"

namespace bouncecheck {

/// The recipients of one message, each address once, within the limits of what is kept of a
/// message.
class RecipientList {
public:
    /// The recipient with that address, added where there was none; null where it is no
    /// address, or where there is no room for another. Valid until the next one is added.
    Recipient* add(std::string_view address, RecipientSource source);
    /// Notes the final address of a recipient, so that `find` knows it.
    void setFinalAddress(Recipient& recipient, std::string&& address);
    /// The recipient whom a text names; the only one by any address, where the text names
    /// nobody else. Null where it is none of the list.
    Recipient* find(const TextRecipient& named, bool isOnly);

    /// Notes that what is said of a recipient may be about somebody else.
    void doubt(const Recipient& recipient);
    bool isDoubted(const Recipient& recipient) const;

    bool isEmpty() const noexcept { return all_.empty(); }
    std::vector<Recipient>& all() noexcept { return all_; }
    const std::vector<Recipient>& all() const noexcept { return all_; }
    /// Makes `recipients` the whole list. Nobody is added or found afterwards.
    void replace(std::vector<Recipient>&& recipients) { all_ = std::move(recipients); }

    TextBudget& budget() noexcept { return budget_; }

private:
    std::optional<std::size_t> placeOf(std::string_view address);

    TextBudget budget_;
    std::vector<Recipient> all_;
    /// Of long lists, by address in lower case.
    std::unordered_map<std::string, std::size_t> places_;
    std::size_t placed_ = 0;
    /// By final address, likewise.
    std::unordered_map<std::string, std::size_t> finals_;
    /// The addresses in lower case of whom nothing is sure.
    std::unordered_set<std::string> doubted_;
};

}  // namespace bouncecheck
