#include <gtest/gtest.h>

#include "marvell/MarvellMultiMdioManagementCommunications.hpp"
#include "tests/support/FailingSteps.hpp"
#include "tests/support/MacBench.hpp"
#include "tests/support/ScriptedRegisters.hpp"
#include "tests/support/SmiScript.hpp"

using namespace std::chrono_literals;
using test_support::Accesses;
using test_support::expectStrict;
using test_support::expectSuccess;
using test_support::Lines;
using test_support::MacBench;
using test_support::reads;
using test_support::ScriptedRegisters;
using test_support::SmiScript;
using test_support::writes;

namespace {

/// Global 2 is device 0x1C: register 0x18 takes PHY commands, register 0x19 holds PHY data.
class SmiPhyAccessTest : public testing::Test {
protected:
    bool read(unsigned short phy, unsigned short registerNumber) {
        value = 0x5555;
        return chip.phyReadRegister(phy, registerNumber, value);
    }

    MacBench<SmiScript> bench;
    MarvellMultiMdioManagementCommunications chip{bench.application, SmiScript::chipAddress, false};
    unsigned short value = 0;
};

TEST_F(SmiPhyAccessTest, Reads) {
    expectStrict(bench.script,
                 {writes(0x1C, 0x18, 0x9862), reads(0x1C, 0x18, 0x1862), reads(0x1C, 0x19, 0xABCD)},
                 [&] { return read(3, 2); });
}

TEST_F(SmiPhyAccessTest, AReadGivesTheDataRegister) {
    bench.script.expect({writes(0x1C, 0x18, 0x9862), reads(0x1C, 0x18, 0x7FFF), reads(0x1C, 0x19, 0xABCD)});
    EXPECT_TRUE(read(3, 2));
    EXPECT_EQ(value, 0xABCD);
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(SmiPhyAccessTest, AFailedReadLeavesTheValueAsItWas) {
    test_support::expectEachFailureStops(
        bench.script, {writes(0x1C, 0x18, 0x9862), reads(0x1C, 0x18, 0x1862), reads(0x1C, 0x19, 0xABCD)},
        [&] {
            bool const result = read(3, 2);
            EXPECT_EQ(value, 0x5555);
            return result;
        });
}

TEST_F(SmiPhyAccessTest, WritesWithTheModeBitClearAndWithoutPolling) {
    expectStrict(bench.script, {writes(0x1C, 0x19, 0xBEEF), writes(0x1C, 0x18, 0x8462)},
                 [&] { return chip.phyWriteRegister(3, 2, 0xBEEF); });
}

struct PhyCommandCase {
    unsigned short phy;
    unsigned short registerNumber;
    unsigned int readCommand;
    unsigned int writeCommand;
};

TEST_F(SmiPhyAccessTest, BuildsCommandWordsFromFiveBitAddresses) {
    PhyCommandCase const cases[] = {
        {0, 0, 0x9800, 0x8400},   {10, 16, 0x9950, 0x8550},         {31, 31, 0x9BFF, 0x87FF},
        {35, 34, 0x9862, 0x8462}, {0xFFFF, 0xFFFF, 0x9BFF, 0x87FF}, {32, 32, 0x9800, 0x8400},
    };
    for (auto const& expected : cases) {
        expectSuccess(
            bench.script,
            {writes(0x1C, 0x18, expected.readCommand), reads(0x1C, 0x18, 0), reads(0x1C, 0x19, 0xABCD)},
            [&] { return read(expected.phy, expected.registerNumber); });
        expectSuccess(bench.script, {writes(0x1C, 0x19, 1), writes(0x1C, 0x18, expected.writeCommand)},
                      [&] { return chip.phyWriteRegister(expected.phy, expected.registerNumber, 1); });
    }
}

TEST_F(SmiPhyAccessTest, WaitsForThePhyCommandToEnd) {
    bench.script.expect({writes(0x1C, 0x18, 0x9862), reads(0x1C, 0x18, 0x9862), reads(0x1C, 0x18, 0x8000),
                         reads(0x1C, 0x18, 0x1862), reads(0x1C, 0x19, 0xABCD)});
    EXPECT_TRUE(read(3, 2));
    EXPECT_EQ(value, 0xABCD);
    EXPECT_EQ(bench.clock.getNanoseconds(), 200'000U) << "two sleeps of 100 microseconds";
}

TEST_F(SmiPhyAccessTest, APollThatFailsEndsTheRead) {
    bench.script.expect(
        {writes(0x1C, 0x18, 0x9862), reads(0x1C, 0x18, 0x9862), reads(0x1C, 0x18, 0).failing()});
    EXPECT_FALSE(read(3, 2));
    EXPECT_EQ(value, 0x5555);
}

TEST_F(SmiPhyAccessTest, APhyCommandThatNeverEndsClaimsSuccessAndLeavesTheValueAsItWas) {
    bench.script.expect({writes(0x1C, 0x18, 0x9862), reads(0x1C, 0x18, 0x9862).taking(900ms),
                         reads(0x1C, 0x18, 0x9862).taking(100ms)});
    EXPECT_TRUE(read(3, 2));
    EXPECT_EQ(value, 0x5555);
    EXPECT_EQ(bench.log.take(), (Lines{"2|MarvellMultiMdioManagementCommunications::phyReadRegister"
                                       "                          "
                                       "Timeout waiting for SMI Phy Busy Bit :Elapsed 1.000000 : smiTimeout "
                                       "1.000000\n"}));
}

TEST_F(SmiPhyAccessTest, APhyCommandThatEndsAtTheLastPollIsRead) {
    bench.script.expect({writes(0x1C, 0x18, 0x9862), reads(0x1C, 0x18, 0x9862).taking(999ms),
                         reads(0x1C, 0x18, 0x1862).taking(5s), reads(0x1C, 0x19, 0xABCD)});
    EXPECT_TRUE(read(3, 2));
    EXPECT_EQ(value, 0xABCD);
    EXPECT_EQ(bench.log.take(), Lines{});
}

/// Register accesses that do not reach the bus.
class Redirected : public MarvellMultiMdioManagementCommunications {
public:
    Redirected(Application& application, ScriptedRegisters& target)
        : MarvellMultiMdioManagementCommunications(application, 5, true), _target(target) {}

    bool readRegister(MarvelRegisterValues& values) override { return _target.readRegister(values); }
    bool writeRegister(MarvelRegisterValues values) override { return _target.writeRegister(values); }

private:
    ScriptedRegisters& _target;
};

TEST_F(SmiPhyAccessTest, UsesWhateverRegisterAccessIsThere) {
    ScriptedRegisters registers(bench.application);
    Redirected redirected(bench.application, registers);
    registers.expect({writes(0x1C, 0x18, 0x9862), reads(0x1C, 0x18, 0), reads(0x1C, 0x19, 0xABCD),
                      writes(0x1C, 0x19, 0xBEEF), writes(0x1C, 0x18, 0x8462)});
    EXPECT_TRUE(redirected.phyReadRegister(3, 2, value));
    EXPECT_EQ(value, 0xABCD);
    EXPECT_TRUE(redirected.phyWriteRegister(3, 2, 0xBEEF));
}

} // namespace
