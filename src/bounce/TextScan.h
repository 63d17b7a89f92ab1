#pragma once

#include <optional>

#include "bounce/PhraseScan.h"
#include "text/StringBuffer.h"

namespace bouncecheck {

/// The phrases of a text that may change: it is passed over when it is asked about
/// for the first time and again only after a change.
class TextScan {
public:
    /// `text` outlives this.
    explicit TextScan(const StringBuffer& text) noexcept : text_(text) {}
    TextScan(const TextScan&) = delete;
    TextScan& operator=(const TextScan&) = delete;

    const PhraseScan& phrases() {
        if (!revision_ || *revision_ != text_.revision()) {
            scan_.read(text_.view());
            revision_ = text_.revision();
        }
        return scan_;
    }

private:
    const StringBuffer& text_;
    std::optional<unsigned long> revision_;
    PhraseScan scan_;
};

}  // namespace bouncecheck
