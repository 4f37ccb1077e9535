#include "tests/vitesse/MulticastTables.hpp"
#include "tests/vitesse/SwitchTest.hpp"

using namespace multicast;
using test_support::Lines;

namespace {

using GroupMembers = std::map<unsigned int, ManagedSwitchPort*>;

std::string const group = "239.129.1.2";

/// The group is found, and its members are read.
Accesses readGroup(unsigned int low, unsigned int high) {
    return foundFirst(low) + Accesses{reads(2, 0, 0x07, low), reads(2, 0, 0x06, high)};
}

class PortMulticastTest : public SwitchTest {
protected:
    PortMulticastTest() : SwitchTest(24) {}

    bool add(unsigned int id) { return port(id).addPortToMulticastGroup(group, 10); }
    bool remove(unsigned int id) { return port(id).removePortFromMulticastGroup(group, 10); }
};

TEST_F(PortMulticastTest, TheFirstMemberMakesTheGroup) {
    expectSuccess(script, emptyRow() + foundEmptyRow() + writeEntry(0x08010102, 0x000A0000),
                  [&] { return add(3); });
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(PortMulticastTest, MoreMembersJoinIt) {
    expectSuccess(script,
                  readGroup(0x08010102, 0x000A0000) + foundFirst() + writeEntry(0x08010102, 0x000A8000),
                  [&] { return add(23); });
    expectSuccess(script,
                  readGroup(0x08010102, 0x000A8000) + foundFirst() + writeEntry(0x09010102, 0x000A8000),
                  [&] { return add(0); });
}

TEST_F(PortMulticastTest, JoiningASecondTimeChangesNothing) {
    expectSuccess(script,
                  readGroup(0x08010102, 0x000A8000) + foundFirst() + writeEntry(0x08010102, 0x000A8000),
                  [&] { return add(3); });
}

TEST_F(PortMulticastTest, JoiningReturnsWhatTheWriteGives) {
    Accesses table = emptyRow() + foundEmptyRow() + writeEntry(0x08010102, 0x000A0000);
    table.back().value = 0;
    script.expect(table);
    EXPECT_FALSE(add(3));
}

TEST_F(PortMulticastTest, AMemberLeavesTheOthers) {
    expectSuccess(script,
                  readGroup(0x09010102, 0x000A8000) + foundFirst() + writeEntry(0x01010102, 0x000A8000),
                  [&] { return remove(3); });
}

TEST_F(PortMulticastTest, TheLastMemberLeavesAnEmptyGroup) {
    expectSuccess(script,
                  readGroup(0x08010102, 0x000A0000) + foundFirst() + writeEntry(0x00010102, 0x000A0000),
                  [&] { return remove(3); });
}

TEST_F(PortMulticastTest, APortThatIsNoMemberLeavesTheGroupAlone) {
    expectSuccess(script, readGroup(0x09010102, 0x000A8000), [&] { return remove(4); });
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(PortMulticastTest, AGroupThatIsNotThereCannotBeLeft) {
    script.expect(emptyRow());
    EXPECT_FALSE(remove(3));
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(PortMulticastTest, LeavingReturnsWhatTheWriteGives) {
    Accesses table = readGroup(0x08010102, 0x000A0000) + foundFirst() + writeEntry(0x00010102, 0x000A0000);
    table.back().value = 0;
    script.expect(table);
    EXPECT_FALSE(remove(3));
}

TEST_F(PortMulticastTest, AGroupWhoseDataCannotBeReadStartsEmptyOrCannotBeLeft) {
    ReportedFailures const reported(script);
    Accesses unreadable = readGroup(0x09010102, 0x000A0000);
    unreadable.back() = unreadable.back().failing();
    expectSuccess(script, unreadable + foundFirst() + writeEntry(0x08010102, 0x000A0000),
                  [&] { return add(3); });
    script.expect(unreadable);
    EXPECT_FALSE(remove(3));
}

/// A switch whose groups are overridden.
class SwitchWithOwnGroups : public VitesseSwitch {
public:
    using VitesseSwitch::VitesseSwitch;

    bool readMulticastGroup(std::string ipAddress, unsigned short vid, GroupMembers& ports) override {
        read.push_back(ipAddress + " " + std::to_string(vid) + " " + std::to_string(ports.size()));
        ports.insert(members.begin(), members.end());
        return known;
    }

    bool writeMulticastGroup(std::string ipAddress, unsigned short vid, GroupMembers ports) override {
        written.push_back(ipAddress + " " + std::to_string(vid));
        members = ports;
        return true;
    }

    std::vector<std::string> read;
    std::vector<std::string> written;
    GroupMembers members;
    bool known = true;
};

class PortMulticastByOverrideTest : public SwitchTestOf<SwitchWithOwnGroups> {
protected:
    PortMulticastByOverrideTest() : SwitchTestOf(4) { script.expect({}); }
};

TEST_F(PortMulticastByOverrideTest, GroupsAreReachedThroughTheOverrides) {
    chip.known = false;
    EXPECT_TRUE(port(3).addPortToMulticastGroup(group, 10));
    EXPECT_THAT(chip.read, testing::ElementsAre("239.129.1.2 10 0"));
    EXPECT_THAT(chip.written, testing::ElementsAre("239.129.1.2 10"));
    EXPECT_EQ(chip.members, (GroupMembers{{3, &port(3)}}));
    EXPECT_FALSE(port(3).removePortFromMulticastGroup(group, 10));
    EXPECT_EQ(chip.written.size(), 1U);
    chip.known = true;
    EXPECT_TRUE(port(2).removePortFromMulticastGroup(group, 10)) << "no member";
    EXPECT_EQ(chip.written.size(), 1U);
    EXPECT_TRUE(port(3).removePortFromMulticastGroup(group, 10));
    EXPECT_EQ(chip.written.size(), 2U);
    EXPECT_TRUE(chip.members.empty());
}

TEST_F(PortMulticastByOverrideTest, MembersAreToldByTheirOwnNumber) {
    chip.members = {{1, &port(2)}, {2, nullptr}, {3, &port(1)}};
    EXPECT_TRUE(port(1).removePortFromMulticastGroup(group, 10));
    EXPECT_EQ(chip.members, (GroupMembers{{1, &port(2)}, {2, nullptr}}));
    EXPECT_TRUE(port(3).removePortFromMulticastGroup(group, 10)) << "no member";
    EXPECT_EQ(chip.written.size(), 1U);
}

} // namespace
