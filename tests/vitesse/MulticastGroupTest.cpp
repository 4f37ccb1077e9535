#include <chrono>

#include "model/TrunkGroup.hpp"
#include "tests/support/RecordingSwitch.hpp"
#include "tests/vitesse/MulticastTables.hpp"
#include "tests/vitesse/SwitchTest.hpp"

using namespace multicast;
using namespace std::chrono_literals;
using test_support::Lines;

namespace {

using GroupMembers = std::map<unsigned int, ManagedSwitchPort*>;

std::string const group = "239.129.1.2";

class MulticastGroupTest : public SwitchTest {
protected:
    MulticastGroupTest() : SwitchTest(24) {}

    GroupMembers ports(std::initializer_list<unsigned int> ids) {
        GroupMembers members;
        for (auto const id : ids) {
            members[id] = chip.getPort(id);
        }
        return members;
    }

    bool write(GroupMembers const& members) { return chip.writeMulticastGroup(group, 10, members); }
};

TEST_F(MulticastGroupTest, WritesANewGroupToTheFirstFreeBucket) {
    expectSuccess(script, foundEmptyRow() + writeEntry(0x08010102, 0x000A0200), [&] {
        return write(ports({3, 17}));
    });
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(MulticastGroupTest, OverwritesAGroupThatIsThere) {
    expectSuccess(script,
                  bucketOf(0, otherGroup) + bucketOf(1, thisGroup) + select(1) +
                      writeEntry(0xFF010102, 0x000AFFFF),
                  [&] {
                      return write(ports({0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11,
                                          12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23}));
                  });
}

TEST_F(MulticastGroupTest, SpreadsTheMembersOverThreeBytes) {
    struct {
        unsigned int port;
        unsigned int low;
        unsigned int high;
    } const cases[] = {{0, 0x01010102, 0x000A0000},  {7, 0x80010102, 0x000A0000},
                       {8, 0x00010102, 0x000A0001},  {15, 0x00010102, 0x000A0080},
                       {16, 0x00010102, 0x000A0100}, {23, 0x00010102, 0x000A8000}};
    for (auto const& expected : cases) {
        expectSuccess(script, foundFirst() + writeEntry(expected.low, expected.high),
                      [&] { return write(ports({expected.port})); });
    }
}

TEST_F(MulticastGroupTest, WithoutMembersTheEntryStays) {
    expectSuccess(script, foundFirst() + writeEntry(0x00010102, 0x000A0000), [&] { return write({}); });
}

TEST_F(MulticastGroupTest, TheWholeVlanIdIsWritten) {
    Accesses table = writeEntry(0x00010102, 0xFFCA0000);
    expectSuccess(script, foundFirst() + table,
                  [&] { return chip.writeMulticastGroup(group, 0xFFCA, GroupMembers{}); });
}

TEST_F(MulticastGroupTest, InAFullRowTheLastBucketIsOverwritten) {
    expectSuccess(script,
                  rowOfOthers() + select(0) + readEntry(true) + select(1) + readEntry(true) + select(2) +
                      readEntry(true) + select(3) + readEntry(true) + writeEntry(0x08010102, 0x000A0000),
                  [&] { return write(ports({3})); });
}

TEST_F(MulticastGroupTest, MembersAreToldByTheirOwnNumber) {
    expectSuccess(script, foundFirst() + writeEntry(0x08010102, 0x000A0000), [&] {
        return write({{9, chip.getPort(3)}});
    });
}

TEST_F(MulticastGroupTest, AMemberWithoutAPortObjectKeepsItsBit) {
    expectSuccess(script, foundFirst() + writeEntry(0x08010102, 0x000A0200), [&] {
        return write({{3, chip.getPort(3)}, {17, nullptr}});
    });
}

TEST_F(MulticastGroupTest, PortsBeyondTheMaskContributeNothing) {
    test_support::CallLog calls;
    test_support::RecordingSwitch elsewhere(bench.application, 6, calls);
    GroupMembers members{{3, chip.getPort(3)}};
    for (unsigned int const id : {32U, 35U, 64U, 256U, 0xFFFFFFFFU}) {
        members[id] = &elsewhere.addPort(id);
    }
    members[40] = nullptr;
    expectSuccess(script, foundFirst() + writeEntry(0x08010102, 0x000A0000), [&] { return write(members); });
}

TEST_F(MulticastGroupTest, TheEntryMustReadBackValid) {
    Accesses table = foundFirst() + writeEntry(0x08010102, 0x000A0000);
    table.back().value = 0xFFFFFBF8;
    script.expect(table);
    EXPECT_FALSE(write(ports({3})));
}

TEST_F(MulticastGroupTest, AFailedCommandEndsTheWrite) {
    ReportedFailures const reported(script);
    Accesses const table = foundFirst() + writeEntry(0x08010102, 0x000A0000);
    for (std::size_t const row : {table.size() - 3, table.size() - 1}) {
        Accesses cut(table.begin(), table.begin() + static_cast<Accesses::difference_type>(row) + 1);
        cut.back() = cut.back().failing();
        script.expect(cut);
        EXPECT_FALSE(write(ports({3})));
        script.verify();
    }
}

TEST_F(MulticastGroupTest, FailedDataWritesAndAFailedSearchDoNot) {
    ReportedFailures const reported(script);
    Accesses entry = writeEntry(0x08010102, 0x000A0000);
    entry[0] = entry[0].failing();
    entry[1] = entry[1].failing();
    expectSuccess(
        script,
        Accesses{writes(2, 0, 0xC0, indexWord[0]).failing(), writes(2, 0, 0xC0, indexWord[0]).failing()} +
            entry,
        [&] { return write(ports({3})); });
}

TEST_F(MulticastGroupTest, ATableThatStaysBusyEndsTheWrite) {
    std::string const timeout = "1|VitesseSwitch::waitForMacTableReady                          "
                                "Timeout waiting for Mac Table to be ready\n";
    Accesses const entry = writeEntry(0x08010102, 0x000A0000);
    Accesses const busyForASecond{reads(2, 0, 0xB0, 7).taking(1s)};
    script.expect(foundFirst() + Accesses{entry[0], entry[1]} + busyForASecond);
    EXPECT_FALSE(write(ports({3})));
    EXPECT_EQ(bench.log.take(), (Lines{timeout}));
    script.expect(foundFirst() + Accesses{entry[0], entry[1], entry[2], entry[3]} + busyForASecond);
    EXPECT_FALSE(write(ports({3})));
    EXPECT_EQ(bench.log.take(), (Lines{timeout}));
}

TEST_F(MulticastGroupTest, ReadsTheMembersOfAGroup) {
    GroupMembers members;
    expectSuccess(script,
                  foundFirst(0x81010102) +
                      Accesses{reads(2, 0, 0x07, 0x81010102), reads(2, 0, 0x06, 0x000A8281)},
                  [&] { return chip.readMulticastGroup(group, 10, members); });
    EXPECT_EQ(members, ports({0, 7, 8, 15, 17, 23}));
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(MulticastGroupTest, AddsTheMembersToTheMap) {
    GroupMembers members = ports({5});
    expectSuccess(script,
                  foundFirst() + Accesses{reads(2, 0, 0x07, 0x08010102), reads(2, 0, 0x06, 0x000A0000)},
                  [&] { return chip.readMulticastGroup(group, 10, members); });
    EXPECT_EQ(members, ports({3, 5}));
}

TEST_F(MulticastGroupTest, AGroupThatIsNotThereCannotBeRead) {
    GroupMembers members;
    script.expect(emptyRow());
    EXPECT_FALSE(chip.readMulticastGroup(group, 10, members));
    EXPECT_TRUE(members.empty());
}

TEST_F(MulticastGroupTest, ReadingEndsAtEachFailure) {
    ReportedFailures const reported(script);
    Accesses const table =
        foundFirst() + Accesses{reads(2, 0, 0x07, 0x08010102), reads(2, 0, 0x06, 0x000A0000)};
    GroupMembers members;
    expectEachFailureStops(script, table, [&] { return chip.readMulticastGroup(group, 10, members); },
                           {1, 2, 3, 4});
    EXPECT_TRUE(members.empty());
}

class SmallSwitchMulticastTest : public SwitchTest {
protected:
    SmallSwitchMulticastTest() : SwitchTest(2) {}
};

TEST_F(SmallSwitchMulticastTest, BitsBeyondTheNumberOfPortsAreNotRead) {
    GroupMembers members;
    expectSuccess(script,
                  foundFirst() + Accesses{reads(2, 0, 0x07, 0xFE010102), reads(2, 0, 0x06, 0x000AFFFF)},
                  [&] { return chip.readMulticastGroup(group, 10, members); });
    EXPECT_EQ(members, (GroupMembers{{1, chip.getPort(1)}}));
}

TEST_F(SmallSwitchMulticastTest, AMemberThatTheSwitchDoesNotHaveIsReadAndKept) {
    std::pair<unsigned int, TrunkGroup*> trunk(0, new TrunkGroup(1));
    chip.insertTrunkGroup(trunk);
    ASSERT_EQ(chip.getNumberOfPorts(), 3) << "two ports and a trunk group";
    GroupMembers members;
    Accesses const data{reads(2, 0, 0x07, 0x05010102), reads(2, 0, 0x06, 0x000A0000)};
    expectSuccess(script, foundFirst() + data, [&] { return chip.readMulticastGroup(group, 10, members); });
    EXPECT_EQ(members, (GroupMembers{{0, chip.getPort(0)}, {2, nullptr}}));
    EXPECT_EQ(bench.log.take(), (Lines{"error|ManagedSwitch::getPort id 2 out of bounds"}));
    expectSuccess(script, foundFirst() + data + foundFirst() + writeEntry(0x07010102, 0x000A0000),
                  [&] { return port(1).addPortToMulticastGroup(group, 10); });
}

} // namespace
