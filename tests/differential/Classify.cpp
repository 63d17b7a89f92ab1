// Classifies the messages of a folder and mutations of them with one of the engines, and
// prints a line for each: what the engines print must be the same, and what two builds
// print.
//
//   classify_messages pass|plain FOLDER MUTATIONS

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <bouncecheck/LogTrace.h>
#include <bouncecheck/PhraseList.h>
#include "bounce/MessageClassifier.h"
#include "mime/Entity.h"

namespace {

using namespace bouncecheck;

std::vector<std::string> messagesOf(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) paths.push_back(entry.path());
    }
    std::ranges::sort(paths);
    std::vector<std::string> messages;
    for (const auto& path : paths) {
        std::ifstream file(path, std::ios::binary);
        messages.emplace_back(std::istreambuf_iterator<char>(file),
                              std::istreambuf_iterator<char>());
    }
    return messages;
}

/// Makes messages out of others: with pieces missing, twice, from elsewhere, with
/// phrases of the tables, with bytes changed.
class Mutator {
public:
    explicit Mutator(const std::vector<std::string>& messages) : messages_(messages) {
        for (const PhraseList& list : allPhraseLists()) {
            phrases_.insert(phrases_.end(), list.rows.begin(), list.rows.end());
        }
    }

    std::string next() {
        std::string text = oneOf(messages_);
        for (std::size_t left = 1 + below(6); left > 0; --left) change(text);
        return text;
    }

private:
    std::size_t below(std::size_t limit) { return limit > 0 ? random_() % limit : 0; }
    template <class T>
    const T& oneOf(const std::vector<T>& all) {
        return all[below(all.size())];
    }

    std::string_view stretchOf(std::string_view text) {
        return text.substr(below(text.size() + 1), below(200));
    }

    void change(std::string& text) {
        const std::size_t at = below(text.size() + 1);
        switch (below(7)) {
            case 0: text.erase(at, below(200)); break;
            case 1: text.insert(at, std::string(stretchOf(text))); break;
            case 2: text.insert(at, stretchOf(oneOf(messages_))); break;
            case 3: text.insert(at, oneOf(phrases_)); break;
            case 4: insertInSubject(text, oneOf(phrases_)); break;
            case 5: text.resize(at); break;
            case 6:
                if (at < text.size()) text[at] = static_cast<char>(random_());
                break;
        }
    }

    static void insertInSubject(std::string& text, std::string_view phrase) {
        constexpr std::string_view name = "Subject: ";
        const std::size_t at = text.find(name);
        if (at != text.npos) text.insert(at + name.size(), phrase);
    }

    const std::vector<std::string>& messages_;
    std::vector<std::string> phrases_;
    std::mt19937 random_{20};  // NOLINT: the same numbers in each build
};

/// FNV-1a.
class Hash {
public:
    void take(std::string_view text) {
        for (const char c : text) value_ = (value_ ^ static_cast<unsigned char>(c)) * 0x100000001B3;
        value_ *= 0x100000001B3;
    }
    std::uint64_t value() const { return value_; }

private:
    std::uint64_t value_ = 0xCBF29CE484222325;
};

void print(MessageClassifier& classifier, const std::string& message) {
    LogTrace log;
    const ClassifiedMessage result = classifier.classify(Entity(message), log);
    Hash hash;
    hash.take(result.finding.address.text.view());
    hash.take(result.text.view());
    for (const LogTrace::Event& event : log.takeEvents()) {
        hash.take(event.text);
        hash.take(event.value.view());
    }
    std::printf("%d %016llx\n", result.type, static_cast<unsigned long long>(hash.value()));
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view engine = argc == 4 ? argv[1] : "";
    if (engine != "pass" && engine != "plain") {
        std::fprintf(stderr, "usage: %s pass|plain FOLDER MUTATIONS\n", argv[0]);
        return 2;
    }
    const std::vector<std::string> messages = messagesOf(argv[2]);
    if (messages.empty()) {
        std::fprintf(stderr, "%s: holds no file\n", argv[2]);
        return 1;
    }
    MessageClassifier classifier(engine == "pass" ? phrases::Engine::pass : phrases::Engine::plain);
    for (const std::string& message : messages) print(classifier, message);
    Mutator mutator(messages);
    for (long left = std::atol(argv[3]); left > 0; --left) print(classifier, mutator.next());
    return 0;
}
