#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>

#include "tests/simulation/network/NetworkFixture.hpp"

using simulation::Decision;
using simulation::EthernetFrame;
using simulation::SimulatedNetwork;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class StormTest : public simulation_test::NetworkFixture {
protected:
    void connectRing() {
        _network.connect({0, 1}, {1, 0});
        _network.connect({1, 1}, {2, 0});
        _network.connect({2, 1}, {0, 0});
    }

    // Through port 0 in and 1 out only: a ring that goes round one way.
    static Decision onwards(unsigned port, EthernetFrame const& frame) {
        Decision decision;
        if (port != 1) {
            decision.egress.push_back({1, Decision::Form::asReceived, frame});
        }
        return decision;
    }
};

TEST_F(StormTest, StopsAfterSixtyFourCopiesAndNamesTheCycle) {
    connectRing();
    _zero._decide = _one._decide = _two._decide = onwards;
    _network.inject({0, 3}, broadcast());
    _network.run();
    EXPECT_THAT(_network.getFindings(),
                ElementsAre("storm at 1.0: more than 64 copies of one frame (02:00:00:00:00:01 to "
                            "FF:FF:FF:FF:FF:FF, type 0800, 64 bytes) by way of 1.1 to 2.0, 2.1 to 0.0, "
                            "0.1 to 1.0"));
    Totals const totals = _network.getTotals();
    EXPECT_EQ(totals.crossed, 3U * 64U);
    EXPECT_EQ(totals.stopped, 1U);
    expectNothingLost();
}

TEST_F(StormTest, EndsWhateverMultiplies) {
    connectRing();
    _network.connect({0, 2}, {1, 2});
    attach({2, 3});
    _network.inject({0, 3}, broadcast());
    _network.run();
    ASSERT_EQ(_network.getFindings().size(), 1U);
    EXPECT_LE(_arrivals.size(), 64U);
    EXPECT_GT(_network.getTotals().stopped, 0U);
    expectNothingLost();
}

TEST_F(StormTest, TheCycleIsNamedWithoutTheWayToIt) {
    _network.connect({0, 1}, {1, 0});
    _network.connect({1, 1}, {2, 0});
    _network.connect({1, 2}, {2, 1});
    _zero._decide = onwards;
    _one._decide = [](unsigned port, EthernetFrame const& frame) {
        Decision decision;
        decision.egress.push_back({port == 2 ? 1U : 2U, Decision::Form::asReceived, frame});
        return decision;
    };
    _two._decide = [](unsigned port, EthernetFrame const& frame) {
        Decision decision;
        decision.egress.push_back({1 - port, Decision::Form::asReceived, frame});
        return decision;
    };
    _network.inject({0, 0}, broadcast());
    _network.run();
    ASSERT_EQ(_network.getFindings().size(), 1U);
    EXPECT_THAT(_network.getFindings()[0], testing::EndsWith("by way of 2.0 to 1.1, 1.2 to 2.1"));
}

TEST_F(StormTest, TheCycleIsNamedWithoutTheWayFromIt) {
    _network.connect({0, 1}, {1, 0});
    _network.connect({1, 1}, {0, 0});
    _network.connect({1, 2}, {2, 0});
    _zero._decide = onwards;
    _one._decide = [](unsigned port, EthernetFrame const& frame) {
        Decision decision = onwards(port, frame);
        decision.egress.push_back({2, Decision::Form::asReceived, frame});
        decision.egress.push_back({2, Decision::Form::asReceived, frame});
        return decision;
    };
    _network.inject({0, 2}, broadcast());
    _network.run();
    ASSERT_EQ(_network.getFindings().size(), 1U);
    EXPECT_THAT(_network.getFindings()[0], testing::StartsWith("storm at 2.0: "));
    EXPECT_THAT(_network.getFindings()[0], testing::EndsWith("by way of 1.1 to 0.0, 0.1 to 1.0"));
}

TEST_F(StormTest, TheNextFrameIsCarriedWhenTheRingIsOpen) {
    connectRing();
    attach({2, 3});
    _network.inject({0, 3}, broadcast(1));
    _network.run();
    _network.unplug({2, 1});
    _arrivals.clear();
    _network.inject({0, 3}, broadcast(2));
    _network.run();
    ASSERT_EQ(_arrivals.size(), 1U);
    EXPECT_EQ(_arrivals[0].frame, broadcast(2));
    EXPECT_EQ(_network.getFindings().size(), 1U);
}

TEST_F(StormTest, ManyFramesAreNoStorm) {
    _network.connect({0, 1}, {1, 0});
    attach({1, 1});
    for (unsigned i = 0; i < 65; ++i) {
        _network.inject({0, 0}, broadcast(i));
    }
    _network.run();
    EXPECT_EQ(_arrivals.size(), 65U);
    EXPECT_THAT(_network.getFindings(), IsEmpty());
}

TEST_F(StormTest, ThePortOfAStationHasTheSameBound) {
    attach({0, 1});
    _zero._decide = [](unsigned, EthernetFrame const& frame) {
        Decision decision;
        decision.egress.assign(65, {1, Decision::Form::asReceived, frame});
        return decision;
    };
    _network.inject({0, 0}, broadcast());
    _network.run();
    EXPECT_EQ(_arrivals.size(), 64U);
    ASSERT_EQ(_network.getFindings().size(), 1U);
    EXPECT_THAT(_network.getFindings()[0], testing::StartsWith("storm at 0.1: "));
}

// Chips of any number of ports, any cables: each frame that enters a chip is dropped or copied, and each
// copy ends somewhere.
TEST(ConservationTest, NoCopyIsLostOrMade) {
    std::mt19937 random(20000101); // NOLINT(cert-msc51-cpp): the same networks on each run
    auto const below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
    for (unsigned round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        simulation::Services services;
        std::vector<std::unique_ptr<simulation_test::FakeChip>> chips;
        SimulatedNetwork::Chips byId;
        std::vector<SimulatedNetwork::End> ends;
        std::uint64_t sent = 0;
        std::uint64_t entered = 0;
        std::uint64_t dropped = 0;
        for (unsigned id = 0; id < 2 + below(4); ++id) {
            unsigned const ports = 2 + below(6);
            chips.push_back(std::make_unique<simulation_test::FakeChip>(services, ports));
            chips.back()->_decide = [&, ports](unsigned port, EthernetFrame const& frame) {
                Decision decision;
                for (unsigned to = 0; to < ports; ++to) {
                    if (to != port && below(3) == 0) {
                        decision.egress.push_back({to, Decision::Form::asReceived, frame});
                    }
                }
                ++entered;
                sent += decision.egress.size();
                dropped += decision.egress.empty() ? 1 : 0;
                return decision;
            };
            byId.emplace(id, chips.back().get());
            for (unsigned port = 0; port < ports; ++port) {
                ends.push_back({id, port});
            }
        }
        SimulatedNetwork network(services.clock, byId);
        std::uint64_t delivered = 0;
        std::shuffle(ends.begin(), ends.end(), random);
        for (std::size_t i = 0; i + 2 < ends.size(); i += 3) {
            network.connect(ends[i], ends[i + 1]);
            network.attach(ends[i + 2], [&](EthernetFrame const&) { ++delivered; });
        }
        unsigned observed = 0;
        network.observe([&](SimulatedNetwork::End const&, EthernetFrame const&, Decision const&) {
            if (++observed % 50 == 0) {
                network.unplug(ends[below(static_cast<unsigned>(ends.size()))]);
            }
        });
        for (unsigned i = 0; i < 20; ++i) {
            network.inject(ends[below(static_cast<unsigned>(ends.size()))],
                           EthernetFrame::make(0xFFFFFFFFFFFF, i, 0x0800));
        }
        network.run();
        SimulatedNetwork::Totals const totals = network.getTotals();
        EXPECT_EQ(totals.injected, 20U);
        EXPECT_EQ(totals.injected + totals.crossed, entered);
        EXPECT_EQ(totals.dropped, dropped);
        EXPECT_EQ(totals.copies, sent);
        EXPECT_EQ(totals.delivered, delivered);
        EXPECT_EQ(sent, totals.crossed + delivered + totals.unconnected + totals.cut + totals.stopped);
    }
}

} // namespace
