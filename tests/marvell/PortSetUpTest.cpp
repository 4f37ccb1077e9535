#include <vector>

#include "tests/marvell/PortTest.hpp"

using test_support::Accesses;
using test_support::expectSuccess;
using test_support::Lines;
using test_support::phyReads;
using test_support::phyWrites;
using test_support::reads;
using test_support::writes;

namespace {

using Speed = ManagedSwitchPort::SpeedSetting;
using Duplex = ManagedSwitchPort::DuplexSetting;
using FlowControl = ManagedSwitchPort::FlowControlSetting;
using Link = ManagedSwitchPort::LinkSetting;

/// The accesses of one step of an operation that goes on to the next step whatever happens.
using Steps = std::vector<Accesses>;

Accesses joined(Steps const& steps) {
    Accesses all;
    for (auto const& step : steps) {
        all = all + step;
    }
    return all;
}

class PortSetUpTest : public PortTest {
protected:
    /// Lets each single access fail: the rest of its step must be left out, every other step made,
    /// and the result false.
    template <typename Operation> void expectFailuresToBeRemembered(Steps const& steps, Operation operation) {
        for (std::size_t step = 0; step < steps.size(); ++step) {
            for (std::size_t access = 0; access < steps[step].size(); ++access) {
                SCOPED_TRACE(testing::Message() << "failing: step " << step << " access " << access);
                Steps broken = steps;
                broken[step].resize(access + 1, steps[step][access]);
                broken[step].back() = broken[step].back().failing();
                registers.expect(joined(broken));
                EXPECT_FALSE(operation());
                registers.verify();
            }
        }
    }

    Steps const linkUp{{reads(0x13, 0x01, 0x00DD), writes(0x13, 0x01, 0x00FD)},
                       {reads(0x13, 0x04, 0x0430), phyReads(3, 0, 0x3900), writes(0x13, 0x04, 0x0433),
                        phyWrites(3, 0, 0xB100)}};
    Steps const linkDown{{reads(0x13, 0x01, 0x00FD), writes(0x13, 0x01, 0x00DD)},
                         {reads(0x13, 0x04, 0x0433), phyReads(3, 0, 0x3100), writes(0x13, 0x04, 0x0430),
                          phyWrites(3, 0, 0xB900)}};
};

Steps const fastEthernet{
    {reads(0x13, 0x01, 0x0003), writes(0x13, 0x01, 0x0013)},
    {reads(0x13, 0x00, 0x9F00), writes(0x13, 0x00, 0x8F00)},
    {reads(0x13, 0x01, 0x0013), writes(0x13, 0x01, 0x00D3)},
    {reads(0x13, 0x01, 0x00D3), phyReads(3, 0, 0x1000), writes(0x13, 0x01, 0x00DF), phyWrites(3, 0, 0x1100)},
    {reads(0x13, 0x01, 0x00DF), phyReads(3, 0, 0x1100), writes(0x13, 0x01, 0x00DD), phyWrites(3, 0, 0x3100)}};

Steps operator+(Steps first, Steps const& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

TEST_F(PortSetUpTest, EnablesAPortAfterForcingItsLinkDown) {
    auto const set = [&] {
        return port.setPort(Speed::speed100, Duplex::full, FlowControl::forcedOn, Link::enabled);
    };
    expectSuccess(registers, joined(fastEthernet + linkUp), set);
    expectFailuresToBeRemembered(fastEthernet + linkUp, set);
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortSetUpTest, DisablesAPortAndPowersItsPhyDown) {
    auto const set = [&] {
        return port.setPort(Speed::speed100, Duplex::full, FlowControl::forcedOn, Link::disabled);
    };
    expectSuccess(registers, joined(fastEthernet + linkDown), set);
    expectFailuresToBeRemembered(fastEthernet + linkDown, set);
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortSetUpTest, HandsSpeedDuplexAndFlowControlOn) {
    expectSuccess(
        registers, {reads(0x13, 0x01, 0x0000),  writes(0x13, 0x01, 0x0010), reads(0x13, 0x00, 0x1000),
                    writes(0x13, 0x00, 0x0000), reads(0x13, 0x01, 0x0010),  writes(0x13, 0x01, 0x0050),
                    reads(0x13, 0x01, 0x0050),  phyReads(3, 0, 0x0100),     writes(0x13, 0x01, 0x0054),
                    phyWrites(3, 0, 0x0000),    reads(0x13, 0x01, 0x0054),  phyReads(3, 0, 0x0000),
                    writes(0x13, 0x01, 0x0056), phyWrites(3, 0, 0x2040),    reads(0x13, 0x01, 0x0056),
                    writes(0x13, 0x01, 0x0076), reads(0x13, 0x04, 0x0000),  phyReads(3, 0, 0x2040),
                    writes(0x13, 0x04, 0x0003), phyWrites(3, 0, 0xA040)},
        [&] {
            return port.setPort(Speed::speed1000, Duplex::forcedHalf, FlowControl::forcedOff, Link::enabled);
        });
}

TEST_F(PortSetUpTest, UnknownSettingsAreReportedAndDoNotFail) {
    expectSuccess(registers,
                  {reads(0x13, 0x01, 0x0000),  writes(0x13, 0x01, 0x0010), reads(0x13, 0x00, 0x0000),
                   writes(0x13, 0x00, 0x0000), reads(0x13, 0x01, 0x00D0),  writes(0x13, 0x01, 0x0090),
                   reads(0x13, 0x01, 0x0010),  phyReads(3, 0, 0x1140),     writes(0x13, 0x01, 0x0010),
                   phyWrites(3, 0, 0x1140),    reads(0x13, 0x01, 0x0010),  phyReads(3, 0, 0x1140),
                   writes(0x13, 0x01, 0x0010), phyWrites(3, 0, 0x1140),    reads(0x13, 0x01, 0x0010),
                   writes(0x13, 0x01, 0x0030), reads(0x13, 0x04, 0x0000),  phyReads(3, 0, 0x0000),
                   writes(0x13, 0x04, 0x0003), phyWrites(3, 0, 0x8000)},
                  [&] {
                      return port.setPort(static_cast<Speed>(3), static_cast<Duplex>(0),
                                          static_cast<FlowControl>(2), static_cast<Link>(2));
                  });
    EXPECT_EQ(log.take(), (Lines{"error|MarvellPort::setDuplex Default condition should never happen\n",
                                 "error|MarvellPort::setSpeed Default condition should never happen\n"}));
}

TEST_F(PortSetUpTest, EnablesOrDisablesThePortAlone) {
    expectSuccess(registers, joined(linkUp), [&] { return port.setPort(Link::enabled); });
    expectSuccess(registers, joined(linkUp), [&] { return port.setPort(static_cast<Link>(7)); });
    expectSuccess(registers, joined(linkDown), [&] { return port.setPort(Link::disabled); });
}

TEST_F(PortSetUpTest, EnablingThePortAloneNeedsBothSteps) {
    expectFailuresToBeRemembered(linkUp, [&] { return port.setPort(Link::enabled); });
    expectFailuresToBeRemembered(linkDown, [&] { return port.setPort(Link::disabled); });
}

TEST_F(PortSetUpTest, InitialisesToSecureMode) {
    std::pair<unsigned int, unsigned int> const cases[] = {
        {0x0000, 0x0C00}, {0xF3FF, 0xFFFF}, {0xFFFF, 0xFFFF}, {0x2480, 0x2C80}};
    for (auto const& expected : cases) {
        test_support::expectStrict(registers,
                                   {reads(0x13, 0x08, expected.first), writes(0x13, 0x08, expected.second)},
                                   [&] { return port.initialise(); });
    }
    EXPECT_EQ(log.take(), Lines{});
}

} // namespace
