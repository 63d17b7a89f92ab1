#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "mime/SingleByteCharset.h"

namespace bouncecheck {

/// A conversion of the C library, from one charset to UTF-8. The header names nothing of that
/// library, so that a build without iconv can define the members itself.
class Iconv {
public:
    /// `charset`: a name as the library knows it, which outlives this.
    explicit Iconv(const char* charset) : charset_(charset) { open(); }

    /// False when the library does not know the charset.
    bool isOpen() const noexcept { return handle_ != nullptr; }

    /// `bytes` in UTF-8. Where nothing can be decoded, `unit` bytes are passed over and
    /// U+FFFD stands for them. Ends where that becomes longer than `bytes` by more than
    /// `limits::charsetGrowth`.
    std::string convert(std::string_view bytes, std::size_t unit);

    /// What each byte stands for, when none needs others beside it.
    std::optional<ByteMeanings> byteMeanings();

private:
    struct Close {
        void operator()(void* handle) const noexcept;
    };

    void open();
    /// Forgets the text before.
    void reset();

    // Not every build has what it is for.
    [[maybe_unused]] const char* charset_;
    std::unique_ptr<void, Close> handle_;
};

}  // namespace bouncecheck
