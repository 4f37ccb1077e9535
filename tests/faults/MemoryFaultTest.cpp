#include <gtest/gtest.h>

#include <iostream>

#include "tests/faults/MemoryFaults.hpp"

using namespace fault_test;

namespace {

void sweepAndExpectNothingWrong(char const* board, unsigned switchId, unsigned portId, std::uint64_t stride) {
    MemoryFaults faults(std::string(EXAMPLES_FOLDER "/") + board, switchId, portId);
    FaultTable table;
    faults.sweep({1, stride * STRIDE_FACTOR}, table);
    EXPECT_EQ(wrongIn(table), "");
    for (auto const& [kind, count] : table) {
        EXPECT_GT(count.outcomes.at(static_cast<std::size_t>(Outcome::noticed)), 0U) << kind;
        std::cout << kind << ": " << count.runs << " lives, " << faults.getAllocations()
                  << " allocations each\n";
    }
}

TEST(MemoryFaultTest, OfABoardOf88E6096) {
    sweepAndExpectNothingWrong("trap-minimal.xml", 0, 1, 1);
}

TEST(MemoryFaultTest, OfABoardOfAVsc7390) {
    sweepAndExpectNothingWrong("trap-video-switch.xml", 2, 1, 17);
}

TEST(MemoryFaultTest, OfABoardOfBoth) {
    sweepAndExpectNothingWrong("trap-mixed.xml", 0, 1, 17);
}

} // namespace
