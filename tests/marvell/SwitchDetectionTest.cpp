#include <gtest/gtest.h>

#include "marvell/MarvellSwitch.hpp"
#include "tests/support/MacBench.hpp"
#include "tests/support/MdioScript.hpp"
#include "tests/support/NullMemory.hpp"
#include "tests/support/SmiScript.hpp"

using namespace std::chrono_literals;
using test_support::frameReads;
using test_support::Lines;
using test_support::MacBench;
using test_support::MdioScript;
using test_support::NullMemory;
using test_support::reads;
using test_support::RecordingLog;
using test_support::SmiScript;

namespace {

std::string found(char const* productNumber) {
    return std::string("3|SwitchManager::detectMarvellSwitches switch Id 5 product Number found ") +
           productNumber + " \n";
}

/// The switch identifier is register 0x03 of port 0, which is device 0x10.
class SwitchDetectionTest : public testing::Test {
protected:
    bool detect(unsigned int identifier) {
        bench.script.expect({reads(0x10, 0x03, identifier)});
        bool const detected = MarvellSwitch::detectSwitch(bench.application, SmiScript::chipAddress, false);
        bench.script.verify();
        return detected;
    }

    MacBench<SmiScript> bench;
};

TEST(MarvellSwitchName, IsTheDocumentsNameOfTheChip) {
    EXPECT_STREQ(MarvellSwitch::_xmlDescriptionString, "88e6096");
}

TEST_F(SwitchDetectionTest, KnowsEveryRevisionOfThe88E6096) {
    for (unsigned int identifier = 0x0980; identifier <= 0x098F; ++identifier) {
        EXPECT_TRUE(detect(identifier)) << std::hex << identifier;
        EXPECT_EQ(bench.log.take(), Lines{found("98")});
    }
}

TEST_F(SwitchDetectionTest, RefusesEverythingElse) {
    std::pair<unsigned int, char const*> const cases[] = {
        {0x0000, "0"},   {0xFFFF, "fff"}, {0x097F, "97"}, {0x0990, "99"},
        {0x1980, "198"}, {0x8980, "898"}, {0x0098, "9"},  {0x0A10, "a1"},
    };
    for (auto const& expected : cases) {
        EXPECT_FALSE(detect(expected.first)) << std::hex << expected.first;
        EXPECT_EQ(bench.log.take(), Lines{found(expected.second)});
    }
}

TEST_F(SwitchDetectionTest, AFailedReadLeavesTheProductNumberZero) {
    bench.script.expect({reads(0x10, 0x03, 0x0980).failing()});
    EXPECT_FALSE(MarvellSwitch::detectSwitch(bench.application, SmiScript::chipAddress, false));
    EXPECT_EQ(bench.log.take(),
              (Lines{"2|Arm920tMdioAccess::isMacBusy Timeout waiting for Mac Busy Bit\n", found("0")}));
}

TEST_F(SwitchDetectionTest, GivesTheMacBackAsItWas) {
    detect(0x0980);
    EXPECT_EQ(bench.script.getControl(), SmiScript::initialControl);
    EXPECT_EQ(bench.memory.mappingsSoFar(), 1);
    EXPECT_EQ(bench.memory.mappedSections(), 0);
}

TEST_F(SwitchDetectionTest, WithoutHardwareAccessNothingIsReadOrFound) {
    EXPECT_FALSE(MarvellSwitch::detectSwitch(bench.application, SmiScript::chipAddress, true));
    EXPECT_EQ(bench.script.wordAccesses(), 0);
    EXPECT_EQ(bench.log.take(), Lines{found("0")});
}

TEST(SwitchDetection, AnAddressWhereNothingAnswersLooksBusyAndIsNotFound) {
    MacBench<MdioScript> bench;
    bench.script.expect({frameReads(5, 0, 0xFFFF).taking(600ms), frameReads(5, 0, 0xFFFF).taking(600ms)});
    EXPECT_FALSE(MarvellSwitch::detectSwitch(bench.application, 5, false));
    EXPECT_EQ(
        bench.log.take(),
        (Lines{"2|MarvelMultiMdioManagementCommunications::isMarvelSmiBusy Timeout waiting for SMI Busy "
               "Bit :Elapsed 1.000000 : smiTimeout 1.000000\n",
               found("0")}));
}

TEST(SwitchDetection, WithoutAMappedMacNothingIsFound) {
    RecordingLog log;
    NullMemory memory;
    reference_host::HostApplication application(log, memory);
    EXPECT_FALSE(MarvellSwitch::detectSwitch(application, 5, false));
}

} // namespace
