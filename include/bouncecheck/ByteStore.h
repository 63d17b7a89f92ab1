#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace bouncecheck {

/// The bytes of a buffer: its own, or a stretch of a text that others hold too,
/// which is copied before the first change. So a body that is megabytes long is in
/// memory once, however many buffers have it.
class ByteStore {
public:
    ByteStore() = default;
    explicit ByteStore(std::string bytes) noexcept : own_(std::move(bytes)) {}

    /// Bytes that others can hold too.
    static ByteStore shared(std::string bytes) {
        ByteStore store(std::move(bytes));
        store.makeShared();
        return store;
    }
    /// A stretch of bytes that are shared, held together with them. `part` must be of this store's
    /// bytes, and these shared (`isShared`).
    ByteStore stretch(std::string_view part) const noexcept {
        ByteStore store;
        store.shared_ = shared_;
        store.stretch_ = part;
        return store;
    }

    std::string_view view() const noexcept { return shared_ ? stretch_ : own_; }
    bool isShared() const noexcept { return shared_ != nullptr; }
    bool operator==(const ByteStore& other) const noexcept { return view() == other.view(); }

    /// The bytes with a NUL behind them, until the next change. Copies a stretch that has none,
    /// once: so not from two threads at a time, though it is const.
    const char* terminated() const {
        if (view().empty()) return "";
        if (!shared_ || endsItsText()) return view().data();
        if (own_.empty()) own_.assign(stretch_);
        return own_.c_str();
    }

    /// Whether others may hold the bytes too without harm: a short stretch would
    /// keep a long text from being freed.
    bool isMostOfItsText() const noexcept {
        return shared_ && endsItsText() && stretch_.size() >= shared_->size() / 2;
    }

    /// Turns bytes of its own into a text that others can hold too. Views of them
    /// become invalid.
    void makeShared() {
        if (shared_) return;
        shared_ = std::make_shared<const std::string>(std::move(own_));
        stretch_ = *shared_;
        own_.clear();
    }

    /// The bytes, for a change.
    std::string& changing() {
        if (shared_) {
            own_.assign(stretch_);
            shared_.reset();
        }
        return own_;
    }
    /// Makes room for `size` bytes of its own at once.
    void reserve(std::size_t size) {
        std::string roomy;
        roomy.reserve(size);
        roomy = view();
        own_ = std::move(roomy);
        shared_.reset();
    }
    /// `bytes` may be part of what is there.
    void assign(std::string_view bytes) {
        const auto keptMeanwhile = std::move(shared_);
        own_.assign(bytes);
    }
    void append(std::string_view bytes) {
        const auto keptMeanwhile = shared_;
        changing().append(bytes);
    }
    /// Leaves the storage of bytes of its own for the next ones.
    void clear() noexcept {
        shared_.reset();
        own_.clear();
    }

private:
    bool endsItsText() const noexcept {
        return stretch_.data() + stretch_.size() == shared_->data() + shared_->size();
    }

    /// Besides a stretch: nothing, or a copy of it that a NUL ends.
    mutable std::string own_;
    std::shared_ptr<const std::string> shared_;
    std::string_view stretch_;
};

}  // namespace bouncecheck
