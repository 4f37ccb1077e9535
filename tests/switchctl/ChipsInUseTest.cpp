// One process at a time uses a board's chips.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <sstream>
#include <string>
#include <vector>

#include "reference_host/DeviceMemory.hpp"
#include "switchctl/Program.hpp"
#include "tests/support/TemporaryFile.hpp"

using switchctl::ExitStatus;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

constexpr char const* board = EXAMPLES_FOLDER "/trap-minimal.xml";

/// A host on the reference host that has mapped a window, until it is killed.
class OtherHost {
public:
    explicit OtherHost(std::string const& device) {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe(ends.data()), 0);
        _id = ::fork();
        if (_id == 0) {
            reference_host::DeviceMemory memory(device);
            reference_host::PhysicalMemory::Mapping mapping;
            std::string reason;
            bool const isMapped = memory.map(0, 1, mapping, reason);
            bool const isTold = ::write(ends[1], "x", 1) == 1;
            while (isMapped && isTold) {
                ::pause();
            }
            ::_exit(1);
        }
        char byte = ' ';
        EXPECT_EQ(::read(ends[0], &byte, 1), 1);
        ::close(ends[0]);
        ::close(ends[1]);
    }
    ~OtherHost() {
        ::kill(_id, SIGKILL);
        ::waitpid(_id, nullptr, 0);
    }
    OtherHost(OtherHost const&) = delete;
    OtherHost& operator=(OtherHost const&) = delete;

    pid_t getId() const { return _id; }

private:
    pid_t _id = 0;
};

class ChipsInUseTest : public testing::TestWithParam<std::vector<std::string>> {
protected:
    ExitStatus run(std::vector<std::string> words) {
        std::ostringstream out;
        std::ostringstream text;
        ExitStatus const status = switchctl::Program(device.path()).run(words, out, text);
        errors = text.str();
        return status;
    }

    test_support::TemporaryFile device{std::string(4096, '\0')};
    std::string errors;
};

TEST_P(ChipsInUseTest, AreRefusedAtOnceWithNoWaitAndNameTheirUser) {
    OtherHost const host(device.path());
    std::vector<std::string> words = GetParam();
    words.insert(words.begin(), "--no-wait");
    EXPECT_EQ(run(words), ExitStatus::noHardware);
    EXPECT_THAT(errors, StartsWith("switchctl: " + device.path() + ": process " +
                                   std::to_string(host.getId()) + " ("));
    EXPECT_THAT(errors, HasSubstr(", running since 20"));
    words.front() = "--steal";
    EXPECT_EQ(run(words), ExitStatus::noHardware);
    EXPECT_THAT(errors, HasSubstr(" uses it, and has not ended"));
}

INSTANTIATE_TEST_SUITE_P(
    Verbs, ChipsInUseTest,
    testing::Values(std::vector<std::string>{"bring-up", board}, std::vector<std::string>{"audit", board},
                    std::vector<std::string>{"doctor", board}, std::vector<std::string>{"statistics", board},
                    std::vector<std::string>{"paths", board, "--live"},
                    std::vector<std::string>{"explain", board, "0.1", "to", "0.0", "--live"},
                    std::vector<std::string>{"register", "dump", "parallel"},
                    std::vector<std::string>{"register", "read", "smi", "--switch", "0",
                                             "port0/SwitchIdentifier"}));

TEST_F(ChipsInUseTest, OfASerialLineAreRefusedToo) {
    OtherHost const host(device.path());
    EXPECT_EQ(run({"--no-wait", "register", "read", "serial", "--device", device.path(), "system/CHIPID"}),
              ExitStatus::noHardware);
    EXPECT_THAT(errors, StartsWith("switchctl: " + device.path() + ": process "));
}

TEST_F(ChipsInUseTest, AreNobodysWhenTheyAreSimulated) {
    OtherHost const host(device.path());
    EXPECT_EQ(run({"--no-wait", "statistics", board, "--simulate", "--json"}), ExitStatus::success) << errors;
}

} // namespace
