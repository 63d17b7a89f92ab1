#include "tool/RecipientFilter.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// The bits of the names in a list, with commas between.
template <class Named, class All>
std::bitset<32> parse(std::string_view names, std::string_view what, Named named, All all) {
    std::bitset<32> wanted;
    for (;;) {
        const std::size_t comma = names.find(',');
        const std::string_view name = ascii::trim(names.substr(0, comma));
        const auto value = named(name);
        if (!value) {
            std::string problem =
                "no " + std::string(what) + " is named \"" + std::string(name) + "\"; there are";
            for (const auto& meaning : all) {
                if (!meaning.name.empty()) problem.append(" ").append(meaning.name);
            }
            throw std::invalid_argument(problem);
        }
        wanted.set(static_cast<std::size_t>(*value));
        if (comma == npos) return wanted;
        names.remove_prefix(comma + 1);
    }
}

}  // namespace

RecipientFilter::RecipientFilter() {
    reasons_.set();
    advices_.set();
}

void RecipientFilter::keepReasons(std::string_view names) {
    reasons_ &= parse(names, "reason", reasonNamed, allReasons());
}

void RecipientFilter::keepAdvices(std::string_view names) {
    advices_ &= parse(names, "advice", adviceNamed, allAdvices());
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
