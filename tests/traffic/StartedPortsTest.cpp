// External ports of a VSC7390 pass frames once they are started, and only where VLANs have them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "board/BoardAccess.hpp"
#include "board/ModelBringUp.hpp"
#include "board/PortStart.hpp"
#include "simulation/network/SimulatedNetwork.hpp"
#include "tests/support/TestDocument.hpp"

using board::PortStart;
using chips::PortSettings;
using simulation::EthernetFrame;
using simulation::SimulatedNetwork;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::string documentText() {
    std::string text = "<board><switches><switch id='4' switchModel='vsc7390'>";
    for (unsigned port = 0; port < 24; ++port) {
        text += "<port id='" + std::to_string(port) + "' connectedTo='external' portStatus='" +
                (port < 5 ? "forwarding" : "disabled") + "'/>";
    }
    text += "</switch></switches>";
    auto const member = [](unsigned port) {
        return "<port switchId='4' portId='" + std::to_string(port) +
               "' ingress='addTag' egress='stripTag'/>";
    };
    return text + "<vlan id='2' typeOfVlan='tagBasedVlan'>" + member(0) + member(1) + member(6) + "</vlan>" +
           "<vlan id='3' typeOfVlan='tagBasedVlan'>" + member(2) + member(3) +
           "</vlan><vlan id='4' typeOfVlan='tagBasedVlan'>" + member(4) + "</vlan></board>";
}

class StartedPortsTest : public testing::Test {
protected:
    StartedPortsTest() {
        for (unsigned port = 0; port < 24; ++port) {
            _network.attach(
                {4, port}, [this, port](EthernetFrame const& /*frame*/) { _got.insert(port); }, 1000);
        }
    }

    /// The ports that a broadcast leaves by.
    std::set<unsigned> sendFrom(unsigned port) {
        _got.clear();
        _network.inject({4, port}, EthernetFrame::make(0xFFFFFFFFFFFF, 0x020000000000 + port, 0x0800));
        _network.run();
        return _got;
    }

    test_support::TestDocument _document{documentText()};
    board::ModelBringUp _models{_document, "board.xml"};
    SimulatedNetwork _network{_models.getBoard()};
    std::set<unsigned> _got;
};

} // namespace

TEST_F(StartedPortsTest, AStartUpAloneLeavesThemStopped) {
    EXPECT_THAT(sendFrom(0), IsEmpty());
    EXPECT_THAT(sendFrom(2), IsEmpty());
}

TEST_F(StartedPortsTest, StartedOnesPassFramesWithinTheirVlans) {
    board::BoardAccess access(_models.getBoard());
    PortStart const started(_models.getDocument(), access, PortSettings::Speed::speed1000);
    EXPECT_EQ(started.getStarted().size(), 5U);
    EXPECT_THAT(started.getUpBefore(), IsEmpty());
    EXPECT_THAT(started.getFailures(), IsEmpty());
    EXPECT_THAT(sendFrom(0), ElementsAre(1U));
    EXPECT_THAT(sendFrom(1), ElementsAre(0U));
    EXPECT_THAT(sendFrom(2), ElementsAre(3U));
    EXPECT_THAT(sendFrom(6), IsEmpty()) << "is a member, and disabled";
    EXPECT_THAT(sendFrom(4), IsEmpty()) << "is alone in its VLAN";
}

TEST_F(StartedPortsTest, ThoseThatAreUpStayAsTheyAre) {
    board::BoardAccess access(_models.getBoard());
    PortStart const first(_models.getDocument(), access, PortSettings::Speed::speed100);
    _models.getBoard().getLog().clear();
    PortStart const second(_models.getDocument(), access, PortSettings::Speed::speed1000);
    EXPECT_THAT(second.getStarted(), IsEmpty());
    EXPECT_EQ(second.getUpBefore().size(), 5U);
    for (auto const& entry : _models.getBoard().getLog().getEntries()) {
        // Each way to the chip sets the bus up.
        EXPECT_FALSE(entry.kind == simulation::AccessLog::Kind::write &&
                     entry.identity->kind != simulation::UnitKind::system);
    }
}
