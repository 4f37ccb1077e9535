#include "board/SimulatedMemory.hpp"

#include <gtest/gtest.h>

#include <string>

#include "host/MappedSection.hpp"
#include "reference_host/HostApplication.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "tests/support/RecordingLog.hpp"
#include "tests/support/TestDocument.hpp"

using board::SimulatedMemory;
using reference_host::PhysicalMemory;

namespace {

class SimulatedMemoryTest : public testing::Test {
protected:
    test_support::TestDocument document{"<switches/>"};
    simulation::SimulatedBoard board{document};
    board::SimulatedMemory memory{board};
    PhysicalMemory::Mapping mapping;
    std::string reason;
};

TEST_F(SimulatedMemoryTest, GivesTheBoardsWindows) {
    ASSERT_TRUE(memory.map(0x80010000, 0x30, mapping, reason)) << reason;
    EXPECT_EQ(mapping.baseAddress, board.window(0x80010000, 0x30)->getBaseAddress());
    EXPECT_EQ(mapping.startOffset, 0U);
    EXPECT_GE(mapping.length, 0x30U);
    memory.unmap(mapping);
    EXPECT_TRUE(memory.map(0x80010000, 0x30, mapping, reason));
}

TEST_F(SimulatedMemoryTest, RefusesAddressesWhereNothingAnswers) {
    EXPECT_FALSE(memory.map(0x10000000, 4, mapping, reason));
    EXPECT_EQ(reason, "nothing on the simulated board answers there");
    EXPECT_FALSE(memory.map(0x80010000, 0x10000, mapping, reason));
}

TEST_F(SimulatedMemoryTest, ASectionMeetsTheModelBehindIt) {
    test_support::RecordingLog log;
    reference_host::HostApplication application(log, memory);
    MappedSection section("MiiAccess", application, false);
    ASSERT_TRUE(section.map(0x80010000, 0x30));
    EXPECT_TRUE(section.set(0x20, 0x00003E00));
    EXPECT_EQ(board.getMac().peek(0x20), 0x00003E00U);
    EXPECT_EQ(board.getBusAccesses(), 1U);
}

} // namespace
