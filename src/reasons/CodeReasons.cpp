#include "reasons/CodeReasons.h"

#include <algorithm>
#include <array>

#include "reasons/CodeShapes.h"
#include "reasons/tables/ReplyCodeReasons.h"
#include "reasons/tables/StatusCodes.h"

namespace bouncecheck {
namespace {

template <class Row, std::size_t Count>
const Row* rowOf(const Row (&rows)[Count], std::string_view code) noexcept {
    const Row* row = std::ranges::find_if(rows, [&](const Row& known) {
        // Codes differ by their last digit more than by others.
        return known.code.size() == code.size() && known.code.back() == code.back() &&
               known.code == code;
    });
    return row == std::end(rows) ? nullptr : row;
}

}  // namespace

std::span<const StatusRow> allStatusRows() noexcept { return statusCodes; }

std::span<const ReplyCodeRow> allReplyCodeRows() noexcept { return replyCodeReasons; }

const StatusRow* statusRowOf(std::string_view status) noexcept {
    const std::size_t length = statusLength(status, 0);
    if (length == 0 || status[0] == '2') return nullptr;
    // "5.1.1" is registered as "X.1.1".
    std::array<char, 16> code{'X'};
    const std::string_view detail = status.substr(1, std::min(length - 1, code.size() - 1));
    std::ranges::copy(detail, code.begin() + 1);
    const StatusRow* row = rowOf(statusCodes, std::string_view(code.data(), detail.size() + 1));
    return row ? row : rowOf(statusCodes, std::string_view(code.data(), 3));
}

const ReplyCodeRow* replyCodeRowOf(std::string_view code) noexcept {
    return rowOf(replyCodeReasons, code);
}

bool restates(std::string_view status, std::string_view reply) noexcept {
    return std::ranges::any_of(restatedCodes, [&](const RestatedCode& row) {
        return row.reply == reply && row.status == status;
    });
}

}  // namespace bouncecheck
