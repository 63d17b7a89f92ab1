#include "recipients/RecipientList.h"

#include <algorithm>
#include <utility>

#include <bouncecheck/Limits.h>
#include "reasons/Outcomes.h"
#include "text/Ascii.h"
#include "text/Controls.h"
#include "text/Search.h"

namespace bouncecheck {

namespace {

/// Shorter lists, which nearly all are, are searched one by one.
constexpr std::size_t longList = 16;

bool hasAddress(const Recipient& recipient, std::string_view address) noexcept {
    return ascii::equalsNoCase(recipient.address, address) ||
           ascii::equalsNoCase(recipient.finalAddress, address);
}

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

void RecipientList::setTag(std::string_view tag) {
    for (Recipient& recipient : all_) recipient.tag = tag;
    all_.front().source = RecipientSource::verp;
}

/// Whoever has that address, or else the first who failed, or the first of all.
Recipient& RecipientList::meantBy(std::string_view address) {
    const auto own = std::ranges::find_if(
        all_, [&](const Recipient& recipient) { return hasAddress(recipient, address); });
    if (own != all_.end()) return *own;
    const auto failed = std::ranges::find(all_, Outcome::failed, &Recipient::outcome);
    return failed == all_.end() ? all_.front() : *failed;
}

void RecipientList::keepOnly(std::string_view address) {
    Recipient& meant = meantBy(address);
    // It may be that of several: what is said of one of them must not hold for those whom the mail
    // reached, or may reach.
    const bool isNamed = hasAddress(meant, address);
    const bool isInDoubt = std::ranges::any_of(all_, [&](const Recipient& other) {
        if (&other == &meant) return false;
        if (isSuccess(other.outcome) || other.outcome == Outcome::delayed) return true;
        return !isNamed && (other.status.empty() || other.status != meant.status);
    });
    Recipient only = std::move(meant);
    if (!ascii::equalsNoCase(only.address, address)) {
        if (only.finalAddress.empty()) only.finalAddress = only.address;
        only.address = address;
    }
    only.source = RecipientSource::verp;
    all_.clear();
    all_.push_back(std::move(only));
    if (isInDoubt) doubt(all_.front());
}

void RecipientList::doubt(const Recipient& recipient) {
    doubted_.insert(ascii::lowerCase(recipient.address));
}

bool RecipientList::isDoubted(const Recipient& recipient) const {
    return !doubted_.empty() && doubted_.contains(ascii::lowerCase(recipient.address));
}

}  // namespace bouncecheck
