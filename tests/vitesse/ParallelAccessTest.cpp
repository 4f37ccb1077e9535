#include <gtest/gtest.h>

#include <memory>

#include "tests/support/ParallelBench.hpp"
#include "tests/support/WordScript.hpp"
#include "vitesse/VitesseParallelCommunication.hpp"

using test_support::gets;
using test_support::Lines;
using test_support::ParallelBench;
using test_support::sets;
using test_support::WordScript;

namespace {

/// The bus of a chip, word by word. Status and data of an indirect read are at 0x1C0C0 and 0x1C0B0.
class ParallelAccessTest : public testing::Test {
protected:
    ParallelAccessTest() {
        bench.script.expect({sets(0x1C008, 0x0000000C)});
        access = std::make_unique<VitesseParallelCommunication>(bench.application, false);
        bench.script.verify();
    }

    ParallelBench<WordScript> bench;
    WordScript& script = bench.script;
    std::unique_ptr<VitesseParallelCommunication> access;
};

TEST_F(ParallelAccessTest, MapsTheChipForAsLongAsItLives) {
    EXPECT_EQ(bench.memory.lastPhysicalAddress(), 0xF3000000U);
    EXPECT_EQ(bench.memory.lastSize(), 0x1000000U);
    EXPECT_EQ(bench.memory.mappedSections(), 1);
    access.reset();
    EXPECT_EQ(bench.memory.mappedSections(), 0);
    EXPECT_EQ(bench.memory.mappingsSoFar(), 1);
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(ParallelAccessTest, ABusThatCannotBeSetUpIsNotReported) {
    access.reset();
    bench.script.expect({sets(0x1C008, 0x0000000C).failing()});
    access = std::make_unique<VitesseParallelCommunication>(bench.application, false);
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(ParallelAccessTest, WritesGoToTheOffsetOfBlockSubBlockAndAddress) {
    struct {
        VitesseParallelCommunication::Bsa location;
        unsigned int offset;
    } const cases[] = {{{7, 0, 2}, 0x1C008},    {{1, 4, 16}, 0x05040},   {{0, 0, 0}, 0x00000},
                       {{0, 0, 1}, 0x00004},    {{0, 0, 0xFF}, 0x003FC}, {{0, 1, 0}, 0x00400},
                       {{0, 15, 0}, 0x03C00},   {{1, 0, 0}, 0x04000},    {{2, 0, 0x80}, 0x08200},
                       {{5, 0, 0x0C}, 0x14030}, {{6, 7, 0xE0}, 0x19F80}, {{15, 15, 0xFF}, 0x3FFFC}};
    for (auto const& expected : cases) {
        script.expect({sets(expected.offset, 0x89ABCDEF)});
        EXPECT_TRUE(access->writeRegister(expected.location, 0x89ABCDEF));
        script.verify();
    }
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(ParallelAccessTest, BlocksFourAndSevenAreReadInOneStep) {
    unsigned int value = 0;
    script.expect({gets(0x11404, 0x12345678)});
    EXPECT_TRUE(access->readRegister({4, 5, 1}, value));
    script.verify();
    EXPECT_EQ(value, 0x12345678U);
    script.expect({gets(0x1C060, 0xFEDCBA98)});
    EXPECT_TRUE(access->readRegister({7, 0, 0x18}, value));
    EXPECT_EQ(value, 0xFEDCBA98U);
}

TEST_F(ParallelAccessTest, AllOtherBlocksAreReadInTwoSteps) {
    struct {
        unsigned short block;
        unsigned int offset;
    } const cases[] = {{0, 0x00840}, {1, 0x04840}, {2, 0x08840}, {3, 0x0C840}, {5, 0x14840}, {6, 0x18840}};
    for (auto const& expected : cases) {
        unsigned int value = 0;
        script.expect({gets(expected.offset, 0xBADBAD), gets(0x1C0C0, 0x10), gets(0x1C0B0, 0x89ABCDEF)});
        EXPECT_TRUE(access->readRegister({expected.block, 2, 16}, value));
        script.verify();
        EXPECT_EQ(value, 0x89ABCDEFU) << expected.block;
    }
}

TEST_F(ParallelAccessTest, AFailedWriteIsReportedWithItsPhysicalAddressAndStillTrue) {
    script.expect({sets(0x05040, 1).failing()});
    EXPECT_TRUE(access->writeRegister({1, 4, 16}, 1));
    EXPECT_EQ(bench.log.take(), (Lines{"error|Failed Write : address f3005040\n"}));
}

TEST_F(ParallelAccessTest, AFailedDirectReadIsReportedAndLeavesTheValueAlone) {
    unsigned int value = 0x1234;
    script.expect({gets(0x1C060, 0).failing()});
    EXPECT_TRUE(access->readRegister({7, 0, 0x18}, value));
    EXPECT_EQ(value, 0x1234U);
    EXPECT_EQ(bench.log.take(), (Lines{"error|Failed Read : address f301c060\n"}));
}

TEST_F(ParallelAccessTest, AnIndirectReadThatFailsToStartIsReportedAndNotWaitedFor) {
    unsigned int value = 0x1234;
    script.expect({gets(0x05040, 0).failing()});
    EXPECT_TRUE(access->readRegister({1, 4, 16}, value));
    EXPECT_EQ(value, 0x1234U);
    EXPECT_EQ(bench.log.take(), (Lines{"error|Failed Read : address f3005040\n"}));
}

TEST_F(ParallelAccessTest, AStatusThatCannotBeReadIsReadAgain) {
    unsigned int value = 0;
    script.expect(
        {gets(0x05040, 0xBADBAD), gets(0x1C0C0, 0x10).failing(), gets(0x1C0C0, 0x10), gets(0x1C0B0, 0x77)});
    EXPECT_TRUE(access->readRegister({1, 4, 16}, value));
    EXPECT_EQ(value, 0x77U);
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(ParallelAccessTest, DataThatCannotBeReadIsNotReported) {
    unsigned int value = 0;
    script.expect({gets(0x05040, 0xBADBAD), gets(0x1C0C0, 0x10), gets(0x1C0B0, 0x77).failing()});
    EXPECT_TRUE(access->readRegister({1, 4, 16}, value));
    EXPECT_EQ(value, 0xBADBADU) << "what the first step gave";
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(ParallelAccessTest, ReadErrorsCanBeReported) {
    access->readError(0xF301C060);
    access->readError(0);
    EXPECT_EQ(bench.log.take(),
              (Lines{"error|Failed Read : address f301c060\n", "error|Failed Read : address 0\n"}));
}

TEST_F(ParallelAccessTest, WithoutHardwareAccessEveryAccessIsReportedAsFailed) {
    VitesseParallelCommunication unmapped(bench.application, true);
    EXPECT_EQ(bench.memory.mappingsSoFar(), 1) << "the other one's";
    bench.log.take();
    unsigned int value = 0x1234;
    unsigned short phyValue = 0x1234;
    EXPECT_TRUE(unmapped.readRegister({1, 4, 16}, value));
    EXPECT_TRUE(unmapped.readRegister({7, 0, 0x18}, value));
    EXPECT_TRUE(unmapped.writeRegister({1, 4, 16}, 5));
    EXPECT_EQ(value, 0x1234U);
    EXPECT_EQ(bench.log.take(),
              (Lines{"error|Failed Read : address f3005040\n", "error|Failed Read : address f301c060\n",
                     "error|Failed Write : address f3005040\n"}));
    EXPECT_TRUE(unmapped.phyReadRegister(VitesseParallelCommunication::MiiManagementLocation::controller1, 3,
                                         2, phyValue));
    EXPECT_EQ(phyValue, 0);
    EXPECT_EQ(bench.log.take(),
              (Lines{"error|Failed Read : address f300c400\n", "error|Failed Write : address f300c404\n",
                     "error|Failed Read : address f300c400\n", "error|Failed Read : address f300c408\n"}));
}

} // namespace
