// What the checks say about trunks, asked of the library itself.

#include <gtest/gtest.h>

#include "model/ManagedSwitch.hpp"
#include "model/TrunkGroup.hpp"
#include "tests/switchctl/check/Documents.hpp"
#include "tests/switchctl/check/LibraryRun.hpp"

namespace {

std::set<unsigned int> membersOf(LibraryRun& run, unsigned int switchId) {
    std::set<unsigned int> members;
    for (auto const& entry :
         run.getManager().getManagedSwitch(switchId)->getTrunkGroup(0)->getTrunkedPorts()) {
        members.insert(entry.first);
    }
    return members;
}

using Ports = std::set<unsigned int>;

TEST(LibraryTrunksTest, AnAbsentIdIsMinusOne) {
    LibraryRun run(boardOf(vitesse("3", "<trunk><port id='1'/></trunk>")));
    EXPECT_TRUE(run.says("Turnk Id is not a valid integer value"));
    EXPECT_EQ(run.getManager().getManagedSwitch(3)->getTrunkGroup(0)->getId(), ~0U);
    EXPECT_EQ(membersOf(run, 3), Ports{});
}

TEST(LibraryTrunksTest, ATextIsZeroAndFindsNothing) {
    LibraryRun run(boardOf(vitesse("3", "<trunk id='up'><port id='1'/></trunk>")));
    EXPECT_EQ(run.getManager().getManagedSwitch(3)->getTrunkGroup(0)->getId(), 0U);
    EXPECT_EQ(membersOf(run, 3), Ports{});
}

TEST(LibraryTrunksTest, EveryTrunkOfTheIdGivesItsPorts) {
    LibraryRun run(boardOf(vitesse("3", "<trunk id='1'><port id='1'/></trunk>") +
                               marvell("0", "<trunk id='1'><port id='2'/></trunk>"),
                           "<trunk id='1'><port id='3'/></trunk>"));
    EXPECT_EQ(membersOf(run, 3), (Ports{1, 2, 3}));
    EXPECT_EQ(membersOf(run, 0), (Ports{1, 2, 3}));
}

TEST(LibraryTrunksTest, An88E6096HasNoTrunks) {
    LibraryRun run(boardOf(marvell("0", "<trunk id='1'><port id='1'/><port id='2'/></trunk>")));
    EXPECT_TRUE(run.says("writeAggregationGroup Unimplemented Function in Marvell"));
}

TEST(LibraryTrunksTest, AnUnknownPortIsLeftOut) {
    LibraryRun run(
        boardOf(vitesse("3", "<trunk id='1'><port id='1'/><port id='24'/><port id='2'/></trunk>")));
    EXPECT_TRUE(run.says("ManagedSwitch::getPort id 24 out of bounds"));
    for (unsigned mask = 0x30; mask < 0x40; ++mask) {
        std::uint32_t const members = run.getBoard().getVitesse(3).peek("analyser", mask) & 0x6U;
        EXPECT_TRUE(members == 0x2U || members == 0x4U);
    }
}

} // namespace
