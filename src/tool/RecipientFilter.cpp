#include "tool/RecipientFilter.h"

#include <algorithm>

#include "tool/NameList.h"

namespace bouncecheck {
namespace {

/// Keeps in `kept` what a list names, with the values that `named` gives for its names.
template <class Set, class Named, class Meanings>
void keep(Set& kept, std::string_view names, std::string_view what, const Meanings& meanings,
          Named named) {
    Set wanted;
    forEachName(names, what, meanings, [&](std::string_view name) {
        const auto value = named(name);
        if (value) wanted.set(static_cast<std::size_t>(*value));
        return value.has_value();
    });
    kept &= wanted;
}

}  // namespace

RecipientFilter::RecipientFilter() {
    reasons_.set();
    advices_.set();
}

void RecipientFilter::keepReasons(std::string_view names) {
    keep(reasons_, names, "reason", allReasons(), reasonNamed);
}

void RecipientFilter::keepAdvices(std::string_view names) {
    keep(advices_, names, "advice", allAdvices(), adviceNamed);
}

bool RecipientFilter::wants(const Recipient& recipient) const {
    return reasons_.test(static_cast<std::size_t>(recipient.reason)) &&
           advices_.test(static_cast<std::size_t>(recipient.advice));
}

bool RecipientFilter::wantsAny(std::span<const Recipient> recipients) const {
    return wantsAll() || std::ranges::any_of(recipients, [this](const Recipient& recipient) {
               return wants(recipient);
           });
}

}  // namespace bouncecheck
