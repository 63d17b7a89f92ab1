#include "bounce/VerdictLabel.h"

#include "text/Ascii.h"

namespace bouncecheck {

std::string_view verdictLabel(std::string_view line) noexcept {
    constexpr std::string_view words = "Bounce type";
    if (!line.starts_with(words)) return {};
    line.remove_prefix(words.size());
    if (line.starts_with(':')) line.remove_prefix(1);
    if (!line.starts_with(' ')) return {};
    line.remove_prefix(1);
    // "Bounce type determined after ..." is a sentence.
    return !line.empty() && ascii::isDigit(line.front()) ? line : std::string_view();
}

}  // namespace bouncecheck
