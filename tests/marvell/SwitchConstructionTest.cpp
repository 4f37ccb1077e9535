#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "marvell/MarvellPort.hpp"
#include "marvell/MarvellSwitch.hpp"
#include "tests/support/MacBench.hpp"
#include "tests/support/SmiScript.hpp"
#include "tests/support/TestDocument.hpp"

using test_support::Lines;
using test_support::MacBench;
using test_support::SmiScript;
using test_support::TestDocument;

namespace {

/// What the messages of the constructor begin with.
std::string const signature =
    "MarvellSwitch::MarvellSwitch(Application&, unsigned int, const uint8_t*, Xml&, bool)";
std::string const built = "info|ManagedSwitch::ManagedSwitch(5) 00:11:22:33:44:55\n";

std::string toConfigure(int ports) {
    return "2|" + signature + ":(5): " + std::to_string(ports) + " ports to configure\n";
}

std::string connected(std::string const& port, std::string const& type) {
    return "2|" + signature + ":(5): configure port " + port + " connected to " + type + "\n";
}

std::string inState(std::string const& port, std::string const& state) {
    return "2|" + signature + ":(5): configure port " + port + " to be " + state + "\n";
}

class SwitchConstructionTest : public testing::Test {
protected:
    std::unique_ptr<MarvellSwitch> build(TestDocument& document) {
        static unsigned char const address[] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};
        return std::make_unique<MarvellSwitch>(bench.application, SmiScript::chipAddress, address, document,
                                               false);
    }

    MacBench<SmiScript> bench;
};

TEST_F(SwitchConstructionTest, BuildsThePortsOfItsOwnElementInDocumentOrder) {
    TestDocument document("<switches><switch id='4'><port id='7' connectedTo='dsp' portStatus='learning'/>"
                          "</switch><switch id='5'>"
                          "<port id='8' connectedTo='switchInterlink' portStatus='forwarding'/>"
                          "<port id='0' connectedTo='cpu' portStatus='listening'/>"
                          "</switch></switches>");
    auto const chip = build(document);
    EXPECT_EQ(bench.log.take(),
              (Lines{built, toConfigure(2), connected("8", "switchInterlink"), inState("8", "forwarding"),
                     connected("0", "cpu"), inState("0", "listening")}));
    EXPECT_EQ(document.queries(),
              (std::vector<std::string>{"//switch[@id=5]", "//switch[@id=5]/port", "//switch[@id=5]/trunk"}));
    EXPECT_EQ(chip->getId(), 5U);
    EXPECT_EQ(chip->getNumberOfPorts(), 2);
    ASSERT_EQ(chip->getPorts().size(), 2U);
    auto const* const cpu = dynamic_cast<MarvellPort*>(chip->getPort(0));
    ASSERT_NE(cpu, nullptr);
    EXPECT_EQ(static_cast<unsigned int>(cpu->getType()), 4U);
    EXPECT_EQ(static_cast<unsigned int>(cpu->getState()), 1U);
    EXPECT_EQ(&cpu->getSwitch(), chip.get());
    ASSERT_NE(cpu->getNode(), nullptr);
    EXPECT_EQ(cpu->getNode(), document.find("//switch[@id=5]/port")->nodeTab[1]);
    EXPECT_EQ(static_cast<unsigned int>(chip->getPort(8)->getType()), 6U);
    EXPECT_EQ(static_cast<unsigned int>(chip->getPort(8)->getState()), 3U);
}

TEST_F(SwitchConstructionTest, TouchesNoRegisterOfTheChip) {
    TestDocument document("<switch id='5'><port id='0' connectedTo='cpu' portStatus='forwarding'/></switch>");
    auto chip = build(document);
    EXPECT_EQ(bench.script.wordAccesses(), 2) << "the MAC's control register: saved, then set";
    EXPECT_EQ(bench.script.getControl(), 0x3E00U);
    EXPECT_EQ(bench.memory.mappedSections(), 1);
    chip.reset();
    EXPECT_EQ(bench.script.wordAccesses(), 3);
    EXPECT_EQ(bench.script.getControl(), SmiScript::initialControl);
    EXPECT_EQ(bench.memory.mappedSections(), 0);
}

TEST_F(SwitchConstructionTest, WithoutHardwareAccessNothingIsMapped) {
    TestDocument document("<switch id='5'><port id='0' connectedTo='cpu' portStatus='forwarding'/></switch>");
    unsigned char const address[] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};
    MarvellSwitch chip(bench.application, 5, address, document, true);
    EXPECT_EQ(chip.getPorts().size(), 1U);
    EXPECT_FALSE(chip.clearVlanTable());
    EXPECT_EQ(bench.memory.mappingsSoFar(), 0);
    EXPECT_EQ(bench.script.wordAccesses(), 0);
}

TEST_F(SwitchConstructionTest, AnUnknownIdGivesASwitchWithoutPorts) {
    TestDocument document("<switches><switch id='6'><port id='0'/><trunk id='1'/></switch></switches>");
    auto const chip = build(document);
    EXPECT_EQ(bench.log.take(), (Lines{built, "info|" + signature + "(5): Unknown switch id:5\n"}));
    EXPECT_EQ(document.queries(), (std::vector<std::string>{"//switch[@id=5]"}));
    EXPECT_EQ(chip->getNumberOfPorts(), 0);
    EXPECT_TRUE(chip->getPorts().empty());
    EXPECT_TRUE(chip->getTrunkGroups().empty());
}

TEST_F(SwitchConstructionTest, AQueryThatTheHostCannotAnswerFindsNothing) {
    TestDocument document("<switch id='5'><port id='0' connectedTo='cpu' portStatus='disabled'/></switch>");
    document.answerNull("//switch[@id=5]");
    auto const chip = build(document);
    EXPECT_EQ(bench.log.take(), (Lines{built, "info|" + signature + "(5): Unknown switch id:5\n"}));
    EXPECT_TRUE(chip->getPorts().empty());
}

TEST_F(SwitchConstructionTest, UnansweredQueriesForPortsAndTrunksGiveNone) {
    TestDocument document("<switch id='5'><port id='0' connectedTo='cpu' portStatus='disabled'/>"
                          "<trunk id='1'/></switch>");
    document.answerNull("//switch[@id=5]/port");
    document.answerNull("//switch[@id=5]/trunk");
    auto const chip = build(document);
    EXPECT_EQ(bench.log.take(), (Lines{built, toConfigure(0)}));
    EXPECT_EQ(chip->getNumberOfPorts(), 0);
}

TEST_F(SwitchConstructionTest, SeveralSwitchesOfOneIdThrow) {
    TestDocument document("<switches><switch id='5'><port id='0'/></switch><switch id='5'/>"
                          "<switch id='5'/></switches>");
    try {
        build(document);
        FAIL() << "nothing was thrown";
    } catch (std::runtime_error const& error) {
        EXPECT_STREQ(error.what(), "Roting xml or other catastrophic error");
    }
    EXPECT_EQ(bench.log.take(),
              (Lines{built, "info|ManagedSwitch::ManagedSwitch: Unknown switch count 3\n"}));
    EXPECT_EQ(bench.memory.mappingsSoFar(), 1);
    EXPECT_EQ(bench.memory.mappedSections(), 0) << "what was mapped is unmapped";
    EXPECT_EQ(bench.script.getControl(), SmiScript::initialControl);
}

TEST_F(SwitchConstructionTest, APortIdThatIsNoNumberIsReportedAndStillGivesAPort) {
    TestDocument document("<switch id='5'><port id='one' connectedTo='external' portStatus='forwarding'/>"
                          "<port connectedTo='cpu' portStatus='disabled'/></switch>");
    auto const chip = build(document);
    std::string const noNumber = "error|" + signature + ":(5): Port id is not a valid integer value";
    EXPECT_EQ(bench.log.take(), (Lines{built, toConfigure(2), noNumber, connected("-1", "external"),
                                       inState("-1", "forwarding"), noNumber, connected("-1", "cpu"),
                                       inState("-1", "disabled")}));
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
              (Lines{built, toConfigure(1), connected("3", "cpu"), inState("3", "disabled")}));
    EXPECT_EQ(chip->getPorts().count(3), 1U);
}

TEST_F(SwitchConstructionTest, MissingTypeAndStateAreEmptyTexts) {
    TestDocument document("<switch id='5'><port id='3'/></switch>");
    auto const chip = build(document);
    EXPECT_EQ(bench.log.take(), (Lines{built, toConfigure(1), connected("3", ""), inState("3", ""),
                                       "error|ManagedSwitchPort::ManagedSwitchPort: Unknown port type  \n"}));
    EXPECT_EQ(static_cast<unsigned int>(chip->getPort(3)->getType()), 0U);
    EXPECT_EQ(static_cast<unsigned int>(chip->getPort(3)->getState()), 0U);
}

TEST_F(SwitchConstructionTest, DocumentTextIsNeverAFormat) {
    TestDocument document("<switch id='5'><port id='3' connectedTo='%n%s' portStatus='%d%n'/></switch>");
    auto const chip = build(document);
    EXPECT_EQ(bench.log.take(),
              (Lines{built, toConfigure(1), connected("3", "%n%s"), inState("3", "%d%n"),
                     "error|ManagedSwitchPort::ManagedSwitchPort: Unknown port type %n%s \n"}));
}

TEST_F(SwitchConstructionTest, APortIdThatIsTakenKeepsTheFirstPort) {
    TestDocument document("<switch id='5'><port id='3' connectedTo='cpu' portStatus='forwarding'/>"
                          "<port id='3' connectedTo='dsp' portStatus='forwarding'/></switch>");
    auto const chip = build(document);
    EXPECT_EQ(chip->getNumberOfPorts(), 2);
    EXPECT_EQ(chip->getPorts().size(), 1U);
    EXPECT_EQ(static_cast<unsigned int>(chip->getPort(3)->getType()), 4U);
}

TEST_F(SwitchConstructionTest, WithoutADocumentThePortsAreExternalAndForwarding) {
    MarvellSwitch chip(bench.application, 5, 11, false);
    EXPECT_EQ(bench.log.take(), Lines{});
    EXPECT_EQ(chip.getId(), 5U);
    EXPECT_EQ(chip.getNumberOfPorts(), 11);
    ASSERT_EQ(chip.getPorts().size(), 11U);
    unsigned int id = 0;
    for (auto const& entry : chip.getPorts()) {
        EXPECT_EQ(entry.first, id);
        ASSERT_NE(dynamic_cast<MarvellPort*>(entry.second), nullptr);
        EXPECT_EQ(entry.second->getId(), id);
        EXPECT_EQ(static_cast<unsigned int>(entry.second->getType()), 1U);
        EXPECT_EQ(static_cast<unsigned int>(entry.second->getState()), 3U);
        EXPECT_EQ(entry.second->getNode(), nullptr);
        ++id;
    }
    EXPECT_EQ(bench.script.wordAccesses(), 2);
}

TEST_F(SwitchConstructionTest, WithoutADocumentThereCanBeNoPorts) {
    MarvellSwitch const chip(bench.application, 5, 0, false);
    EXPECT_EQ(chip.getNumberOfPorts(), 0);
    EXPECT_TRUE(chip.getPorts().empty());
}

TEST_F(SwitchConstructionTest, SeveralSwitchesShareTheMac) {
    auto first = std::make_unique<MarvellSwitch>(bench.application, 5, 1, false);
    auto second = std::make_unique<MarvellSwitch>(bench.application, 6, 1, false);
    EXPECT_EQ(bench.memory.mappedSections(), 2);
    second.reset();
    EXPECT_EQ(bench.script.getControl(), 0x3E00U);
    first.reset();
    EXPECT_EQ(bench.script.getControl(), SmiScript::initialControl);
    EXPECT_EQ(bench.memory.mappedSections(), 0);
}

} // namespace
