#include "tests/switchctl/register/RegisterFixture.hpp"

#include "switchctl/register/RegisterCommand.hpp"
#include "tests/support/CommandRun.hpp"

chips::ExitStatus RegisterFixture::run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "register");
    auto const run =
        test_support::CommandRun::of<switchctl::registers::RegisterCommand>(arguments, memoryDevice);
    out.str(run.out);
    errors.str(run.errors);
    return run.status;
}

std::string RegisterFixture::outputOf(std::vector<std::string> const& arguments) {
    EXPECT_EQ(run(arguments), chips::ExitStatus::success) << errors.str();
    return out.str();
}
