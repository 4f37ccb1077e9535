#include "tests/marvell/SwitchTest.hpp"

using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

std::string const macTimeout = "2|Arm920tMdioAccess::isMacBusy Timeout waiting for Mac Busy Bit\n";

/// The age time is in bits 11..4 of Global 1 (device 0x1B) register 0x0A, in steps of 15 seconds.
class AgeTimeTest : public SwitchTest {
protected:
    AgeTimeTest() : SwitchTest(1) {}
};

struct AgeTimeCase {
    unsigned short requested;
    unsigned int written;
    char const* setting;
    char const* seconds;
    char const* warning = nullptr;
};

TEST_F(AgeTimeTest, RoundsToStepsOfFifteenSeconds) {
    char const* const minimum = "minimum is 15 seconds. Setting to 15.\n";
    char const* const maximum = "maximum is 3825 seconds. Setting to 3825.\n";
    AgeTimeCase const cases[] = {
        {0, 0x0000, "0 seconds (register value 0x00)", "0"},
        {1, 0x0010, "15 seconds (register value 0x01)", "15", minimum},
        {14, 0x0010, "15 seconds (register value 0x01)", "15", minimum},
        {15, 0x0010, "15 seconds (register value 0x01)", "15"},
        {22, 0x0010, "15 seconds (register value 0x01)", "15"},
        {23, 0x0020, "30 seconds (register value 0x02)", "30"},
        {37, 0x0020, "30 seconds (register value 0x02)", "30"},
        {38, 0x0030, "45 seconds (register value 0x03)", "45"},
        {300, 0x0140, "300 seconds (register value 0x14)", "300"},
        {3817, 0x0FE0, "3810 seconds (register value 0xfe)", "3810"},
        {3818, 0x0FF0, "3825 seconds (register value 0xff)", "3825"},
        {3825, 0x0FF0, "3825 seconds (register value 0xff)", "3825"},
        {3826, 0x0FF0, "3825 seconds (register value 0xff)", "3825", maximum},
        {65535, 0x0FF0, "3825 seconds (register value 0xff)", "3825", maximum},
    };
    for (auto const& expected : cases) {
        SCOPED_TRACE(expected.requested);
        script.expect({reads(0x1B, 0x0A, 0x0000), writes(0x1B, 0x0A, expected.written)});
        EXPECT_TRUE(chip.setATUAgeTime(expected.requested));
        script.verify();
        Lines lines;
        if (expected.warning != nullptr) {
            lines.push_back("warning|MarvellSwitch::setATUAgeTime requested " +
                            std::to_string(expected.requested) + " seconds, " + expected.warning);
        }
        lines.push_back(std::string("2|MarvellSwitch::setATUAgeTime setting age time to ") +
                        expected.setting + "\n");
        lines.push_back(std::string("info|MarvellSwitch::setATUAgeTime successfully set age time to ") +
                        expected.seconds + " seconds\n");
        EXPECT_EQ(bench.log.take(), lines);
    }
}

TEST_F(AgeTimeTest, KeepsTheOtherBits) {
    script.expect({reads(0x1B, 0x0A, 0x8123), writes(0x1B, 0x0A, 0x8043)});
    EXPECT_TRUE(chip.setATUAgeTime(60));
    script.expect({reads(0x1B, 0x0A, 0xFFFF), writes(0x1B, 0x0A, 0xF00F)});
    EXPECT_TRUE(chip.setATUAgeTime(0));
    script.expect({reads(0x1B, 0x0A, 0x0000), writes(0x1B, 0x0A, 0x0FF0)});
    EXPECT_TRUE(chip.setATUAgeTime(3825));
}

TEST_F(AgeTimeTest, ReportsARegisterThatCannotBeRead) {
    script.expect({reads(0x1B, 0x0A, 0).failing()});
    EXPECT_FALSE(chip.setATUAgeTime(60));
    EXPECT_EQ(
        bench.log.take(),
        (Lines{"2|MarvellSwitch::setATUAgeTime setting age time to 60 seconds (register value 0x04)\n",
               macTimeout, "error|MarvellSwitch::setATUAgeTime failed to read ATU Control register\n"}));
}

TEST_F(AgeTimeTest, ReportsARegisterThatCannotBeWritten) {
    script.expect({reads(0x1B, 0x0A, 0x8123), writes(0x1B, 0x0A, 0x8043).failing()});
    EXPECT_FALSE(chip.setATUAgeTime(60));
    EXPECT_EQ(
        bench.log.take(),
        (Lines{"2|MarvellSwitch::setATUAgeTime setting age time to 60 seconds (register value 0x04)\n",
               macTimeout, "error|MarvellSwitch::setATUAgeTime failed to write ATU Control register\n"}));
}

TEST_F(AgeTimeTest, ReadsTheAgeTimeBack) {
    struct {
        unsigned int content;
        unsigned short seconds;
        char const* text;
    } const cases[] = {
        {0x0000, 0, "0 seconds (register value 0x00)"},
        {0xF00F, 0, "0 seconds (register value 0x00)"},
        {0x0010, 15, "15 seconds (register value 0x01)"},
        {0x8143, 300, "300 seconds (register value 0x14)"},
        {0x0FF0, 3825, "3825 seconds (register value 0xff)"},
        {0xFFFF, 3825, "3825 seconds (register value 0xff)"},
    };
    for (auto const& expected : cases) {
        script.expect({reads(0x1B, 0x0A, expected.content)});
        EXPECT_EQ(chip.getATUAgeTime(), (std::pair<bool, unsigned short>(true, expected.seconds)));
        EXPECT_EQ(bench.log.take(), Lines{std::string("2|MarvellSwitch::getATUAgeTime read age time as ") +
                                          expected.text + "\n"});
    }
}

TEST_F(AgeTimeTest, ReportsAnAgeTimeThatCannotBeReadBack) {
    script.expect({reads(0x1B, 0x0A, 0x0FF0).failing()});
    EXPECT_EQ(chip.getATUAgeTime(), (std::pair<bool, unsigned short>(false, 0)));
    EXPECT_EQ(
        bench.log.take(),
        (Lines{macTimeout, "error|MarvellSwitch::getATUAgeTime failed to read ATU Control register\n"}));
}

TEST(AgeTimeWithoutHardware, Fails) {
    test_support::MacBench<test_support::SmiScript> bench;
    MarvellSwitch chip(bench.application, 5, 1, true);
    EXPECT_FALSE(chip.setATUAgeTime(60));
    EXPECT_FALSE(chip.getATUAgeTime().first);
    EXPECT_EQ(bench.log.take("error"),
              (Lines{"error|MarvellSwitch::setATUAgeTime failed to read ATU Control register\n",
                     "error|MarvellSwitch::getATUAgeTime failed to read ATU Control register\n"}));
    EXPECT_EQ(bench.script.wordAccesses(), 0);
}

} // namespace
