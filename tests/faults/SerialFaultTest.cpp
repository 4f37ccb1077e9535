#include <gtest/gtest.h>

#include <iostream>

#include "tests/faults/SerialFaults.hpp"

using namespace fault_test;

namespace {

TEST(SerialFaultTest, LostDoubledAndGarbledCharacters) {
    SerialFaults faults;
    FaultTable table;
    faults.sweep({1, 3 * STRIDE_FACTOR}, table);
    EXPECT_EQ(wrongIn(table), "");
    for (auto const& [kind, count] : table) {
        EXPECT_GT(count.outcomes.at(static_cast<std::size_t>(Outcome::noticed)), 0U) << kind;
        std::cout << kind << ": " << count.runs << " conversations, " << faults.getCharacters()
                  << " characters each\n";
    }
}

} // namespace
