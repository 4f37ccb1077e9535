#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "chips/ExitStatus.hpp"

/// Runs `switchctl register` in this process.
class RegisterFixture : public testing::Test {
protected:
    /// \param arguments what follows "register"; parse errors are thrown on.
    chips::ExitStatus run(std::vector<std::string> arguments);

    /// As run(), and returns what was printed; expects success.
    std::string outputOf(std::vector<std::string> const& arguments);

    std::ostringstream out;
    std::ostringstream errors;
    std::string memoryDevice = "/nonexistent/mem";
};
