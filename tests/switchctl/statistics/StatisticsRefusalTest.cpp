// What `switchctl statistics` does not do, and how it says so.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <cstddef>

#include "StatisticsBench.hpp"
#include "switchctl/statistics/StatisticsCommand.hpp"
#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using switchctl::statistics::StatisticsCommand;
using test_support::CommandRun;
using test_support::TemporaryFile;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

constexpr char const* mixedBoard = EXAMPLES_FOLDER "/trap-mixed.xml";
constexpr char const* minimal = EXAMPLES_FOLDER "/trap-minimal.xml";

CommandRun refused(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "statistics");
    return CommandRun::of<StatisticsCommand>(arguments, std::string("/nonexistent/mem"));
}

struct Refusal {
    std::vector<std::string> arguments;
    std::string reason;
};

/// What tells the cases apart, of characters that names of tests may have.
void PrintTo(Refusal const& refusal, std::ostream* out) {
    for (std::size_t index = 1; index < refusal.arguments.size(); ++index) {
        for (char const character : refusal.arguments[index]) {
            *out << (std::isalnum(static_cast<unsigned char>(character)) != 0 ? character : '_');
        }
    }
}

class RefusedArgumentTest : public testing::TestWithParam<Refusal> {};
class RefusedByParserTest : public testing::TestWithParam<Refusal> {};

} // namespace

TEST_P(RefusedArgumentTest, IsNamedWithTheReason) {
    CommandRun const run = refused(GetParam().arguments);
    EXPECT_EQ(run.status, chips::ExitStatus::usage);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.errors, "switchctl: " + GetParam().reason + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Arguments, RefusedArgumentTest,
    testing::Values(
        Refusal{{mixedBoard, "4.1", "--simulate"},
                "port \"4.1\": " + std::string(mixedBoard) + " has no switch 4 (it has 0, 1, 2, 3)"},
        Refusal{{mixedBoard, "0.11", "--simulate"},
                "port \"0.11\": switch 0 (88e6096) has the ports 0 to 10"},
        Refusal{{mixedBoard, "3.24", "--simulate"},
                "port \"3.24\": switch 3 (vsc7390) has the ports 0 to 23"},
        Refusal{{minimal, "0.5", "--simulate"},
                "port \"0.5\": switch 0 (88e6096) has no port 5 in " + std::string(minimal)},
        Refusal{{mixedBoard, "0-1", "--simulate"}, "port \"0-1\": not of the form SWITCH.PORT"},
        Refusal{{mixedBoard, "0.1x", "--simulate"}, "port \"0.1x\": not of the form SWITCH.PORT"},
        Refusal{{mixedBoard, "0.1", "--simulate", "--seed", "0.1/inUnicast"},
                "\"0.1/inUnicast\": not of the form SWITCH.PORT/COUNTER=VALUE[+STEP]"},
        Refusal{{mixedBoard, "0.1", "--simulate", "--seed", "0.1/inGoodandBadOctets=1"},
                "\"0.1/inGoodandBadOctets=1\": a port of a 88e6096 has no counter \"inGoodandBadOctets\""},
        Refusal{{mixedBoard, "0.1", "--simulate", "--seed", "0.2/inUnicast=1"},
                "\"0.2/inUnicast=1\": port 0.2 is not one of those that are read"},
        Refusal{{mixedBoard, "0.1", "--simulate", "--seed", "0.1/inFiltered=65536"},
                "\"0.1/inFiltered=65536\": inFiltered takes decimal numbers up to 65535"},
        Refusal{{mixedBoard, "0.1", "--simulate", "--seed", "0.1/inUnicast=1+0x2"},
                "\"0.1/inUnicast=1+0x2\": inUnicast takes decimal numbers up to 4294967295"}));

TEST_P(RefusedByParserTest, IsNamedWithTheReason) {
    CommandRun const run = refused(GetParam().arguments);
    EXPECT_EQ(run.status, chips::ExitStatus::usage);
    EXPECT_THAT(run.errors, HasSubstr(GetParam().reason));
}

INSTANTIATE_TEST_SUITE_P(
    Options, RefusedByParserTest,
    testing::Values(Refusal{{}, "BOARD.xml is required"},
                    Refusal{{mixedBoard, "--format", "xml"}, "--format: xml not in {text,json,openmetrics}"},
                    Refusal{{mixedBoard, "--watch", "0"}, "--watch: Value 0 not in range"},
                    Refusal{{mixedBoard, "--watch", "soon"}, "--watch"},
                    Refusal{{mixedBoard, "--watch", "1", "--count", "0"}, "--count: Value 0 not in range"},
                    Refusal{{mixedBoard, "--count", "1"}, "--count requires --watch"},
                    Refusal{{mixedBoard, "--seed", "0.1/inUnicast=1"}, "--seed requires --simulate"},
                    Refusal{{mixedBoard, "--watch", "1", "--format", "openmetrics"},
                            "--watch: shows rates as text or json, not as openmetrics"}));

TEST(StatisticsRefusalTest, HardwareThatIsNotThere) {
    CommandRun const run = refused({mixedBoard, "0.1"});
    EXPECT_EQ(run.status, chips::ExitStatus::noHardware);
    EXPECT_THAT(run.errors, StartsWith("switchctl: /nonexistent/mem: No such file or directory"));
}

TEST(StatisticsRefusalTest, ADocumentThatIsNotThere) {
    CommandRun const run = refused({"/nonexistent/board.xml", "--simulate"});
    EXPECT_EQ(run.status, chips::ExitStatus::badDocument);
    EXPECT_THAT(run.errors, HasSubstr("/nonexistent/board.xml"));
}

TEST(StatisticsRefusalTest, ADocumentWithoutPorts) {
    TemporaryFile const board("<switches/>");
    CommandRun const run = refused({board.path(), "--simulate"});
    EXPECT_EQ(run.status, chips::ExitStatus::badDocument);
    EXPECT_EQ(run.errors, "switchctl: " + board.path() + ": the document has no port of a known switch\n");
}

TEST(StatisticsRefusalTest, PortsThatTheChipDoesNotHaveAreNamedAsUnread) {
    TemporaryFile const board("<switches><switch id='0' switchModel='88e6096'>\n"
                              "<port id='0' connectedTo='cpu' portStatus='forwarding'/>\n"
                              "<port id='30' connectedTo='external' portStatus='forwarding'/>\n"
                              "<port id='one' connectedTo='external' portStatus='forwarding'/>\n"
                              "</switch></switches>");
    CommandRun const run = refused({board.path(), "--simulate", "--format", "json"});
    EXPECT_EQ(run.status, chips::ExitStatus::noStatistics);
    EXPECT_THAT(run.out, HasSubstr("\"port\": 0"));
    EXPECT_EQ(
        run.errors,
        "switchctl: port 30 of switch 0, line 3: the chip (88e6096) has the ports 0 to 10\n"
        "switchctl: port without a number of switch 0, line 4: the chip (88e6096) has the ports 0 to 10\n");
}

TEST(StatisticsRefusalTest, ABoardThatDoesNotComeUp) {
    TemporaryFile const other("<switches/>");
    CommandRun const run = refused({mixedBoard, "0.1", "--simulate=" + other.path()});
    EXPECT_EQ(run.status, chips::ExitStatus::startUpFailed);
    EXPECT_THAT(run.errors, HasSubstr(other.path()));
}

TEST(StatisticsRefusalTest, ASeedForAChipThatTheOtherBoardHasNot) {
    CommandRun const run =
        refused({mixedBoard, "1.3", "--simulate=" + std::string(minimal), "--seed", "1.3/inUnicast=1"});
    EXPECT_EQ(run.status, chips::ExitStatus::usage);
    EXPECT_EQ(run.errors, "switchctl: \"1.3/inUnicast=1\": the simulated board has no such port\n");
}
