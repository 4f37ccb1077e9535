#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <string>

#include "tests/faults/BringUpFaults.hpp"
#include "tests/faults/FaultTable.hpp"

using namespace fault_test;

namespace {

struct Board {
    char const* name;
    /// Of the accesses of the bring-up, every so many are hit. Prime, so that all kinds of access have
    /// their turn.
    std::uint64_t stride;
};

std::string pathOf(std::string const& name) {
    std::string file = name;
    std::replace(file.begin(), file.end(), '_', '-');
    return EXAMPLES_FOLDER "/" + file + ".xml";
}

class BringUpFaultTest : public testing::TestWithParam<Board> {};

TEST_P(BringUpFaultTest, EndsWithWhatTheDescriptionOfTheChipsAllows) {
    BringUpFaults bringUp(pathOf(GetParam().name));
    ASSERT_EQ(bringUp.getUndisturbed().result, "populated");
    FaultTable table;
    sweep(bringUp, {1, GetParam().stride * STRIDE_FACTOR}, table);
    EXPECT_EQ(wrongIn(table), "");
    std::uint64_t runs = 0;
    std::uint64_t noticed = 0;
    for (auto const& [kind, count] : table) {
        noticed += count.outcomes.at(static_cast<std::size_t>(Outcome::noticed));
        runs += count.runs;
    }
    EXPECT_GT(noticed, 0U);
    EXPECT_LT(noticed, runs);
    std::cout << runs << " bring-ups, " << bringUp.getAccesses() << " accesses each\n";
}

INSTANTIATE_TEST_SUITE_P(Boards, BringUpFaultTest,
                         testing::Values(Board{"trap-minimal", 97}, Board{"trap_access_point", 997},
                                         Board{"trap_three_switches", 1999}, Board{"trap_video_switch", 2999},
                                         Board{"trap-mixed", 2503}),
                         [](auto const& board) { return std::string(board.param.name); });

} // namespace
