#include "tests/switchctl/RegisterFixture.hpp"

#include <algorithm>

#include "switchctl/registers/RegisterCommand.hpp"

switchctl::ExitStatus RegisterFixture::run(std::vector<std::string> arguments) {
    out.str("");
    errors.str("");
    CLI::App program;
    switchctl::RegisterCommand const command(program, memoryDevice);
    arguments.insert(arguments.begin(), "register");
    std::reverse(arguments.begin(), arguments.end());
    program.parse(arguments);
    EXPECT_TRUE(command.isChosen());
    return command.run(out, errors);
}

std::string RegisterFixture::outputOf(std::vector<std::string> const& arguments) {
    EXPECT_EQ(run(arguments), switchctl::ExitStatus::success) << errors.str();
    return out.str();
}
