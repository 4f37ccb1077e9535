// What `switchctl check` says of chips that start, and of what start-up leaves open, proved by frames.

#include <gtest/gtest.h>

#include <regex>

#include "tests/support/TemporaryFile.hpp"
#include "tests/traffic/StartingBoard.hpp"
#include "tests/traffic/TrafficBoard.hpp"

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

std::string member(unsigned switchId, unsigned port, std::string const& ingress = "addTag",
                   std::string const& egress = "stripTag") {
    return "<port switchId='" + std::to_string(switchId) + "' portId='" + std::to_string(port) +
           "' ingress='" + ingress + "' egress='" + egress + "'/>";
}

std::string vlanOf(char const* id, std::string const& members) {
    return std::string("<vlan id='") + id + "' typeOfVlan='tagBasedVlan'>" + members + "</vlan>";
}

/// A VLAN of two ports, frames without tags if not said otherwise.
std::string vlan(unsigned switchId, char const* id, unsigned one, unsigned other,
                 std::string const& ingress = "addTag", std::string const& egress = "stripTag") {
    return vlanOf(id, member(switchId, one, ingress, egress) + member(switchId, other, ingress, egress));
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

// 88e6096-port-unlisted
TEST(ConditionTest, AnUnlistedPortReachesAllPortsWhateverTheirVlans) {
    std::string const vlans = vlan(0, "5", 1, 2) + vlan(0, "6", 3, 4);
    for (auto const& [listed, reached] : {std::pair(10U, 0x3FFU), {11U, 0U}}) {
        StartingBoard board(boardOf(switchOf(0, "88e6096", listed, "external"), vlans));
        board.start();
        EXPECT_EQ(board.reached(0, 10), reached) << listed;
        EXPECT_EQ(board.reached(0, 10, 6), reached) << listed;
    }
}

// 88e6096-status-does-not-hold
TEST(ConditionTest, APortThatIsNotToForwardDoesSoInItsVlans) {
    for (auto const& [type, reached] : {std::pair("external", bit(2)), {"cpu", bit(2)}, {"dsp", bit(2)}}) {
        for (char const* const status : {"disabled", "listening", "learning"}) {
            StartingBoard board(
                boardOf(std::regex_replace(marvell(type), std::regex("(id='1' [^>]*)forwarding"),
                                           "$1" + std::string(status)),
                        vlan(0, "5", 1, 2)));
            board.start();
            EXPECT_EQ(board.reached(0, 1), reached) << type << ' ' << status;
            EXPECT_EQ(board.reached(0, 2), bit(1)) << type << ' ' << status;
        }
    }
}

// 88e6096-status-does-not-hold says nothing of these.
TEST(ConditionTest, ADisabledInterlinkIsHeldDown) {
    StartingBoard board(boardOf(
        std::regex_replace(marvell("switchInterlink"), std::regex("(id='1' [^>]*)forwarding"), "$1disabled"),
        vlan(0, "5", 1, 2)));
    board.start();
    EXPECT_EQ(board.reached(0, 1), 0U);
    EXPECT_EQ(board.reached(0, 2), 0U);
}

// vsc7390-vlan-hopping
TEST(ConditionTest, FramesOfAVsc7390InNoVlanOfTheDocumentReachAllPorts) {
    constexpr unsigned unknown = 77;
    constexpr std::uint32_t others = 0xFFFFFF;
    StartingBoard board(boardOf(vitesse(), vlan(3, "5", 1, 2, "validateTag", "validateTag") +
                                               vlan(3, "6", 3, 4, "addTagIfUntagged") + vlan(3, "7", 5, 6)));
    board.start();
    EXPECT_EQ(board.reached(3, 1), others & ~bit(1));
    EXPECT_EQ(board.reached(3, 1, unknown), others & ~bit(1));
    EXPECT_EQ(board.reached(3, 3), bit(4));
    EXPECT_EQ(board.reached(3, 3, unknown), others & ~bit(3));
    EXPECT_EQ(board.reached(3, 5), bit(6));
    EXPECT_EQ(board.reached(3, 5, unknown), bit(6));
}

// vsc7390-vlan-hopping: a VLAN of the document lets its members in only.
TEST(ConditionTest, AVlan1KeepsUntaggedFramesOfAVsc7390In) {
    StartingBoard board(
        boardOf(vitesse(), vlan(3, "5", 1, 2, "validateTag", "validateTag") + vlan(3, "1", 3, 4)));
    board.start();
    EXPECT_EQ(board.reached(3, 1), 0U);
    EXPECT_NE(board.reached(3, 1, 77), 0U);
}

// vsc7390-vlan-hopping rests on what the chip's command leaves.
TEST(ConditionTest, NoFrameHopsWhereAClearedVlanHasNoMembers) {
    simulation::SimulatedBoard::Options emptied;
    emptied.vitesse.vlanClear = simulation::Vsc7390Options::VlanClear::noMembers;
    StartingBoard board(boardOf(vitesse(), vlan(3, "5", 1, 2, "validateTag", "validateTag")), emptied);
    board.start();
    EXPECT_EQ(board.reached(3, 1), 0U);
    EXPECT_EQ(board.reached(3, 1, 77), 0U);
    EXPECT_EQ(board.reached(3, 1, 5), bit(2));
}

// vsc7390-group-outside-vlan
TEST(ConditionTest, AGroupOfAVsc7390ReachesItsReceiverOutsideTheVlan) {
    constexpr simulation::EthernetFrame::Address group = 0x01005E010102;
    // No egress: the library leaves the port out of the VLAN, and not out of the group.
    StartingBoard board(boardOf(
        vitesse(), vlanOf("5", member(3, 1) + member(3, 2) +
                                   "<port switchId='3' portId='3' ingress='addTag'>"
                                   "<forwardedMulticastGroup>239.1.1.2</forwardedMulticastGroup></port>")));
    board.start();
    EXPECT_EQ(board.reached(3, 1), bit(2));
    EXPECT_EQ(board.reached(3, 1, {}, group), bit(3));
}

// 88e6096-interlinks-in-one-vlan
TEST(ConditionTest, TwoInterlinksOf88E6096InOneVlanAreALoop) {
    std::string const switches =
        switchOf(0, "88e6096", 11, "switchInterlink") + switchOf(1, "88e6096", 11, "switchInterlink");
    std::string const one = member(0, 1) + member(0, 7, "validateTag", "validateTag") +
                            member(1, 9, "validateTag", "validateTag") + member(1, 2);
    std::string const two =
        one + member(0, 8, "validateTag", "validateTag") + member(1, 10, "validateTag", "validateTag");
    for (auto const& [members, isLoop] : {std::pair(one, false), {two, true}}) {
        test_support::TemporaryFile const document(boardOf(switches, vlanOf("5", members)));
        TrafficBoard board(document.path(), {{{0, 7}, {1, 9}}, {{0, 8}, {1, 10}}});
        TrafficBoard::Result const result =
            board.send({0, 1}, simulation::EthernetFrame::make(simulation::EthernetFrame::broadcastAddress,
                                                               0x020000000001, 0x88B5));
        EXPECT_EQ(!result.findings.empty(), isLoop);
        EXPECT_EQ(result.arrivals.size() > 1, isLoop);
        EXPECT_FALSE(result.arrivals.empty());
    }
}

} // namespace
