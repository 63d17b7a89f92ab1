#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace bouncecheck {

/// Where an e-mail address stands in a line of text.
struct AddressSpan {
    /// Bytes of the line, brackets not included.
    std::size_t begin = 0;
    std::size_t end = 0;
    /// Whether it stands between '<' and '>'.
    bool isBracketed = false;

    std::string_view in(std::string_view line) const noexcept {
        return line.substr(begin, end - begin);
    }
};

/// The addresses in `line` (UTF-8), in order, each local-part@domain as RFC 5321 and RFC 6531
/// have them. People write addresses into sentences, so letters of a script without blanks that
/// follow an ASCII address end it, and so do punctuation that can only belong to the sentence and
/// blanks of any script.
/// A domain has a dot or is a literal, unless brackets say that it is one.
///
/// Not addresses: parts of links and of paths, and of what is too long or has a second '@'. Linear
/// in the size of `line`.
std::vector<AddressSpan> findAddresses(std::string_view line);

}  // namespace bouncecheck
