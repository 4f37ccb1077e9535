#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/Examples.hpp"
#include "tests/support/TemporaryFile.hpp"

using test_support::minimal;
using test_support::TemporaryFile;
using testing::HasSubstr;
using testing::Not;

namespace {

ChildProcess bringUp(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"bring-up", minimal, "--simulate", "--accept-errors"});
    return ChildProcess::runSwitchctl(arguments);
}

/// The text with the numbers replaced that depend on how the chips are programmed.
std::string withoutEffort(std::string const& text) {
    static std::regex const effort("(register accesses|predicted [a-z-]+ time): [^\n]*");
    return std::regex_replace(text, effort, "$1: *");
}

std::string const minimalSummary =
    "check: 1 error, 2 warnings, 3 notes; \"switchctl check " + minimal +
    "\" shows them\n"
    "switches: 1 of 1 found\n"
    "  switch 0  88e6096   found, 4 ports\n"
    "ports\n"
    "  external          forwarding 0.1\n"
    "  cpu               forwarding 0.0\n"
    "  switchInterlink   forwarding 0.8 0.9\n"
    "VLANs\n"
    "  VLAN 5 (0x5, written \"5\")  tag-based: 0.0(validateTag/validateTag) 0.1(addTagIfUntagged/stripTag)\n"
    "trunks\n"
    "  switch 0 trunk 1 (not set up: the library has no trunks of an 88E6096): 0.8 0.9\n"
    "multicast groups\n"
    "  239.1.2.3 in VLAN 5 (0x5, written \"5\"): 0.1\n"
    "CPU port: 0.0\n"
    "register accesses: *\n"
    "predicted bus time: *\n"
    "predicted start-up time: *\n"
    "driver misuse seen by the models: 0\n";

std::string const minimalEnd = "warnings and errors: none\n"
                               "read back: 1 switch, 230 registers, 2 table entries, 0 deviations\n";

char const* const emptyStatistics =
    "inGoodOctets\t0000000000000000\tinBadOctets\t00000000\n"
    "inUnicast\t\t00000000\tinBroadcast\t00000000\tinMulticast\t00000000\tinPause\t00000000\n"
    "inUndersized\t\t00000000\tinFragments\t00000000\tinOversized\t00000000\n"
    "inJabber\t\t00000000\tinRxErr\t\t00000000\tinFCSErr\t00000000\n"
    "inDiscards\t0000000000000000\tinFiltered\t00000000\n"
    "octets64\t\t00000000\toctets65to127\t00000000\toctets128to255\t00000000\n"
    "octets256to511\t\t00000000\toctets512to1023\t00000000\toctets1024toMax\t00000000\n"
    "outOctets\t0000000000000000\n"
    "outUnicast\t\t00000000\toutBroadcast\t00000000\toutMulticast\t00000000\toutPause\t00000000\n"
    "deferred\t\t00000000\tcollisions\t00000000\tsingle\t\t00000000\tmultiple\t00000000\n"
    "excessive\t\t00000000\tlate\t\t00000000\toutFcsErr\t00000000\n"
    "outFiltered\t\t00000000\n";

TEST(BringUpProgramTest, PrintsTheSummary) {
    ChildProcess const child = bringUp({});
    EXPECT_EQ(child.status, 0);
    EXPECT_EQ(withoutEffort(child.out), minimalSummary + minimalEnd);
    EXPECT_EQ(child.errors, "");
}

TEST(BringUpProgramTest, PredictsTheTimeOnTheBoard) {
    ChildProcess const child = bringUp({});
    std::smatch found;
    ASSERT_TRUE(std::regex_search(
        child.out, found,
        std::regex("register accesses: (\\d+) in chips, by (\\d+) on the bus\n"
                   "predicted bus time: (\\d+\\.\\d{6}) s\npredicted start-up time: (\\d+\\.\\d{6}) s\n")))
        << child.out;
    EXPECT_GT(std::stoul(found[1]), 0U);
    EXPECT_GT(std::stoul(found[2]), std::stoul(found[1]));
    EXPECT_GT(std::stod(found[3]), 0.0);
    EXPECT_GE(std::stod(found[4]), std::stod(found[3]));
}

TEST(BringUpProgramTest, PrintsTheStatisticsOfEachPortThatIsNamed) {
    ChildProcess const child = bringUp({"--statistics", "0.1", "--statistics", "0.8"});
    EXPECT_EQ(child.status, 0);
    EXPECT_EQ(withoutEffort(child.out), minimalSummary + "statistics of port 0.1\n" + emptyStatistics +
                                            "statistics of port 0.8\n" + emptyStatistics + minimalEnd);
}

TEST(BringUpProgramTest, TheDocumentMayComeLast) {
    ChildProcess const child = ChildProcess::runSwitchctl(
        {"bring-up", "--simulate", "--accept-errors", "--statistics", "0.1", minimal});
    EXPECT_EQ(child.status, 0);
    EXPECT_THAT(child.out, HasSubstr("statistics of port 0.1\n"));
}

TEST(BringUpProgramTest, StatisticsOfNoPortAreAFailure) {
    ChildProcess const child = bringUp({"--statistics", "0.7", "--statistics", "0.1"});
    EXPECT_EQ(child.status, 6);
    EXPECT_THAT(child.out,
                HasSubstr("statistics of port 0.7\n  not available\nstatistics of port 0.1\ninGood"));
    EXPECT_EQ(child.errors, "switchctl: the statistics of port 0.7 could not be read\n");
}

TEST(BringUpProgramTest, ProgramOutputAndTraceAreTheSameOnEveryRun) {
    TemporaryFile const firstTrace;
    ChildProcess const first = bringUp({"--trace", firstTrace.path(), "--statistics", "0.1"});
    EXPECT_EQ(first.status, 0);
    EXPECT_THAT(firstTrace.content(),
                testing::ContainsRegex(" 0 smi R 0x10/0x03 port0/SwitchIdentifier 0x[0-9a-f]{4} ok\n"));
    for (int i = 0; i < 5; ++i) {
        TemporaryFile const trace;
        ChildProcess const again = bringUp({"--trace", trace.path(), "--statistics", "0.1"});
        EXPECT_EQ(again.out, first.out);
        EXPECT_EQ(trace.content(), firstTrace.content());
    }
}

TEST(BringUpProgramTest, TheTraceCanBeReplayed) {
    TemporaryFile const trace;
    bringUp({"--trace", trace.path()});
    ChildProcess const child = ChildProcess::runSwitchctl({"replay", trace.path()});
    EXPECT_EQ(child.status, 0) << child.out;
    EXPECT_EQ(child.errors, "");
}

TEST(BringUpProgramTest, WithoutHardwareAccessTheTraceHasNoAccess) {
    TemporaryFile const trace("left over");
    ChildProcess const child = bringUp({"--no-hardware-access", "--trace", trace.path()});
    EXPECT_EQ(child.status, 0);
    EXPECT_THAT(child.out, HasSubstr("switches: 1 of 1 found\n"));
    EXPECT_THAT(child.out, HasSubstr("register accesses: 0 in chips, by 0 on the bus\n"));
    EXPECT_EQ(trace.content(), "switchctl trace 1\nchip 0 88e6096\n");
}

TEST(BringUpProgramTest, ShowsMessagesUpToTheLevel) {
    ChildProcess const quiet = bringUp({"--log-level", "0"});
    EXPECT_THAT(quiet.errors, HasSubstr("info     SwitchManager::start()\n"));
    EXPECT_THAT(quiet.errors, HasSubstr("\ndebug    SwitchManager::initialisingAction\n"));
    EXPECT_THAT(quiet.errors, HasSubstr("\nlevel 0  SwitchManager::configureTrunks\n"));
    EXPECT_THAT(quiet.errors, Not(HasSubstr("\nlevel 1  ")));
    EXPECT_THAT(quiet.errors, Not(HasSubstr("\nlevel 3  ")));
    ChildProcess const detailed = bringUp({"--log-level", "3"});
    EXPECT_THAT(detailed.errors,
                HasSubstr("\nlevel 3  SwitchManager::detectSwitches 1 Switches discovered in xml\n"));
    EXPECT_EQ(detailed.status, 0);
    EXPECT_EQ(detailed.out, quiet.out);
}

TEST(BringUpProgramTest, LinesAreBrokenBetweenMembers) {
    ChildProcess const child =
        ChildProcess::runSwitchctl({"bring-up", EXAMPLES_FOLDER "/trap-mixed.xml", "--simulate"});
    EXPECT_THAT(child.out,
                HasSubstr("\n  VLAN 5 (0x5, written \"5\")  tag-based: 0.1(addTagIfUntagged/stripTag)\n"
                          "      0.2(addTagIfUntagged/stripTag) 0.10(validateTag/validateTag) "
                          "3.0(validateTag/validateTag)\n      3.20(validateTag/validateTag)\n"));
    std::string const vlans = child.out.substr(child.out.find("VLANs\n"));
    EXPECT_FALSE(std::regex_search(vlans.substr(0, vlans.find("\ntrunks")), std::regex("[^\n]{101}")));
}

TEST(BringUpProgramTest, MembersThatDoNotCountAreNamedAsTheyAreWritten) {
    TemporaryFile const document(
        "<board><switches><switch id='0' switchModel='88e6096'><trunk id='1'/>\n"
        "<port id='1' connectedTo='external' portStatus='forwarding'/></switch></switches>\n"
        "<vlan id='5' typeOfVlan='tagBasedVlan'>\n<port/>\n<port switchId='0'/>\n<port portId='3'/>\n"
        "<port switchId='0' portId='9'><forwardedMulticastGroup>239.1.1.2</forwardedMulticastGroup></port>\n"
        "</vlan></board>");
    ChildProcess const child = ChildProcess::runSwitchctl({"bring-up", document.path(), "--simulate"});
    EXPECT_THAT(
        child.out,
        HasSubstr(
            "  VLAN 5 (0x5, written \"5\")  tag-based: no members; left out: line 4 (no switch, no port)\n"
            "      line 5 (no port) line 6 (no switch) 0.9\n"));
    EXPECT_THAT(child.out,
                HasSubstr("\n  239.1.1.2 in VLAN 5 (0x5, written \"5\"): no members; left out: 0.9\n"));
    EXPECT_FALSE(std::regex_search(child.out, std::regex(":;|: :|:\n|-1\\.")));
}

TEST(BringUpProgramTest, AMissingSwitchIsAFailure) {
    TemporaryFile const document("<switches><switch id='0' switchModel='88e6096'/>"
                                 "<switch id='1' switchModel='unknown'/></switches>");
    ChildProcess const child = ChildProcess::runSwitchctl({"bring-up", document.path(), "--simulate"});
    EXPECT_EQ(child.status, 1);
    EXPECT_THAT(child.out, HasSubstr("switches: 1 of 2 found\n"));
    EXPECT_EQ(child.errors, "switchctl: " + document.path() + ": not every switch came up\n");
}

TEST(BringUpProgramTest, ADocumentWithoutSwitchesIsAFailure) {
    TemporaryFile const document("<html/>");
    ChildProcess const child = ChildProcess::runSwitchctl({"bring-up", document.path(), "--simulate"});
    EXPECT_EQ(child.status, 1);
    EXPECT_EQ(child.errors, "switchctl: " + document.path() + ": no switch in the document\n");
}

TEST(BringUpProgramTest, StartUpThatThrowsIsAFailureAndNoHang) {
    TemporaryFile const document("<switches><switch id='0' switchModel='88e6096'/>"
                                 "<switch id='0' switchModel='88e6096'/></switches>");
    TemporaryFile const trace;
    ChildProcess const child =
        ChildProcess::runSwitchctl({"bring-up", document.path(), "--simulate", "--trace", trace.path()});
    EXPECT_EQ(child.status, 5);
    EXPECT_EQ(child.errors,
              "switchctl: " + document.path() +
                  ": start-up failed: several <switch> elements have the same id; \"switchctl check " +
                  document.path() +
                  "\" tells what is wrong with the document (the library: \"Roting xml or other "
                  "catastrophic error\")\n");
    EXPECT_THAT(child.out, HasSubstr("Caught \"Roting xml or other catastrophic error\"\n"));
    EXPECT_THAT(trace.content(), HasSubstr("SwitchIdentifier"));
}

} // namespace
