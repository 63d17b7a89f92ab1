#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

#include "bounce/Classification.h"

namespace bouncecheck {
namespace {

namespace fs = std::filesystem;

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct Expected {
    std::string type;
    std::string label;
    std::string address;
};

std::map<std::string, Expected> expectedVerdicts() {
    std::map<std::string, Expected> expected;
    std::istringstream table(readFile(SAMPLES_TABLE));
    for (std::string line; std::getline(table, line);) {
        std::istringstream columns(line);
        std::string file;
        Expected row;
        std::getline(columns, file, '\t');
        std::getline(columns, row.type, '\t');
        std::getline(columns, row.label, '\t');
        std::getline(columns, row.address);
        expected[file] = row;
    }
    return expected;
}

std::string orDash(const std::string& text) { return text.empty() ? "-" : text; }

TEST(Samples, YieldWhatTheTableSays) {
    auto expected = expectedVerdicts();
    for (const auto& entry : fs::directory_iterator(SAMPLES_DIR)) {
        const std::string name = entry.path().filename().string();
        SCOPED_TRACE(name);
        ASSERT_TRUE(expected.contains(name)) << "the table lacks this sample";
        const Classification result = classified(readFile(entry.path()));
        EXPECT_EQ(std::to_string(result.type), expected[name].type);
        EXPECT_EQ(orDash(result.label()), expected[name].label);
        EXPECT_EQ(orDash(result.address), expected[name].address);
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

TEST(Samples, OpenAndCloseTheirContextsInPairs) {
    for (const auto& entry : fs::directory_iterator(SAMPLES_DIR)) {
        SCOPED_TRACE(entry.path().filename().string());
        std::vector<std::string> open;
        for (const LogTrace::Event& event : classified(readFile(entry.path())).trace) {
            if (event.kind == LogTrace::Kind::enter) open.push_back(event.text);
            if (event.kind != LogTrace::Kind::leave) continue;
            ASSERT_FALSE(open.empty());
            EXPECT_EQ(event.text, open.back());
            open.pop_back();
        }
        EXPECT_TRUE(open.empty());
    }
}

}  // namespace
}  // namespace bouncecheck
