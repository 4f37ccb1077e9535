#include "tests/faults/SweepReport.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

using namespace fault_test;

namespace {

SweepReport smallReport(Outcome outcome) {
    SweepReport report{"a board", "bus accesses", 12, 5, {}};
    RunResult run;
    run.accesses = 7;
    run.nanoseconds = 2'500'000'000;
    report.table["all zeros"].add({outcome, outcome == Outcome::wrong ? "the reason" : ""}, run);
    return report;
}

std::string printed(SweepReport const& report) {
    std::ostringstream text;
    print(text, {report});
    return text.str();
}

TEST(SweepReportTest, ComesBackFromItsJson) {
    SweepReport const report = smallReport(Outcome::wrong);
    auto const reports = fromJson(asJson({report}));
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(printed(reports[0]), printed(report));
    EXPECT_EQ(reports[0].table.at("all zeros").mostAccesses, 7U);
}

TEST(SweepReportTest, NamesWhatWentWrong) {
    EXPECT_TRUE(isAnythingWrong({smallReport(Outcome::wrong)}));
    EXPECT_FALSE(isAnythingWrong({smallReport(Outcome::noticed)}));
    EXPECT_NE(printed(smallReport(Outcome::wrong)).find("the reason"), std::string::npos);
    EXPECT_NE(printed(smallReport(Outcome::noticed)).find("a board: 12 bus accesses, one in 5 hit"),
              std::string::npos);
}

TEST(SweepReportTest, RefusesOtherTexts) {
    EXPECT_THROW(fromJson("no JSON"), std::runtime_error);
    EXPECT_THROW(fromJson("{}"), std::runtime_error);
    EXPECT_THROW(fromJson("{\"sweeps\": [{}]}"), std::runtime_error);
}

} // namespace
