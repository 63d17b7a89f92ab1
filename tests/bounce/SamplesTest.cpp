#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

#include "support/Classification.h"

namespace bouncecheck {
namespace {

namespace fs = std::filesystem;

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The rows of the table by file: type, label and address, divided by tabs.
std::map<std::string, std::string> expectedVerdicts() {
    std::map<std::string, std::string> expected;
    std::istringstream table(readFile(SAMPLES_TABLE));
    for (std::string line; std::getline(table, line);) {
        const std::size_t tab = line.find('\t');
        expected[line.substr(0, tab)] = line.substr(tab + 1);
    }
    return expected;
}

std::string orDash(const std::string& text) { return text.empty() ? "-" : text; }

TEST(Samples, YieldWhatTheTableSays) {
    auto expected = expectedVerdicts();
    for (const auto& entry : fs::directory_iterator(SAMPLES_DIR)) {
        const std::string name = entry.path().filename().string();
        const Classification result = classified(readFile(entry.path()));
        EXPECT_EQ(std::to_string(result.type) + '\t' + orDash(result.label) + '\t' +
                      orDash(result.address),
                  expected[name])
            << name;
        expected.erase(name);
    }
    for (const auto& [name, row] : expected) ADD_FAILURE() << "no sample for the row " << name;
}

/// The lines of `text`, however they end, with `lineEnd` behind each.
std::string withLineEnds(const std::string& text, std::string_view lineEnd) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        if (text[i] == '\r' || text[i] == '\n') {
            out += lineEnd;
        } else {
            out += text[i];
        }
    }
    return out;
}

TEST(Samples, MeanTheSameHoweverTheyAreStored) {
    for (const auto& entry : fs::directory_iterator(SAMPLES_DIR)) {
        SCOPED_TRACE(entry.path().filename().string());
        const std::string message = readFile(entry.path());
        const Classification asOnTheWire = classified(withLineEnds(message, "\r\n"));
        EXPECT_EQ(classified(withLineEnds(message, "\n")), asOnTheWire);
        EXPECT_EQ(classified(withLineEnds(message, "\r")), asOnTheWire);
        EXPECT_EQ(classified("From x@y.example Sat Nov 21 10:00:00 2026\n" + message), asOnTheWire);
    }
}

}  // namespace
}  // namespace bouncecheck
