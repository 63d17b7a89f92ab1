#pragma once

#include <bitset>
#include <string_view>

namespace bouncecheck {

/// Which verdicts are wanted.
class TypeFilter {
public:
    /// All of them.
    TypeFilter() { wanted_.set(); }

    /// Only those of a list of names or numbers, such as "hard,2". Throws
    /// std::invalid_argument, with all names, when one is none.
    void keepOnly(std::string_view types) { wanted_ &= parse(types); }
    /// All but those.
    void leaveOut(std::string_view types) { wanted_ &= ~parse(types); }

    bool wants(int type) const { return wanted_.test(static_cast<std::size_t>(type)); }
    bool wantsAll() const noexcept { return wanted_.all(); }
    bool wantsNone() const noexcept;

private:
    using Types = std::bitset<16>;
    static Types parse(std::string_view types);

    Types wanted_;
};

}  // namespace bouncecheck
