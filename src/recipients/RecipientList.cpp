#include "recipients/RecipientList.h"

#include <utility>

#include <bouncecheck/Limits.h>
#include "text/Ascii.h"
#include "text/Controls.h"
#include "text/Search.h"

namespace bouncecheck {

Recipient* RecipientList::add(std::string_view address, RecipientSource source) {
    if (address.empty() || findControl(address).at != npos) return nullptr;
    const auto [place, isNew] = places_.try_emplace(ascii::lowerCase(address), all_.size());
    if (!isNew) return &all_[place->second];
    if (all_.size() >= limits::recipients || !budget_.spend(address.size())) {
        places_.erase(place);
        return nullptr;
    }
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
    for (const std::string& address : {named.address, named.finalAddress}) {
        const auto place = places_.find(ascii::lowerCase(address));
        if (place != places_.end()) return &all_[place->second];
    }
    const auto byFinal = finals_.find(ascii::lowerCase(named.address));
    if (byFinal != finals_.end()) return &all_[byFinal->second];
    return isOnly && all_.size() == 1 ? &all_.front() : nullptr;
}

void RecipientList::doubt(const Recipient& recipient) {
    doubted_.insert(ascii::lowerCase(recipient.address));
}

bool RecipientList::isDoubted(const Recipient& recipient) const {
    return !doubted_.empty() && doubted_.contains(ascii::lowerCase(recipient.address));
}

}  // namespace bouncecheck
