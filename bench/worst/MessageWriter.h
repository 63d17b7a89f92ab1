#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace bouncecheck::bench {

/// Leads to the classification of the text, the longest road.
inline constexpr std::string_view undeliverable =
    "From: Postmaster@relay.example\nSubject: Undeliverable: hello\n";

/// Writes a message of a wanted size into storage that is allocated once, so that
/// making it takes no more memory than the message.
class MessageWriter {
public:
    /// What is written after the size is reached has to fit in here.
    static constexpr std::size_t room = 4096;

    explicit MessageWriter(std::size_t bytes) : bytes_(bytes - std::min(bytes, room)) {
        text_.reserve(bytes);
    }

    MessageWriter& add(std::string_view text) {
        text_ += text;
        return *this;
    }

    /// Adds what `next()` hands out until the size is reached.
    template <class Next>
    MessageWriter& fillFrom(Next next) {
        return fillTo(bytes_, next);
    }

    MessageWriter& fill(std::string_view piece) {
        return fillFrom([&] { return piece; });
    }

    /// Fills one of `shares` equal shares of what is missing.
    MessageWriter& fillShare(std::string_view piece, std::size_t shares) {
        const std::size_t missing = bytes_ - std::min(bytes_, text_.size());
        return fillTo(text_.size() + missing / shares, [&] { return piece; });
    }

    std::string take() { return std::move(text_); }

private:
    template <class Next>
    MessageWriter& fillTo(std::size_t end, Next next) {
        while (text_.size() < end) text_ += next();
        return *this;
    }

    std::size_t bytes_;
    std::string text_;
};

/// A message of a head and one piece over and over.
template <class... Head>
std::string repeated(std::size_t bytes, std::string_view piece, const Head&... head) {
    MessageWriter writer(bytes);
    (writer.add(head), ...);
    return writer.fill(piece).add("\n").take();
}

}  // namespace bouncecheck::bench
