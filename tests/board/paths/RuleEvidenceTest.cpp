// Each rule that can end a frame's way: it is named, and so is what made it do so.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "board/paths/PathExplanation.hpp"
#include "tests/board/paths/ComparedBoard.hpp"

using board::ChipEvidence;
using board::FieldAccess;
using board::FrameKind;
using board::PathExplanation;
using board::RegisterPaths;
using board_test::ComparedBoard;

namespace {

struct Obstacle {
    char const* name;
    /// What closes the way, in the chip.
    std::function<void(simulation::SimulatedBoard&, FieldAccess const&)> make;
    char const* rule;
    char const* place;
    char const* value;

    friend std::ostream& operator<<(std::ostream& out, Obstacle const& obstacle) {
        return out << obstacle.name;
    }
};

std::function<void(simulation::SimulatedBoard&, FieldAccess const&)>
field(char const* unit, char const* name, char const* fieldName, std::uint32_t value) {
    return [=](simulation::SimulatedBoard&, FieldAccess const& fields) {
        fields.set(unit, name, fieldName, value);
    };
}

class ObstacleTest : public testing::TestWithParam<Obstacle> {
protected:
    /// An untagged frame to a station that nobody knows.
    void expectItIsNamed(char const* example, unsigned id, unsigned from, unsigned to) {
        ComparedBoard compared(ComparedBoard::example(example));
        simulation::SimulatedBoard& board = compared.bringUp.getBoard();
        simulation::ChipForwarding const& chip = *compared.registers.getChips().at(id);
        simulation::EthernetFrame const frame = RegisterPaths::frameOf(FrameKind());
        ASSERT_NE(chip.decide(from, frame).find(to), nullptr);
        std::string const model = compared.bringUp.getModel(id);
        GetParam().make(board, FieldAccess(board.getChip(id), model));
        unsigned const vid = chip.decide(from, frame).vid.value_or(0);
        auto const evidence =
            ChipEvidence::of(board, id, model, {from, to, {to}, vid, frame.getDestination(), {}});
        PathExplanation const explanation(chip, *evidence, frame, from, to);
        EXPECT_FALSE(explanation.isDelivered());
        EXPECT_EQ(explanation.getSteps().back().rule, GetParam().rule);
        EXPECT_THAT(textsOf(explanation),
                    testing::Contains(std::string(GetParam().place) + " = " + GetParam().value));
    }

private:
    static std::vector<std::string> textsOf(PathExplanation const& explanation) {
        std::vector<std::string> texts;
        for (auto const& step : explanation.getSteps()) {
            for (auto const& fact : step.facts) {
                texts.push_back(fact.place + " = " + fact.value);
            }
        }
        return texts;
    }
};

void closeMember(simulation::SimulatedBoard& board, unsigned port) {
    auto entry = *board.getMarvell(0).getVtuEntry(5);
    entry.memberTags.at(port) = 3;
    board.getMarvell(0).setVtuEntry(5, entry);
}

void block(simulation::SimulatedBoard& board, unsigned port) {
    auto states = *board.getMarvell(0).getStuEntry(5);
    states.portStates.at(port) = 1;
    board.getMarvell(0).setStuEntry(5, states);
}

/// VLAN 3, that of the rooms.
void leaveVlan(simulation::SimulatedBoard& board, unsigned port, bool isChecked) {
    auto entry = board.getVitesse(2).getVlanEntry(3);
    entry.ports &= ~(1U << port);
    entry.sourceCheck = isChecked;
    board.getVitesse(2).setVlanEntry(3, entry);
}

class MarvellObstacleTest : public ObstacleTest {};
class VitesseObstacleTest : public ObstacleTest {};

} // namespace

TEST_P(MarvellObstacleTest, IsNamed) {
    expectItIsNamed("trap-minimal", 0, 1, 0);
}

TEST_P(VitesseObstacleTest, IsNamed) {
    expectItIsNamed("trap-video-switch", 2, 1, 4);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, MarvellObstacleTest,
    testing::Values(Obstacle{"M1", field("port 1", "PhysicalControl", "ForcedLink", 1), "M1",
                             "port 1/PhysicalControl:ForcedLink", "0x1"},
                    Obstacle{"M3", field("port 1", "PortControl", "PortState", 0), "M3",
                             "port 1/PortControl:PortState", "0x0"},
                    Obstacle{"M4", field("port 1", "PortControl", "FrameMode", 1), "M4",
                             "port 1/PortControl:FrameMode", "0x1"},
                    Obstacle{"M5", field("port 1", "PortControl2", "DiscardUntagged", 1), "M5",
                             "port 1/PortControl2:DiscardUntagged", "0x1"},
                    Obstacle{"M7NoVlan", field("port 1", "DefaultVLAN", "DefaultVID", 77), "M7", "VTU/VID 77",
                             "not there"},
                    Obstacle{"M7NoMember", [](auto& board, auto const&) { closeMember(board, 1); }, "M7",
                             "VTU/VID 5:MemberTag1", "not a member"},
                    Obstacle{"M10", [](auto& board, auto const&) { block(board, 1); }, "M10",
                             "STU/SID 5:PortState1", "blocking"},
                    Obstacle{"M11", field("port 0", "PortControl", "EgressFloods", 0), "M11",
                             "port 0/PortControl:EgressFloods", "0x0"},
                    Obstacle{"M12Ports", field("port 1", "PortBasedVLANMap", "VLANTable", 4), "M12",
                             "port 1/PortBasedVLANMap:VLANTable", "0x4, without port 0"},
                    Obstacle{"M12Members", [](auto& board, auto const&) { closeMember(board, 0); }, "M12",
                             "VTU/VID 5:MemberTag0", "not a member"},
                    Obstacle{"M13", [](auto& board, auto const&) { block(board, 0); }, "M13",
                             "STU/SID 5:PortState0", "blocking"},
                    Obstacle{"M14", field("port 0", "PortControl", "FrameMode", 1), "M14",
                             "port 0/PortControl:FrameMode", "0x1"}),
    [](auto const& obstacle) { return std::string(obstacle.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Rules, VitesseObstacleTest,
    testing::Values(
        Obstacle{"V1", field("port 1", "MAC_CFG", "RX_EN", 0), "V1", "port 1/MAC_CFG:RX_EN", "0x0"},
        Obstacle{"V2", field("port 1", "MAXLEN", "Length", 60), "V2", "port 1/MAXLEN:Length", "0x3c"},
        Obstacle{"V4", field("port 1", "CAT_DROP", "UNTAGGED_ENA", 1), "V4", "port 1/CAT_DROP:UNTAGGED_ENA",
                 "0x1"},
        Obstacle{"V6", field("analyser", "RECVMASK", "Ports", 0x10), "V6", "analyser/RECVMASK:Ports",
                 "0x10, without port 1"},
        // What V7 refuses may still be learned, which V8 says.
        Obstacle{"V7", [](auto& board, auto const&) { leaveVlan(board, 1, true); }, "V8",
                 "VLAN table/VID 3:VLAN_SRC_CHECK", "0x1"},
        Obstacle{"V9", field("analyser", "UFLODMASK", "Ports", 0x2), "V9", "analyser/UFLODMASK:Ports",
                 "0x2, without port 4"},
        Obstacle{"V10Source", field("analyser", "SRCMASKS_1", "Ports", 0x2), "V10",
                 "analyser/SRCMASKS_1:Ports", "0x2, without port 4"},
        Obstacle{"V11", field("port 4", "MAC_CFG", "TX_EN", 0), "V11", "port 4/MAC_CFG:TX_EN", "0x0"}),
    [](auto const& obstacle) { return std::string(obstacle.param.name); });

TEST(VitesseEvidenceTest, TheVlansMaskHasPortsByNumber) {
    ComparedBoard compared(ComparedBoard::example("trap-video-switch"));
    leaveVlan(compared.bringUp.getBoard(), 4, false);
    simulation::EthernetFrame const frame = RegisterPaths::frameOf(FrameKind());
    auto const evidence = ChipEvidence::of(compared.bringUp.getBoard(), 2, "vsc7390",
                                           {1, 4U, {4}, 3, frame.getDestination(), {}});
    auto const facts = evidence->getFacts("V10");
    ASSERT_EQ(facts.size(), 2U);
    EXPECT_EQ(facts[1].place, "VLAN table/VID 3:Ports");
    EXPECT_THAT(facts[1].value, testing::EndsWith(", without port 4"));
    EXPECT_EQ(compared.registers.getChips().at(2)->decide(1, frame, 1U << 4).dropReason,
              "the VLAN's mask leaves no port");
}
