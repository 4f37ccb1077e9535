// Remedies that are named are such, and trying them leaves no trace in the model.

#include "board/paths/PathExplanation.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/board/paths/ComparedBoard.hpp"

using board::ChipEvidence;
using board::FrameKind;
using board::PathExplanation;
using board::RegisterPaths;
using board_test::ComparedBoard;

namespace {

class PathExplanationTest : public testing::TestWithParam<char const*> {
protected:
    PathExplanation explain(unsigned id, unsigned from, unsigned to) {
        simulation::ChipForwarding const& chip = *compared.registers.getChips().at(id);
        unsigned const vid = chip.decide(from, frame).vid.value_or(0);
        auto const evidence = ChipEvidence::of(compared.bringUp.getBoard(), id, compared.bringUp.getModel(id),
                                               {from, to, {to}, vid, frame.getDestination(), {2, 3, 4, 5}});
        return {chip, *evidence, frame, from, to};
    }

    std::vector<std::uint32_t> contents(unsigned id) {
        std::vector<std::uint32_t> words;
        for (simulation::RegisterFile const* const unit :
             compared.bringUp.getBoard().getChip(id).getUnits()) {
            for (unsigned address = 0; address < 0x20; ++address) {
                words.push_back(unit->peek(address));
            }
        }
        return words;
    }

    ComparedBoard compared{ComparedBoard::example(GetParam())};
    simulation::EthernetFrame const frame{RegisterPaths::frameOf(FrameKind())};
};

} // namespace

TEST_P(PathExplanationTest, NothingIsLeftOfWhatWasTried) {
    unsigned remedies = 0;
    for (auto const& [id, chip] : compared.registers.getChips()) {
        auto const before = contents(id);
        for (unsigned to = 0; to < chip->getNumberOfPorts(); to += 3) {
            PathExplanation const explanation = explain(id, 1, to);
            std::string const decided = explanation.getDecision().describe();
            EXPECT_EQ(chip->decide(1, frame).describe(), decided);
            EXPECT_EQ(explanation.getSteps().size(), explanation.getWay().rules.size());
            EXPECT_TRUE(!explanation.isDelivered() || explanation.getRemedies().empty());
            remedies += explanation.getRemedies().empty() ? 0 : 1;
        }
        EXPECT_EQ(contents(id), before);
    }
    EXPECT_GT(remedies, 0U);
}

INSTANTIATE_TEST_SUITE_P(Examples, PathExplanationTest, testing::Values("trap-minimal", "trap-mixed"),
                         [](auto const& example) { return std::string(example.param); });

TEST_P(PathExplanationTest, ARemedyLetsTheFramePass) {
    unsigned const id = std::string(GetParam()) == "trap-mixed" ? 3 : 0;
    simulation::ChipForwarding const& chip = *compared.registers.getChips().at(id);
    for (unsigned to = 0; to < chip.getNumberOfPorts(); to += 4) {
        PathExplanation const explanation = explain(id, 1, to);
        auto const evidence = ChipEvidence::of(
            compared.bringUp.getBoard(), id, compared.bringUp.getModel(id),
            {1, to, {to}, explanation.getDecision().vid.value_or(0), frame.getDestination(), {2, 3, 4, 5}});
        for (PathExplanation::Remedy const& remedy : explanation.getRemedies()) {
            std::vector<board::FieldAccess::Undo> undos;
            for (ChipEvidence::Change const& change : evidence->getChanges()) {
                if (std::find(remedy.begin(), remedy.end(), change.text) != remedy.end()) {
                    undos.insert(undos.begin(), change.make());
                }
            }
            EXPECT_EQ(undos.size(), remedy.size());
            EXPECT_NE(chip.decide(1, frame).find(to), nullptr) << testing::PrintToString(remedy);
            for (auto const& undo : undos) {
                undo();
            }
        }
        EXPECT_EQ(chip.decide(1, frame).describe(), explanation.getDecision().describe());
    }
}

// Of each port pair the way ends where the frame does, and nowhere else.
TEST_P(PathExplanationTest, TheWayToAPortIsThatOfTheFrame) {
    unsigned ways = 0;
    for (auto const& [id, chip] : compared.registers.getChips()) {
        for (unsigned from = 0; from < chip->getNumberOfPorts(); ++from) {
            simulation::Decision const all = chip->decide(from, frame);
            for (unsigned to = 0; to < chip->getNumberOfPorts(); ++to) {
                simulation::Decision const way = chip->decide(from, frame, 1U << to);
                auto const* const copy = all.find(to);
                EXPECT_EQ(way.getPorts(), copy == nullptr ? 0 : 1U << to);
                EXPECT_EQ(way.dropReason.empty(), copy != nullptr);
                EXPECT_TRUE(copy == nullptr || way.egress.front().frame == copy->frame);
                ways += copy == nullptr ? 0 : 1;
            }
        }
    }
    EXPECT_GT(ways, 0U);
}

TEST(FieldAccessTest, FieldsByName) {
    ComparedBoard compared(ComparedBoard::example("trap-minimal"));
    simulation::ChipTestSide& chip = compared.bringUp.getBoard().getChip(0);
    board::FieldAccess const fields(chip, "88e6096");
    EXPECT_EQ(fields.get("port 1", "PortControl2", "802.1QMode"), 3U);
    auto const undo = fields.set("port 1", "PortControl2", "802.1QMode", 1);
    EXPECT_EQ(chip.peek("port 1", 0x08), 0x0480U);
    undo();
    EXPECT_EQ(chip.peek("port 1", 0x08), 0x0C80U);
    EXPECT_THROW(fields.get("port 1", "PortControl2", "Mode"), std::out_of_range);
}
