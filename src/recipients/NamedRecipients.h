#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "recipients/Bystanders.h"
#include "recipients/TextRecipients.h"

namespace bouncecheck {

/// How much an address that a line names has to do with the failure.
enum class Tier { stated, sentence, addressee };

/// How many bytes are kept of what sentences say of one recipient, and of what a dialogue says of
/// all; the line that passes this is the last.
inline constexpr std::size_t mostSaid = 1024;

/// Whom a notice has named so far, and what it said of them. Those of each tier are numbered in
/// their order; an address has one number in a tier, in any letter case.
class NamedRecipients {
public:
    /// None of the `others`, who outlive it, is named.
    explicit NamedRecipients(const Bystanders& others) noexcept : others_(others) {}

    /// Whether no more are read: `limits::recipients`.
    bool isFull() const noexcept;
    /// The number of the recipient with that address among those of the tier; nothing where the
    /// address cannot be a recipient's.
    std::optional<std::size_t> add(Tier tier, std::string_view address);
    /// The recipients of the tier.
    std::vector<TextRecipient>& of(Tier tier) noexcept { return named_[indexOf(tier)]; }
    const std::vector<TextRecipient>& of(Tier tier) const noexcept { return named_[indexOf(tier)]; }

    // The following are about those of `Tier::stated`.

    std::optional<std::size_t> find(std::string_view address) const;
    /// Adds `words` to what is said of a recipient.
    void say(std::size_t recipient, std::string_view words);
    /// Notes that `heading`, a part of the notice, stands above a recipient: it counts where
    /// nothing else is said of them.
    void head(std::size_t recipient, std::string_view heading) {
        if (!heading.empty()) headings_.emplace_back(recipient, heading);
    }
    /// Notes the `reply` to the command that named a recipient.
    void answer(std::size_t recipient, std::string_view reply);
    /// Notes a reply to another command, which is said of all who have none of their own.
    void share(std::string_view reply);
    /// A recipient took the place of `original`, or, `isAlias`, of an address of several.
    /// Whether `original` is known from now on.
    bool replace(std::size_t recipient, std::string_view original, bool isAlias);
    /// Notes that the last of them stands below a rule, without a heading.
    void noteBelowRule() { belowRule_.insert(of(Tier::stated).size() - 1); }
    /// Whether something was said of one of them.
    bool hasWords() const noexcept { return hasWords_; }

    /// Whom the notice is about, at its end; nothing is kept.
    std::vector<TextRecipient> take();

private:
    static constexpr std::size_t tiers = 3;
    static constexpr std::size_t indexOf(Tier tier) noexcept {
        return static_cast<std::size_t>(tier);
    }

    void spreadShared();
    void spreadHeadings();
    void dropOthers();
    void dropAddressees();

    const Bystanders& others_;
    std::array<std::vector<TextRecipient>, tiers> named_;
    std::array<std::unordered_map<std::string, std::size_t>, tiers> places_;
    bool hasWords_ = false;
    std::string shared_;
    std::unordered_set<std::size_t> answered_;
    std::vector<std::pair<std::size_t, std::string_view>> headings_;
    std::unordered_set<std::size_t> belowRule_;
    /// Those whom the server of a dialogue took.
    std::unordered_set<std::size_t> accepted_;
};

}  // namespace bouncecheck
