#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "support/TestFolder.h"
#include "tool/ExitStatus.h"
#include "tool/Run.h"

namespace bouncecheck {

namespace fs = std::filesystem;
using Json = nlohmann::json;

struct ToolRun {
    int status;
    std::string out;
    std::string err;

    std::vector<Json> lines() const {
        std::vector<Json> all;
        std::istringstream stream(out);
        for (std::string line; std::getline(stream, line);) all.push_back(Json::parse(line));
        return all;
    }
};

inline ToolRun run(const std::vector<std::string>& arguments, const Terminal& terminal = {}) {
    std::vector<const char*> argv = {"bouncecheck"};
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    std::ostringstream out;
    std::ostringstream err;
    const int status = runTool(static_cast<int>(argv.size()), argv.data(), out, err, terminal);
    return {status, out.str(), err.str()};
}

/// Wrong usage is told of in one line, which holds `problem`.
inline void expectRefused(const std::vector<std::string>& arguments, const std::string& problem) {
    const ToolRun result = run(arguments);
    EXPECT_EQ(result.status, EXIT_WRONG_USAGE) << problem;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
    EXPECT_NE(result.err.find(problem), std::string::npos) << result.err;
}

/// A folder of its own for each test.
class Tool : public testing::Test {
protected:
    ~Tool() override { fs::remove_all(folder_); }

    std::string write(const std::string& name, const std::string& content) {
        fs::create_directories((folder_ / name).parent_path());
        std::ofstream(folder_ / name, std::ios::binary) << content;
        return path(name);
    }
    std::string path(const std::string& name = "") const { return (folder_ / name).string(); }

    const fs::path folder_ = makeTestFolder();
};

inline const char* const failedReport =
    "Subject: x\nContent-Type: multipart/report; boundary=b\n\n--b\n\nSorry \xff.\n"
    "--b\nContent-Type: message/delivery-status\n\n"
    "Final-Recipient: rfc822;a@x.example\nAction: failed\n--b--\n";

inline std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace bouncecheck
