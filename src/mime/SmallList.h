#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <type_traits>
#include <vector>

namespace bouncecheck {

/// A list of values of which there are mostly no more than `usual`: so many take no memory
/// of the heap.
template <class Value, std::size_t usual>
class SmallList {
    static_assert(std::is_trivially_copyable_v<Value>);

public:
    // NOLINTNEXTLINE(modernize-use-equals-default): the union would delete that
    SmallList() noexcept {}

    std::span<const Value> all() const noexcept {
        return more_.empty() ? std::span(few_).first(count_) : std::span(more_);
    }
    std::span<Value> all() noexcept {
        return more_.empty() ? std::span(few_).first(count_) : std::span(more_);
    }
    std::size_t size() const noexcept { return all().size(); }
    bool empty() const noexcept { return size() == 0; }

    /// Makes room at once in a list that is empty.
    void reserve(std::size_t count) {
        if (count > usual) more_.reserve(count);
    }
    void push_back(const Value& value) {
        if (more_.capacity() == 0 && count_ < usual) {
            std::construct_at(&few_[count_++], value);
            return;
        }
        if (count_ > 0) {
            more_.reserve(4 * usual);
            more_.assign(few_, few_ + usual);
            count_ = 0;
        }
        more_.push_back(value);
    }
    void pop_back() noexcept {
        if (more_.empty()) {
            --count_;
        } else {
            more_.pop_back();
        }
    }

private:
    /// Only as many as are counted have a value: lists are made for each part of a message, and
    /// most have few.
    union {
        Value few_[usual];
    };
    std::size_t count_ = 0;
    /// All of them, once there were more.
    std::vector<Value> more_;
};

}  // namespace bouncecheck
