#pragma once

#include <span>
#include <string_view>

#include "reasons/ReasonRow.h"

namespace bouncecheck {

/// The rows of all status codes that are known, those of a whole subject ("X.1") last.
std::span<const StatusRow> allStatusRows() noexcept;
/// The rows of the reply codes that say something.
std::span<const ReplyCodeRow> allReplyCodeRows() noexcept;

/// The row of an enhanced status code ("5.1.1"), or of its subject where the code is not
/// known; null for a success and for what is no code.
const StatusRow* statusRowOf(std::string_view status) noexcept;
/// The row of a reply code; null where it says nothing.
const ReplyCodeRow* replyCodeRowOf(std::string_view code) noexcept;

/// Whether `status` is what a report gives in place of a status for a reply that has only
/// the code `reply`.
bool restates(std::string_view status, std::string_view reply) noexcept;

}  // namespace bouncecheck
