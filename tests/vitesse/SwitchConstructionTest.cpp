#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <stdexcept>

#include "tests/support/TestDocument.hpp"
#include "tests/support/WordScript.hpp"
#include "tests/vitesse/SwitchTest.hpp"
#include "tests/vitesse/ThrownText.hpp"

using namespace std::chrono_literals;
using test_support::Accesses;
using test_support::gets;
using test_support::Lines;
using test_support::ParallelBench;
using test_support::ParallelScript;
using test_support::reads;
using test_support::sets;
using test_support::TestDocument;
using test_support::WordScript;
using test_support::writes;

namespace {

std::string const built = "info|ManagedSwitch::ManagedSwitch(5) 00:11:22:33:44:55\n";
unsigned char const address[] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};

std::string toConfigure(int ports) {
    return "2|ManagedSwitch::ManagedSwitch(5): " + std::to_string(ports) + " ports to configure\n";
}

/// Both the type and the state of a port are shown with this text.
std::string connected(std::string const& port, std::string const& text) {
    return "2|ManagedSwitch::ManagedSwitch(5): configure port " + port + " connected to " + text + "\n";
}

class SwitchConstructionTest : public testing::Test {
protected:
    std::unique_ptr<VitesseSwitch> build(TestDocument& document) {
        bench.script.expect(switchSetUp);
        auto chip = std::make_unique<VitesseSwitch>(bench.application, 5, address, document, false);
        bench.script.verify();
        return chip;
    }

    ParallelBench<ParallelScript> bench;
};

TEST_F(SwitchConstructionTest, BuildsPortsInDocumentOrder) {
    TestDocument document(
        "<switch id='5'><port id='23' connectedTo='switchInterlink' portStatus='forwarding'/>"
        "<port id='0' connectedTo='cpu' portStatus='listening'/></switch>");
    auto const chip = build(document);
    EXPECT_EQ(bench.log.take(),
              (Lines{built, toConfigure(2), connected("23", "switchInterlink"), connected("23", "forwarding"),
                     connected("0", "cpu"), connected("0", "listening")}));
    EXPECT_EQ(document.queries(),
              (std::vector<std::string>{"//switch[@id=5]", "//switch/port", "//switch[@id=5]/trunk"}));
    EXPECT_EQ(chip->getId(), 5U);
    EXPECT_EQ(chip->getNumberOfPorts(), 2);
    ASSERT_EQ(chip->getPorts().size(), 2U);
    auto const* const cpu = dynamic_cast<VitessePort*>(chip->getPort(0));
    ASSERT_NE(cpu, nullptr);
    EXPECT_EQ(static_cast<unsigned int>(cpu->getType()), 4U);
    EXPECT_EQ(static_cast<unsigned int>(cpu->getState()), 1U);
    EXPECT_EQ(&cpu->getSwitch(), chip.get());
    EXPECT_EQ(cpu->getNode(), document.find("//switch/port")->nodeTab[1]);
    EXPECT_EQ(static_cast<unsigned int>(chip->getPort(23)->getType()), 6U);
    EXPECT_EQ(static_cast<unsigned int>(chip->getPort(23)->getState()), 3U);
}

TEST_F(SwitchConstructionTest, TakesThePortsOfAllSwitchesOfTheDocument) {
    TestDocument document("<switches><switch id='4'>"
                          "<port id='7' connectedTo='dsp' portStatus='learning'/>"
                          "<port id='8' connectedTo='cpu' portStatus='forwarding'/></switch><switch id='5'>"
                          "<port id='8' connectedTo='external' portStatus='disabled'/></switch></switches>");
    auto const chip = build(document);
    EXPECT_EQ(bench.log.take(),
              (Lines{built, toConfigure(3), connected("7", "dsp"), connected("7", "learning"),
                     connected("8", "cpu"), connected("8", "forwarding"), connected("8", "external"),
                     connected("8", "disabled")}));
    EXPECT_EQ(chip->getNumberOfPorts(), 3) << "all are counted";
    ASSERT_EQ(chip->getPorts().size(), 2U);
    EXPECT_EQ(static_cast<unsigned int>(chip->getPort(7)->getType()), 5U);
    EXPECT_EQ(static_cast<unsigned int>(chip->getPort(8)->getType()), 4U) << "the first one stays";
}

TEST_F(SwitchConstructionTest, PortsOutsideOfSwitchesAreNotTaken) {
    TestDocument document(
        "<board><vlan><port id='1'/></vlan><switch id='5'><trunk id='2'><port id='3'/></trunk>"
        "</switch></board>");
    auto const chip = build(document);
    EXPECT_TRUE(chip->getPorts().empty());
}

TEST_F(SwitchConstructionTest, AnUnknownIdGivesASwitchWithoutPortsThatIsStillSetUp) {
    TestDocument document("<switches><switch id='6'><port id='0'/><trunk id='1'/></switch></switches>");
    auto const chip = build(document);
    EXPECT_EQ(bench.log.take(), (Lines{built, "info|ManagedSwitch::ManagedSwitch: Unknown switch id:5\n"}));
    EXPECT_EQ(document.queries(), (std::vector<std::string>{"//switch[@id=5]"}));
    EXPECT_EQ(chip->getNumberOfPorts(), 0);
    EXPECT_TRUE(chip->getPorts().empty());
    EXPECT_TRUE(chip->getTrunkGroups().empty());
}

TEST_F(SwitchConstructionTest, AQueryThatTheHostCannotAnswerFindsNothing) {
    TestDocument document("<switch id='5'><port id='0' connectedTo='cpu' portStatus='disabled'/></switch>");
    document.answerNull("//switch[@id=5]");
    auto const chip = build(document);
    EXPECT_EQ(bench.log.take(), (Lines{built, "info|ManagedSwitch::ManagedSwitch: Unknown switch id:5\n"}));
    EXPECT_TRUE(chip->getPorts().empty());
}

TEST_F(SwitchConstructionTest, UnansweredQueriesForPortsAndTrunksGiveNone) {
    TestDocument document("<switch id='5'><port id='0' connectedTo='cpu' portStatus='disabled'/>"
                          "<trunk id='1'/></switch>");
    document.answerNull("//switch/port");
    document.answerNull("//switch[@id=5]/trunk");
    auto const chip = build(document);
    EXPECT_EQ(bench.log.take(), (Lines{built, toConfigure(0)}));
    EXPECT_EQ(chip->getNumberOfPorts(), 0);
}

TEST_F(SwitchConstructionTest, SeveralSwitchesOfOneIdThrow) {
    TestDocument document("<switches><switch id='5'><port id='0'/></switch><switch id='5'/>"
                          "<switch id='5'/></switches>");
    bench.script.expect({writes(7, 0, 2, 0xC)});
    try {
        VitesseSwitch const chip(bench.application, 5, address, document, false);
        FAIL() << "nothing was thrown";
    } catch (std::runtime_error const& error) {
        EXPECT_STREQ(error.what(), "Roting xml or other catastrophic error");
    }
    EXPECT_EQ(bench.log.take(),
              (Lines{built, "info|ManagedSwitch::ManagedSwitch: Unknown switch count 3\n"}));
    EXPECT_EQ(bench.memory.mappingsSoFar(), 1);
    EXPECT_EQ(bench.memory.mappedSections(), 0) << "what was mapped is unmapped";
}

TEST_F(SwitchConstructionTest, APortIdThatIsNoNumberIsReportedAndStillGivesAPort) {
    TestDocument document("<switch id='5'><port id='one' connectedTo='external' portStatus='forwarding'/>"
                          "<port connectedTo='cpu' portStatus='disabled'/></switch>");
    auto const chip = build(document);
    std::string const noNumber =
        "error|ManagedSwitch::ManagedSwitch(5): Port id is not a valid integer value ";
    EXPECT_EQ(bench.log.take(), (Lines{built, toConfigure(2), noNumber + "one\n", connected("-1", "external"),
                                       connected("-1", "forwarding"), noNumber + "(null)\n",
                                       connected("-1", "cpu"), connected("-1", "disabled")}));
    EXPECT_EQ(chip->getNumberOfPorts(), 2) << "both are counted";
    ASSERT_EQ(chip->getPorts().size(), 1U) << "the first one keeps the id";
    EXPECT_EQ(chip->getPorts().begin()->first, 0xFFFFFFFF);
    EXPECT_EQ(static_cast<unsigned int>(chip->getPorts().begin()->second->getType()), 1U);
}

TEST_F(SwitchConstructionTest, ReadsThePortIdFromTheStartOfTheText) {
    TestDocument document(
        "<switch id='5'><port id=' 3rd' connectedTo='cpu' portStatus='disabled'/></switch>");
    auto const chip = build(document);
    EXPECT_EQ(bench.log.take(),
              (Lines{built, toConfigure(1), connected("3", "cpu"), connected("3", "disabled")}));
    EXPECT_EQ(chip->getPorts().count(3), 1U);
}

TEST_F(SwitchConstructionTest, MissingTypeAndStateAreEmptyTexts) {
    TestDocument document("<switch id='5'><port id='3'/></switch>");
    auto const chip = build(document);
    EXPECT_EQ(bench.log.take(), (Lines{built, toConfigure(1), connected("3", ""), connected("3", ""),
                                       "error|ManagedSwitchPort::ManagedSwitchPort: Unknown port type  \n"}));
    EXPECT_EQ(static_cast<unsigned int>(chip->getPort(3)->getType()), 0U);
    EXPECT_EQ(static_cast<unsigned int>(chip->getPort(3)->getState()), 0U);
}

TEST_F(SwitchConstructionTest, DocumentTextIsNeverAFormat) {
    TestDocument document("<switch id='5'><port id='%s' connectedTo='%n%s' portStatus='%d%n'/></switch>");
    auto const chip = build(document);
    EXPECT_EQ(bench.log.take(),
              (Lines{built, toConfigure(1),
                     "error|ManagedSwitch::ManagedSwitch(5): Port id is not a valid integer value %s\n",
                     connected("-1", "%n%s"), connected("-1", "%d%n"),
                     "error|ManagedSwitchPort::ManagedSwitchPort: Unknown port type %n%s \n"}));
}

TEST_F(SwitchConstructionTest, UnmapsTheChipAtTheEnd) {
    TestDocument document("<switch id='5'><port id='0' connectedTo='cpu' portStatus='forwarding'/></switch>");
    auto chip = build(document);
    EXPECT_EQ(bench.memory.mappedSections(), 1);
    EXPECT_EQ(bench.memory.lastPhysicalAddress(), 0xF3000000U);
    bench.script.expect({});
    chip.reset();
    EXPECT_EQ(bench.memory.mappedSections(), 0);
}

TEST_F(SwitchConstructionTest, WithoutHardwareAccessNothingIsMapped) {
    TestDocument document("<switch id='5'><port id='0' connectedTo='cpu' portStatus='forwarding'/></switch>");
    VitesseSwitch chip(bench.application, 5, address, document, true);
    EXPECT_EQ(chip.getPorts().size(), 1U);
    EXPECT_EQ(bench.memory.mappingsSoFar(), 0);
    EXPECT_EQ(bench.log.take("error"),
              (Lines{"error|Failed Write : address f3008080\n", "error|Failed Read : address f3008280\n",
                     "error|Failed Write : address f3008280\n"}));
}

TEST_F(SwitchConstructionTest, WithoutADocumentThePortsAreExternalAndForwarding) {
    bench.script.expect(switchSetUp);
    VitesseSwitch chip(bench.application, 5, 24, false);
    EXPECT_EQ(bench.log.take(), Lines{});
    EXPECT_EQ(chip.getId(), 5U);
    EXPECT_EQ(chip.getNumberOfPorts(), 24);
    ASSERT_EQ(chip.getPorts().size(), 24U);
    unsigned int id = 0;
    for (auto const& entry : chip.getPorts()) {
        EXPECT_EQ(entry.first, id);
        ASSERT_NE(dynamic_cast<VitessePort*>(entry.second), nullptr);
        EXPECT_EQ(entry.second->getId(), id);
        EXPECT_EQ(static_cast<unsigned int>(entry.second->getType()), 1U);
        EXPECT_EQ(static_cast<unsigned int>(entry.second->getState()), 3U);
        EXPECT_EQ(entry.second->getNode(), nullptr);
        ++id;
    }
}

TEST_F(SwitchConstructionTest, WithoutADocumentThereCanBeNoPorts) {
    bench.script.expect(switchSetUp);
    VitesseSwitch const chip(bench.application, 5, 0, false);
    EXPECT_EQ(chip.getNumberOfPorts(), 0);
    EXPECT_TRUE(chip.getPorts().empty());
}

TEST(SwitchConstructionBusTest, AChipThatNeverAnswersThrowsAndLeavesNothing) {
    ParallelBench<WordScript> bench;
    Accesses table{sets(0x1C008, 0xC), sets(0x08080, 4), gets(0x08280, 0)};
    for (int repetition = 0; repetition < 5; ++repetition) {
        table = table + Accesses{gets(0x1C0C0, 0).taking(2s), gets(0x08280, 0)};
    }
    bench.script.expect(table);
    EXPECT_EQ(thrownText([&] { VitesseSwitch const chip(bench.application, 5, 24, false); }),
              "switch timed out after attempted to read a register 5 times.");
    bench.script.verify();
    EXPECT_EQ(bench.memory.mappedSections(), 0);
}

} // namespace
