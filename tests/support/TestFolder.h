#pragma once

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace bouncecheck {

/// Makes an empty folder, which no other test and no other run of the tests has.
inline std::filesystem::path makeTestFolder() {
    std::string name = testing::TempDir() + "bouncecheck-XXXXXX";
    if (!mkdtemp(name.data())) throw std::system_error(errno, std::generic_category(), name);
    return name;
}

}  // namespace bouncecheck
