#include "tool/sources/PeekedStream.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace bouncecheck {

PeekedStream::PeekedStream(std::unique_ptr<InputStream> stream) : stream_(std::move(stream)) {
    try {
        while (size_ < decisiveBytes && !atEnd_) {
            const std::size_t count = stream_->read(std::span(first_).subspan(size_));
            size_ += count;
            atEnd_ = count == 0;
        }
    } catch (const ReadError& error) {
        damage_ = error;
    }
    content_ = contentOf(std::string_view(first_.data(), std::min(size_, decisiveBytes)));
}

std::size_t PeekedStream::read(std::span<char> room) {
    if (read_ == size_) {
        if (damage_) throw ReadError(*damage_);
        return atEnd_ ? 0 : stream_->read(room);
    }
    const std::size_t count = std::min(room.size(), size_ - read_);
    std::memcpy(room.data(), first_.data() + read_, count);
    read_ += count;
    return count;
}

std::optional<std::uint64_t> PeekedStream::sizeLeft() const {
    const auto left = stream_->sizeLeft();
    return left ? std::optional(*left + size_ - read_) : std::nullopt;
}

}  // namespace bouncecheck
