// What the checks say about multicast groups, asked of the library itself and of the chip's tables.

#include <gtest/gtest.h>

#include "switchctl/check/GroupAddress.hpp"
#include "tests/switchctl/check/Documents.hpp"
#include "tests/switchctl/check/LibraryRun.hpp"

using switchctl::check::GroupAddress;

namespace {

std::string memberOf3(std::string const& portId, std::string const& address) {
    return member("3", portId, group(address));
}

std::string boardWith(std::string const& text) {
    return boardOf(vitesse("3"), tagBased("5", text));
}

TEST(LibraryGroupsTest, RowsAreThoseOfTheChip) {
    LibraryRun run(boardOf(vitesse("3")));
    for (char const* const text :
         {"224.0.0.1", "239.129.1.2", "239.255.255.255", "230.1.8.0", "224.64.8.1"}) {
        GroupAddress const address = *GroupAddress::fromText(text);
        for (unsigned const vid : {0U, 5U, 63U, 64U, 69U, 4094U}) {
            EXPECT_EQ(address.getRow(vid), run.getBoard().getVitesse(3).getRow(address.getMac(), vid))
                << text << ' ' << vid;
        }
    }
}

TEST(LibraryGroupsTest, TheTopBitOfTheSecondNumberIsNotPartOfAGroup) {
    LibraryRun run(boardWith(memberOf3("1", "239.129.1.2") + memberOf3("2", "239.1.1.2")));
    auto const table = run.getBoard().getVitesse(3).getMacTable();
    ASSERT_EQ(table.size(), 1U);
    EXPECT_EQ(table.begin()->second.getPorts(), 0x6U);
}

TEST(LibraryGroupsTest, VlansThatAgreeInSixBitsShareAnEntry) {
    LibraryRun run(boardOf(vitesse("3"), tagBased("5", memberOf3("1", "239.1.1.2")) +
                                             tagBased("69", memberOf3("2", "239.1.1.2"))));
    auto const table = run.getBoard().getVitesse(3).getMacTable();
    ASSERT_EQ(table.size(), 1U);
    EXPECT_EQ(table.begin()->second.getPorts(), 0x6U);
    EXPECT_EQ(table.begin()->second.vid, 69U);
}

TEST(LibraryGroupsTest, TheVlanOfAGroupIsDecimal) {
    LibraryRun run(boardOf(vitesse("3"), tagBased("10", memberOf3("1", "239.1.1.2"))));
    EXPECT_EQ(run.getBoard().getVitesse(3).getMacTable().begin()->second.vid, 10U);
    EXPECT_EQ(run.getBoard().getVitesse(3).getVlans().count(16), 1U);
}

TEST(LibraryGroupsTest, TheFifthGroupOfARowOverwrites) {
    LibraryRun run(boardWith(memberOf3("1", "224.0.0.1") + memberOf3("2", "224.0.8.0") +
                             memberOf3("3", "224.64.0.0") + memberOf3("4", "224.64.8.1") +
                             memberOf3("5", "224.0.24.2")));
    auto const table = run.getBoard().getVitesse(3).getMacTable();
    ASSERT_EQ(table.size(), 4U);
    EXPECT_EQ(table.rbegin()->second.getPorts(), 0x20U);
}

TEST(LibraryGroupsTest, PortsBeyondTheCountAreForgotten) {
    LibraryRun run(
        boardOf("<switch id='3' switchModel='vsc7390'>" + port("0") + port("5") + port("6") + "</switch>",
                tagBased("5", memberOf3("0", "239.1.1.2") + memberOf3("5", "239.1.1.2") +
                                  memberOf3("6", "239.1.1.2"))));
    EXPECT_EQ(run.getBoard().getVitesse(3).getMacTable().begin()->second.getPorts(), 0x41U);
}

TEST(LibraryGroupsTest, AGroupUnderASwitchPortMeetsNoFrameOfVlan1) {
    LibraryRun run(boardOf("<switch id='3' switchModel='vsc7390'><port id='1' connectedTo='cpu' "
                           "portStatus='forwarding'>" +
                           group("239.1.2.3") + "</port></switch>"));
    std::uint64_t const mac = GroupAddress::fromText("239.1.2.3")->getMac();
    EXPECT_EQ(run.getBoard().getVitesse(3).getMulticastPorts(mac, 0), 0x2U);
    EXPECT_FALSE(run.getBoard().getVitesse(3).getMulticastPorts(mac, 1));
}

TEST(LibraryGroupsTest, An88E6096FiltersNoGroups) {
    LibraryRun run(boardOf(marvell("0"), tagBased("5", member("0", "1", group("239.1.1.2")))));
    EXPECT_TRUE(run.says("addPortToMulticastFilter Unimplemented Function for Marvell"));
}

TEST(LibraryGroupsTest, AddressesAreNotChecked) {
    LibraryRun run(boardWith(memberOf3("1", "192.168.1.1")));
    auto const table = run.getBoard().getVitesse(3).getMacTable();
    ASSERT_EQ(table.size(), 1U);
    EXPECT_EQ(table.begin()->second.getGroup(), 0x280101U);
}

TEST(LibraryGroupsTest, AddressesAreComparedAsTexts) {
    LibraryRun run(boardWith(member("3", "1", group("239.1.1.2") + group(" 239.1.1.2"))));
    EXPECT_FALSE(run.says("Multicast Group already added"));
}

TEST(LibraryGroupsTest, PortsAreToldApartByNumberAlone) {
    LibraryRun run(
        boardOf(marvell("0") + marvell("1"),
                tagBased("5", member("0", "1", group("239.1.1.2")) + member("1", "1", group("239.1.1.2")))));
    EXPECT_EQ(run.saysAfter("ManagedSwitchPort::addMulticastFilterPort. Add MulticastFilter:"),
              std::set<std::string>{"239.1.1.2 to port 0.1.\n"});
}

} // namespace
