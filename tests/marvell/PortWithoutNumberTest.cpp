#include <sstream>

#include "tests/marvell/PortTest.hpp"
#include "tests/support/MacBench.hpp"
#include "tests/support/SmiScript.hpp"
#include "tests/support/TestDocument.hpp"

using test_support::MacBench;
using test_support::SmiScript;
using test_support::TestDocument;

namespace {

using Speed = ManagedSwitchPort::SpeedSetting;
using Duplex = ManagedSwitchPort::DuplexSetting;
using FlowControl = ManagedSwitchPort::FlowControlSetting;
using Link = ManagedSwitchPort::LinkSetting;

/// A port whose id in the document is no number.
class PortWithoutNumberTest : public testing::Test {
protected:
    MacBench<SmiScript> bench;
    TestDocument document{
        "<switch id='5'><port id='?' connectedTo='smac' portStatus='forwarding'/></switch>"};
    unsigned char const address[6] = {};
    MarvellSwitch chip{bench.application, 5, address, document, false};
    MarvellPort& port = dynamic_cast<MarvellPort&>(*chip.getPorts().begin()->second);
};

TEST_F(PortWithoutNumberTest, TouchesNoRegister) {
    int const before = bench.script.wordAccesses();
    bench.script.expect({});
    EXPECT_FALSE(port.initialise());
    EXPECT_FALSE(port.setPort(Speed::speed100, Duplex::full, FlowControl::forcedOn, Link::enabled));
    EXPECT_FALSE(port.setPort(Link::disabled));
    EXPECT_EQ(port.portStatus(), 0);
    EXPECT_FALSE(port.disablePPUPort());
    EXPECT_FALSE(port.setForceLink(MarvellPort::ForceLinkSetting::up));
    EXPECT_FALSE(port.setFlowControl(FlowControl::forcedOff));
    EXPECT_FALSE(port.setDuplex(Duplex::full));
    EXPECT_FALSE(port.setSpeed(Speed::speed10));
    EXPECT_FALSE(port.setEnabled(MarvellPort::PortForwardingSeting::learning));
    EXPECT_FALSE(port.setMdix(ManagedSwitchPort::MdixSetting::mdi));
    EXPECT_EQ(bench.script.wordAccesses(), before);
}

TEST_F(PortWithoutNumberTest, JoinsNothing) {
    int const before = bench.script.wordAccesses();
    bench.script.expect({});
    EXPECT_FALSE(port.addPortToVlan(10, ManagedSwitchPort::IngressTagSetting::addTag,
                                    ManagedSwitchPort::EgressTagSetting::stripTag));
    EXPECT_FALSE(port.ingressAddTag(10));
    EXPECT_FALSE(port.ingressAddTagIfUntagged(10));
    EXPECT_FALSE(port.ingressValidateTag());
    EXPECT_FALSE(port.addPortToVlanTable(10, ManagedSwitchPort::EgressTagSetting::stripTag));
    EXPECT_FALSE(port.removePortFromVlanTable(10));
    EXPECT_FALSE(port.addPortToSpanningTree(10, ManagedSwitchPort::PortEnabledStatus::forwarding));
    EXPECT_FALSE(port.portBasedVlanRouteToPort(port));
    EXPECT_FALSE(port.portBasedVlanRouteToPort(std::list<ManagedSwitchPort*>{&port}));
    EXPECT_EQ(bench.script.wordAccesses(), before);
}

TEST_F(PortWithoutNumberTest, HasNoStatistics) {
    int const before = bench.script.wordAccesses();
    bench.script.expect({});
    std::ostringstream out;
    EXPECT_FALSE(port.clearStatistics());
    EXPECT_FALSE(port.dumpStatistics(out));
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(bench.script.wordAccesses(), before);
}

TEST_F(PortWithoutNumberTest, ConfiguringItsSwitchLeavesItOut) {
    bench.script.expect({test_support::writes(0x1B, 0x05, 0x9000)});
    chip.configureVlans();
    chip.configurePorts();
}

} // namespace
