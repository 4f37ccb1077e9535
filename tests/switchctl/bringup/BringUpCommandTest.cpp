#include "switchctl/bringup/BringUpCommand.hpp"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>
#include <string>

#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using switchctl::bringup::BringUpCommand;
using switchctl::bringup::FindingCounts;
using test_support::CommandRun;
using test_support::TemporaryFile;

namespace {

/// Runs the command in this process, so that no test ever meets the memory of the machine.
class BringUpCommandTest : public testing::Test {
protected:
    chips::ExitStatus run(std::string const& arguments, std::string const& memoryDevice) {
        std::istringstream words("bring-up " + document.path() + " " + arguments);
        auto const noFindings = [](reference_host::XmlDocument&) { return FindingCounts(); };
        CommandRun const run = CommandRun::of<BringUpCommand>({std::istream_iterator<std::string>(words), {}},
                                                              memoryDevice, noFindings);
        out << run.out;
        errors << run.errors;
        return run.status;
    }

    TemporaryFile document{"<switches><switch id='0' switchModel='88e6096'>"
                           "<port id='0' connectedTo='cpu' portStatus='forwarding'/></switch></switches>"};
    std::ostringstream out;
    std::ostringstream errors;
};

TEST_F(BringUpCommandTest, RefusesABoardWithoutMemoryDevice) {
    EXPECT_EQ(run("", "/nonexistent/mem"), chips::ExitStatus::noHardware);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(errors.str(), "switchctl: /nonexistent/mem: No such file or directory (the switches are "
                            "reached through this device; see --simulate)\n");
}

TEST_F(BringUpCommandTest, NeedsNoMemoryDeviceToSimulate) {
    EXPECT_EQ(run("--simulate", "/nonexistent/mem"), chips::ExitStatus::success);
    EXPECT_EQ(errors.str(), "");
}

TEST_F(BringUpCommandTest, NeedsNoMemoryDeviceWithoutHardwareAccess) {
    EXPECT_EQ(run("--no-hardware-access", "/nonexistent/mem"), chips::ExitStatus::success);
    EXPECT_EQ(errors.str(), "");
    EXPECT_NE(out.str().find("switches: 1 of 1 found\n"), std::string::npos);
}

// A file of that size stands for a board whose MAC registers all read 0: the chip does not answer.
TEST_F(BringUpCommandTest, ABoardWithoutTheChipIsReported) {
    TemporaryFile const device;
    ASSERT_EQ(truncate(device.path().c_str(), 0x80011000), 0);
    EXPECT_EQ(run("", device.path()), chips::ExitStatus::switchMissing);
    EXPECT_NE(out.str().find("switches: 0 of 1 found\n"
                             "  switch 0  88e6096   missing: the chip does not answer\n"),
              std::string::npos)
        << out.str();
    EXPECT_EQ(errors.str(), "switchctl: " + document.path() + ": not every switch came up\n");
}

} // namespace
