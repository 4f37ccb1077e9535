#include <array>
#include <map>

#include "tests/support/RecordingSwitch.hpp"
#include "tests/vitesse/SwitchTest.hpp"

using test_support::Accesses;
using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

using Members = std::map<unsigned int const, ManagedSwitchPort*>;

/// The sixteen aggregation masks, each read as `before` and written as told.
Accesses masks(unsigned int before, std::array<unsigned int, 16> const& after) {
    Accesses table;
    for (unsigned int i = 0; i < 16; ++i) {
        table = table + Accesses{reads(2, 0, 0x30 + i, before), writes(2, 0, 0x30 + i, after[i])};
    }
    return table;
}

Accesses member(unsigned int port, unsigned int destinationBefore, unsigned int sourceBefore,
                unsigned int destinationAfter, unsigned int sourceAfter) {
    return {reads(2, 0, 0x40 + port, destinationBefore), reads(2, 0, 0x80 + port, sourceBefore),
            writes(2, 0, 0x40 + port, destinationAfter), writes(2, 0, 0x80 + port, sourceAfter)};
}

class AggregationTest : public SwitchTest {
protected:
    AggregationTest() : SwitchTest(24) {}

    Members ports(std::initializer_list<unsigned int> ids) {
        Members members;
        for (auto const id : ids) {
            members.emplace(id, chip.getPort(id));
        }
        return members;
    }

    bool write(Members const& members) { return chip.writeAggregationGroup(members); }
};

/// A trunk of the ports 1, 2 and 4: mask 0x16.
Accesses const threeMembers =
    masks(0x00FFFFFF,
          {0x00FFFFEB, 0x00FFFFED, 0x00FFFFF9, 0x00FFFFEB, 0x00FFFFED, 0x00FFFFF9, 0x00FFFFEB, 0x00FFFFED,
           0x00FFFFF9, 0x00FFFFEB, 0x00FFFFED, 0x00FFFFF9, 0x00FFFFEB, 0x00FFFFED, 0x00FFFFF9, 0x00FFFFEB}) +
    member(1, 0x00000002, 0x00FFFFFD, 0x00000016, 0x00FFFFE9) +
    member(2, 0x00000004, 0x00FFFFFB, 0x00000016, 0x00FFFFE9) +
    member(4, 0x00000010, 0x00FFFFFF, 0x00000016, 0x00FFFFF9);

TEST_F(AggregationTest, SharesTheMasksOutAmongThreeMembers) {
    expectStrict(threeMembers, [&] { return write(ports({4, 2, 1})); });
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(AggregationTest, ThreeMembersGetSixFiveAndFive) {
    std::map<unsigned int, int> shares;
    for (std::size_t row = 1; row < 32; row += 2) {
        ++shares[threeMembers[row].value & 0x16];
    }
    EXPECT_EQ(shares, (std::map<unsigned int, int>{{0x02, 6}, {0x04, 5}, {0x10, 5}}))
        << "the table of the test itself";
}

TEST_F(AggregationTest, TwoMembersGetEightEach) {
    Accesses table;
    for (unsigned int i = 0; i < 16; i += 2) {
        table = table + Accesses{reads(2, 0, 0x30 + i, 0), writes(2, 0, 0x30 + i, 0x00000001),
                                 reads(2, 0, 0x31 + i, 0), writes(2, 0, 0x31 + i, 0x00800000)};
    }
    expectSuccess(script,
                  table + member(0, 0, 0x00800001, 0x00800001, 0x00000001) +
                      member(23, 0x55, 0x00800001, 0x00800055, 0x00800000),
                  [&] {
                      return write(ports({0, 23}));
                  });
}

TEST_F(AggregationTest, OneMemberGetsAll) {
    std::array<unsigned int, 16> all{};
    all.fill(0xFF000008);
    expectSuccess(script, masks(0xFF000000, all) + member(3, 0, 0x00FFFFFF, 0x00000008, 0x00FFFFFF),
                  [&] { return write(ports({3})); });
}

TEST_F(AggregationTest, AnEmptyTrunkChangesNoBit) {
    std::array<unsigned int, 16> same{};
    same.fill(0xA5A5A5A5);
    expectStrict(masks(0xA5A5A5A5, same), [&] { return write({}); });
}

TEST_F(AggregationTest, MembersAreToldByTheirOwnNumber) {
    std::array<unsigned int, 16> all{};
    all.fill(0x00000008);
    Members members;
    members.emplace(9, chip.getPort(3));
    Accesses const table = masks(0, all);
    script.expect(table + member(3, 0, 0, 0x00000008, 0));
    EXPECT_TRUE(write(members));
}

TEST_F(AggregationTest, AMemberWithoutAPortObjectIsLeftOut) {
    std::array<unsigned int, 16> all{};
    all.fill(0x00000008);
    Members members = ports({3});
    members.emplace(2, nullptr);
    members.emplace(0xFFFFFFFF, nullptr);
    expectSuccess(script, masks(0x00000008, all) + member(3, 0x00000008, 0x00FFFFF7, 0x00000008, 0x00FFFFF7),
                  [&] { return write(members); });
}

TEST_F(AggregationTest, AMemberBeyondTheMasksIsLeftOut) {
    std::array<unsigned int, 16> all{};
    all.fill(0x00000008);
    test_support::CallLog calls;
    test_support::RecordingSwitch other(bench.application, 0, calls);
    Members members = ports({3});
    members.emplace(32, &other.addPort(32));
    expectSuccess(script, masks(0x00000008, all) + member(3, 0x00000008, 0x00FFFFF7, 0x00000008, 0x00FFFFF7),
                  [&] { return write(members); });
}

TEST_F(AggregationTest, FailedBusAccessesOnTheirOwnEndNothing) {
    Accesses table = threeMembers;
    for (auto& access : table) {
        access = access.failing();
        if (access.isRead()) {
            access.value = 0;
        }
    }
    unsigned int const bits[] = {0x02, 0x04, 0x10};
    for (unsigned int i = 0; i < 16; ++i) {
        table[2 * i + 1].value = bits[i % 3];
    }
    for (std::size_t row = 34; row < table.size(); row += 4) {
        table[row].value = 0x16;
        table[row + 1].value = 0;
    }
    script.expect(table);
    EXPECT_TRUE(write(ports({1, 2, 4})));
    EXPECT_EQ(bench.log.take().size(), table.size());
}

} // namespace
