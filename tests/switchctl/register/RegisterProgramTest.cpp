#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/TemporaryFile.hpp"

using test_support::TemporaryFile;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string const minimalBoard = EXAMPLES_FOLDER "/trap-minimal.xml";

ChildProcess registers(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "register");
    return ChildProcess::runSwitchctl(arguments);
}

/// `switchctl simulate-controller` while it runs.
class ControllerProcess {
public:
    explicit ControllerProcess(std::string const& arguments)
        : _output(popen((SWITCHCTL_PROGRAM " simulate-controller " + arguments).c_str(), "r")) {}
    ~ControllerProcess() { pclose(_output); }
    ControllerProcess(ControllerProcess const&) = delete;
    ControllerProcess& operator=(ControllerProcess const&) = delete;

    std::string readLine() {
        std::array<char, 128> line{};
        return fgets(line.data(), line.size(), _output) == nullptr ? "" : line.data();
    }

private:
    FILE* _output;
};

TEST(RegisterProgramTest, ReadsOverTheParallelBus) {
    ChildProcess const child = registers({"read", "parallel", "--simulate", "system/CHIPID"});
    EXPECT_EQ(child.status, 0);
    EXPECT_EQ(child.out, "system/CHIPID (7.0/0x18) = 0x07390000\n"
                         "    Revision               31:28  0x0\n"
                         "    Product                27:12  0x7390\n"
                         "    Other                   11:0  0x0\n");
    EXPECT_EQ(child.errors, "");
}

TEST(RegisterProgramTest, TheLibrarysOutputStaysOutOfTheResults) {
    ChildProcess const child = registers({"read", "phy", "--serial", "--simulate", "--traffic", "3/2"});
    EXPECT_EQ(child.status, 0);
    EXPECT_EQ(child.out, "phy 3/Identifier1 (phy3/0x02) = 0x0007\n"
                         "    Identifier              15:0  0x7\n");
    EXPECT_EQ(child.errors, "to the controller:   \"i 3 2\\r\\n\"\n"
                            "from the controller: \"0x0007\\r\\n\"\n");
}

TEST(RegisterProgramTest, WritesAVlanEntryAndReadsItBackOverTheLine) {
    ChildProcess const child =
        registers({"write", "serial", "--simulate", "--traffic", "--yes", "analyser/VLANTIDX=10",
                   "analyser/VLANACCESS=0x10000022", "analyser/VLANACCESS=1", "--then-read", "2.0.0xD0"});
    EXPECT_EQ(child.status, 0);
    EXPECT_THAT(child.out, HasSubstr("analyser/VLANACCESS (2.0/0xd0) = 0x10000020\n"));
    EXPECT_THAT(child.errors, EndsWith("to the controller:   \"w 2 0 224 10\\r\\nw 2 0 208 268435490\\r\\n"
                                       "w 2 0 208 1\\r\\nr 2 0 208\\r\\n\"\n"
                                       "from the controller: \"0x10000020\\r\\n\"\n"));
}

TEST(RegisterProgramTest, DumpsShowWhatBringUpChanged) {
    TemporaryFile const fresh(registers({"dump", "smi", "--switch", "0", "--simulate"}).out);
    TemporaryFile const up(
        registers({"dump", "smi", "--switch", "0", "--simulate=" + minimalBoard, "--json"}).out);
    ChildProcess const child = registers({"diff", fresh.path(), up.path()});
    EXPECT_EQ(child.status, 1);
    EXPECT_THAT(child.out, HasSubstr("port 1/DefaultVLAN (0x11/0x07): 0x0001 -> 0x0005\n"
                                     "    DefaultVID: 0x1 -> 0x5\n"));
    EXPECT_EQ(registers({"diff", up.path(), up.path()}).status, 0);
}

TEST(RegisterProgramTest, StatusesTellTheReason) {
    EXPECT_EQ(registers({"write", "parallel", "--simulate", "2.0.5=1"}).status, 9);
    EXPECT_EQ(registers({"read", "smi", "--switch", "7", "--simulate=" + minimalBoard, "port0/3"}).status, 8);
    EXPECT_EQ(registers({"read", "serial", "--device", "/nonexistent/tty", "2.0.5"}).status, 4);
    EXPECT_EQ(registers({"diff", "/nonexistent/a", "/nonexistent/b"}).status, 3);
    EXPECT_EQ(registers({"read", "parallel", "--simulate", "2.0.999"}).status, 2);
}

TEST(RegisterProgramTest, WrongCommandLinesAreRefused) {
    std::vector<std::vector<std::string>> const commandLines = {
        {},
        {"peek"},
        {"read"},
        {"read", "parallel", "--simulate"},
        {"read", "usb", "--simulate", "2.0.5"},
        {"read", "smi", "--simulate", "port0/3"},
        {"read", "smi", "--switch", "32", "--simulate", "port0/3"},
        {"read", "serial", "--simulate", "--device", "/dev/null", "2.0.5"},
        {"read", "serial", "--traffic", "2.0.5"},
        {"read", "phy", "--simulate", "3/2"},
        {"read", "phy", "--parallel", "--serial", "--simulate", "3/2"},
        {"read", "phy", "--parallel", "--switch", "0", "--simulate", "3/2"},
        {"write", "parallel", "--simulate", "--yes"},
        {"dump", "parallel", "--simulate", "2.0.5"},
        {"diff", "a"},
    };
    for (auto const& arguments : commandLines) {
        ChildProcess const child = registers(arguments);
        EXPECT_EQ(child.status, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(child.out, "") << testing::PrintToString(arguments);
        EXPECT_NE(child.errors, "") << testing::PrintToString(arguments);
    }
}

TEST(RegisterProgramTest, HelpHasExamplesAndStatuses) {
    ChildProcess const child = registers({"--help"});
    EXPECT_EQ(child.status, 0);
    EXPECT_THAT(child.out, HasSubstr("\nExamples:\n  switchctl register read parallel system/CHIPID\n"));
    EXPECT_THAT(child.out, HasSubstr("\nExit status:\n  0  done; of diff: the dumps are equal\n"));
    EXPECT_THAT(registers({"read", "serial", "--help"}).out, HasSubstr("\n  8  a register could not be"));
    EXPECT_THAT(registers({"dump", "--help"}).out,
                HasSubstr("A dump only has registers that can be read without changing the chip."));
}

TEST(RegisterProgramTest, AControllerCanBeServedToOtherPrograms) {
    TemporaryFile const place;
    std::string const link = place.path() + ".line";
    ControllerProcess controller("--fresh --link " + link + " & echo $!; wait");
    pid_t const server = std::stoi(controller.readLine());
    EXPECT_THAT(controller.readLine(), StartsWith("/dev/"));
    EXPECT_THAT(registers({"read", "serial", "--device", link, "system/CHIPID"}).out,
                StartsWith("system/CHIPID (7.0/0x18) = 0x07390000\n"));
    EXPECT_EQ(registers({"write", "serial", "--device", link, "--yes", "analyser/VLANTIDX=10"}).status, 0);
    EXPECT_THAT(registers({"read", "serial", "--device", link, "analyser/VLANTIDX"}).out,
                HasSubstr("= 0x0000000a\n"));
    EXPECT_EQ(kill(server, SIGTERM), 0);
    EXPECT_EQ(controller.readLine(), "");
    EXPECT_NE(access(link.c_str(), F_OK), 0);
}

TEST(RegisterProgramTest, AControllerNeedsAVsc7390) {
    ChildProcess const child = ChildProcess::runSwitchctl({"simulate-controller", minimalBoard});
    EXPECT_EQ(child.status, 4);
    EXPECT_EQ(child.errors, "switchctl: " + minimalBoard + ": the board has no VSC7390\n");
    EXPECT_EQ(ChildProcess::runSwitchctl({"simulate-controller"}).status, 2);
    EXPECT_EQ(ChildProcess::runSwitchctl({"simulate-controller", "/nonexistent/board.xml"}).status, 3);
    EXPECT_EQ(ChildProcess::runSwitchctl({"simulate-controller", "--fresh", "--link", "/tmp"}).status, 4);
}

} // namespace
