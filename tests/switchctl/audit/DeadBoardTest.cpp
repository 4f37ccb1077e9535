// Boards of which an audit reads nothing, or not all.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>

#include "AuditBench.hpp"

using simulation::BusFaults;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

struct DeadBus {
    char const* example;
    BusFaults::Kind kind;
};

std::string nameOf(DeadBus const& bus) {
    std::string name = bus.example;
    name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
    char const* const kinds[] = {"Fails", "Zeros", "Ones"};
    return name + kinds[static_cast<unsigned>(bus.kind)];
}

void PrintTo(DeadBus const& bus, std::ostream* out) {
    *out << nameOf(bus);
}

class DeadBoardTest : public testing::TestWithParam<DeadBus> {};

} // namespace

TEST_P(DeadBoardTest, SaysOnceForEachSwitchThatItIsUnread) {
    AuditBench bench(GetParam().example);
    simulation::SimulatedBoard& board = bench.getBoard();
    board.getFaults().strikeFrom(board.getBusAccesses() + 1, GetParam().kind);
    EXPECT_THAT(bench.audit(), IsEmpty());
    EXPECT_EQ(bench.getRun().getRegisters(), 0U);
    EXPECT_EQ(bench.getRun().getEntries(), 0U);
    EXPECT_EQ(bench.getRun().getSwitchesRead(), 0U);
    EXPECT_EQ(bench.getRun().getSwitches(), board.getSwitchIds().size());
    EXPECT_THAT(bench.getUnread(), SizeIs(board.getSwitchIds().size()));
    EXPECT_THAT(bench.getUnread(), Each(HasSubstr("switch ")));
    for (std::string const& line : bench.getUnread()) {
        EXPECT_LT(line.size(), 200U) << line;
    }
}

TEST_P(DeadBoardTest, AChipThatDiesMeanwhileIsUnread) {
    AuditBench bench(GetParam().example);
    simulation::SimulatedBoard& board = bench.getBoard();
    // Waits for what never comes take few looks.
    board.getFaults().slowDown(100'000);
    ASSERT_THAT(bench.audit(), IsEmpty());
    std::uint64_t const before = board.getBusAccesses();
    ASSERT_THAT(bench.audit(), IsEmpty());
    std::uint64_t const ofOneAudit = board.getBusAccesses() - before;
    // Within the chip that is read last.
    board.getFaults().strikeFrom(board.getBusAccesses() + ofOneAudit - 40, GetParam().kind);
    EXPECT_THAT(bench.audit(), IsEmpty());
    EXPECT_EQ(bench.getRun().getSwitchesRead(), board.getSwitchIds().size() - 1);
    EXPECT_THAT(bench.getUnread(), SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(Buses, DeadBoardTest,
                         testing::Values(DeadBus{"trap-minimal", BusFaults::Kind::allZeros},
                                         DeadBus{"trap-minimal", BusFaults::Kind::allOnes},
                                         DeadBus{"trap-minimal", BusFaults::Kind::accessFails},
                                         DeadBus{"trap-three-switches", BusFaults::Kind::allZeros},
                                         DeadBus{"trap-three-switches", BusFaults::Kind::allOnes},
                                         DeadBus{"trap-video-switch", BusFaults::Kind::allZeros},
                                         DeadBus{"trap-video-switch", BusFaults::Kind::allOnes},
                                         DeadBus{"trap-video-switch", BusFaults::Kind::accessFails},
                                         DeadBus{"trap-mixed", BusFaults::Kind::allZeros},
                                         DeadBus{"trap-mixed", BusFaults::Kind::allOnes}),
                         [](auto const& test) { return nameOf(test.param); });

TEST(DeadTableTest, WhatIsInATableThatWasNotReadIsNotCompared) {
    AuditBench bench("trap-minimal");
    ASSERT_THAT(bench.audit(), IsEmpty());
    unsigned const registers = bench.getRun().getRegisters();
    ASSERT_GT(bench.getRun().getEntries(), 0U);
    bench.getBoard().getMarvell(0).hang(simulation::ChipTestSide::CommandUnit::vtu);
    EXPECT_THAT(bench.audit(), IsEmpty());
    EXPECT_EQ(bench.getRun().getRegisters(), registers);
    EXPECT_EQ(bench.getRun().getEntries(), 0U);
    EXPECT_EQ(bench.getRun().getSwitchesRead(), 1U);
    EXPECT_THAT(bench.getUnread(), SizeIs(1));
}
