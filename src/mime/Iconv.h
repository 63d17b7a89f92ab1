#pragma once

#include <iconv.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "mime/SingleByteCharset.h"

namespace bouncecheck {

/// A conversion of the C library, from one charset to UTF-8.
class Iconv {
public:
    /// `charset`: a name as the library knows it.
    explicit Iconv(const std::string& charset);

    /// False when the library does not know the charset.
    bool isOpen() const noexcept { return handle_ != nullptr; }

    /// `bytes` in UTF-8. Where nothing can be decoded, `unit` bytes are passed over and
    /// U+FFFD stands for them. Ends where that becomes longer than `bytes` by more than
    /// `limits::charsetGrowth`.
    std::string convert(std::string_view bytes, std::size_t unit);

    /// What the bytes from 128 stand for, when each byte stands for itself alone and
    /// those below are ASCII.
    std::optional<UpperHalf> upperHalf();

private:
    struct Close {
        void operator()(void* handle) const noexcept { iconv_close(handle); }
    };

    /// Forgets the text before.
    void reset() noexcept { iconv(handle_.get(), nullptr, nullptr, nullptr, nullptr); }

    std::unique_ptr<void, Close> handle_;
};

}  // namespace bouncecheck
