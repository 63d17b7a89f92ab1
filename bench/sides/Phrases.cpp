// The phrase pass against Hyperscan: the same literals over the same texts, text
// by text. Says so and fails when one side finds what the other does not.

#include <hs/hs.h>

#include <cstring>
#include <memory>
#include <set>
#include <stdexcept>

#include "bench/PhrasePass.h"
#include "bench/sides/Sides.h"
#include "bench/support/Literals.h"
#include "bench/support/SearchedTexts.h"

namespace bouncecheck::bench {
namespace {

using Literals = std::vector<std::string>;
using Found = std::set<std::size_t>;

class Hyperscan {
public:
    /// `flags` besides those that make the search caseless.
    Hyperscan(const Literals& literals, unsigned flags) {
        std::vector<const char*> expressions;
        std::vector<unsigned> ids;
        std::vector<std::size_t> lengths;
        for (const std::string& literal : literals) {
            ids.push_back(static_cast<unsigned>(ids.size()));
            expressions.push_back(literal.data());
            lengths.push_back(literal.size());
        }
        const std::vector<unsigned> allFlags(literals.size(), HS_FLAG_CASELESS | flags);
        hs_database_t* database = nullptr;
        hs_compile_error_t* error = nullptr;
        if (hs_compile_lit_multi(expressions.data(), allFlags.data(), ids.data(), lengths.data(),
                                 static_cast<unsigned>(ids.size()), HS_MODE_BLOCK, nullptr,
                                 &database, &error) != HS_SUCCESS) {
            throw std::runtime_error(std::string("Hyperscan: ") + error->message);
        }
        database_.reset(database);
        hs_scratch_t* scratch = nullptr;
        if (hs_alloc_scratch(database, &scratch) != HS_SUCCESS) throw std::bad_alloc();
        scratch_.reset(scratch);
    }

    /// Calls `onFound(index)` for each match.
    template <class F>
    void scan(std::string_view text, F&& onFound) const {
        const auto onMatch = [](unsigned id, unsigned long long, unsigned long long, unsigned,
                                void* context) {
            (*static_cast<std::remove_reference_t<F>*>(context))(id);
            return 0;
        };
        if (hs_scan(database_.get(), text.data(), static_cast<unsigned>(text.size()), 0,
                    scratch_.get(), onMatch, &onFound) != HS_SUCCESS) {
            throw std::runtime_error("Hyperscan: a scan failed");
        }
    }

private:
    struct Free {
        void operator()(hs_database_t* database) const noexcept { hs_free_database(database); }
        void operator()(hs_scratch_t* scratch) const noexcept { hs_free_scratch(scratch); }
    };
    std::unique_ptr<hs_database_t, Free> database_;
    std::unique_ptr<hs_scratch_t, Free> scratch_;
};

template <class Search>
Found foundBy(const Search& search, std::string_view text) {
    Found found;
    search.scan(text, [&](std::size_t index) { found.insert(index); });
    return found;
}

template <class Search>
void timeSearch(std::string_view figure, const Search& search, const Literals& texts) {
    std::size_t found = 0;
    printTime(figure, [&] {
        for (const std::string& text : texts) search.scan(text, [&](std::size_t) { ++found; });
    });
    if (found == 0) throw std::runtime_error("no phrase stands in any text");
}

/// The literals and as many that stand in none of the texts.
Literals doubled(const Literals& literals, const Literals& texts) {
    const Literals twins = rotatedLiterals(literals);
    const PhrasePass pass(viewsOf(twins));
    Found present;
    for (const std::string& text : texts) present.merge(foundBy(pass, text));
    Literals all = literals;
    for (std::size_t i = 0; i < twins.size(); ++i) {
        if (!present.contains(i)) all.push_back(twins[i]);
    }
    return all;
}

int check(const Literals& texts, const PhrasePass& ours, const Hyperscan& theirs) {
    std::size_t found = 0;
    std::size_t different = 0;
    std::size_t bytes = 0;
    for (const std::string& text : texts) {
        const Found here = foundBy(ours, text);
        if (here != foundBy(theirs, text)) ++different;
        found += here.size();
        bytes += text.size();
    }
    std::cout << "texts\t" << texts.size() << "\nbytes\t" << bytes << "\nfound\t" << found << '\n';
    if (different == 0) return 0;
    std::cerr << "The phrases found differ in " << different << " texts.\n";
    return 1;
}

int run(std::string_view mode, const std::string& folder) {
    const Literals texts = searchedTexts(comparableMessages(folder));
    const Literals literals = tableLiterals();
    const PhrasePass ours(viewsOf(literals));
    const Hyperscan everyMatch(literals, 0);
    const Hyperscan firstMatch(literals, HS_FLAG_SINGLEMATCH);
    if (mode == "check") {
        std::cout << "literals\t" << literals.size() << '\n';
        return check(texts, ours, everyMatch) + check(texts, ours, firstMatch);
    }
    const Literals more = doubled(literals, texts);
    const PhrasePass oursDoubled(viewsOf(more));
    std::cout << "doubled-literals\t" << more.size() << '\n';
    timeSearch("phrases", ours, texts);
    timeSearch("phrases-doubled", oursDoubled, texts);
    timeSearch("hyperscan-every", everyMatch, texts);
    timeSearch("hyperscan-single", firstMatch, texts);
    return 0;
}

}  // namespace
}  // namespace bouncecheck::bench

int main(int argc, char** argv) {
    const std::string_view mode = argc == 3 ? argv[1] : "";
    if (mode != "check" && mode != "time") {
        std::cerr << "usage: " << argv[0] << " check|time FOLDER\n";
        return 2;
    }
    try {
        return bouncecheck::bench::run(mode, argv[2]);
    } catch (const std::exception& error) {
        std::cerr << argv[0] << ": " << error.what() << '\n';
        return 1;
    }
}
