// What the checks say about VLANs and their members, asked of the library itself.

#include <gtest/gtest.h>

#include "tests/switchctl/check/Documents.hpp"
#include "tests/switchctl/check/LibraryRun.hpp"

namespace {

constexpr unsigned noMember = 3;
constexpr unsigned tagged = 2;
constexpr unsigned defaultVlanRegister = 0x07;
constexpr unsigned routesRegister = 0x06;

std::string vlans(std::string const& text) {
    return boardOf(marvell("0") + marvell("1"), text);
}

std::string at(std::string const& switchId, std::string const& portId, std::string const& ingress,
               std::string const& egress) {
    return "<port switchId='" + switchId + "' portId='" + portId + "' ingress='" + ingress + "' egress='" +
           egress + "'/>";
}

unsigned tagsOf(LibraryRun& run, unsigned vid, unsigned portId) {
    auto const entry = run.getBoard().getMarvell(0).getVtuEntry(vid);
    return entry ? entry->memberTags[portId] : noMember;
}

TEST(LibraryVlansTest, IdsAreHexadecimal) {
    LibraryRun run(vlans(tagBased("10", member("0", "1"))));
    EXPECT_EQ(tagsOf(run, 16, 1), tagged);
    EXPECT_FALSE(run.getBoard().getMarvell(0).getVtuEntry(10));
}

TEST(LibraryVlansTest, PrefixesAndLettersLoseAllMembers) {
    LibraryRun run(vlans(tagBased("0x20", member("0", "1")) + tagBased("1f", member("0", "1")) +
                         tagBased("a", member("0", "1"))));
    EXPECT_TRUE(run.getBoard().getMarvell(0).getVtu().empty());
}

TEST(LibraryVlansTest, ATrailingEIsAnExponent) {
    LibraryRun run(vlans(tagBased("1", member("0", "1")) + tagBased("1e", member("0", "2"))));
    for (unsigned const vid : {0x1U, 0x1EU}) {
        EXPECT_EQ(tagsOf(run, vid, 1), tagged) << vid;
        EXPECT_EQ(tagsOf(run, vid, 2), tagged) << vid;
    }
}

TEST(LibraryVlansTest, AnIdThatIsNoNumberIsAllOnes) {
    EXPECT_TRUE(
        LibraryRun(vlans(tagBased("office", member("0", "1")))).says("Adding TagBasedVlan 0xffffffff"));
}

TEST(LibraryVlansTest, ADuplicateGivesItsMembersToTheFirst) {
    LibraryRun run(vlans(tagBased("5", member("0", "1")) + "<vlan id='05' typeOfVlan='portBasedVlan'>" +
                         member("0", "2") + "</vlan>"));
    EXPECT_TRUE(run.says("Attempt to add duplicate vlan 0x5"));
    EXPECT_EQ(tagsOf(run, 5, 2), tagged);
}

TEST(LibraryVlansTest, AnIdOfMoreThan12BitsStartsAnewWithEachMember) {
    LibraryRun run(vlans(tagBased("1005", member("0", "1") + member("0", "2"))));
    EXPECT_EQ(tagsOf(run, 5, 1), noMember);
    EXPECT_EQ(tagsOf(run, 5, 2), tagged);
}

TEST(LibraryVlansTest, AnIdOfMoreThan16BitsIsCut) {
    LibraryRun run(vlans(tagBased("10005", member("0", "1") + member("0", "2"))));
    EXPECT_EQ(tagsOf(run, 5, 1), tagged);
    EXPECT_EQ(tagsOf(run, 5, 2), tagged);
}

TEST(LibraryVlansTest, ATypeAbsentSkipsTheVlanAndAnUnknownOneIsPortBased) {
    LibraryRun run(vlans("<vlan id='5'>" + member("0", "1") + "</vlan><vlan id='6' typeOfVlan='tagged'>" +
                         member("0", "1") + "</vlan>"));
    EXPECT_TRUE(run.says("vlan 5 has no attribute typeOfVlan"));
    EXPECT_TRUE(run.says("Adding PortBasedVlan 0x6"));
    EXPECT_TRUE(run.says("Ignoring attribute ingress"));
}

TEST(LibraryVlansTest, MembersAreToldApartByNumberAlone) {
    LibraryRun run(vlans(tagBased("5", member("0", "1") + member("1", "1"))));
    EXPECT_EQ(tagsOf(run, 5, 1), tagged);
    EXPECT_FALSE(run.getBoard().getMarvell(1).getVtuEntry(5));
}

TEST(LibraryVlansTest, UnknownSwitchesAndPortsAreReported) {
    LibraryRun run(vlans(tagBased("5", member("2", "1") + member("0", "11"))));
    EXPECT_TRUE(run.says("Attempt to add vlan to unknown switch 2"));
    EXPECT_TRUE(run.says("Attempt to add vlan to unknown port 0.11"));
}

TEST(LibraryVlansTest, APortBasedVlanRoutesToThePortOfTheNumberOnTheOwnSwitch) {
    LibraryRun run(vlans(portBased("5", "<port switchId='0' portId='1'/><port switchId='1' portId='2'/>")));
    EXPECT_TRUE(run.says("VLAN 5 Port 1 linking to Port 2"));
    EXPECT_NE(run.getBoard().getMarvell(0).peek("port 1", routesRegister) & 0x4U, 0U);
}

TEST(LibraryVlansTest, AnAbsentOrUnknownTagAttributeLeavesThePortOut) {
    LibraryRun run(vlans(tagBased(
        "5", "<port switchId='0' portId='1' egress='stripTag'/>" + at("0", "2", "strip", "stripTag") +
                 at("0", "3", "addTag", "addTag") + "<port switchId='0' portId='4' ingress='addTag'/>")));
    EXPECT_TRUE(run.says("vlan 0x5 port 0.1 has no attribute ingress"));
    EXPECT_TRUE(run.says("vlan 0x5 port 0.4 has no attribute egress"));
    EXPECT_TRUE(run.getBoard().getMarvell(0).getVtu().empty());
    EXPECT_EQ(run.getBoard().getMarvell(0).peek("port 3", defaultVlanRegister) & 0x1FFFU, 0x1005U);
}

TEST(LibraryVlansTest, TheHighestVlanOfAPortHasItsUntaggedFrames) {
    LibraryRun run(vlans(tagBased("6", at("0", "1", "addTagIfUntagged", "stripTag")) +
                         tagBased("5", at("0", "1", "addTagIfUntagged", "stripTag"))));
    EXPECT_EQ(run.getBoard().getMarvell(0).peek("port 1", defaultVlanRegister) & 0x1FFFU, 0x0006U);
}

TEST(LibraryVlansTest, ALaterVlanUndoesAddTag) {
    LibraryRun run(
        vlans(tagBased("5", at("0", "1", "addTag", "stripTag") + at("0", "2", "validateTag", "stripTag")) +
              tagBased("6", at("0", "1", "validateTag", "stripTag") + at("0", "2", "addTag", "stripTag"))));
    EXPECT_EQ(run.getBoard().getMarvell(0).peek("port 1", defaultVlanRegister) & 0x1FFFU, 0x0005U);
    EXPECT_EQ(run.getBoard().getMarvell(0).peek("port 2", defaultVlanRegister) & 0x1FFFU, 0x1006U);
}

TEST(LibraryVlansTest, TheHighestVlanDecidesAboutTheEgressOfAVsc7390) {
    constexpr unsigned egressRegister = 0x24;
    LibraryRun run(boardOf(vitesse("3"), tagBased("5", at("3", "1", "validateTag", "stripTag") +
                                                           at("3", "2", "validateTag", "validateTag")) +
                                             tagBased("6", at("3", "1", "validateTag", "validateTag") +
                                                               at("3", "2", "validateTag", "stripTag"))));
    EXPECT_EQ(run.getBoard().getVitesse(3).peek("port 1", egressRegister) & 1U, 1U);
    EXPECT_EQ(run.getBoard().getVitesse(3).peek("port 2", egressRegister) & 1U, 0U);
}

TEST(LibraryVlansTest, ATagBasedVlanOpensNoPathOnAVsc7390) {
    constexpr std::uint64_t somebody = 0x020000000001;
    constexpr std::uint64_t somebodyElse = 0x020000000002;
    std::string const both = tagBased("5", member("3", "1") + member("3", "2"));
    LibraryRun closed(boardOf(vitesse("3"), both));
    EXPECT_EQ(closed.getBoard().getVitesse(3).getEgressPorts(1, somebody, somebodyElse, 5), 0U);
    LibraryRun open(
        boardOf(vitesse("3"),
                both + portBased("15", "<port switchId='3' portId='1'/><port switchId='3' portId='2'/>")));
    EXPECT_EQ(open.getBoard().getVitesse(3).getEgressPorts(1, somebody, somebodyElse, 5), 0x4U);
}

} // namespace
