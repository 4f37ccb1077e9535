#include <chrono>
#include <vector>

#include "tests/vitesse/PortTest.hpp"

using namespace std::chrono_literals;
using test_support::Access;
using test_support::Accesses;
using test_support::expectSuccess;
using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

using Speed = ManagedSwitchPort::SpeedSetting;
using Duplex = ManagedSwitchPort::DuplexSetting;
using FlowControl = ManagedSwitchPort::FlowControlSetting;
using Link = ManagedSwitchPort::LinkSetting;

/// The accesses of one step of an operation that goes on to the next step whatever happens.
using Steps = std::vector<Accesses>;

Steps operator+(Steps first, Steps const& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Accesses joined(Steps const& steps) {
    Accesses all;
    for (auto const& step : steps) {
        all = all + step;
    }
    return all;
}

/// Port 3, linked at 1000 Mbit/s half duplex with a gap of 6, is stopped and told to discard.
Steps const stopping{{reads(1, 3, 0x00, 0x10030181), reads(2, 0, 0x10, 0x00FFFFFF),
                      writes(1, 3, 0x00, 0x10020181), writes(2, 0, 0x10, 0x00FFFFF7)},
                     {reads(1, 3, 0x00, 0x10020181), writes(1, 3, 0x00, 0x00020181)},
                     {reads(5, 0, 0x0E, 0x00000000), writes(5, 0, 0x0E, 0x00000008)}};

Steps const drained{{reads(5, 0, 0x0C, 0x00FFFFFF)}};
Access const notDrained = reads(5, 0, 0x0C, 0x00FFFFF7);

/// Its MAC goes through reset to 100 Mbit/s full duplex with a gap of 17 and seed 3, the set B of
/// watermarks and pause frames.
Steps const resetting{
    {reads(1, 3, 0x00, 0x00020181), writes(1, 3, 0x00, 0x200209BD)},
    {reads(1, 3, 0x00, 0x200209BD), writes(1, 3, 0x00, 0x200009BE), reads(1, 3, 0x00, 0x200009BE),
     writes(1, 3, 0x00, 0x20000C7E)},
    {reads(1, 3, 0x00, 0x20000C7E), writes(1, 3, 0x00, 0x20040C7E)},
    {reads(1, 3, 0x00, 0x20040C7E), writes(1, 3, 0x00, 0x281C0C7E), writes(1, 3, 0x00, 0x201C0C7E)},
    {reads(2, 0, 0x0D, 0x00FFFFF7), writes(2, 0, 0x0D, 0x00FFFFFF)}};

Steps const flowControl{{writes(1, 3, 0x08, 0x000001C1), writes(1, 3, 0x0C, 0x00000000),
                         reads(1, 3, 0x10, 1518), writes(1, 3, 0xDF, 0x24000001),
                         writes(1, 3, 0xDE, 0x00000C08), writes(1, 3, 0xE0, 0x0C0C0C0C),
                         writes(1, 3, 0x04, 0x000300FF)}};

Steps const outOfReset{{reads(5, 0, 0x0E, 0x00000008), writes(5, 0, 0x0E, 0x00000000)},
                       {reads(1, 3, 0x00, 0x201C0C7E), writes(1, 3, 0x00, 0x001C0442)}};

Steps const starting{{reads(1, 3, 0x00, 0x001C0442), reads(2, 0, 0x10, 0x00FFFFF7),
                      writes(1, 3, 0x00, 0x001D0442), writes(2, 0, 0x10, 0x00FFFFFF)},
                     {reads(1, 3, 0x00, 0x001D0442), writes(1, 3, 0x00, 0x101D0442)}};

/// The source mask of the only port there is.
Steps const sourceMask{
    {reads(1, 3, 0x00, 0x101D0442), reads(2, 0, 0x43, 0x00000008), writes(2, 0, 0x83, 0x00000000)}};

class PortSetUpTest : public PortTest {
protected:
    bool set(Link link) { return port.setPort(Speed::speed100, Duplex::full, FlowControl::forcedOn, link); }

    /// Lets each single write of the steps fail: the rest of its step must be left out, every other step
    /// made, and the result false.
    template <typename Operation>
    void expectFailuresToBeRemembered(Steps const& before, Steps const& steps, Steps const& after,
                                      Operation operation) {
        for (std::size_t step = 0; step < steps.size(); ++step) {
            for (std::size_t access = 0; access < steps[step].size(); ++access) {
                if (steps[step][access].isRead()) {
                    continue;
                }
                SCOPED_TRACE(testing::Message() << "failing: step " << step << " access " << access);
                Steps broken = steps;
                broken[step].resize(access + 1, steps[step][access]);
                broken[step].back() = broken[step].back().failing();
                registers.expect(joined(before + broken + after));
                EXPECT_FALSE(operation());
                registers.verify();
            }
        }
    }
};

TEST_F(PortSetUpTest, TakesTheMacThroughResetAndStartsThePort) {
    expectSuccess(registers,
                  joined(stopping + drained + resetting + flowControl + outOfReset + starting + sourceMask),
                  [&] { return set(Link::enabled); });
    EXPECT_EQ(log.take(), Lines{});
    EXPECT_EQ(clock.getNanoseconds(), 2'000U) << "the seed; the arbiter was empty at once";
}

TEST_F(PortSetUpTest, WithoutALinkThePortStaysStopped) {
    Steps const down{
        {reads(1, 3, 0x00, 0x001C0442), reads(2, 0, 0x43, 0x00000008), writes(2, 0, 0x83, 0x00000000)}};
    expectSuccess(registers, joined(stopping + drained + resetting + flowControl + outOfReset + down),
                  [&] { return set(Link::disabled); });
    registers.expect({reads(1, 3, 0x00, 0x001C0442)});
    EXPECT_EQ(port.portStatus(), 0);
}

TEST_F(PortSetUpTest, EveryOtherLinkSettingStartsThePort) {
    expectSuccess(registers,
                  joined(stopping + drained + resetting + flowControl + outOfReset + starting + sourceMask),
                  [&] { return set(static_cast<Link>(2)); });
}

TEST_F(PortSetUpTest, GoesOnAfterAFailureAndRemembersIt) {
    auto const enable = [&] { return set(Link::enabled); };
    Steps const afterStopping = drained + resetting + flowControl + outOfReset + starting + sourceMask;
    expectFailuresToBeRemembered({}, stopping, afterStopping, enable);
    Steps const afterResetting = flowControl + outOfReset + starting + sourceMask;
    expectFailuresToBeRemembered(stopping + drained, resetting, afterResetting, enable);
    expectFailuresToBeRemembered(stopping + drained + resetting + flowControl, outOfReset + starting,
                                 sourceMask, enable);
}

TEST_F(PortSetUpTest, FailuresOfFlowControlAndSourceMasksDoNotCount) {
    Steps const before = stopping + drained + resetting;
    for (std::size_t access = 0; access < flowControl[0].size(); ++access) {
        Steps broken = flowControl;
        broken[0][access] = broken[0][access].failing();
        expectSuccess(registers, joined(before + broken + outOfReset + starting + sourceMask),
                      [&] { return set(Link::enabled); });
    }
    Steps brokenMask = sourceMask;
    brokenMask[0][2] = brokenMask[0][2].failing();
    expectSuccess(registers, joined(before + flowControl + outOfReset + starting + brokenMask),
                  [&] { return set(Link::enabled); });
}

TEST_F(PortSetUpTest, AnUnknownSpeedIsRememberedAndSetsNoGap) {
    Steps withoutSpeed = resetting;
    withoutSpeed[1] = {reads(1, 3, 0x00, 0x200209BD), writes(1, 3, 0x00, 0x200009BD)};
    registers.expect(
        joined(stopping + drained + withoutSpeed + flowControl + outOfReset + starting + sourceMask));
    EXPECT_FALSE(port.setPort(static_cast<Speed>(7), Duplex::full, FlowControl::forcedOn, Link::enabled));
    EXPECT_EQ(log.take(), (Lines{"error|VitessePort::setMacSpeed invalid speed\n"}));
}

TEST_F(PortSetUpTest, WaitsUntilTheArbiterHasDrained) {
    Steps const late{Accesses(1000, notDrained)};
    expectSuccess(
        registers,
        joined(stopping + late + drained + resetting + flowControl + outOfReset + starting + sourceMask),
        [&] { return set(Link::enabled); });
    EXPECT_EQ(clock.getNanoseconds(), 1000U * 10'000 + 2'000) << "ten microseconds between polls";
}

TEST_F(PortSetUpTest, WaitsForTheArbiterWithoutATimeLimit) {
    Steps const veryLate{{notDrained.taking(24h), notDrained.taking(24h), notDrained}};
    expectSuccess(
        registers,
        joined(stopping + veryLate + drained + resetting + flowControl + outOfReset + starting + sourceMask),
        [&] { return set(Link::enabled); });
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortSetUpTest, AnArbiterThatCannotBeReadHasNotDrained) {
    Steps const unreadable{{reads(5, 0, 0x0C, 0x00FFFFFF).failing()}};
    expectSuccess(registers,
                  joined(stopping + unreadable + drained + resetting + flowControl + outOfReset + starting +
                         sourceMask),
                  [&] { return set(Link::enabled); });
}

TEST_F(PortSetUpTest, StartsAPortOnly) {
    auto const start = [&] { return port.setPort(Link::enabled); };
    expectSuccess(registers, joined(starting + sourceMask), start);
    expectFailuresToBeRemembered({}, starting, sourceMask, start);
    expectSuccess(registers, joined(starting + sourceMask),
                  [&] { return port.setPort(static_cast<Link>(9)); });
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortSetUpTest, StopsAPortOnly) {
    Steps const stop{stopping[0], stopping[1]};
    Steps const down{{reads(1, 3, 0x00, 0x00020181), reads(2, 0, 0x43, 0), writes(2, 0, 0x83, 0)}};
    auto const stopPort = [&] { return port.setPort(Link::disabled); };
    expectSuccess(registers, joined(stop + down), stopPort);
    expectFailuresToBeRemembered({}, stop, down, stopPort);
}

TEST_F(PortSetUpTest, LearningIsEnabledThroughTheOverride) {
    class Port : public VitessePort {
    public:
        using VitessePort::VitessePort;
        bool setPortLearningEnable(bool enable) override {
            asked += enable ? 1 : 100;
            return false;
        }
        int asked = 0;
    };
    test_support::RecordingSwitch other(application, 1, calls);
    Port own(other, registers, 3, "external", "forwarding", nullptr);
    Steps withoutLearning = resetting;
    withoutLearning.pop_back();
    registers.expect(joined(stopping + drained + withoutLearning + flowControl + outOfReset + starting));
    EXPECT_FALSE(own.setPort(Speed::speed100, Duplex::full, FlowControl::forcedOn, Link::enabled));
    EXPECT_EQ(own.asked, 1);
}

} // namespace
