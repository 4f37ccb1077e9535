// An 88E6096 that was disturbed after its bring-up.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AuditBench.hpp"
#include "board/Wording.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"

using simulation::Marvell88E6096TestSide;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Lines = std::vector<std::string>;

enum Register : unsigned {
    portControl = 0x04,
    inDiscardsLow = 0x10,
    globalStatus = 0x00,
    vtuVid = 0x06,
    vtuData0 = 0x07,
    atuControl = 0x0A,
    smiPhyData = 0x19,
};

class MarvellDeviationTest : public testing::Test {
protected:
    AuditBench bench{"trap-minimal"};
    Marvell88E6096TestSide& chip{bench.getBoard().getMarvell(0)};
};

} // namespace

TEST_F(MarvellDeviationTest, ThereIsNoneOnACleanStart) {
    EXPECT_THAT(bench.audit(), IsEmpty());
    EXPECT_THAT(bench.getUnread(), IsEmpty());
}

TEST_F(MarvellDeviationTest, APortThatNoLongerForwards) {
    chip.poke("port 8", portControl, chip.peek("port 8", portControl) & ~0x3U);
    EXPECT_THAT(bench.audit(),
                ElementsAre("switch 0  port 8  PortControl  PortState  expected 0x3, found 0x0"));
}

TEST_F(MarvellDeviationTest, OneLineForEachField) {
    chip.poke("port 8", portControl, (chip.peek("port 8", portControl) & ~0x3U) ^ 0x300U);
    Lines const lines = bench.audit();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_THAT(lines[0], testing::HasSubstr("port 8  PortControl  FrameMode"));
    EXPECT_THAT(lines[1], testing::HasSubstr("port 8  PortControl  PortState"));
}

TEST_F(MarvellDeviationTest, TheAgeTime) {
    chip.poke("global 1", atuControl, (chip.peek("global 1", atuControl) & ~0xFF0U) | 0x010U);
    EXPECT_THAT(bench.audit(),
                ElementsAre("switch 0  global 1  ATUControl  AgeTime  expected 0x14, found 0x1"))
        << "the document says 300 seconds, which are 20 steps of 15";
}

TEST_F(MarvellDeviationTest, AMemberOfAVlan) {
    Marvell88E6096TestSide::VtuEntry entry = chip.getVtuEntry(5).value();
    ASSERT_EQ(entry.memberTags[1], 1U) << "port 1 strips tags";
    entry.memberTags[1] = 3;
    chip.setVtuEntry(5, entry);
    EXPECT_THAT(bench.audit(),
                ElementsAre("switch 0  VTU  VID 5 (0x5)  MemberTag1  expected 0x1, found 0x3"));
}

TEST_F(MarvellDeviationTest, AVlanTooMuch) {
    chip.setVtuEntry(0x123, {});
    EXPECT_THAT(bench.audit(), ElementsAre("switch 0  VTU  VID 291 (0x123)  expected none, found the entry"));
}

TEST_F(MarvellDeviationTest, AVlanThatIsGone) {
    // The key of VLAN 5 without its valid bit, and the operation that loads an entry.
    board::BoardAccess board(bench.getBoard());
    chips::ChipCatalogue const catalogue("88e6096");
    auto const transport = board.connect(0, "88e6096");
    transport->write(catalogue.find("global1/VTUVID"), 5);
    transport->write(catalogue.find("global1/VTUOperation"), 0xB000);
    EXPECT_THAT(bench.audit(), ElementsAre("switch 0  VTU  VID 5 (0x5)  expected the entry, found none"));
}

TEST_F(MarvellDeviationTest, WhatStartUpDoesNotWriteIsExpectedAsAfterAReset) {
    chip.poke("port 5", portControl, chip.peek("port 5", portControl) & ~0x3U);
    chip.poke("phy 5", 0, chip.peek("phy 5", 0) | 0x800U);
    EXPECT_THAT(bench.audit(),
                ElementsAre("switch 0  port 5  PortControl  PortState  expected 0x3 after reset, found 0x0",
                            "switch 0  phy 5  Control  PowerDown  expected 0x0 after reset, found 0x1"));
}

TEST_F(MarvellDeviationTest, SpanningTreeStatesOfAVlan) {
    auto const stu = chip.getStu();
    ASSERT_FALSE(stu.empty());
    Marvell88E6096TestSide::StuEntry entry = stu.begin()->second;
    unsigned const before = entry.portStates[1];
    entry.portStates[1] = before ^ 0x1U;
    chip.setStuEntry(stu.begin()->first, entry);
    EXPECT_THAT(bench.audit(), ElementsAre("switch 0  STU  " +
                                           board::entryName("SID " + std::to_string(stu.begin()->first)) +
                                           "  PortState1  expected 0x" + std::to_string(before) +
                                           ", found 0x" + std::to_string(before ^ 0x1U)));
}

TEST_F(MarvellDeviationTest, StatusCountersAndStagingRegistersAreNoDeviation) {
    chip.plugLink(1);
    chip.poke("port 1", 0x10, 77);
    chip.poke("global 1", globalStatus, 0xFFFF);
    chip.poke("global 1", vtuVid, 0x0123);
    chip.poke("global 1", vtuData0, 0x3333);
    chip.poke("global 2", smiPhyData, 0x1234);
    EXPECT_THAT(bench.audit(), IsEmpty());
}

TEST_F(MarvellDeviationTest, AChipThatDoesNotAnswerIsUnreadNotDeviant) {
    chip.unplug();
    EXPECT_THAT(bench.audit(), IsEmpty());
    ASSERT_EQ(bench.getUnread().size(), 1U);
    EXPECT_THAT(bench.getUnread()[0], testing::HasSubstr("switch 0"));
}

TEST_F(MarvellDeviationTest, TheVtuThatStaysBusyIsUnread) {
    chip.hang(Marvell88E6096TestSide::CommandUnit::vtu);
    EXPECT_THAT(bench.audit(), IsEmpty());
    ASSERT_EQ(bench.getUnread().size(), 1U);
    EXPECT_THAT(bench.getUnread()[0], testing::HasSubstr("VTU stays busy"));
}
