#pragma once

#include <string_view>

#include <bouncecheck/Recipient.h>

namespace bouncecheck {

/// What gave the reason: the words of the message, or else the code.
inline std::string_view evidenceOf(const Recipient& recipient) noexcept {
    if (!recipient.quote.empty()) return recipient.quote;
    return recipient.basis == ReasonBasis::status ? std::string_view(recipient.status)
                                                  : recipient.row;
}

}  // namespace bouncecheck
