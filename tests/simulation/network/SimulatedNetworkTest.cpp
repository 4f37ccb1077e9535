#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "reference_host/XmlDocument.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "tests/simulation/network/NetworkFixture.hpp"

using simulation::Decision;
using simulation::EthernetFrame;
using simulation::SimulatedBoard;
using simulation::SimulatedNetwork;
using testing::ElementsAre;

namespace {

class SimulatedNetworkTest : public simulation_test::NetworkFixture {};

TEST_F(SimulatedNetworkTest, ACableTakesTheLinkOfBothEndsAlong) {
    _network.connect({0, 1}, {2, 3});
    EXPECT_TRUE(_zero.hasLink(1));
    EXPECT_TRUE(_two.hasLink(3));
    EXPECT_TRUE(_network.unplug({2, 3}));
    EXPECT_FALSE(_zero.hasLink(1));
    EXPECT_FALSE(_two.hasLink(3));
    EXPECT_FALSE(_network.unplug({0, 1}));
}

TEST_F(SimulatedNetworkTest, AStationTakesTheLinkOfItsPortAlong) {
    attach({1, 2});
    EXPECT_TRUE(_one.hasLink(2));
    EXPECT_TRUE(_network.unplug({1, 2}));
    EXPECT_FALSE(_one.hasLink(2));
}

TEST_F(SimulatedNetworkTest, WhatDoesNotFitIsRefused) {
    attach({0, 1});
    EXPECT_THROW(_network.connect({1, 0}, {0, 1}), std::invalid_argument);
    EXPECT_THROW(_network.connect({0, 1}, {1, 0}), std::invalid_argument);
    EXPECT_THROW(_network.connect({1, 0}, {1, 0}), std::invalid_argument);
    EXPECT_THROW(attach({0, 1}), std::invalid_argument);
    EXPECT_THROW(_network.connect({1, 0}, {7, 0}), std::out_of_range);
    EXPECT_THROW(_network.connect({1, 4}, {1, 0}), std::out_of_range);
    EXPECT_THROW(attach({1, 4}), std::out_of_range);
    EXPECT_THROW(_network.inject({7, 0}, broadcast()), std::out_of_range);
    EXPECT_THROW(_network.inject({0, 4}, broadcast()), std::out_of_range);
    EXPECT_FALSE(_one.hasLink(0));
    _network.connect({1, 0}, {2, 0}); // nothing of the refused ones is left there
    EXPECT_EQ(_network.getTotals().injected, 0U);
}

TEST_F(SimulatedNetworkTest, TakesTheChipsOfABoard) {
    auto const document = reference_host::XmlDocument::fromText(
        "<board><switches><switch id=\"4\" switchModel=\"88e6096\"/><switch id=\"6\" "
        "switchModel=\"88e6096\"/>"
        "</switches></board>",
        "board");
    SimulatedBoard board(*document);
    SimulatedNetwork network(board);
    network.connect({4, 10}, {6, 2}, 100);
    EXPECT_TRUE(board.getMarvell(4).hasLink(10));
    EXPECT_TRUE(board.getMarvell(6).hasLink(2));
    network.unplug({4, 10});
    EXPECT_FALSE(board.getMarvell(4).hasLink(10));
    EXPECT_FALSE(board.getMarvell(6).hasLink(2));
    EXPECT_THROW(network.inject({5, 0}, broadcast()), std::out_of_range);
}

TEST_F(SimulatedNetworkTest, AFrameTakesItsBytesAndTwoMicrosecondsAChip) {
    struct Case {
        unsigned megabits;
        std::size_t length;
        std::uint64_t nanoseconds;
    };
    attach({0, 1});
    for (Case const& each :
         std::vector<Case>{{1000, 64, 2'672}, {100, 64, 8'720}, {10, 64, 69'200}, {1000, 1518, 14'304}}) {
        std::uint64_t const start = _services.clock.getNanoseconds();
        _zero._megabits = each.megabits;
        _network.inject({0, 0}, EthernetFrame(EthernetFrame::Bytes(each.length - 4)));
        _network.run();
        EXPECT_EQ(_arrivals.back().nanoseconds - start, each.nanoseconds) << each.megabits;
    }
    EXPECT_EQ(_arrivals.size(), 4U);
}

TEST_F(SimulatedNetworkTest, TimesOfChipsOnTheWayAddUp) {
    _network.connect({0, 1}, {1, 0});
    _network.connect({1, 1}, {2, 0});
    attach({2, 1});
    _one._megabits = 100;
    _network.inject({0, 0}, broadcast());
    _network.run();
    EXPECT_THAT(_arrivals, ElementsAre(Arrival{2'672 + 8'720 + 2'672, "2.1", broadcast()}));
    EXPECT_EQ(_services.clock.getNanoseconds(), 14'064U);
}

TEST_F(SimulatedNetworkTest, APortSendsOneFrameAfterTheOther) {
    attach({0, 2});
    attach({0, 3});
    _network.inject({0, 0}, broadcast(1));
    _network.inject({0, 1}, broadcast(2));
    _services.clock.advanceNanoseconds(100);
    _network.inject({0, 2}, broadcast(3));
    _network.run();
    EXPECT_THAT(_arrivals,
                ElementsAre(Arrival{2'672, "0.2", broadcast(1)}, Arrival{2'672, "0.3", broadcast(1)},
                            Arrival{3'344, "0.2", broadcast(2)}, Arrival{3'344, "0.3", broadcast(2)},
                            Arrival{4'016, "0.3", broadcast(3)}));
}

TEST_F(SimulatedNetworkTest, APortThatHasRestedSendsAtOnce) {
    attach({0, 1});
    _network.inject({0, 0}, broadcast());
    _network.run();
    _services.clock.advanceNanoseconds(1'000'000);
    _network.inject({0, 0}, broadcast());
    _network.run();
    EXPECT_EQ(_arrivals.back().nanoseconds, 1'005'344U);
}

TEST_F(SimulatedNetworkTest, AlarmsOnTheWayAreCalled) {
    std::vector<std::size_t> arrivedBefore;
    attach({0, 1});
    _services.clock.callAt(2'671, [&] { arrivedBefore.push_back(_arrivals.size()); });
    _services.clock.callAt(2'673, [&] { arrivedBefore.push_back(_arrivals.size()); });
    _network.inject({0, 0}, broadcast());
    _network.run();
    _services.clock.advanceNanoseconds(1);
    EXPECT_THAT(arrivedBefore, ElementsAre(0U, 1U));
}

TEST_F(SimulatedNetworkTest, AClockThatIsAheadStaysWhereItIs) {
    attach({0, 1});
    _network.inject({0, 0}, broadcast());
    _services.clock.advanceNanoseconds(50'000);
    _network.run();
    EXPECT_THAT(_arrivals, ElementsAre(Arrival{50'000, "0.1", broadcast()}));
}

TEST_F(SimulatedNetworkTest, StationsMayAnswer) {
    attach({0, 0});
    _network.connect({0, 1}, {1, 0});
    _network.attach({1, 1}, [this](EthernetFrame const& frame) {
        if (frame == broadcast(1)) {
            _network.inject({1, 1}, broadcast(2));
        }
    });
    _network.inject({0, 0}, broadcast(1));
    _network.run();
    EXPECT_THAT(_arrivals, ElementsAre(Arrival{10'688, "0.0", broadcast(2)}));
    EXPECT_EQ(_network.getTotals().injected, 2U);
}

TEST_F(SimulatedNetworkTest, FramesLeaveAsTheChipHasMadeThem) {
    attach({0, 1});
    _zero._decide = [](unsigned, EthernetFrame const& frame) {
        Decision decision;
        decision.egress.push_back({1, Decision::Form::tagged, frame.withTag({4, 5, false})});
        return decision;
    };
    _network.inject({0, 0}, broadcast());
    _network.run();
    ASSERT_EQ(_arrivals.size(), 1U);
    EXPECT_EQ(_arrivals[0].frame, broadcast().withTagPushed({4, 5, false}));
    EXPECT_EQ(_arrivals[0].nanoseconds, 2'704U);
}

TEST_F(SimulatedNetworkTest, WhereNobodyIsCopiesAreLost) {
    attach({0, 1});
    _network.inject({0, 0}, broadcast());
    _network.run();
    EXPECT_EQ(_network.getTotals().copies, 3U);
    EXPECT_EQ(_network.getTotals().delivered, 1U);
    EXPECT_EQ(_network.getTotals().unconnected, 2U);
    _zero._megabits = 0;
    _network.inject({0, 0}, broadcast());
    _network.run();
    EXPECT_EQ(_network.getTotals().delivered, 1U);
    EXPECT_EQ(_network.getTotals().unconnected, 5U);
}

TEST_F(SimulatedNetworkTest, AnUnpluggedPathEnds) {
    _network.connect({0, 1}, {1, 0});
    attach({1, 1});
    _network.inject({0, 0}, broadcast(1));
    _network.run();
    _network.unplug({0, 1});
    _network.inject({0, 0}, broadcast(2));
    _network.run();
    _network.connect({0, 2}, {1, 2});
    _network.inject({0, 0}, broadcast(3));
    _network.run();
    ASSERT_EQ(_arrivals.size(), 2U);
    EXPECT_EQ(_arrivals[0].frame, broadcast(1));
    EXPECT_EQ(_arrivals[1].frame, broadcast(3));
    expectNothingLost();
}

TEST_F(SimulatedNetworkTest, WhatIsOnACableGoesWithIt) {
    _network.connect({0, 1}, {1, 0});
    attach({0, 2});
    attach({1, 1});
    _network.observe([this](End const&, EthernetFrame const&, Decision const&) {
        _network.unplug({1, 0});
        _network.unplug({0, 2});
        _network.connect({0, 1}, {1, 0}); // the next cable does not bring back what was on the last
        attach({0, 2});
    });
    _network.inject({0, 0}, broadcast());
    _network.run();
    EXPECT_TRUE(_arrivals.empty());
    EXPECT_EQ(_network.getTotals().cut, 2U);
    expectNothingLost();
}

TEST_F(SimulatedNetworkTest, ObserversSeeEachDecision) {
    std::vector<std::string> seen;
    _network.connect({0, 1}, {1, 0});
    _one._decide = [](unsigned, EthernetFrame const&) {
        Decision decision;
        decision.dropReason = "no";
        static constexpr std::string_view asked[] = {"X1"};
        decision.rules = asked;
        return decision;
    };
    _network.observe([&](End const& at, EthernetFrame const& frame, Decision const& decision) {
        EXPECT_EQ(frame, broadcast());
        seen.push_back(at.describe() + " " + decision.describe());
    });
    _network.inject({0, 0}, broadcast());
    _network.run();
    EXPECT_THAT(seen,
                ElementsAre("0.0 to 1 as received, 2 as received, 3 as received ()", "1.0 dropped: no (X1)"));
    _network.observe(nullptr);
    _network.inject({0, 0}, broadcast());
    _network.run();
    EXPECT_EQ(seen.size(), 2U);
}

TEST_F(SimulatedNetworkTest, CountsWhatChipsKeepOrDrop) {
    _zero._decide = [](unsigned port, EthernetFrame const& frame) {
        Decision decision;
        decision.toProcessor = port < 2;
        if (port == 1) {
            decision.egress.push_back({0, Decision::Form::asReceived, frame});
        }
        return decision;
    };
    for (unsigned port = 0; port < 4; ++port) {
        _network.inject({0, port}, broadcast());
    }
    _network.run();
    Totals const totals = _network.getTotals();
    EXPECT_EQ(totals.injected, 4U);
    EXPECT_EQ(totals.toProcessor, 2U);
    EXPECT_EQ(totals.dropped, 2U);
    EXPECT_EQ(totals.copies, 1U);
}

TEST_F(SimulatedNetworkTest, NamesWhatIsNotModelled) {
    _network.connect({0, 1}, {1, 0});
    _network.connect({0, 2}, {2, 0});
    _one._forwards = false;
    _two._decide = [](unsigned, EthernetFrame const&) {
        Decision decision;
        decision.notModelled = "DSA";
        return decision;
    };
    for (unsigned i = 0; i < 2; ++i) {
        _network.inject({0, 0}, broadcast());
        _network.run();
    }
    EXPECT_THAT(_network.getFindings(),
                ElementsAre("switch 1: its model does not forward frames", "2.0: not modelled: DSA"));
    EXPECT_EQ(_network.getTotals().dropped, 4U);
    expectNothingLost();
}

} // namespace
