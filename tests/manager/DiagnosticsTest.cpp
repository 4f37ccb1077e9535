#include <algorithm>
#include <sstream>

#include "tests/manager/AssemblyTest.hpp"
#include "tests/manager/BoardRun.hpp"

using test_support::Lines;

namespace {

using DiagnosticsTest = AssemblyTest;

TEST_F(DiagnosticsTest, KnowNoUnknownSwitch) {
    assemble("");
    std::ostringstream out;
    timespec time{1, 2};
    std::string text = "untouched";
    EXPECT_FALSE(manager->collectSwitchPortDiagnostics(7, 0, out, time, text));
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(takeLines(), Lines{});
    EXPECT_EQ(text, "untouched");
    EXPECT_EQ(time.tv_sec, 1);
}

TEST_F(DiagnosticsTest, ReportAnUnknownPort) {
    assemble("");
    std::ostringstream out;
    timespec time{};
    std::string text;
    EXPECT_FALSE(manager->collectSwitchPortDiagnostics(0, 5, out, time, text));
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(takeLines(), Lines{"error|ManagedSwitch::getPort id 5 out of bounds"});
}

TEST_F(DiagnosticsTest, FailWithoutHardware) {
    assemble("");
    std::ostringstream out;
    timespec time{};
    std::string text;
    EXPECT_FALSE(manager->collectSwitchPortDiagnostics(0, 1, out, time, text));
    EXPECT_EQ(out.str(), "");
}

TEST_F(DiagnosticsTest, WriteAPortsCounters) {
    BoardRun run("<switches><switch id='4' switchModel='88e6096'>"
                 "<port id='3' connectedTo='external' portStatus='forwarding'/></switch></switches>");
    ASSERT_TRUE(run.bringUp().populated);
    run.board().getMarvell(4).setCounter(3, 4, 0x1234);
    std::ostringstream out;
    timespec time{};
    std::string text;
    EXPECT_TRUE(run.manager().collectSwitchPortDiagnostics(4, 3, out, time, text));
    std::string const table = out.str();
    EXPECT_THAT(table, testing::HasSubstr("inUnicast\t\t00001234\t"));
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 12);
}

} // namespace
