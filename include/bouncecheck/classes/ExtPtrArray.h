#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include <bouncecheck/classes/StringBuffer.h>

namespace bouncecheck {

/// An array that owns what its elements point to.
template <class T>
class ExtPtrArray {
public:
    int getSize() const noexcept { return static_cast<int>(elements_.size()); }

    /// The element at `i`, still owned by the array; null when there is none.
    T* elementAt(int i) const noexcept {
        return i >= 0 && i < getSize() ? elements_[static_cast<std::size_t>(i)].get() : nullptr;
    }

protected:
    std::vector<std::unique_ptr<T>> elements_;
};

/// An array of text buffers.
class ExtPtrArraySb : public ExtPtrArray<StringBuffer> {
public:
    /// Appends a new buffer that holds a copy of `text`.
    void appendSb(std::string_view text) {
        elements_.push_back(std::make_unique<StringBuffer>());
        elements_.back()->append(text);
    }

    /// Deletes every element.
    void removeAllSbs() noexcept { elements_.clear(); }
};

}  // namespace bouncecheck
