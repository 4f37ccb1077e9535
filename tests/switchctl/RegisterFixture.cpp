#include "tests/switchctl/RegisterFixture.hpp"

#include <algorithm>

#include "switchctl/register/RegisterCommand.hpp"

chips::ExitStatus RegisterFixture::run(std::vector<std::string> arguments) {
    out.str("");
    errors.str("");
    CLI::App program;
    switchctl::registers::RegisterCommand const command(program, memoryDevice);
    arguments.insert(arguments.begin(), "register");
    std::reverse(arguments.begin(), arguments.end());
    program.parse(arguments);
    EXPECT_TRUE(command.isChosen());
    return command.run(out, errors);
}

std::string RegisterFixture::outputOf(std::vector<std::string> const& arguments) {
    EXPECT_EQ(run(arguments), chips::ExitStatus::success) << errors.str();
    return out.str();
}
