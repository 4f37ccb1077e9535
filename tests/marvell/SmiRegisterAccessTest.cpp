#include <gtest/gtest.h>

#include "marvell/MarvellMultiMdioManagementCommunications.hpp"
#include "tests/support/FailingSteps.hpp"
#include "tests/support/MacBench.hpp"
#include "tests/support/MdioScript.hpp"

using namespace std::chrono_literals;
using test_support::Accesses;
using test_support::expectEachFailureStops;
using test_support::expectStrict;
using test_support::expectSuccess;
using test_support::frameReads;
using test_support::frameWrites;
using test_support::Lines;
using test_support::MacBench;
using test_support::MdioScript;

namespace {

using Registers = MarvellManagementCommunications::MarvelRegisterValues;

/// The chip at address 5: register 0 takes commands, bit 15 means busy; register 1 holds the data.
Accesses const free{frameReads(5, 0, 0), frameReads(5, 0, 0)};

std::string smiTimeout(char const* elapsed) {
    return std::string("2|MarvelMultiMdioManagementCommunications::isMarvelSmiBusy Timeout waiting for SMI "
                       "Busy Bit :Elapsed ") +
           elapsed + " : smiTimeout 1.000000\n";
}

class SmiRegisterAccessTest : public testing::Test {
protected:
    bool read(unsigned short device, unsigned short registerNumber) {
        registers = Registers(device, registerNumber, 0x5555);
        return chip.readRegister(registers);
    }

    bool write(unsigned short device, unsigned short registerNumber, unsigned short value) {
        return chip.writeRegister(Registers(device, registerNumber, value));
    }

    MacBench<MdioScript> bench;
    MarvellMultiMdioManagementCommunications chip{bench.application, 5, false};
    Registers registers;
};

TEST_F(SmiRegisterAccessTest, InitialiseDoesNothing) {
    bench.script.expect({});
    EXPECT_TRUE(chip.initialise());
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(SmiRegisterAccessTest, AFreshRecordHoldsZero) {
    EXPECT_EQ(Registers().value, 0);
}

TEST_F(SmiRegisterAccessTest, ReadsWithACommandBetweenTwoBusyChecks) {
    expectStrict(bench.script,
                 free + Accesses{frameWrites(5, 0, 0x9A03)} + free + Accesses{frameReads(5, 1, 0x0981)},
                 [&] { return read(0x10, 0x03); });
    EXPECT_TRUE(bench.log.take("error").empty());
}

TEST_F(SmiRegisterAccessTest, AReadFillsTheValueOnly) {
    bench.script.expect(free + Accesses{frameWrites(5, 0, 0x9A03)} + free +
                        Accesses{frameReads(5, 1, 0x0981)});
    EXPECT_TRUE(read(0x10, 0x03));
    EXPECT_EQ(registers.deviceAddress, 0x10);
    EXPECT_EQ(registers.registerAddress, 0x03);
    EXPECT_EQ(registers.value, 0x0981);
}

TEST_F(SmiRegisterAccessTest, AFailedReadLeavesTheValueAsItWas) {
    expectEachFailureStops(
        bench.script, free + Accesses{frameWrites(5, 0, 0x9A03)} + free + Accesses{frameReads(5, 1, 0x0981)},
        [&] {
            bool const result = read(0x10, 0x03);
            EXPECT_EQ(registers.value, 0x5555);
            return result;
        });
}

TEST_F(SmiRegisterAccessTest, WritesTheDataAndThenTheCommandWithoutWaiting) {
    expectStrict(bench.script, free + Accesses{frameWrites(5, 1, 0xC000), frameWrites(5, 0, 0x9765)},
                 [&] { return write(0x1B, 0x05, 0xC000); });
}

struct CommandCase {
    unsigned short device;
    unsigned short registerNumber;
    unsigned int readCommand;
    unsigned int writeCommand;
};

TEST_F(SmiRegisterAccessTest, BuildsCommandWords) {
    CommandCase const cases[] = {
        {0x00, 0x00, 0x9800, 0x9400}, {0x10, 0x00, 0x9A00, 0x9600}, {0x1A, 0x1F, 0x9B5F, 0x975F},
        {0x1B, 0x05, 0x9B65, 0x9765}, {0x1C, 0x18, 0x9B98, 0x9798}, {0x1F, 0x1F, 0x9BFF, 0x97FF},
    };
    for (auto const& expected : cases) {
        expectSuccess(bench.script,
                      free + Accesses{frameWrites(5, 0, expected.readCommand)} + free +
                          Accesses{frameReads(5, 1, 0)},
                      [&] { return read(expected.device, expected.registerNumber); });
        expectSuccess(bench.script,
                      free + Accesses{frameWrites(5, 1, 0x1234), frameWrites(5, 0, expected.writeCommand)},
                      [&] { return write(expected.device, expected.registerNumber, 0x1234); });
    }
}

TEST_F(SmiRegisterAccessTest, AddressesOutOfRangeSpillIntoNeighbouringFieldsAndAreCutToSixteenBits) {
    CommandCase const cases[] = {
        {0x20, 0x00, 0x9C00, 0x9400},
        {0x10, 0x25, 0x9A25, 0x9625},
        {0x1000, 0x03, 0x9803, 0x9403},
    };
    for (auto const& expected : cases) {
        expectSuccess(bench.script,
                      free + Accesses{frameWrites(5, 0, expected.readCommand)} + free +
                          Accesses{frameReads(5, 1, 0)},
                      [&] { return read(expected.device, expected.registerNumber); });
        expectSuccess(bench.script,
                      free + Accesses{frameWrites(5, 1, 0x1234), frameWrites(5, 0, expected.writeCommand)},
                      [&] { return write(expected.device, expected.registerNumber, 0x1234); });
    }
}

TEST_F(SmiRegisterAccessTest, OnlyTheSecondOfTwoCommandRegisterReadsCounts) {
    bench.script.expect({frameReads(5, 0, 0xFFFF), frameReads(5, 0, 0x7FFF)});
    EXPECT_FALSE(chip.isMarvelSmiBusy());
    bench.script.expect(
        {frameReads(5, 0, 0), frameReads(5, 0, 0x8000), frameReads(5, 0, 0x8000), frameReads(5, 0, 0)});
    EXPECT_FALSE(chip.isMarvelSmiBusy());
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(SmiRegisterAccessTest, SleepsBetweenPolls) {
    bench.script.expect(
        {frameReads(5, 0, 0), frameReads(5, 0, 0x8000), frameReads(5, 0, 0), frameReads(5, 0, 0)});
    EXPECT_FALSE(chip.isMarvelSmiBusy());
    EXPECT_EQ(bench.clock.getNanoseconds(), 100'000U);
}

TEST_F(SmiRegisterAccessTest, ABusThatFailsIsBusyWithoutAMessageOfItsOwn) {
    bench.script.expect({frameReads(5, 0, 0).failing()});
    EXPECT_TRUE(chip.isMarvelSmiBusy());
    bench.script.expect({frameReads(5, 0, 0), frameReads(5, 0, 0).failing()});
    EXPECT_TRUE(chip.isMarvelSmiBusy());
    std::string const macTimeout = "2|Arm920tMdioAccess::isMacBusy Timeout waiting for Mac Busy Bit\n";
    EXPECT_EQ(bench.log.take(), (Lines{macTimeout, macTimeout}));
}

TEST_F(SmiRegisterAccessTest, GivesUpAtTheFirstBusyPollAfterAWholeSecond) {
    bench.script.expect({frameReads(5, 0, 0x8000).taking(500ms), frameReads(5, 0, 0x8000).taking(400ms),
                         frameReads(5, 0, 0x8000).taking(50ms), frameReads(5, 0, 0x8000).taking(50ms)});
    EXPECT_TRUE(chip.isMarvelSmiBusy());
    EXPECT_EQ(bench.log.take(), Lines{smiTimeout("1.000000")});
}

TEST_F(SmiRegisterAccessTest, TheMessageShowsWholeSeconds) {
    bench.script.expect({frameReads(5, 0, 0x8000).taking(3s), frameReads(5, 0, 0x8000).taking(900ms)});
    EXPECT_TRUE(chip.isMarvelSmiBusy());
    EXPECT_EQ(bench.log.take(), Lines{smiTimeout("3.000000")});
}

TEST_F(SmiRegisterAccessTest, AChipThatIsFreeAtTheLastPollIsFree) {
    bench.script.expect({frameReads(5, 0, 0x8000).taking(500ms), frameReads(5, 0, 0x8000).taking(450ms),
                         frameReads(5, 0, 0x8000).taking(2s), frameReads(5, 0, 0)});
    EXPECT_FALSE(chip.isMarvelSmiBusy());
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(SmiRegisterAccessTest, AChangeOfTheSecondIsNoWholeSecond) {
    bench.clock.advanceNanoseconds(950'000'000);
    bench.script.expect({frameReads(5, 0, 0), frameReads(5, 0, 0x8000).taking(100ms), frameReads(5, 0, 0),
                         frameReads(5, 0, 0)});
    EXPECT_FALSE(chip.isMarvelSmiBusy());
    EXPECT_EQ(bench.log.take(), Lines{});
}

Accesses const busyForASecond{frameReads(5, 0, 0x8000), frameReads(5, 0, 0x8000).taking(1s)};

TEST_F(SmiRegisterAccessTest, ABusyChipGetsNoCommand) {
    bench.script.expect(busyForASecond);
    EXPECT_FALSE(read(0x10, 0x03));
    EXPECT_EQ(registers.value, 0x5555);
    bench.script.expect(busyForASecond);
    EXPECT_FALSE(write(0x1B, 0x05, 0xC000));
    EXPECT_EQ(bench.log.take(), (Lines{smiTimeout("1.000000"), smiTimeout("1.000000")}));
}

TEST_F(SmiRegisterAccessTest, AReadCommandThatDoesNotEndFails) {
    bench.script.expect(free + Accesses{frameWrites(5, 0, 0x9A03)} + busyForASecond);
    EXPECT_FALSE(read(0x10, 0x03));
    EXPECT_EQ(registers.value, 0x5555);
    EXPECT_EQ(bench.log.take(), Lines{smiTimeout("1.000000")});
}

TEST(SmiRegisterAccessWithoutHardware, FailsAtOnce) {
    MacBench<MdioScript> bench;
    MarvellMultiMdioManagementCommunications chip(bench.application, 5, true);
    Registers registers(0x10, 0x03, 0x5555);
    EXPECT_TRUE(chip.initialise());
    EXPECT_FALSE(chip.readRegister(registers));
    EXPECT_FALSE(chip.writeRegister(registers));
    unsigned short value = 0x5555;
    EXPECT_FALSE(chip.phyReadRegister(3, 2, value));
    EXPECT_FALSE(chip.phyWriteRegister(3, 2, 0));
    EXPECT_EQ(registers.value, 0x5555);
    EXPECT_EQ(value, 0x5555);
    EXPECT_EQ(bench.script.wordAccesses(), 0);
    EXPECT_EQ(bench.memory.mappingsSoFar(), 0);
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST(SmiRegisterAccess, HoldsTheMdioMasterAsLongAsItLives) {
    MacBench<MdioScript> bench;
    {
        MarvellMultiMdioManagementCommunications const chip(bench.application, 5, false);
        EXPECT_EQ(bench.script.getControl(), 0x3E00U);
        EXPECT_EQ(bench.memory.mappedSections(), 1);
    }
    EXPECT_EQ(bench.script.getControl(), MdioScript::initialControl);
    EXPECT_EQ(bench.memory.mappedSections(), 0);
}

TEST(SmiRegisterAccess, TimeDifferenceBorrowsASecond) {
    timespec const elapsed =
        MarvellMultiMdioManagementCommunications::clock_timediff({1, 900'000'000}, {2, 100'000'000});
    EXPECT_EQ(elapsed.tv_sec, 0);
    EXPECT_EQ(elapsed.tv_nsec, 200'000'000);
}

} // namespace
