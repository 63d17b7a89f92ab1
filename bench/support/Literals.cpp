#include "bench/support/Literals.h"

#include <set>

#include <bouncecheck/PhraseList.h>
#include "bounce/LastResort.h"
#include "phrases/Matcher.h"
#include "text/Ascii.h"

namespace bouncecheck::bench {
namespace {

class LiteralList {
public:
    void addEntry(std::string_view entry) {
        // "[context]marker" and "[[context]marker"
        if (entry.starts_with('[')) {
            const std::size_t begin = entry.starts_with("[[") ? 2 : 1;
            const std::size_t end = entry.find(']');
            if (end != std::string_view::npos) {
                addPieces(entry.substr(begin, end - begin));
                entry.remove_prefix(end + 1);
            }
        }
        addPieces(entry);
    }

    std::vector<std::string> take() { return std::move(literals_); }

private:
    void addPieces(std::string_view pattern) {
        for (;;) {
            const std::string_view piece = pattern.substr(0, pattern.find('*'));
            if (piece.size() >= phrases::shortest && seen_.insert(ascii::lowerCase(piece)).second) {
                literals_.emplace_back(piece);
            }
            if (piece.size() == pattern.size()) return;
            pattern.remove_prefix(piece.size() + 1);
        }
    }

    std::vector<std::string> literals_;
    std::set<std::string> seen_;
};

char rotated(char c) noexcept {
    if (!ascii::isAlpha(c)) return c;
    const char first = ascii::toLower(c) == c ? 'a' : 'A';
    return static_cast<char>(first + (c - first + 13) % 26);
}

}  // namespace

std::vector<std::string> tableLiterals() {
    LiteralList list;
    for (const PhraseList& table : allPhraseLists()) {
        for (const char* phrase : table.rows) list.addEntry(phrase);
    }
    for (const BounceRule& rule : lastResortRules()) list.addEntry(rule.phrase);
    return list.take();
}

std::vector<std::string> rotatedLiterals(const std::vector<std::string>& literals) {
    std::vector<std::string> rotatedOnes = literals;
    for (std::string& literal : rotatedOnes) {
        for (char& c : literal) c = rotated(c);
    }
    return rotatedOnes;
}

std::vector<std::string_view> viewsOf(const std::vector<std::string>& strings) {
    return {strings.begin(), strings.end()};
}

}  // namespace bouncecheck::bench
