#include "recipients/RecipientList.h"

#include <algorithm>
#include <utility>

#include <bouncecheck/Limits.h>
#include "text/Ascii.h"
#include "text/Controls.h"
#include "text/Search.h"

namespace bouncecheck {

namespace {

/// Shorter lists, which nearly all are, are searched one by one.
constexpr std::size_t longList = 16;

}  // namespace

/// The place of the recipient with that address, if there is one.
std::optional<std::size_t> RecipientList::placeOf(std::string_view address) {
    if (all_.size() < longList) {
        const auto known = std::ranges::find_if(all_, [&](const Recipient& recipient) {
            return ascii::equalsNoCase(recipient.address, address);
        });
        if (known == all_.end()) return std::nullopt;
        return static_cast<std::size_t>(known - all_.begin());
    }
    for (; placed_ < all_.size(); ++placed_) {
        places_.emplace(ascii::lowerCase(all_[placed_].address), placed_);
    }
    const auto known = places_.find(ascii::lowerCase(address));
    return known == places_.end() ? std::nullopt : std::optional(known->second);
}

Recipient* RecipientList::add(std::string_view address, RecipientSource source) {
    if (address.empty() || findControl(address).at != npos) return nullptr;
    if (const auto known = placeOf(address)) return &all_[*known];
    if (all_.size() >= limits::recipients || !budget_.spend(address.size())) return nullptr;
    all_.emplace_back();
    all_.back().address = address;
    all_.back().source = source;
    return &all_.back();
}

void RecipientList::setFinalAddress(Recipient& recipient, std::string&& address) {
    recipient.finalAddress = std::move(address);
    finals_.try_emplace(ascii::lowerCase(recipient.finalAddress),
                        static_cast<std::size_t>(&recipient - all_.data()));
}

Recipient* RecipientList::find(const TextRecipient& named, bool isOnly) {
    for (const std::string_view address :
         {std::string_view(named.address), std::string_view(named.finalAddress)}) {
        if (const auto known = placeOf(address)) return &all_[*known];
    }
    if (!finals_.empty()) {
        const auto byFinal = finals_.find(ascii::lowerCase(named.address));
        if (byFinal != finals_.end()) return &all_[byFinal->second];
    }
    return isOnly && all_.size() == 1 ? &all_.front() : nullptr;
}

void RecipientList::doubt(const Recipient& recipient) {
    doubted_.insert(ascii::lowerCase(recipient.address));
}

bool RecipientList::isDoubted(const Recipient& recipient) const {
    return !doubted_.empty() && doubted_.contains(ascii::lowerCase(recipient.address));
}

}  // namespace bouncecheck
