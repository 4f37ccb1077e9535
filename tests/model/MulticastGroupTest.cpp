#include "model/MulticastGroup.hpp"
#include "model/MulticastGroupPort.hpp"
#include "tests/model/ModelTest.hpp"

using test_support::Lines;
using test_support::RecordingSwitch;

namespace {

class MulticastGroupTest : public ModelTest {
protected:
    MulticastGroup group{application, "239.1.2.3", 4095};
};

TEST_F(MulticastGroupTest, KeepsWhatItWasBuiltFrom) {
    EXPECT_EQ(group.getMulticastGroupIp(), "239.1.2.3");
    EXPECT_EQ(group.getVlanId(), 4095);
    EXPECT_TRUE(group.getPorts().empty());
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(MulticastGroupTest, TheAddressIsKeptAsText) {
    EXPECT_EQ(MulticastGroup(application, " no address ", 0).getMulticastGroupIp(), " no address ");
    EXPECT_EQ(MulticastGroup(application, "", 0).getMulticastGroupIp(), "");
}

TEST_F(MulticastGroupTest, AddsAMemberThatRegistersItself) {
    auto& port = chip.addPort(3);
    group.addPort(port, nullptr);
    ASSERT_EQ(group.getPorts().count(3), 1U);
    MulticastGroupPort* const member = group.getPorts().at(3);
    EXPECT_EQ(member->getMulticastGroup(), &group);
    EXPECT_EQ(member->getSwitchPort(), &port);
    EXPECT_EQ(port.getMulticastGroupPort("239.1.2.3", 4095), member);
}

TEST_F(MulticastGroupTest, APortIdThatIsTakenChangesNothing) {
    auto& port = chip.addPort(3);
    RecordingSwitch otherChip(application, 1, calls);
    auto& otherPort = otherChip.addPort(3);
    group.addPort(port, nullptr);
    log.take();
    group.addPort(port, nullptr);
    group.addPort(otherPort, nullptr);
    EXPECT_EQ(log.take(), Lines{});
    EXPECT_EQ(group.getPorts().size(), 1U);
    EXPECT_EQ(group.getPorts().at(3)->getSwitchPort(), &port);
    EXPECT_EQ(otherPort.getMulticastGroupPort("239.1.2.3", 4095), nullptr);
}

} // namespace
