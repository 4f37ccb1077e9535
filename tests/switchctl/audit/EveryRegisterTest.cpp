// Every register that is compared, written or not, disturbed in one field.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "AuditBench.hpp"
#include "board/audit/ChipScope.hpp"

using board::ChipScope;
using chips::RegisterLocation;
using simulation::ChipTestSide;

namespace {

/// Turns the lowest bit of a compared field over; returns how the line for it begins.
std::string disturb(ChipTestSide& chip, std::string const& name, chips::RegisterLocation const& location) {
    auto const& fields = location.description->getFields();
    auto const field = std::find_if(fields.begin(), fields.end(), [&](auto const& candidate) {
        return location.description->keeps(candidate);
    });
    if (field == fields.end()) {
        return "";
    }
    unsigned const address = location.address.address;
    std::uint32_t const value = chip.peek(location.unit, address);
    chip.poke(location.unit, address, value ^ 1U << field->low);
    return name + "  " + location.unit + "  " + location.name + "  " + field->name + "  expected ";
}

class EveryRegisterTest : public testing::TestWithParam<char const*> {};

} // namespace

TEST_P(EveryRegisterTest, IsReportedWhenItDeviatesAndNothingElseIs) {
    AuditBench bench(GetParam());
    std::vector<std::string> expected;
    for (unsigned const id : bench.getBoard().getSwitchIds()) {
        ChipScope const scope(bench.getBringUp(), id, ChipScope::Extent::everything);
        for (ChipScope::Item const& item : scope.getRegisters()) {
            std::string const line = disturb(bench.getBoard().getChip(id), scope.getChip(), item.location);
            if (!line.empty()) {
                expected.push_back(line);
            }
        }
    }
    EXPECT_GT(expected.size(), 10U);
    std::vector<std::string> const found = bench.audit();
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t index = 0; index < found.size(); ++index) {
        EXPECT_THAT(found[index], testing::StartsWith(expected[index]));
    }
}

// A register that is dumped is compared or counted among those that are not: none is lost in between.
TEST_P(EveryRegisterTest, IsComparedOrCountedAsLeftOut) {
    AuditBench bench(GetParam());
    for (unsigned const id : bench.getBoard().getSwitchIds()) {
        for (ChipScope::Extent const extent : {ChipScope::Extent::everything, ChipScope::Extent::written}) {
            ChipScope const scope(bench.getBringUp(), id, extent);
            std::size_t accounted = scope.getRegisters().size();
            for (board::LeftOut::Group const& group : scope.getLeftOut().getGroups()) {
                // Tables have no registers of their own, and parts of a register come on top of it.
                if (group.reason != "address tables" &&
                    group.reason != "bits that only show something or clear themselves" &&
                    group.reason != "registers without a name that start-up writes") {
                    accounted += group.count;
                }
            }
            EXPECT_EQ(accounted, chips::ChipCatalogue(scope.getModel()).getAll().size());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Examples, EveryRegisterTest,
                         testing::Values("home-gateway", "video-rooms", "trap-minimal", "trap-access-point",
                                         "trap-three-switches", "trap-video-switch", "trap-mixed"));
