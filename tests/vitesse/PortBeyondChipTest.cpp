#include <sstream>

#include "tests/support/TestDocument.hpp"
#include "tests/vitesse/SwitchTest.hpp"

using test_support::Lines;
using test_support::ParallelBench;
using test_support::ParallelScript;
using test_support::TestDocument;

namespace {

using Speed = ManagedSwitchPort::SpeedSetting;
using Duplex = ManagedSwitchPort::DuplexSetting;
using FlowControl = ManagedSwitchPort::FlowControlSetting;
using Link = ManagedSwitchPort::LinkSetting;
using Ingress = ManagedSwitchPort::IngressTagSetting;
using Egress = ManagedSwitchPort::EgressTagSetting;

/// A port whose number in the document the chip does not have, beside port 3.
class PortBeyondChipTest : public testing::TestWithParam<char const*> {
protected:
    PortBeyondChipTest() {
        bench.script.verify();
        bench.script.expect({});
        bench.log.take();
    }

    ParallelBench<ParallelScript> bench;
    TestDocument document{
        std::string("<switch id='5'><port id='3' connectedTo='smac' portStatus='forwarding'/>"
                    "<port id='") +
        GetParam() + "' connectedTo='smac' portStatus='forwarding'/></switch>"};
    unsigned char const address[6] = {};
    VitesseSwitch chip{(bench.script.expect(switchSetUp), bench.application), 5, address, document, false};
    VitessePort& port = dynamic_cast<VitessePort&>(*chip.getPorts().rbegin()->second);
};

TEST_P(PortBeyondChipTest, HasNoMac) {
    EXPECT_FALSE(port.initialise());
    EXPECT_FALSE(port.setPort(Speed::speed100, Duplex::full, FlowControl::forcedOn, Link::enabled));
    EXPECT_FALSE(port.setPort(Speed::speed100, Duplex::full, FlowControl::forcedOff, Link::disabled));
    EXPECT_FALSE(port.setPort(Link::enabled));
    EXPECT_FALSE(port.setPort(Link::disabled));
    EXPECT_EQ(port.portStatus(), 0);
    EXPECT_FALSE(port.setReceiveEnable(true));
    EXPECT_FALSE(port.setTransmitEnable(true));
    EXPECT_FALSE(port.setMacConfigurationReset(VitessePort::MacResetMode::intoReset));
    EXPECT_FALSE(port.setMacSpeed(Speed::speed1000));
    EXPECT_FALSE(port.setMacDuplex(Duplex::full));
    EXPECT_FALSE(port.setInterframeGap(6));
    EXPECT_FALSE(port.setSeed());
    EXPECT_FALSE(port.setFlowControl(FlowControl::forcedOn, Speed::speed100));
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_P(PortBeyondChipTest, HasNoBitInAnyMask) {
    EXPECT_FALSE(port.setArbiterDiscardEnable(true));
    EXPECT_FALSE(port.isArbiterEmpty());
    EXPECT_FALSE(port.setPortLearningEnable(true));
    EXPECT_FALSE(port.setFrameForwardingtoPort(3, VitessePort::FrameForwardingSourceMask::allow));
    EXPECT_FALSE(port.updateSourceMasks());
    EXPECT_FALSE(port.portBasedVlanRouteToPort(*chip.getPort(3)));
    EXPECT_FALSE(port.portBasedVlanRouteToPort(std::list<ManagedSwitchPort*>{chip.getPort(3)}));
    EXPECT_FALSE(port.portBasedVlanRouteToPort(std::list<ManagedSwitchPort*>{}));
}

TEST_P(PortBeyondChipTest, JoinsNothing) {
    EXPECT_FALSE(port.addPortToVlan(10, Ingress::addTag, Egress::stripTag));
    EXPECT_FALSE(port.addPortToVlan(10, Ingress::validateTag, Egress::validateTag));
    EXPECT_FALSE(port.ingressAddTag(10));
    EXPECT_FALSE(port.ingressAddTagIfUntagged(10));
    EXPECT_FALSE(port.ingressValidateTag());
    EXPECT_FALSE(port.egressStripTag(10));
    EXPECT_FALSE(port.egressValidateTag());
    EXPECT_FALSE(port.addPortToVlanTable(10));
    EXPECT_FALSE(port.removePortFromVlanTable(10));
    EXPECT_FALSE(port.addPortToMulticastGroup("239.129.1.2", 10));
    EXPECT_FALSE(port.removePortFromMulticastGroup("239.129.1.2", 10));
}

TEST_P(PortBeyondChipTest, HasNoCounters) {
    std::ostringstream out;
    EXPECT_FALSE(port.dumpStatistics(out));
    EXPECT_EQ(out.str(), "");
}

INSTANTIATE_TEST_SUITE_P(Numbers, PortBeyondChipTest,
                         testing::Values("24", "25", "32", "35", "256", "259", "-1"),
                         [](auto const& instance) {
                             std::string const id = instance.param;
                             return id == "-1" ? std::string("minus1") : id;
                         });

} // namespace
