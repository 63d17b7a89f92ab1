#include "mime/Iconv.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <new>

#include <bouncecheck/Limits.h>
#include "text/Utf8.h"

namespace bouncecheck {

void Iconv::Close::operator()(void* handle) const noexcept { iconv_close(handle); }

void Iconv::open() {
    handle_.reset();
    iconv_t handle = iconv_open("UTF-8", charset_);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the value for a failure
    if (handle != reinterpret_cast<iconv_t>(-1)) {
        handle_.reset(handle);
    } else if (errno == ENOMEM) {
        throw std::bad_alloc();
    }
}

void Iconv::reset() {
#ifdef __GLIBC__
    iconv(handle_.get(), nullptr, nullptr, nullptr, nullptr);
#else
    open();  // musl keeps the shift state
    if (!handle_) throw std::bad_alloc();
#endif
}

std::string Iconv::convert(std::string_view bytes, std::size_t unit) {
    reset();
    std::string out;
    std::array<char, 8192> chunk;
    const std::size_t most = bytes.size() + limits::charsetGrowth;
    constexpr std::size_t usually = 3;  // bytes of UTF-8 for one, at most
    out.reserve(std::min(usually * bytes.size(), most + chunk.size()));
    char* in = const_cast<char*>(bytes.data());  // iconv reads it only
    std::size_t left = bytes.size();
    const auto step = [&](char** from, std::size_t* fromLeft) {
        char* to = chunk.data();
        std::size_t room = chunk.size();
        const std::size_t result = iconv(handle_.get(), from, fromLeft, &to, &room);
        const int error = result == static_cast<std::size_t>(-1) ? errno : 0;
        // The GNU C Library makes five or six bytes of numbers that are no character's.
        appendWellFormed(out, {chunk.data(), chunk.size() - room});
        return error;
    };
    while (left > 0 && out.size() + left < most) {
        const int error = step(&in, &left);
        if (error == 0 || error == E2BIG) continue;
        out += replacementCharacter;
        const std::size_t skip = std::min(unit, left);
        in += skip;
        left -= skip;
    }
    step(nullptr, nullptr);
    out.resize(wholeCharacters(out, most).size());
    return out;
}

std::optional<ByteMeanings> Iconv::byteMeanings() {
    ByteMeanings meanings;
    for (std::uint32_t byte = 0; byte < meanings.size(); ++byte) {
        reset();
        char in = static_cast<char>(byte);
        char* from = &in;
        std::size_t left = 1;
        std::array<char, 16> out;
        char* to = out.data();
        std::size_t room = out.size();
        const bool failed =
            iconv(handle_.get(), &from, &left, &to, &room) == static_cast<std::size_t>(-1);
        if (failed && errno != EILSEQ) return std::nullopt;  // more bytes are to come
        const std::string_view character(out.data(), out.size() - room);
        if (!failed && !isOneCharacter(character)) return std::nullopt;
        meanings[byte] = failed ? noCharacter : codePointOf(character);
        if (meanings[byte] > 0xFFFF) return std::nullopt;
    }
    return meanings;
}

}  // namespace bouncecheck
