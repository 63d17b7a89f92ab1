#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "phrases/Matcher.h"
#include "text/Search.h"

namespace bouncecheck {

/// Finds which of any phrases stand in a text, the case of ASCII letters ignored:
/// the pass of the classifier with tables made at run time.
///
/// The phrases are not empty, at most `phrases::longest` bytes long, and outlive
/// the object, which refers to itself and stays where it is.
class PhrasePass {
public:
    explicit PhrasePass(std::span<const std::string_view> phrases) {
        for (std::size_t i = 0; i < phrases.size(); ++i) {
            const bool isShort = phrases[i].size() < phrases::shortest;
            (isShort ? shortPhrases_ : texts_).push_back(phrases[i]);
            (isShort ? shortIndexes_ : indexes_).push_back(i);
        }
        windows_.resize(texts_.size() * phrases::stride);
        starts_.resize(phrases::bucketsFor(windows_.size()) + 1);
        filter_.resize(phrases::filterBitsFor(windows_.size()) / 32);
        std::vector<phrases::Window> chosen(windows_.size());
        phrases::TableView{filter_, starts_, windows_}.fill(texts_, chosen);
        for (const std::string_view text : texts_) {
            places_.push_back({static_cast<std::uint32_t>(bytes_.size()),
                               static_cast<std::uint32_t>(text.size())});
            bytes_ += text;
        }
    }
    PhrasePass(const PhrasePass&) = delete;
    PhrasePass& operator=(const PhrasePass&) = delete;

    /// Calls `onFound(index)` once for each phrase that stands in `text`, in no
    /// particular order.
    template <class F>
    void scan(std::string_view text, F&& onFound) const {
        Once<F> once{indexes_, onFound, {}};
        const phrases::TableView tables{filter_, starts_, windows_};
        phrases::Matcher({bytes_.data(), places_}, tables).scan(text, once);
        for (std::size_t i = 0; i < shortPhrases_.size(); ++i) {
            if (containsNoCase(text, shortPhrases_[i])) onFound(shortIndexes_[i]);
        }
    }

private:
    template <class F>
    struct Once {
        std::span<const std::size_t> indexes;
        F& report;
        std::array<std::uint64_t, 64> seen;  // 4096 phrases

        bool wants(std::size_t phrase, std::size_t) const noexcept {
            return (seen[phrase / 64] >> (phrase % 64) & 1) == 0;
        }
        void onFound(std::size_t phrase, std::size_t) {
            seen[phrase / 64] |= std::uint64_t{1} << (phrase % 64);
            report(indexes[phrase]);
        }
    };

    std::vector<std::string_view> texts_;
    // The same, packed.
    std::string bytes_;
    std::vector<phrases::TextPlace> places_;
    std::vector<std::string_view> shortPhrases_;
    std::vector<std::size_t> indexes_;
    std::vector<std::size_t> shortIndexes_;
    // Filled once; the view that fills them asks for what may be written.
    mutable std::vector<std::uint16_t> starts_;
    mutable std::vector<std::uint32_t> filter_;
    mutable std::vector<phrases::Window> windows_;
};

}  // namespace bouncecheck
