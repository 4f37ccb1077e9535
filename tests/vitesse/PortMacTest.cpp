#include "tests/vitesse/PortTest.hpp"

using test_support::Access;
using test_support::Accesses;
using test_support::expectSuccess;
using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

using Speed = ManagedSwitchPort::SpeedSetting;
using Duplex = ManagedSwitchPort::DuplexSetting;
using ResetMode = VitessePort::MacResetMode;
using SourceMask = VitessePort::FrameForwardingSourceMask;

/// The MAC configuration of port 3.
Access readMac(unsigned int value) {
    return reads(1, 3, 0x00, value);
}

Access writeMac(unsigned int value) {
    return writes(1, 3, 0x00, value);
}

class PortMacTest : public PortTest {
protected:
    /// One register that is read and written: a failed read counts as 0 and is no failure, a failed
    /// write is one.
    template <typename Operation>
    void expectChange(Access read, Access write, unsigned int writtenAfterFailedRead, Operation operation) {
        expectSuccess(registers, {read, write}, operation);
        Access blind = write;
        blind.value = writtenAfterFailedRead;
        expectSuccess(registers, {read.failing(), blind}, operation);
        registers.expect({read, write.failing()});
        EXPECT_FALSE(operation());
        registers.verify();
    }
};

TEST_F(PortMacTest, InitialisingChecksTheVlanMembershipOfWhatComesIn) {
    expectChange(reads(2, 0, 0x05, 0x80000001), writes(2, 0, 0x05, 0x80000009), 0x00000008,
                 [&] { return port.initialise(); });
    expectChange(reads(2, 0, 0x05, 0x00000008), writes(2, 0, 0x05, 0x00000008), 0x00000008,
                 [&] { return port.initialise(); });
}

TEST_F(PortMacTest, ReceptionIsSwitchedInTwoRegistersThatAreReadFirst) {
    expectSuccess(registers,
                  {readMac(0x10000000), reads(2, 0, 0x10, 0x00FFFFF7), writeMac(0x10010000),
                   writes(2, 0, 0x10, 0x00FFFFFF)},
                  [&] { return port.setReceiveEnable(true); });
    expectSuccess(registers,
                  {readMac(0xFFFFFFFF), reads(2, 0, 0x10, 0xFFFFFFFF), writeMac(0xFFFEFFFF),
                   writes(2, 0, 0x10, 0xFFFFFFF7)},
                  [&] { return port.setReceiveEnable(false); });
}

TEST_F(PortMacTest, ReceptionEndsAtAFailedWrite) {
    Accesses const table{readMac(0), reads(2, 0, 0x10, 0), writeMac(0x00010000), writes(2, 0, 0x10, 0x8)};
    expectEachFailureStops(registers, table, [&] { return port.setReceiveEnable(true); }, {0, 1});
    expectSuccess(registers,
                  {readMac(0x55).failing(), reads(2, 0, 0x10, 0x55).failing(), writeMac(0x00010000),
                   writes(2, 0, 0x10, 0x8)},
                  [&] { return port.setReceiveEnable(true); });
}

TEST_F(PortMacTest, TransmissionIsSwitchedInTheMac) {
    expectChange(readMac(0x00000001), writeMac(0x10000001), 0x10000000,
                 [&] { return port.setTransmitEnable(true); });
    expectChange(readMac(0xFFFFFFFF), writeMac(0xEFFFFFFF), 0x00000000,
                 [&] { return port.setTransmitEnable(false); });
}

TEST_F(PortMacTest, TheArbiterDiscardsByPort) {
    expectChange(reads(5, 0, 0x0E, 0x00000001), writes(5, 0, 0x0E, 0x00000009), 0x00000008,
                 [&] { return port.setArbiterDiscardEnable(true); });
    expectChange(reads(5, 0, 0x0E, 0xFFFFFFFF), writes(5, 0, 0x0E, 0xFFFFFFF7), 0x00000000,
                 [&] { return port.setArbiterDiscardEnable(false); });
}

TEST_F(PortMacTest, TheArbiterIsEmptyByPort) {
    expectSuccess(registers, {reads(5, 0, 0x0C, 0x00000008)}, [&] { return port.isArbiterEmpty(); });
    for (Access const& read : {reads(5, 0, 0x0C, 0xFFFFFFF7), reads(5, 0, 0x0C, 0x8).failing()}) {
        registers.expect({read});
        EXPECT_FALSE(port.isArbiterEmpty());
        registers.verify();
    }
}

TEST_F(PortMacTest, ResetHasSixBits) {
    expectChange(readMac(0x00000001), writeMac(0x2000083D), 0x2000083C,
                 [&] { return port.setMacConfigurationReset(ResetMode::intoReset); });
    expectChange(readMac(0xFFFFFFFF), writeMac(0xDFFFF7C3), 0x00000000,
                 [&] { return port.setMacConfigurationReset(ResetMode::outOfReset); });
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortMacTest, AnUnknownResetModeIsReportedAndEndsReset) {
    for (unsigned int const mode : {2U, 3U, 0xFFFFFFFFU}) {
        expectSuccess(registers, {readMac(0xFFFFFFFF), writeMac(0xDFFFF7C3)},
                      [&] { return port.setMacConfigurationReset(static_cast<ResetMode>(mode)); });
        EXPECT_EQ(log.take(), (Lines{"error|VitessePort::setMacConfigurationReset invalid resetState\n"}));
    }
}

TEST_F(PortMacTest, EverySpeedHasAClockAndAGap) {
    struct {
        Speed speed;
        unsigned int clock;
        unsigned int gap;
    } const cases[] = {{Speed::speed10, 0xFFFDFFFF, 0xFFFDFC7F},
                       {Speed::speed100, 0xFFFDFFFE, 0xFFFDFC7E},
                       {Speed::speed1000, 0xFFFFFFFD, 0xFFFFF9BD}};
    for (auto const& expected : cases) {
        Accesses const table{readMac(0xFFFFFFFF), writeMac(expected.clock), readMac(expected.clock),
                             writeMac(expected.gap)};
        expectSuccess(registers, table, [&] { return port.setMacSpeed(expected.speed); });
        expectEachFailureStops(registers, table, [&] { return port.setMacSpeed(expected.speed); }, {0, 2});
    }
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortMacTest, SpeedsStartFromZeroWhenNothingCanBeRead) {
    unsigned int const clocks[] = {0x00000003, 0x00000002, 0x00020001};
    unsigned int const gaps[] = {0x00000440, 0x00000440, 0x00000180};
    for (unsigned int speed = 0; speed < 3; ++speed) {
        expectSuccess(registers,
                      {readMac(0x55).failing(), writeMac(clocks[speed]), readMac(0x55).failing(),
                       writeMac(gaps[speed])},
                      [&] { return port.setMacSpeed(static_cast<Speed>(speed)); });
    }
}

TEST_F(PortMacTest, AnUnknownSpeedIsReportedAndGetsNoGap) {
    for (unsigned int const speed : {3U, 4U, 0xFFFFFFFFU}) {
        for (Access const& write : {writeMac(0xFFFDFFFD), writeMac(0xFFFDFFFD).failing()}) {
            registers.expect({readMac(0xFFFFFFFF), write});
            EXPECT_FALSE(port.setMacSpeed(static_cast<Speed>(speed)));
            registers.verify();
            EXPECT_EQ(log.take(), (Lines{"error|VitessePort::setMacSpeed invalid speed\n"}));
        }
    }
}

TEST_F(PortMacTest, DuplexIsTheLowBitOfTheSetting) {
    expectChange(readMac(0x10000000), writeMac(0x10040000), 0x00040000,
                 [&] { return port.setMacDuplex(Duplex::full); });
    expectChange(readMac(0xFFFFFFFF), writeMac(0xFFFBFFFF), 0x00000000,
                 [&] { return port.setMacDuplex(Duplex::half); });
    expectChange(readMac(0xFFFFFFFF), writeMac(0xFFFBFFFF), 0x00000000,
                 [&] { return port.setMacDuplex(Duplex::forcedHalf); });
    expectChange(readMac(0x00000000), writeMac(0x00040000), 0x00040000,
                 [&] { return port.setMacDuplex(static_cast<Duplex>(3)); });
}

TEST_F(PortMacTest, TheGapHasFiveBits) {
    struct {
        unsigned short gap;
        unsigned int field;
    } const cases[] = {{0, 0x000},  {1, 0x040},  {6, 0x180},     {17, 0x440},
                       {31, 0x7C0}, {32, 0x000}, {0xFFFF, 0x7C0}};
    for (auto const& expected : cases) {
        expectChange(readMac(0xFFFFFFFF), writeMac(0xFFFFF83F | expected.field), expected.field,
                     [&] { return port.setInterframeGap(expected.gap); });
    }
}

TEST_F(PortMacTest, TheSeedIsThePortsNumberLoadedForTwoMicroseconds) {
    Accesses const table{readMac(0xF7FFFFFF), writeMac(0xF81FFFFF), writeMac(0xF01FFFFF)};
    expectSuccess(registers, table, [&] { return port.setSeed(); });
    EXPECT_EQ(clock.getNanoseconds(), 2'000U);
    expectEachFailureStops(registers, table, [&] { return port.setSeed(); }, {0});
    expectSuccess(registers, {readMac(0x55).failing(), writeMac(0x08180000), writeMac(0x00180000)},
                  [&] { return port.setSeed(); });
}

TEST_F(PortMacTest, LearningIsSwitchedByPort) {
    expectChange(reads(2, 0, 0x0D, 0x00000001), writes(2, 0, 0x0D, 0x00000009), 0x00000008,
                 [&] { return port.setPortLearningEnable(true); });
    expectChange(reads(2, 0, 0x0D, 0xFFFFFFFF), writes(2, 0, 0x0D, 0xFFFFFFF7), 0x00000000,
                 [&] { return port.setPortLearningEnable(false); });
}

TEST_F(PortMacTest, ForwardingChangesOneBitOfThePortsOwnSourceMask) {
    Accesses const allow{reads(2, 0, 0x83, 0x00000001), writes(2, 0, 0x83, 0x00800001)};
    auto const allowPort23 = [&] { return port.setFrameForwardingtoPort(23, SourceMask::allow); };
    expectSuccess(registers, allow, allowPort23);
    expectEachFailureStops(registers, allow, allowPort23);
    for (unsigned int const mode : {1U, 2U, 0xFFFFFFFFU}) {
        expectSuccess(registers, {reads(2, 0, 0x83, 0xFFFFFFFF), writes(2, 0, 0x83, 0xFFFFFFFE)},
                      [&] { return port.setFrameForwardingtoPort(0, static_cast<SourceMask>(mode)); });
    }
}

TEST_F(PortMacTest, DestinationsBeyondTheMaskHaveNoBit) {
    for (auto const destination : std::initializer_list<unsigned short>{32, 35, 64, 0xFFFF}) {
        expectSuccess(registers, {reads(2, 0, 0x83, 0x12345678), writes(2, 0, 0x83, 0x12345678)},
                      [&] { return port.setFrameForwardingtoPort(destination, SourceMask::allow); });
        expectSuccess(registers, {reads(2, 0, 0x83, 0xFFFFFFFF), writes(2, 0, 0x83, 0xFFFFFFFF)},
                      [&] { return port.setFrameForwardingtoPort(destination, SourceMask::block); });
    }
}

TEST_F(PortMacTest, APortIsUpWhenItReceivesAndTransmits) {
    struct {
        Access read;
        unsigned short status;
    } const cases[] = {{readMac(0x10010000), 1}, {readMac(0xFFFFFFFF), 1},
                       {readMac(0x10000000), 0}, {readMac(0x00010000), 0},
                       {readMac(0xEFFEFFFF), 0}, {readMac(0x10010000).failing(), 0}};
    for (auto const& expected : cases) {
        registers.expect({expected.read});
        EXPECT_EQ(port.portStatus(), expected.status) << expected.read.describe();
        registers.verify();
    }
}

TEST_F(PortMacTest, WhatTheChipDoesNotHaveSucceedsWithoutAnAccess) {
    registers.expect({});
    EXPECT_TRUE(port.setMdix(ManagedSwitchPort::MdixSetting::mdix));
    EXPECT_TRUE(port.setMdix(static_cast<ManagedSwitchPort::MdixSetting>(99)));
    EXPECT_TRUE(port.addPortToSpanningTree(10, ManagedSwitchPort::PortEnabledStatus::forwarding));
    EXPECT_TRUE(port.clearStatistics());
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortMacTest, PortsFromSixteenUpAreInBlockSix) {
    VitessePort& upper = addPort(17);
    expectSuccess(registers, {reads(6, 1, 0x00, 0), writes(6, 1, 0x00, 0x10000000)},
                  [&] { return upper.setTransmitEnable(true); });
    expectSuccess(registers,
                  {reads(6, 1, 0x00, 0), writes(6, 1, 0x00, 0x08880000), writes(6, 1, 0x00, 0x00880000)},
                  [&] { return upper.setSeed(); });
    expectSuccess(registers, {reads(2, 0, 0x0D, 0), writes(2, 0, 0x0D, 0x00020000)},
                  [&] { return upper.setPortLearningEnable(true); });
    expectSuccess(registers, {reads(2, 0, 0x91, 0), writes(2, 0, 0x91, 0x00000001)},
                  [&] { return upper.setFrameForwardingtoPort(0, SourceMask::allow); });
}

} // namespace
