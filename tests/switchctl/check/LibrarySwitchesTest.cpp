// What the checks say about switches and age times, asked of the library itself.

#include <gtest/gtest.h>

#include "model/ManagedSwitch.hpp"
#include "model/TrunkGroup.hpp"
#include "tests/switchctl/check/Documents.hpp"
#include "tests/switchctl/check/LibraryRun.hpp"

namespace {

std::string ageing(std::string const& seconds) {
    return boardOf("<switch id='0' switchModel='88e6096' atuAgeTime='" + seconds + "'>" + ports(0, 10) +
                   "</switch>");
}

TEST(LibrarySwitchesTest, SharedIdsEndStartUp) {
    LibraryRun run(boardOf(marvell("1") + marvell("01")));
    EXPECT_FALSE(run.isUp());
    EXPECT_TRUE(run.says("Roting xml or other catastrophic error"));
}

TEST(LibrarySwitchesTest, TheNumberOfAnotherModelEndsStartUp) {
    LibraryRun run(boardOf(marvell("1") + vitesse("65537")), LibraryRun::Chips::none);
    EXPECT_FALSE(run.isUp());
    EXPECT_TRUE(run.says("Duplicate switch response"));
}

TEST(LibrarySwitchesTest, TheNumberOfTheSameModelIsIgnored) {
    LibraryRun run(boardOf(marvell("1") + marvell("1x")));
    EXPECT_TRUE(run.isUp());
    EXPECT_EQ(run.getManager().getManagedSwitchesCount(), 1U);
}

TEST(LibrarySwitchesTest, NumbersThatDoNotFitBecomeTheNearest) {
    LibraryRun run(boardOf("<switch id='4294967296' switchModel='vsc7390'/>" +
                               marvell("0", port("4294967297") + "<trunk id='-4294967297'/>"),
                           tagBased("100000005", member("0", "1"))),
                   LibraryRun::Chips::none);
    ASSERT_NE(run.getManager().getManagedSwitch(65535), nullptr);
    ManagedSwitch& marvell0 = *run.getManager().getManagedSwitch(0);
    EXPECT_EQ(marvell0.getPorts().count(2147483647), 1U);
    EXPECT_EQ(marvell0.getTrunkGroup(0)->getId(), 0x80000000U);
    EXPECT_TRUE(run.says("Adding TagBasedVlan 0xffffffff"));
}

TEST(LibrarySwitchesTest, APrefixedIdComesUpWithoutPorts) {
    LibraryRun run(boardOf(marvell("0x1")));
    ASSERT_EQ(run.getManager().getManagedSwitchesCount(), 1U);
    EXPECT_TRUE(run.getManager().getManagedSwitch(0)->getPorts().empty());
}

TEST(LibrarySwitchesTest, AnUnknownModelIsSkippedInSilenceAndAnAbsentOneReported) {
    LibraryRun run(boardOf("<switch id='4' switchModel='88E6096'/><switch id='6'/>"));
    EXPECT_EQ(run.getManager().getManagedSwitchesCount(), 0U);
    EXPECT_TRUE(run.says("switch 6 has no attribute switchModel"));
    EXPECT_FALSE(run.says("switch 4"));
}

TEST(LibrarySwitchesTest, ASwitchElsewhereIsNotLookedFor) {
    LibraryRun run("<board>" + marvell("0") + "</board>");
    EXPECT_EQ(run.getManager().getManagedSwitchesCount(), 0U);
}

TEST(LibrarySwitchesTest, AnIdOfMoreThanFiveBitsIsNotFound) {
    LibraryRun run(boardOf(marvell("32")));
    EXPECT_EQ(run.getManager().getManagedSwitchesCount(), 0U);
}

TEST(LibrarySwitchesTest, TwoVsc7390AreOneChip) {
    LibraryRun run(boardOf(vitesse("1") + "<switch id='2' switchModel='vsc7390'/>"));
    EXPECT_EQ(run.getManager().getManagedSwitchesCount(), 2U);
    EXPECT_EQ(run.getBoard().getSwitchIds().size(), 1U);
}

TEST(LibrarySwitchesTest, AgeTimesAreRoundedAndCut) {
    for (auto const& [written, kept] : std::vector<std::pair<std::string, unsigned>>{{"40", 45},
                                                                                     {"37", 30},
                                                                                     {"14", 15},
                                                                                     {"3826", 3825},
                                                                                     {"70000", 3825},
                                                                                     {"65551", 15},
                                                                                     {"long", 0},
                                                                                     {"300s", 300},
                                                                                     {"-1", 300}}) {
        LibraryRun run(ageing(written));
        unsigned const chipsOwn = LibraryRun(ageing("65535")).getBoard().getMarvell(0).getAgeSeconds();
        EXPECT_EQ(run.getBoard().getMarvell(0).getAgeSeconds(), written == "-1" ? chipsOwn : kept) << written;
    }
}

TEST(LibrarySwitchesTest, AgeTimesThatTheChipCannotCountAreWarnedAbout) {
    EXPECT_TRUE(LibraryRun(ageing("14")).says("minimum is 15 seconds"));
    EXPECT_TRUE(LibraryRun(ageing("3826")).says("maximum is 3825 seconds"));
    EXPECT_FALSE(LibraryRun(ageing("3825")).says("maximum"));
}

} // namespace
