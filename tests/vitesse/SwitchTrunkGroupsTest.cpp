#include <memory>

#include "model/TrunkGroup.hpp"
#include "tests/support/TestDocument.hpp"
#include "tests/vitesse/SwitchTest.hpp"

using test_support::Accesses;
using test_support::Lines;
using test_support::ParallelBench;
using test_support::ParallelScript;
using test_support::reads;
using test_support::TestDocument;
using test_support::writes;

namespace {

using Members = std::map<unsigned int const, ManagedSwitchPort*>;

std::string const noTrunkId =
    "error|ManagedSwitch::ManagedSwitch(5): Turnk Id is not a valid integer value\n";

std::string noPortId(std::string const& trunk) {
    return "error|ManagedSwitch::ManagedSwitch(5): port id in Trunk Id " + trunk +
           " is not a valid integer value\n";
}

class SwitchTrunkGroupsTest : public testing::Test {
protected:
    /// A switch with the ports 8, 9 and 10 and the given further elements, and more elsewhere.
    void build(std::string const& own, std::string const& elsewhere = "") {
        std::string ports;
        for (auto const* id : {"8", "9", "10"}) {
            ports += std::string("<port id='") + id + "' connectedTo='external' portStatus='forwarding'/>";
        }
        document = std::make_unique<TestDocument>("<switches><switch id='5'>" + ports + own + "</switch>" +
                                                  elsewhere + "</switches>");
        unsigned char const address[6] = {};
        bench.script.expect(switchSetUp);
        chip = std::make_unique<VitesseSwitch>(bench.application, 5, address, *document, false);
        bench.script.verify();
    }

    Members members(unsigned int key) { return chip->getTrunkGroup(key)->getTrunkedPorts(); }

    ParallelBench<ParallelScript> bench;
    std::unique_ptr<TestDocument> document;
    std::unique_ptr<VitesseSwitch> chip;
};

TEST_F(SwitchTrunkGroupsTest, KeysTrunkGroupsByTheirPositionAndFillsThemAfterwards) {
    build("<trunk id='7'><port id='9'/><port id='8'/></trunk><trunk id='3'><port id='10'/></trunk>");
    EXPECT_EQ(document->queries(),
              (std::vector<std::string>{"//switch[@id=5]", "//switch/port", "//switch[@id=5]/trunk",
                                        "//trunk[@id=7]/port", "//trunk[@id=3]/port"}));
    EXPECT_EQ(bench.log.take("error"), Lines{});
    ASSERT_EQ(chip->getTrunkGroups().size(), 2U);
    EXPECT_EQ(chip->getTrunkGroup(0)->getId(), 7);
    EXPECT_EQ(chip->getTrunkGroup(1)->getId(), 3);
    EXPECT_EQ(members(0), (Members{{8, chip->getPort(8)}, {9, chip->getPort(9)}}));
    EXPECT_EQ(members(1), (Members{{10, chip->getPort(10)}}));
    EXPECT_EQ(chip->getNumberOfPorts(), 5) << "three ports and two trunk groups";
}

TEST_F(SwitchTrunkGroupsTest, AnyTrunkOfThatIdInTheDocumentCounts) {
    build("<trunk id='7'><port id='9'/></trunk>",
          "<switch id='6'><trunk id='7'><port id='10'/></trunk></switch>");
    ASSERT_EQ(chip->getTrunkGroups().size(), 1U);
    EXPECT_EQ(members(0), (Members{{9, chip->getPort(9)}, {10, chip->getPort(10)}}));
}

TEST_F(SwitchTrunkGroupsTest, AMissingIdIsReportedAndBecomesMinusOne) {
    build("<trunk><port id='8'/></trunk>", "<trunk id='-1'><port id='9'/></trunk>");
    EXPECT_EQ(bench.log.take("error"), (Lines{noTrunkId}));
    ASSERT_EQ(chip->getTrunkGroups().size(), 1U);
    EXPECT_EQ(chip->getTrunkGroup(0)->getId(), -1);
    EXPECT_EQ(document->queries().back(), "//trunk[@id=-1]/port");
    EXPECT_EQ(members(0), (Members{{9, chip->getPort(9)}}));
}

TEST_F(SwitchTrunkGroupsTest, AnIdThatIsNoNumberIsZeroWithoutAReport) {
    build("<trunk id='uplink'><port id='8'/></trunk>");
    EXPECT_EQ(bench.log.take("error"), Lines{});
    EXPECT_EQ(chip->getTrunkGroup(0)->getId(), 0);
    EXPECT_EQ(document->queries().back(), "//trunk[@id=0]/port");
    EXPECT_TRUE(members(0).empty()) << "no trunk of the document has the id 0";
}

TEST_F(SwitchTrunkGroupsTest, AMemberWithoutAnIdIsReportedAndAddedWithoutAPort) {
    build("<trunk id='7'><port/><port id='8'/></trunk>");
    EXPECT_EQ(bench.log.take("error"),
              (Lines{noPortId("7"), "error|ManagedSwitch::getPort id -1 out of bounds"}));
    EXPECT_EQ(members(0), (Members{{8, chip->getPort(8)}, {0xFFFFFFFF, nullptr}}));
}

TEST_F(SwitchTrunkGroupsTest, TheReportOfAMemberWithoutAnIdNamesAMissingTrunkIdAsMinusOne) {
    build("<trunk/>", "<trunk id='-1'><port/></trunk>");
    EXPECT_EQ(bench.log.take("error"),
              (Lines{noTrunkId, noPortId("-1"), "error|ManagedSwitch::getPort id -1 out of bounds"}));
}

TEST_F(SwitchTrunkGroupsTest, AMemberThatTheSwitchDoesNotHaveIsAddedWithoutAPort) {
    build("<trunk id='7'><port id='2'/><port id='x'/><port id='9'/></trunk>");
    EXPECT_EQ(bench.log.take("error"), (Lines{"error|ManagedSwitch::getPort id 2 out of bounds",
                                              "error|ManagedSwitch::getPort id 0 out of bounds"}));
    EXPECT_EQ(members(0), (Members{{0, nullptr}, {2, nullptr}, {9, chip->getPort(9)}}));
}

TEST_F(SwitchTrunkGroupsTest, AnUnansweredQueryForMembersGivesNone) {
    document = std::make_unique<TestDocument>("<switch id='5'><trunk id='7'><port id='8'/></trunk></switch>");
    document->answerNull("//trunk[@id=7]/port");
    unsigned char const address[6] = {};
    bench.script.expect(switchSetUp);
    chip = std::make_unique<VitesseSwitch>(bench.application, 5, address, *document, false);
    EXPECT_TRUE(members(0).empty());
}

TEST_F(SwitchTrunkGroupsTest, TheChipIsToldOfATrunkWithoutItsMissingMembers) {
    build("<trunk id='7'><port id='2'/><port id='9'/></trunk>");
    Accesses table;
    for (unsigned int i = 0; i < 16; ++i) {
        table = table + Accesses{reads(2, 0, 0x30 + i, 0x00FFFD04), writes(2, 0, 0x30 + i, 0x00FFFF04)};
    }
    bench.script.expect(table + Accesses{reads(2, 0, 0x49, 0x00000204), reads(2, 0, 0x89, 0x00FFFDFF),
                                         writes(2, 0, 0x49, 0x00000204), writes(2, 0, 0x89, 0x00FFFDFF)});
    chip->configureTrunkGroups();
}

} // namespace
