#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "text/Search.h"

namespace bouncecheck {

/// Finds which of many phrases stand in a text, the case of ASCII letters
/// ignored: the face of the phrase search that benchmarks and fuzz targets know.
///
/// The phrases are not empty and outlive the object.
class PhrasePass {
public:
    explicit PhrasePass(std::span<const std::string_view> phrases)
        : phrases_(phrases.begin(), phrases.end()) {}

    /// Calls `onFound(index)` once for each phrase that stands in `text`, in no
    /// particular order.
    template <class F>
    void scan(std::string_view text, F&& onFound) const {
        for (std::size_t i = 0; i < phrases_.size(); ++i) {
            if (containsNoCase(text, phrases_[i])) onFound(i);
        }
    }

private:
    std::vector<std::string_view> phrases_;
};

}  // namespace bouncecheck
