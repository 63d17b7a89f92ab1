#include "recipients/NamedRecipients.h"

#include <algorithm>
#include <utility>

#include <bouncecheck/Limits.h>
#include "reasons/ReasonFinder.h"
#include "reasons/ReplyCodes.h"
#include "recipients/CueSearch.h"
#include "text/Ascii.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

constexpr std::size_t mostSharing = 100;

/// "(reason: 550-Not delivered)": the other lines stand in the dialogue.
bool isOneLineOfMore(std::string_view said) {
    const std::string_view code = codesIn(said).reply;
    return !code.empty() &&
           isFirstLineOnly(said.substr(static_cast<std::size_t>(code.data() - said.data())));
}

bool isSuccess(std::string_view reply) { return reply.starts_with('2') || reply.starts_with('3'); }

}  // namespace

bool NamedRecipients::isFull() const noexcept {
    std::size_t count = 0;
    for (const std::vector<TextRecipient>& tier : named_) count += tier.size();
    return count >= limits::recipients;
}

std::optional<std::size_t> NamedRecipients::add(Tier tier, std::string_view address) {
    if (others_.isSystemOrList(address)) return std::nullopt;
    std::vector<TextRecipient>& all = of(tier);
    const auto [place, isNew] =
        places_[indexOf(tier)].try_emplace(ascii::lowerCase(address), all.size());
    if (isNew) all.push_back({.address = std::string(address)});
    return place->second;
}

std::optional<std::size_t> NamedRecipients::find(std::string_view address) const {
    const auto& places = places_[indexOf(Tier::stated)];
    const auto known = places.find(ascii::lowerCase(address));
    if (known == places.end()) return std::nullopt;
    return known->second;
}

void NamedRecipients::say(std::size_t recipient, std::string_view words) {
    of(Tier::stated)[recipient].said.append(words).append("\n");
    hasWords_ = true;
}

void NamedRecipients::answer(std::size_t recipient, std::string_view reply) {
    if (isSuccess(reply)) {
        accepted_.insert(recipient);
    } else {
        say(recipient, reply);
        answered_.insert(recipient);
    }
}

void NamedRecipients::share(std::string_view reply) {
    // What was accepted says nothing of the failure.
    if (isSuccess(reply) || shared_.size() >= mostSaid) return;
    shared_.append(wholeCharacters(reply, mostSaid)) += '\n';
}

bool NamedRecipients::replace(std::size_t recipient, std::string_view original, bool isAlias) {
    if (others_.isOfSender(original) || others_.isSystemOrList(original)) return false;
    const auto [known, isNew] =
        places_[indexOf(Tier::stated)].try_emplace(ascii::lowerCase(original), recipient);
    if (!isNew && known->second == recipient) return false;
    TextRecipient& one = of(Tier::stated)[known->second];
    if (!isNew || isAlias) one.isAlias = true;
    if (isNew) one.finalAddress = std::exchange(one.address, std::string(original));
    return isNew;
}

std::vector<TextRecipient> NamedRecipients::take() {
    std::vector<TextRecipient>& stated = of(Tier::stated);
    spreadShared();
    spreadHeadings();
    for (TextRecipient& one : stated) {
        one.isLone =
            one.isLone && !cuesIn(one.said).has(Cue::failure) && !saysWhy(one.said, one.address);
    }
    // Sentences say more than an address for which there is no reason to stand there.
    if (std::ranges::all_of(stated, &TextRecipient::isLone) && !of(Tier::sentence).empty()) {
        return std::move(of(Tier::sentence));
    }
    dropOthers();
    dropAddressees();
    for (std::vector<TextRecipient>& tier : named_) {
        if (!tier.empty()) return std::move(tier);
    }
    return {};
}

/// Adds what was said to all: to the sender, or to the message.
void NamedRecipients::spreadShared() {
    if (shared_.empty()) return;
    std::vector<TextRecipient>& stated = of(Tier::stated);
    for (std::size_t i = 0; i < std::min(stated.size(), mostSharing); ++i) {
        const bool isSharing =
            !answered_.contains(i) && (isOneLineOfMore(stated[i].said) || !saysWhy(stated[i].said));
        if (isSharing) stated[i].said.append(shared_);
    }
}

/// To whom the bounce was sent may stand in a list, too, and is not meant by what is above it.
void NamedRecipients::spreadHeadings() {
    std::vector<TextRecipient>& stated = of(Tier::stated);
    for (const auto& [recipient, heading] : headings_) {
        TextRecipient& one = stated[recipient];
        const bool isMeant = stated.size() == 1 || !others_.isOfSender(one.address);
        if (one.said.empty() && isMeant) one.said = heading;
    }
}

/// Of the recipients of a dialogue those have not failed whom the server accepted, while something
/// was said of others. What stands below a rule for no reason may be in the message that came back.
void NamedRecipients::dropOthers() {
    std::vector<TextRecipient>& stated = of(Tier::stated);
    const auto isSaid = [](const TextRecipient& one) { return !one.said.empty(); };
    const bool hasAccepted = !accepted_.empty() && std::ranges::any_of(stated, isSaid);
    if (!hasAccepted && belowRule_.empty()) return;
    std::vector<TextRecipient> failed;
    for (std::size_t i = 0; i < stated.size(); ++i) {
        const bool isAccepted = hasAccepted && !isSaid(stated[i]) && accepted_.contains(i);
        const bool isReturned = stated[i].isLone && belowRule_.contains(i);
        if (!isAccepted && !isReturned) failed.push_back(std::move(stated[i]));
    }
    stated = std::move(failed);
}

/// To whom the bounce was sent counts as a recipient only where nobody else is named, or where
/// something is said of the address.
void NamedRecipients::dropAddressees() {
    std::vector<TextRecipient>& stated = of(Tier::stated);
    if (stated.size() < 2) return;
    std::erase_if(stated, [&](const TextRecipient& recipient) {
        return recipient.said.empty() && others_.isOfSender(recipient.address);
    });
}

}  // namespace bouncecheck
