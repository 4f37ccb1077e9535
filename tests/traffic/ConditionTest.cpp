// What `switchctl check` says of chips that start, proved by frames after each write of a start-up.

#include <gtest/gtest.h>

#include "tests/traffic/StartingBoard.hpp"

namespace {

std::string switchOf(unsigned id, char const* model, unsigned ports, std::string const& type,
                     std::string const& more = "") {
    std::string text = "<switch id='" + std::to_string(id) + "' switchModel='" + model + "'>";
    for (unsigned port = 0; port < ports; ++port) {
        text +=
            "<port id='" + std::to_string(port) + "' connectedTo='" + type + "' portStatus='forwarding'/>";
    }
    return text + more + "</switch>";
}

std::string marvell(std::string const& type = "external") {
    return switchOf(0, "88e6096", 11, type);
}

std::string vitesse(std::string const& more = "") {
    return switchOf(3, "vsc7390", 24, "switchInterlink", more);
}

/// A VLAN of two ports, frames without tags.
std::string vlan(unsigned switchId, char const* id, unsigned one, unsigned other) {
    std::string text = std::string("<vlan id='") + id + "' typeOfVlan='tagBasedVlan'>";
    for (unsigned const port : {one, other}) {
        text += "<port switchId='" + std::to_string(switchId) + "' portId='" + std::to_string(port) +
                "' ingress='addTag' egress='stripTag'/>";
    }
    return text + "</vlan>";
}

std::string boardOf(std::string const& switches, std::string const& vlans) {
    return "<board><switches>" + switches + "</switches>" + vlans + "</board>";
}

constexpr std::uint32_t bit(unsigned port) {
    return std::uint32_t{1} << port;
}

/// For how many writes of a start-up a port reached more than `allowed`, and for how many it did not reach
/// all of `wanted`.
struct Transient {
    unsigned writes = 0;
    unsigned open = 0;
    unsigned silent = 0;

    static Transient of(StartingBoard& board, unsigned switchId, unsigned port, std::uint32_t allowed) {
        Transient result;
        board.start([&] {
            std::uint32_t const reached = board.reached(switchId, port);
            ++result.writes;
            result.open += (reached & ~allowed) != 0 ? 1 : 0;
            result.silent += (allowed & ~reached) != 0 ? 1 : 0;
        });
        return result;
    }
};

// 88e6096-open-while-starting
TEST(ConditionTest, VlansOfAn88E6096AreOpenUntilTheEndOfItsStartUp) {
    StartingBoard board(boardOf(marvell(), vlan(0, "5", 1, 2) + vlan(0, "6", 3, 4)));
    Transient const first = Transient::of(board, 0, 1, bit(2));
    EXPECT_GT(first.open, first.writes / 2);
    EXPECT_EQ(board.reached(0, 1), bit(2));
    EXPECT_EQ(board.reached(0, 3), bit(4));
}

// 88e6096-silent-while-restarting
TEST(ConditionTest, ASecondStartUpOfAn88E6096InterruptsTrafficAndOpensNothing) {
    StartingBoard board(boardOf(marvell(), vlan(0, "5", 1, 2) + vlan(0, "6", 3, 4)));
    board.start();
    Transient const second = Transient::of(board, 0, 1, bit(2));
    EXPECT_EQ(second.open, 0U);
    EXPECT_GT(second.silent, 0U);
    EXPECT_EQ(board.reached(0, 1), bit(2));
}

// 88e6096-ports-by-strap
TEST(ConditionTest, NothingPassesWhereTheStrapHasPortsBeginDisabled) {
    simulation::SimulatedBoard::Options strapped;
    strapped.marvell.portStateReset = simulation::Marvell88E6096Options::PortStateReset::disabled;
    for (auto const& [type, reached] : {std::pair("external", 0U), {"smac", bit(2)}}) {
        StartingBoard board(boardOf(marvell(type), vlan(0, "5", 1, 2)), strapped);
        board.start();
        EXPECT_EQ(board.reached(0, 1), reached) << type;
    }
}

// 88e6096-states-shared
TEST(ConditionTest, ASpanningTreeThatClosesAPortInOneVlanClosesItInAnotherOfTheSameStates) {
    constexpr unsigned blocking = 1;
    for (auto const& [other, reached] : {std::pair("45", 0U), {"46", bit(1)}}) {
        StartingBoard board(boardOf(marvell(), vlan(0, "5", 1, 2) + vlan(0, other, 1, 3)));
        board.start();
        EXPECT_EQ(board.reached(0, 3), bit(1));
        // The host's spanning tree closes port 1 in VLAN 5.
        auto& chip = board.getBoard().getMarvell(0);
        auto states = chip.getStuEntry(5).value();
        states.portStates[1] = blocking;
        chip.setStuEntry(5, states);
        EXPECT_EQ(board.reached(0, 2), 0U);
        EXPECT_EQ(board.reached(0, 3), reached) << other;
    }
}

// vsc7390-open-while-restarting
TEST(ConditionTest, ASecondStartUpOfAVsc7390MakesAllPortsOneVlanForAWhile) {
    StartingBoard board(boardOf(vitesse(), vlan(3, "5", 1, 2) + vlan(3, "6", 3, 4)));
    board.start();
    ASSERT_EQ(board.reached(3, 1), bit(2));
    EXPECT_GT(Transient::of(board, 3, 1, bit(2)).open, 0U);
    EXPECT_EQ(board.reached(3, 1), bit(2));
}

TEST(ConditionTest, ASecondStartUpOfAVsc7390LoopsATrunkForAWhile) {
    StartingBoard board(boardOf(vitesse("<trunk id='1'><port id='1'/><port id='2'/></trunk>"),
                                "<vlan id='6' typeOfVlan='portBasedVlan'><port switchId='3' portId='1'/>"
                                "<port switchId='3' portId='2'/></vlan>"));
    board.start();
    // Which of the two a frame may leave by depends on its addresses.
    auto const isLooped = [&board] {
        return (board.reached(3, 1) & bit(2)) != 0 || (board.reached(3, 2) & bit(1)) != 0;
    };
    ASSERT_FALSE(isLooped());
    unsigned looped = 0;
    board.start([&] { looped += isLooped() ? 1 : 0; });
    EXPECT_GT(looped, 0U);
    EXPECT_FALSE(isLooped());
}

} // namespace
