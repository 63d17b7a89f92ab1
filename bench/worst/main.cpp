// Runs families of messages that are meant to cost much, at growing sizes, each
// in a process of its own, and prints what a byte of them costs and how much
// memory they take. Fails when one goes beyond the limits.

#include <malloc.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <exception>
#include <iostream>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "bench/worst/Families.h"
#include "bench/worst/Forms.h"
#include "bench/worst/Measure.h"

namespace bouncecheck::bench {
namespace {

constexpr std::size_t megabyte = 1'000'000;
constexpr std::size_t smallBytes = 10'000;

/// Time per byte at the largest size against the smallest.
constexpr double mostGrowth = 1.5;
/// What takes less of the time of ordinary mail grows with the time that memory takes, when the
/// message no longer fits into a cache.
constexpr double growingTimesOrdinary = 0.1;
/// Time per byte against ordinary mail.
constexpr double mostTimesOrdinary = 25;
/// Memory: a multiple of the message, and a constant besides.
constexpr double mostTimesMessage = 3;
constexpr double memoryBesides = 16.0 * 1024 * 1024;

class UsageError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Options {
    std::vector<std::string_view> families;
    std::vector<std::size_t> megabytes = {1, 4, 16, 64};
    std::string folder = SAMPLES_DIR;
    /// Null to classify only.
    const Form* form = nullptr;
    unsigned seconds = 60;
    bool list = false;
};

template <class Number>
Number positive(std::string_view text) {
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number == 0) {
        throw UsageError("'" + std::string(text) + "' is no positive number");
    }
    return number;
}

std::vector<std::size_t> sizesFrom(std::string_view text) {
    std::vector<std::size_t> sizes;
    for (;;) {
        const std::string_view one = text.substr(0, text.find(','));
        sizes.push_back(positive<std::size_t>(one));
        if (one.size() == text.size()) break;
        text.remove_prefix(one.size() + 1);
    }
    std::ranges::sort(sizes);
    return sizes;
}

const Form* formNamed(std::string_view name) {
    const auto found = std::ranges::find(forms(), name, &Form::name);
    if (found == forms().end()) {
        std::string problem = "no form '" + std::string(name) + "'; there are";
        for (const Form& form : forms()) problem.append(" ").append(form.name);
        throw UsageError(problem);
    }
    return &*found;
}

Options optionsFrom(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view option = argv[i];
        if (option == "--list") {
            options.list = true;
            continue;
        }
        const std::string_view value = i + 1 < argc ? argv[++i] : "";
        if (option == "--family") {
            options.families.push_back(value);
        } else if (option == "--sizes") {
            options.megabytes = sizesFrom(value);
        } else if (option == "--form") {
            options.form = formNamed(value);
        } else if (option == "--folder") {
            options.folder = value;
        } else if (option == "--seconds") {
            options.seconds = positive<unsigned>(value);
        } else {
            throw UsageError("unknown option " + std::string(option));
        }
    }
    return options;
}

std::vector<Family> chosen(const Options& options) {
    std::vector<Family> all;
    for (const auto& group :
         {headerFamilies(), structureFamilies(), encodingFamilies(), textFamilies(),
          mailboxFamilies(), outputFamilies(), recipientFamilies()}) {
        all.insert(all.end(), group.begin(), group.end());
    }
    if (options.families.empty()) return all;
    std::vector<Family> some;
    for (const std::string_view name : options.families) {
        const auto found = std::ranges::find(all, name, &Family::name);
        if (found == all.end())
            throw UsageError("no family " + std::string(name) + " (see --list)");
        some.push_back(*found);
    }
    return some;
}

/// What one family costs at one size.
struct Cost {
    Outcome::End end = Outcome::End::well;
    double secondsPerByte = 0;
    double peakBytes = 0;
    double messageBytes = 0;

    double timesMessage() const { return peakBytes / messageBytes; }
    bool isTooMuchMemory() const {
        return peakBytes > mostTimesMessage * messageBytes + memoryBesides;
    }
};

/// What takes little is run more often, since little disturbs it much.
constexpr int mostRuns = 7;
constexpr double enoughSeconds = 1;

Cost costOf(const Family& family, std::size_t megabytes, const Options& options) {
    const std::size_t bytes = megabytes * megabyte;
    Cost cost;
    cost.messageBytes = static_cast<double>(bytes);
    cost.secondsPerByte = std::numeric_limits<double>::max();
    double spent = 0;
    for (int run = 0; run < mostRuns && spent < enoughSeconds; ++run) {
        const Outcome outcome = inProcess(
            [&] { return family.seconds(family.make(bytes), options.form); }, options.seconds);
        spent += outcome.result;
        cost.end = outcome.end;
        cost.peakBytes = std::max(cost.peakBytes, outcome.peakBytes);
        cost.secondsPerByte = std::min(cost.secondsPerByte, outcome.result / cost.messageBytes);
        if (cost.end != Outcome::End::well) break;
    }
    return cost;
}

/// What a small message of the family costs, in seconds a byte: such come in floods.
Outcome costOfSmall(const Family& family, const Options& options) {
    constexpr int runs = 20;
    return inProcess(
        [&] {
            const std::string message = family.make(smallBytes);
            double best = std::numeric_limits<double>::max();
            for (int i = 0; i < runs; ++i) {
                best = std::min(best, family.seconds(message, options.form));
            }
            return best / static_cast<double>(message.size());
        },
        options.seconds);
}

std::string formatted(const char* format, double value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

/// Prints one row; false when the family goes beyond a limit.
bool measure(const Family& family, const Options& options, double ordinary) {
    std::vector<std::string> beyond;
    std::vector<Cost> costs;
    std::printf("%-26.*s", static_cast<int>(family.name.size()), family.name.data());
    const Outcome small = costOfSmall(family, options);
    std::printf("%8s", formatted("%.2f", 1e9 * small.result).c_str());
    for (const std::size_t size : options.megabytes) {
        if (!costs.empty() && costs.back().end != Outcome::End::well) {
            std::printf("%8s", "-");
            continue;
        }
        costs.push_back(costOf(family, size, options));
        const bool isLate = costs.back().end == Outcome::End::outOfTime;
        const std::string text = costs.back().end == Outcome::End::well
                                     ? formatted("%.2f", 1e9 * costs.back().secondsPerByte)
                                 : isLate ? "late"
                                          : "crash";
        std::printf("%8s", text.c_str());
        std::fflush(stdout);
    }

    if (costs.back().end == Outcome::End::outOfTime) beyond.emplace_back("out of time");
    if (costs.back().end == Outcome::End::crashed) beyond.emplace_back("crashed");
    const bool lastIsKnown = costs.back().end == Outcome::End::well;
    const double growth =
        lastIsKnown ? costs.back().secondsPerByte / costs.front().secondsPerByte : 0;
    const bool isCheap = costs.back().secondsPerByte < growingTimesOrdinary * ordinary;
    if (growth > mostGrowth && !isCheap) beyond.emplace_back("growth");
    if (small.end != Outcome::End::well) beyond.emplace_back("small ones fail");
    const double dearest =
        std::max(small.result, std::ranges::max(costs, {}, &Cost::secondsPerByte).secondsPerByte);
    if (dearest > mostTimesOrdinary * ordinary) beyond.emplace_back("time");
    const bool isTooMuchMemory = std::ranges::any_of(costs, &Cost::isTooMuchMemory);
    if (isTooMuchMemory) beyond.emplace_back("memory");

    std::printf("%8s%8s%8s ", lastIsKnown ? formatted("%.2f", growth).c_str() : "-",
                formatted("%.2f", dearest / ordinary).c_str(),
                formatted("%.2f", costs.back().timesMessage()).c_str());
    for (const std::string& limit : beyond) std::printf(" %s", limit.c_str());
    std::printf("%s\n", beyond.empty() ? "" : " !");
    std::fflush(stdout);
    return beyond.empty();
}

int run(const Options& options) {
    // Left alone, malloc keeps what was freed of small messages and takes what large
    // ones need from the kernel anew, which costs more than reading mail does.
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
    const std::vector<Family> families = chosen(options);
    if (options.list) {
        for (const Family& family : families) std::cout << family.name << '\n';
        return 0;
    }
    // What a family makes once, it makes here and not in each process.
    for (const Family& family : families) family.make(megabyte / 100);

    const Outcome ordinary = inProcess(
        [&] { return ordinarySecondsPerByte(options.folder, options.form); }, options.seconds);
    if (ordinary.end != Outcome::End::well) {
        throw std::runtime_error(options.folder + ": its messages cannot be measured");
    }
    std::printf("Ordinary mail takes %.2f ns a byte (median of the messages of %s).\n\n",
                1e9 * ordinary.result, options.folder.c_str());
    std::printf("%-26s%8s", "ns a byte at MB:", "0.01");
    for (const std::size_t size : options.megabytes) std::printf("%8zu", size);
    std::printf("%8s%8s%8s\n", "growth", "x ord.", "x mem.");

    std::size_t beyond = 0;
    for (const Family& family : families) {
        // What others do on the machine passes; what the family does, stays.
        const bool isWithin =  // NOLINTNEXTLINE(misc-redundant-expression): the second time
            measure(family, options, ordinary.result) || measure(family, options, ordinary.result);
        beyond += isWithin ? 0 : 1;
    }
    std::printf(
        "\n%zu families, %zu beyond a limit: growth %.1f (largest to smallest size), time %.0f\n"
        "times that of ordinary mail, memory %.0f times the message and %.0f MiB.\n",
        families.size(), beyond, mostGrowth, mostTimesOrdinary, mostTimesMessage,
        memoryBesides / 1024 / 1024);
    return beyond > 0 ? 1 : 0;
}

}  // namespace
}  // namespace bouncecheck::bench

int main(int argc, char** argv) {
    try {
        return bouncecheck::bench::run(bouncecheck::bench::optionsFrom(argc, argv));
    } catch (const bouncecheck::bench::UsageError& error) {
        std::cerr << "bench/adversarial: " << error.what() << '\n';
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "bench/adversarial: " << error.what() << '\n';
        return 1;
    }
}
