// What the checks say about ports, asked of the library itself.

#include <gtest/gtest.h>

#include "model/ManagedSwitch.hpp"
#include "model/ManagedSwitchPort.hpp"
#include "tests/switchctl/check/Documents.hpp"
#include "tests/switchctl/check/LibraryRun.hpp"

using PortType = ManagedSwitchPort::PortType;

namespace {

std::string one(std::string const& ports) {
    return boardOf("<switch id='0' switchModel='88e6096'>" + ports + "</switch>");
}

PortType typeOf(LibraryRun& run, unsigned int switchId, unsigned int portId) {
    return run.getManager().getManagedSwitch(switchId)->getPort(portId)->getType();
}

TEST(LibraryPortsTest, APortIdThatIsNoNumberMakesPortMinusOne) {
    LibraryRun run(one(port("one") + port("0x1") + port("2nd")));
    EXPECT_TRUE(run.says("Port id is not a valid integer value"));
    auto const& ports = run.getManager().getManagedSwitch(0)->getPorts();
    EXPECT_EQ(ports.size(), 3U);
    EXPECT_EQ(ports.count(~0U), 1U);
    EXPECT_EQ(ports.count(0), 1U);
    EXPECT_EQ(ports.count(2), 1U);
}

TEST(LibraryPortsTest, APortWithoutANumberIsFoundByNone) {
    LibraryRun run(boardOf(marvell("0", port("-1") + "<trunk id='1'><port/></trunk>"),
                           tagBased("5", member("0", "-1") + member("0", ""))));
    EXPECT_TRUE(run.says("ManagedSwitch::getPort id -1 out of bounds"));
    EXPECT_TRUE(run.says("Attempt to add vlan to unknown port 0.-1"));
    EXPECT_EQ(run.saysAfter("ManagedSwitchPort::addVlanPort. Add vlan:"), std::set<std::string>{});
}

TEST(LibraryPortsTest, TheFirstPortOfANumberStays) {
    LibraryRun run(one(port("7", "dsp") + port("7", "smac")));
    EXPECT_EQ(typeOf(run, 0, 7), PortType::dspPortType);
    EXPECT_EQ(run.getManager().getManagedSwitch(0)->getNumberOfPorts(), 2U);
}

TEST(LibraryPortsTest, UnknownTypesAreReportedAndUnknownStatesAreNot) {
    LibraryRun run(one(port("0", "ethernet") + port("1", "smac", "up")));
    EXPECT_TRUE(run.says("Unknown port type ethernet"));
    EXPECT_FALSE(run.getBoard().getMarvell(0).hasLink(1));
    EXPECT_FALSE(run.says("up \n"));
}

TEST(LibraryPortsTest, LearningHoldsTheLinkOfAProcessorDown) {
    LibraryRun run(
        one(port("0", "smac", "learning") + port("1", "smac") + port("8", "switchInterlink", "listening")));
    auto& chip = run.getBoard().getMarvell(0);
    EXPECT_FALSE(chip.hasLink(0));
    EXPECT_TRUE(chip.hasLink(1));
    EXPECT_FALSE(chip.hasLink(8));
}

TEST(LibraryPortsTest, TheStateOfASocketNeverReachesTheChip) {
    constexpr unsigned portControl = 0x04;
    LibraryRun run(one(port("0", "external", "disabled") + port("1", "external")));
    auto& chip = run.getBoard().getMarvell(0);
    EXPECT_EQ(chip.peek("port 0", portControl), chip.peek("port 1", portControl));
}

TEST(LibraryPortsTest, APortBeyondAn88E6096WritesToGlobal1) {
    LibraryRun run(one(port("11")));
    bool written = false;
    for (auto const& entry : run.getBoard().getLog().getEntries()) {
        // Port control 2 of the port is register 8 of the unit behind the last port.
        written = written || (entry.kind == simulation::AccessLog::Kind::write && entry.unit == "global 1" &&
                              entry.address == 0x08);
    }
    EXPECT_TRUE(written);
}

TEST(LibraryPortsTest, ThereIsOneCpuPort) {
    LibraryRun run(boardOf("<switch id='0' switchModel='88e6096'>" + port("3", "cpu") + "</switch>" +
                           "<switch id='1' switchModel='88e6096'>" + port("6", "cpu") + port("4", "cpu") +
                           "</switch>"));
    EXPECT_EQ(run.getManager().getCpuPort(), run.getManager().getManagedSwitch(1)->getPort(4));
}

TEST(LibraryPortsTest, WithoutACpuPortTheLibraryWarns) {
    EXPECT_TRUE(LibraryRun(one(port("0"))).says("There is no CPU Port set"));
}

TEST(LibraryPortsTest, PortsBeyondTheCountAreNotKeptOutOfAVlan) {
    LibraryRun run(boardOf("<switch id='0' switchModel='88e6096'>" + port("0") + port("8") + "</switch>",
                           tagBased("5", member("0", "0"))));
    auto const tags = run.getBoard().getMarvell(0).getVtuEntry(5)->memberTags;
    EXPECT_EQ(tags[1], 3U);
    EXPECT_NE(tags[8], 3U);
    EXPECT_NE(tags[10], 3U);
}

TEST(LibraryPortsTest, AVsc7390TakesOtherSwitchesPorts) {
    LibraryRun run(boardOf("<switch id='0' switchModel='88e6096'>" + port("5", "dsp") + port("6") +
                           "</switch>" + "<switch id='3' switchModel='vsc7390'>" + port("5", "smac") +
                           "</switch>"));
    EXPECT_EQ(typeOf(run, 3, 5), PortType::dspPortType);
    EXPECT_NE(run.getManager().getManagedSwitch(3)->getPort(6), nullptr);
    EXPECT_FALSE(run.getBoard().getVitesse(3).getPortMac(5).receives);
}

TEST(LibraryPortsTest, MoreEntriesThanMasksClearTheMaskOfTheCpuPort) {
    constexpr unsigned maskOfCpuPort = 0x80 + 24;
    EXPECT_EQ(LibraryRun(boardOf(vitesse("3", "<trunk id='1'/>")))
                  .getBoard()
                  .getVitesse(3)
                  .peek("analyser", maskOfCpuPort),
              0U);
    EXPECT_NE(LibraryRun(boardOf(vitesse("3"))).getBoard().getVitesse(3).peek("analyser", maskOfCpuPort), 0U);
}

} // namespace
