#include "model/SwitchDocument.hpp"

#include "model/TrunkGroup.hpp"
#include "tests/model/ModelTest.hpp"

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
};

TEST_F(SwitchDocumentTest, AsksForTheSwitchById) {
    SwitchDocument const first(document, 1);
    EXPECT_EQ(first.switches().count(), 1);
    EXPECT_EQ(SwitchDocument(document, 3).switches().count(), 0);
    EXPECT_EQ(document.queries(), (std::vector<std::string>{"//switch[@id=1]", "//switch[@id=3]"}));
}

TEST_F(SwitchDocumentTest, TellsOwnPortsFromAllPorts) {
    SwitchDocument const first(document, 1);
    EXPECT_EQ(first.ports().count(), 1);
    EXPECT_EQ(first.portsOfAllSwitches().count(), 3);
    EXPECT_EQ(document.queries(), (std::vector<std::string>{"//switch[@id=1]/port", "//switch/port"}));
}

TEST_F(SwitchDocumentTest, ReadsAPortElement) {
    SwitchDocument::PortElement const port(*SwitchDocument(document, 1).ports().begin());
    EXPECT_TRUE(port.hasId);
    EXPECT_EQ(port.id, 4);
    EXPECT_STREQ(port.idText.text(), "4");
    EXPECT_STREQ(port.connectedTo.text(), "cpu");
    EXPECT_STREQ(port.portStatus.text(), "learning");
}

TEST_F(SwitchDocumentTest, APortElementWithoutANumberHasNoId) {
    for (auto* const node : SwitchDocument(document, 2).ports()) {
        SwitchDocument::PortElement const port(node);
        EXPECT_FALSE(port.hasId);
        EXPECT_EQ(port.id, -1);
        EXPECT_EQ(port.node, node);
        EXPECT_FALSE(port.connectedTo.isPresent());
        EXPECT_FALSE(port.portStatus.isPresent());
    }
}

TEST_F(SwitchDocumentTest, BuildsTrunkGroupsFirstAndFillsThemThen) {
    auto& member = chip.addPort(4);
    std::vector<std::string> reports;
    SwitchDocument(document, 1)
        .createTrunkGroups(
            chip, [&] { reports.push_back("trunk"); },
            [&](int trunk) { reports.push_back("port in " + std::to_string(trunk)); });
    EXPECT_EQ(reports, (std::vector<std::string>{"trunk", "port in 6"}));
    EXPECT_EQ(document.queries(), (std::vector<std::string>{"//switch[@id=1]/trunk", "//trunk[@id=6]/port",
                                                            "//trunk[@id=-1]/port"}));
    ASSERT_EQ(chip.getTrunkGroups().size(), 2U);
    EXPECT_EQ(chip.getTrunkGroup(0)->getTrunkedPorts(),
              (std::map<unsigned int const, ManagedSwitchPort*>{{4, &member}, {0xFFFFFFFF, nullptr}}));
    EXPECT_EQ(chip.getTrunkGroup(1)->getId(), -1);
}

} // namespace
