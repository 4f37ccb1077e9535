#include <initializer_list>

#include "tests/marvell/PortTest.hpp"

using test_support::Accesses;
using test_support::expectStrict;
using test_support::Lines;
using test_support::phyReads;
using test_support::phyWrites;
using test_support::reads;
using test_support::writes;

namespace {

/// A register of the port before and after an operation, and PHY register 0 likewise.
struct LinkCase {
    unsigned int setting;
    unsigned int before;
    unsigned int after;
    unsigned int phyBefore = 0;
    unsigned int phyAfter = 0;
};

class PortLinkTest : public PortTest {
protected:
    /// Checks operations on one register of the port.
    template <typename Operation>
    void check(unsigned int registerNumber, std::initializer_list<LinkCase> cases, Operation operation) {
        for (auto const& expected : cases) {
            SCOPED_TRACE(testing::Message()
                         << "setting " << expected.setting << " before " << expected.before);
            expectStrict(
                registers,
                {reads(0x13, registerNumber, expected.before), writes(0x13, registerNumber, expected.after)},
                [&] { return operation(expected.setting); });
        }
    }

    /// Checks operations on one register of the port and the PHY's control register.
    template <typename Operation>
    void checkWithPhy(unsigned int registerNumber, std::initializer_list<LinkCase> cases,
                      Operation operation) {
        for (auto const& expected : cases) {
            SCOPED_TRACE(testing::Message()
                         << "setting " << expected.setting << " before " << expected.before);
            expectStrict(registers,
                         {reads(0x13, registerNumber, expected.before), phyReads(3, 0, expected.phyBefore),
                          writes(0x13, registerNumber, expected.after), phyWrites(3, 0, expected.phyAfter)},
                         [&] { return operation(expected.setting); });
        }
    }
};

TEST_F(PortLinkTest, ForcesTheLink) {
    check(0x01,
          {
              {0, 0x0000, 0x0010},
              {0, 0xFFFF, 0xFFDF},
              {1, 0x0000, 0x0030},
              {1, 0xFFFF, 0xFFFF},
              {2, 0x0000, 0x0000},
              {2, 0xFFFF, 0xFFEF},
              {2, 0x0030, 0x0020},
              {99, 0x0010, 0x0000},
          },
          [&](unsigned int setting) {
              return port.setForceLink(static_cast<MarvellPort::ForceLinkSetting>(setting));
          });
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortLinkTest, ForcesFlowControl) {
    check(0x01,
          {
              {0, 0x0000, 0x0040},
              {0, 0xFFFF, 0xFF7F},
              {1, 0x0000, 0x00C0},
              {1, 0xFFFF, 0xFFFF},
              {2, 0x0000, 0x0000},
              {2, 0xFFFF, 0xFFBF},
              {2, 0x00C0, 0x0080},
              {99, 0x0040, 0x0000},
          },
          [&](unsigned int setting) {
              return port.setFlowControl(static_cast<ManagedSwitchPort::FlowControlSetting>(setting));
          });
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortLinkTest, StopsThePhyPollingUnit) {
    check(0x00, {{0, 0xFFFF, 0xEFFF}, {0, 0x1000, 0x0000}, {0, 0x0E07, 0x0E07}},
          [&](unsigned int) { return port.disablePPUPort(); });
}

TEST_F(PortLinkTest, SetsDuplexInPortAndPhy) {
    checkWithPhy(0x01,
                 {
                     {1, 0x0000, 0x000C, 0x0000, 0x0100},
                     {1, 0xFFF3, 0xFFFF, 0xFEFF, 0xFFFF},
                     {2, 0x0000, 0x0004, 0x0000, 0x0000},
                     {2, 0xFFFF, 0xFFF7, 0xFFFF, 0xFEFF},
                 },
                 [&](unsigned int setting) {
                     return port.setDuplex(static_cast<ManagedSwitchPort::DuplexSetting>(setting));
                 });
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortLinkTest, WritesBothRegistersBackForAnyOtherDuplex) {
    for (unsigned int const setting : {0U, 3U, 99U}) {
        registers.expect({reads(0x13, 0x01, 0x1234), phyReads(3, 0, 0x5678), writes(0x13, 0x01, 0x1234),
                          phyWrites(3, 0, 0x5678)});
        EXPECT_TRUE(port.setDuplex(static_cast<ManagedSwitchPort::DuplexSetting>(setting)));
        registers.verify();
        EXPECT_EQ(log.take(),
                  (Lines{"error|MarvellPort::setDuplex Default condition should never happen\n"}));
    }
}

TEST_F(PortLinkTest, SetsTheSpeedInPortAndPhy) {
    checkWithPhy(0x01,
                 {
                     {0, 0xFFFF, 0xFFFC, 0xFFFF, 0xDFBF},
                     {0, 0x0000, 0x0000, 0x0000, 0x0000},
                     {1, 0x0000, 0x0001, 0x0000, 0x2000},
                     {1, 0xFFFF, 0xFFFD, 0xFFFF, 0xFFBF},
                     {2, 0x0000, 0x0002, 0x0000, 0x2040},
                     {2, 0xFFFF, 0xFFFE, 0x1140, 0x3140},
                 },
                 [&](unsigned int setting) {
                     return port.setSpeed(static_cast<ManagedSwitchPort::SpeedSetting>(setting));
                 });
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortLinkTest, WritesBothRegistersBackForAnyOtherSpeed) {
    for (unsigned int const setting : {3U, 99U}) {
        registers.expect({reads(0x13, 0x01, 0x1234), phyReads(3, 0, 0x5678), writes(0x13, 0x01, 0x1234),
                          phyWrites(3, 0, 0x5678)});
        EXPECT_TRUE(port.setSpeed(static_cast<ManagedSwitchPort::SpeedSetting>(setting)));
        registers.verify();
        EXPECT_EQ(log.take(), (Lines{"error|MarvellPort::setSpeed Default condition should never happen\n"}));
    }
}

TEST_F(PortLinkTest, SetsThePortStateAndResetsThePhy) {
    checkWithPhy(0x04,
                 {
                     {0, 0xFFFF, 0xFFFC, 0x0000, 0x8800},
                     {0, 0x0433, 0x0430, 0x1140, 0x9940},
                     {1, 0x0000, 0x0001, 0x0000, 0x8000},
                     {1, 0xFFFF, 0xFFFD, 0xFFFF, 0xF7FF},
                     {2, 0x0000, 0x0002, 0x0800, 0x8000},
                     {2, 0xFFFF, 0xFFFE, 0x1940, 0x9140},
                     {3, 0x0430, 0x0433, 0x1940, 0x9140},
                     {3, 0x0000, 0x0003, 0x0000, 0x8000},
                 },
                 [&](unsigned int setting) {
                     return port.setEnabled(static_cast<MarvellPort::PortForwardingSeting>(setting));
                 });
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortLinkTest, WritesBothRegistersBackForAnyOtherState) {
    registers.expect({reads(0x13, 0x04, 0x1234), phyReads(3, 0, 0x5678), writes(0x13, 0x04, 0x1234),
                      phyWrites(3, 0, 0x5678)});
    EXPECT_TRUE(port.setEnabled(static_cast<MarvellPort::PortForwardingSeting>(4)));
    registers.verify();
    EXPECT_EQ(log.take(), (Lines{"error|MarvellPort::setEnabled Default condition should never happen\n"}));
}

TEST_F(PortLinkTest, SetsTheCrossoverModeInThePhy) {
    LinkCase const cases[] = {
        {0, 0xFFFF, 0xFFCF}, {0, 0x0000, 0x0000}, {1, 0x0000, 0x0010}, {1, 0xFFFF, 0xFFDF},
        {2, 0x0000, 0x0020}, {2, 0xFFFF, 0xFFEF}, {3, 0x0000, 0x0030}, {3, 0xFFCF, 0xFFFF},
    };
    for (auto const& expected : cases) {
        expectStrict(registers, {phyReads(3, 16, expected.before), phyWrites(3, 16, expected.after)}, [&] {
            return port.setMdix(static_cast<ManagedSwitchPort::MdixSetting>(expected.setting));
        });
    }
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortLinkTest, WritesThePhyBackForAnyOtherCrossoverMode) {
    registers.expect({phyReads(3, 16, 0x5678), phyWrites(3, 16, 0x5678)});
    EXPECT_TRUE(port.setMdix(static_cast<ManagedSwitchPort::MdixSetting>(4)));
    registers.verify();
    EXPECT_EQ(log.take(), (Lines{"error|MarvellPort::setMDIX Default condition should never happen\n"}));
}

TEST_F(PortLinkTest, StatusIsThePortState) {
    std::pair<unsigned int, unsigned short> const cases[] = {
        {0x0000, 0}, {0xFFFC, 0}, {0x0431, 1}, {0xFFFE, 2}, {0xFFFF, 3}};
    for (auto const& expected : cases) {
        registers.expect({reads(0x13, 0x04, expected.first)});
        EXPECT_EQ(port.portStatus(), expected.second);
        registers.verify();
    }
}

TEST_F(PortLinkTest, AStatusThatCannotBeReadIsZero) {
    registers.expect({reads(0x13, 0x04, 0xFFFF).failing()});
    EXPECT_EQ(port.portStatus(), 0);
}

TEST_F(PortLinkTest, LearningNeedsNothing) {
    registers.expect({});
    EXPECT_TRUE(port.setPortLearningEnable(true));
    EXPECT_TRUE(port.setPortLearningEnable(false));
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortLinkTest, DeviceAndPhyFollowThePortNumber) {
    MarvellPort first(owner, registers, 0, "cpu", "disabled", nullptr);
    MarvellPort last(owner, registers, 10, "cpu", "disabled", nullptr);
    registers.expect({reads(0x10, 0x04, 1), phyReads(0, 16, 0), phyWrites(0, 16, 0x10), reads(0x1A, 0x04, 2),
                      phyReads(10, 16, 0), phyWrites(10, 16, 0x10)});
    EXPECT_EQ(first.portStatus(), 1);
    EXPECT_TRUE(first.setMdix(ManagedSwitchPort::MdixSetting::mdix));
    EXPECT_EQ(last.portStatus(), 2);
    EXPECT_TRUE(last.setMdix(ManagedSwitchPort::MdixSetting::mdix));
}

} // namespace
