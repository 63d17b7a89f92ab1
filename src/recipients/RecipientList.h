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

    /// Adds somebody of whom no address is known.
    Recipient& addUnnamed() { return all_.emplace_back(); }
    /// Notes of all the tag in the address that the mail came back to, which was the first one's.
    void setTag(std::string_view tag);
    /// Makes the recipient to whose `address` the mail was sent the whole list, which has somebody,
    /// by what is known of the one who is meant: another address is where it was sent on to. Nobody
    /// is added or found afterwards.
    void keepOnly(std::string_view address);

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
    Recipient& meantBy(std::string_view address);

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
