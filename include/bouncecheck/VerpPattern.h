#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <bouncecheck/Export.h>

namespace bouncecheck {

/// The form of the addresses that a sender's mail comes back to, one for each recipient
/// (variable envelope return paths): "bounces+{local}={domain}@lists.example.org" or
/// "bounces-{tag}@example.org". One that was moved from matches nothing.
class BOUNCECHECK_EXPORT VerpPattern {
public:
    /// What an address of the form carries.
    struct Match {
        /// As `local-part@domain`; "" for a form with a tag.
        std::string address;
        /// "" for a form with an address.
        std::string tag;
    };

    /// Nothing unless `pattern` has "{local}" and "{domain}", or "{tag}", each once, divided by
    /// other characters, and an '@'.
    static std::optional<VerpPattern> parse(std::string_view pattern);

    /// What `address` carries, letter case ignored; nothing where it is not of the form.
    /// Where a divider stands more than once, "{local}" takes as much as it can.
    std::optional<Match> match(std::string_view address) const;

private:
    VerpPattern() = default;

    struct Piece {
        enum class Kind { literal, local, domain, tag } kind;
        std::string literal;
    };
    std::vector<Piece> pieces_;
};

}  // namespace bouncecheck
