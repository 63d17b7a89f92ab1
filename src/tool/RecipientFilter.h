#pragma once

#include <bitset>
#include <span>
#include <string_view>

#include <bouncecheck/Recipient.h>

namespace bouncecheck {

/// Which recipients are wanted.
class RecipientFilter {
public:
    /// All of them.
    RecipientFilter();

    /// Only those with a reason, or an advice, of a list such as "unknown-mailbox,unknown-domain".
    /// Throws std::invalid_argument, with all names, when one is none.
    void keepReasons(std::string_view names);
    void keepAdvices(std::string_view names);

    bool wants(const Recipient& recipient) const;
    /// Whether one of them is wanted; with no condition, also where there is none.
    bool wantsAny(std::span<const Recipient> recipients) const;
    bool wantsAll() const noexcept { return reasons_.all() && advices_.all(); }
    bool wantsNone() const noexcept { return reasons_.none() || advices_.none(); }

private:
    static constexpr std::size_t mostNames = 32;
    std::bitset<mostNames> reasons_;
    std::bitset<mostNames> advices_;
};

}  // namespace bouncecheck
