#include <gtest/gtest.h>

#include "tests/support/ParallelBench.hpp"
#include "tests/support/WordScript.hpp"
#include "vitesse/VitesseSwitch.hpp"

using test_support::gets;
using test_support::Lines;
using test_support::ParallelBench;
using test_support::sets;
using test_support::WordScript;

namespace {

Lines const found{"3|SwitchManager::detectVitesseSwitches vitesse switch product Number found 7390 \n"};

class SwitchDetectionTest : public testing::Test {
protected:
    bool detect(unsigned int identification) {
        bench.script.expect({sets(0x1C008, 0x0000000C), gets(0x1C060, identification)});
        bool const result = VitesseSwitch::detectSwitch(bench.application, false);
        bench.script.verify();
        EXPECT_EQ(bench.memory.mappedSections(), 0) << "nothing stays mapped";
        return result;
    }

    ParallelBench<WordScript> bench;
};

TEST_F(SwitchDetectionTest, AnyRevisionOfTheChipIsFound) {
    for (unsigned int const identification :
         {0x07390000U, 0x07390001U, 0x07390123U, 0x07390800U, 0x07390FFFU}) {
        EXPECT_TRUE(detect(identification)) << identification;
        EXPECT_EQ(bench.log.take(), found);
    }
}

TEST_F(SwitchDetectionTest, TheUpperFourBitsDoNotCount) {
    EXPECT_TRUE(detect(0x17390000));
    EXPECT_TRUE(detect(0xF7390FFF));
    EXPECT_EQ(bench.log.take().size(), 2U);
}

TEST_F(SwitchDetectionTest, OtherChipsAreNotFound) {
    for (unsigned int const identification :
         {0x07391000U, 0x0738FFFFU, 0x00000000U, 0xFFFFFFFFU, 0x00007390U, 0x73900000U, 0x07380000U}) {
        EXPECT_FALSE(detect(identification)) << identification;
        EXPECT_EQ(bench.log.take(), Lines{});
    }
}

TEST_F(SwitchDetectionTest, AFailedReadFindsNothing) {
    bench.script.expect({sets(0x1C008, 0x0000000C).failing(), gets(0x1C060, 0x07390000).failing()});
    EXPECT_FALSE(VitesseSwitch::detectSwitch(bench.application, false));
    EXPECT_EQ(bench.log.take(), (Lines{"error|Failed Read : address f301c060\n"}));
    EXPECT_EQ(bench.memory.mappedSections(), 0);
}

TEST_F(SwitchDetectionTest, WithoutHardwareAccessNothingIsFound) {
    EXPECT_FALSE(VitesseSwitch::detectSwitch(bench.application, true));
    EXPECT_EQ(bench.memory.mappingsSoFar(), 0);
    EXPECT_EQ(bench.log.take("error"), (Lines{"error|Failed Read : address f301c060\n"}));
}

} // namespace
