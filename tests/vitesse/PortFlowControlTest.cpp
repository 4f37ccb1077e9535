#include <array>

#include "tests/vitesse/PortTest.hpp"

using test_support::Access;
using test_support::Accesses;
using test_support::expectSuccess;
using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

using Speed = ManagedSwitchPort::SpeedSetting;
using FlowControl = ManagedSwitchPort::FlowControlSetting;

/// Pool control, flow control, egress limits and pause frames.
using Watermarks = std::array<unsigned int, 4>;

Watermarks const setA{0x20000000, 0x00002426, 0x1C191613, 0x00000000};
Watermarks const setB{0x24000001, 0x00000C08, 0x0C0C0C0C, 0x000300FF};
Watermarks const setC{0x27270004, 0x00002127, 0x100F0E0D, 0x00000000};
Watermarks const setD{0x20270000, 0x00002727, 0x100F0E0D, 0x00000000};
Watermarks const setE{0x24000001, 0x00000A06, 0x0C0C0C0C, 0x000300FF};

/// The address 00:01:C1:.. and the longest frame.
Accesses beginning(Access const& longestFrame) {
    return {writes(1, 3, 0x08, 0x000001C1), writes(1, 3, 0x0C, 0x00000000), longestFrame};
}

Accesses writing(Watermarks const& set) {
    return {writes(1, 3, 0xDF, set[0]), writes(1, 3, 0xDE, set[1]), writes(1, 3, 0xE0, set[2]),
            writes(1, 3, 0x04, set[3])};
}

class PortFlowControlTest : public PortTest {
protected:
    void expectSet(Watermarks const& set, FlowControl flowControl, Speed speed, Access const& longestFrame) {
        SCOPED_TRACE(testing::Message()
                     << "speed " << static_cast<unsigned int>(speed) << ", " << longestFrame.describe());
        expectSuccess(registers, beginning(longestFrame) + writing(set),
                      [&] { return port.setFlowControl(flowControl, speed); });
        EXPECT_EQ(log.take(), Lines{});
    }

    static Access frame(unsigned int length) { return reads(1, 3, 0x10, length); }
};

TEST_F(PortFlowControlTest, WithoutPauseFramesNormalFramesHaveOneSet) {
    for (auto const speed : {Speed::speed10, Speed::speed100, Speed::speed1000, static_cast<Speed>(3)}) {
        for (unsigned int const length : {0U, 64U, 1518U, 1535U, 1536U}) {
            expectSet(setA, FlowControl::forcedOff, speed, frame(length));
        }
    }
}

TEST_F(PortFlowControlTest, WithPauseFramesNormalFramesHaveOneSet) {
    for (auto const speed : {Speed::speed10, Speed::speed100, Speed::speed1000, static_cast<Speed>(3)}) {
        for (unsigned int const length : {0U, 64U, 1518U, 1535U, 1536U}) {
            expectSet(setB, FlowControl::forcedOn, speed, frame(length));
        }
    }
}

TEST_F(PortFlowControlTest, WithoutPauseFramesJumboFramesHaveASetForTheHighestSpeed) {
    for (unsigned int const length : {1537U, 9600U, 0xFFFFFFFFU}) {
        expectSet(setC, FlowControl::forcedOff, Speed::speed1000, frame(length));
    }
}

TEST_F(PortFlowControlTest, WithoutPauseFramesJumboFramesHaveASetForOtherSpeeds) {
    for (auto const speed : {Speed::speed10, Speed::speed100, static_cast<Speed>(3)}) {
        for (unsigned int const length : {1537U, 9600U, 0xFFFFFFFFU}) {
            expectSet(setD, FlowControl::forcedOff, speed, frame(length));
        }
    }
}

TEST_F(PortFlowControlTest, WithPauseFramesJumboFramesHaveOneSet) {
    for (auto const speed : {Speed::speed10, Speed::speed100, Speed::speed1000, static_cast<Speed>(3)}) {
        for (unsigned int const length : {1537U, 9600U, 0xFFFFFFFFU}) {
            expectSet(setE, FlowControl::forcedOn, speed, frame(length));
        }
    }
}

TEST_F(PortFlowControlTest, ALengthThatCannotBeReadIsNormal) {
    expectSet(setA, FlowControl::forcedOff, Speed::speed1000, frame(9600).failing());
    expectSet(setB, FlowControl::forcedOn, Speed::speed1000, frame(9600).failing());
}

TEST_F(PortFlowControlTest, OtherSettingsLeaveTheWatermarksAlone) {
    for (unsigned int const flowControl : {2U, 3U, 0xFFFFFFFFU}) {
        expectSuccess(registers, beginning(frame(1518)), [&] {
            return port.setFlowControl(static_cast<FlowControl>(flowControl), Speed::speed1000);
        });
    }
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortFlowControlTest, NoFailureEndsItOrIsTold) {
    Accesses const table = beginning(frame(1518)) + writing(setB);
    for (std::size_t row = 0; row < table.size(); ++row) {
        SCOPED_TRACE(row);
        Accesses broken = table;
        broken[row] = broken[row].failing();
        expectSuccess(registers, broken,
                      [&] { return port.setFlowControl(FlowControl::forcedOn, Speed::speed100); });
    }
}

TEST_F(PortFlowControlTest, PortsFromSixteenUpAreInBlockSix) {
    VitessePort& upper = addPort(23);
    expectSuccess(registers,
                  {writes(6, 7, 0x08, 0x000001C1), writes(6, 7, 0x0C, 0), reads(6, 7, 0x10, 1537),
                   writes(6, 7, 0xDF, 0x27270004), writes(6, 7, 0xDE, 0x00002127),
                   writes(6, 7, 0xE0, 0x100F0E0D), writes(6, 7, 0x04, 0)},
                  [&] { return upper.setFlowControl(FlowControl::forcedOff, Speed::speed1000); });
}

TEST_F(PortFlowControlTest, ThePortsAddressIsTheBaseAddressPlusItsNumber) {
    struct {
        unsigned int port;
        std::array<unsigned char, 6> address;
    } const cases[] = {
        {0, {0x00, 0x01, 0xC1, 0x00, 0x00, 0x00}},     {4, {0x00, 0x01, 0xC1, 0x00, 0x00, 0x04}},
        {23, {0x00, 0x01, 0xC1, 0x00, 0x00, 0x17}},    {0xFF, {0x00, 0x01, 0xC1, 0x00, 0x00, 0xFF}},
        {0x100, {0x00, 0x01, 0xC1, 0x00, 0x01, 0x00}}, {0x1FF, {0x00, 0x01, 0xC1, 0x00, 0x01, 0xFF}}};
    registers.expect({});
    for (auto const& expected : cases) {
        unsigned char address[6] = {};
        addPort(expected.port).getMacAddress(address);
        EXPECT_THAT(address, testing::ElementsAreArray(expected.address)) << expected.port;
    }
    unsigned char address[6] = {};
    port.getMacAddress(address);
    EXPECT_THAT(address, testing::ElementsAre(0x00, 0x01, 0xC1, 0x00, 0x00, 0x03));
}

} // namespace
