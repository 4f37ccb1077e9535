#include "model/SwitchDocument.hpp"

#include <stdexcept>

#include "model/TrunkGroup.hpp"
#include "tests/model/ModelTest.hpp"

using test_support::Lines;
using test_support::RecordingSwitch;
using test_support::TestDocument;

namespace {

char const* const twoSwitches = "<board><switches>"
                                "<switch id='1'><port id='4' connectedTo='cpu' portStatus='learning'/>"
                                "<trunk id='6'><port id='4'/><port/></trunk><trunk/></switch>"
                                "<switch id='2'><port/><port id='x'/></switch>"
                                "</switches></board>";

class SwitchDocumentTest : public ModelTest {
protected:
    TestDocument document{twoSwitches};
    RecordingSwitch first{application, 1, calls};
    RecordingSwitch second{application, 2, calls};
    SwitchDocument::Wording const wording{"Chip", true, "in state"};
};

TEST_F(SwitchDocumentTest, AsksForTheSwitchById) {
    EXPECT_TRUE(SwitchDocument(document, first, wording).hasSwitch());
    EXPECT_FALSE(SwitchDocument(document, chip, wording).hasSwitch());
    EXPECT_EQ(document.queries(), (Lines{"//switch[@id=1]", "//switch[@id=0]"}));
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(SwitchDocumentTest, RefusesSeveralSwitchesOfOneId) {
    TestDocument twins("<board><switches><switch id='1'/><switch id='1'/></switches></board>");
    EXPECT_THROW(SwitchDocument(twins, first, wording).hasSwitch(), std::runtime_error);
    EXPECT_EQ(log.take(), Lines{"info|ManagedSwitch::ManagedSwitch: Unknown switch count 2\n"});
}

TEST_F(SwitchDocumentTest, TellsOwnPortsFromAllPorts) {
    SwitchDocument const configuration(document, first, wording);
    EXPECT_EQ(configuration.ports().count(), 1);
    EXPECT_EQ(configuration.portsOfAllSwitches().count(), 3);
    EXPECT_EQ(document.queries(), (Lines{"//switch[@id=1]/port", "//switch/port"}));
}

TEST_F(SwitchDocumentTest, HasAPortInsertedForEachElement) {
    SwitchDocument const configuration(document, first, wording);
    XmlNodes const elements = configuration.ports();
    Lines inserted;
    configuration.createPorts(elements, [&](unsigned int id, std::string const& connectedTo,
                                            std::string const& portStatus, xmlNodePtr node) {
        inserted.push_back(std::to_string(id) + ' ' + connectedTo + ' ' + portStatus);
        EXPECT_EQ(node, *elements.begin());
    });
    EXPECT_EQ(inserted, Lines{"4 cpu learning"});
    EXPECT_EQ(log.take(),
              (Lines{"2|Chip(1): 1 ports to configure\n", "2|Chip(1): configure port 4 connected to cpu\n",
                     "2|Chip(1): configure port 4 in state learning\n"}));
}

TEST_F(SwitchDocumentTest, APortElementWithoutANumberHasNoId) {
    SwitchDocument const configuration(document, second, wording);
    std::vector<unsigned int> ids;
    configuration.createPorts(configuration.ports(), [&](unsigned int id, std::string const& connectedTo,
                                                         std::string const& portStatus, xmlNodePtr) {
        ids.push_back(id);
        EXPECT_EQ(connectedTo + portStatus, "");
    });
    EXPECT_EQ(ids, (std::vector<unsigned int>{0xFFFFFFFF, 0xFFFFFFFF}));
    EXPECT_EQ(log.take("error"), (Lines{"error|Chip(2): Port id is not a valid integer value (null)\n",
                                        "error|Chip(2): Port id is not a valid integer value x\n"}));
}

TEST_F(SwitchDocumentTest, AnInvalidIdMayGoUnshown) {
    SwitchDocument const configuration(document, second, {"Chip:", false, "to be"});
    configuration.createPorts(configuration.ports(), [](auto&&...) {});
    EXPECT_EQ(log.take("error"), Lines(2, "error|Chip:(2): Port id is not a valid integer value"));
}

TEST_F(SwitchDocumentTest, BuildsTrunkGroupsFirstAndFillsThemThen) {
    auto& member = first.addPort(4);
    SwitchDocument(document, first, wording).createTrunkGroups();
    EXPECT_EQ(log.take("error"), (Lines{"error|Chip(1): Turnk Id is not a valid integer value\n",
                                        "error|Chip(1): port id in Trunk Id 6 is not a valid integer value\n",
                                        "error|ManagedSwitch::getPort id -1 out of bounds"}));
    EXPECT_EQ(document.queries(),
              (Lines{"//switch[@id=1]/trunk", "//trunk[@id=6]/port", "//trunk[@id=-1]/port"}));
    ASSERT_EQ(first.getTrunkGroups().size(), 2U);
    EXPECT_EQ(first.getTrunkGroup(0)->getTrunkedPorts(),
              (std::map<unsigned int const, ManagedSwitchPort*>{{4, &member}, {0xFFFFFFFF, nullptr}}));
    EXPECT_EQ(first.getTrunkGroup(1)->getId(), -1);
}

TEST_F(SwitchDocumentTest, ATrunkMemberWithoutANumberIsNotThePortWithoutOne) {
    for (auto const* member : {"<port/>", "<port id='-1'/>"}) {
        TestDocument trunk(std::string("<switch id='1'><trunk id='6'>") + member + "</trunk></switch>");
        RecordingSwitch owner(application, 1, calls);
        owner.addPort(0xFFFFFFFF);
        SwitchDocument(trunk, owner, wording).createTrunkGroups();
        EXPECT_EQ(owner.getTrunkGroup(0)->getTrunkedPorts(),
                  (std::map<unsigned int const, ManagedSwitchPort*>{{0xFFFFFFFF, nullptr}}));
        EXPECT_THAT(log.take("error"), testing::Contains("error|ManagedSwitch::getPort id -1 out of bounds"))
            << member;
    }
}

} // namespace
