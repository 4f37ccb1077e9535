// What an 88E6096 does with frames, rule by rule.

#include "tests/simulation/conformance/MarvellRules.hpp"

namespace simulation_test::marvell_rules {

namespace {

constexpr char const* flooded = "VLAN 1: 2r 3r 4r; learnt 0/0027";
constexpr char const* flooded5 = "VLAN 5: 2r 3r 4r; learnt 0/0027";
constexpr char const* vlan5Tagged = "VLAN 5: 2r 3u 4t5.0; learnt 50/0027";

class Marvell88E6096RulesTest : public MarvellRules {};

TEST_P(Marvell88E6096RulesTest, Rule) {
    auto const& rule = GetParam();
    std::string const foreseen = decide(1, rule.frame).describe();
    Decision const decision = receive(1, rule.frame);
    EXPECT_EQ(decision.describe(), foreseen);
    EXPECT_EQ(outcomeOf(decision, rule.frame) + learnt(decision.learnt) + filtered() + violations(),
              rule.outcome)
        << decision.describe();
}

// Port 01: 5 LinkValue, 4 ForcedLink. Port 00: 12 PHYDetect.
INSTANTIATE_TEST_SUITE_P(
    Link, Marvell88E6096RulesTest,
    testing::Values(rule("M1", "forced down beside a PHY with link", {set(0x11, 0x01, 0x0013)}, untagged(),
                         "dropped by M1"),
                    rule("M1", "forced up beside a PHY without", {set(0x11, 0x01, 0x0033), unplugged(1)},
                         untagged(), flooded),
                    rule("M1", "LinkValue without ForcedLink", {set(0x11, 0x01, 0x0023), unplugged(1)},
                         untagged(), "dropped by M1"),
                    rule("M1", "the PHY has link", {level(1, false)}, untagged(), flooded),
                    rule("M1", "the PHY has none", {unplugged(1), level(1, true)}, untagged(),
                         "dropped by M1"),
                    rule("M1", "the PHY is powered down", {set(0x1C, 0x19, 0x3900), set(0x1C, 0x18, 0x9420)},
                         untagged(), "dropped by M1"),
                    rule("M1", "no PHYDetect, level down", {set(0x11, 0x00, 0x0000), level(1, false)},
                         untagged(), "dropped by M1"),
                    rule("M1", "no PHYDetect, level up",
                         {set(0x11, 0x00, 0x0000), unplugged(1), level(1, true)}, untagged(), flooded)),
    nameOf<Step>);

// Global 1 04: 10 MaxFrame.
INSTANTIATE_TEST_SUITE_P(
    Mac, Marvell88E6096RulesTest,
    testing::Values(
        rule("M2", "bad FCS", {}, damaged(64), "dropped by M2"),
        rule("M2", "63 bytes", {}, sized(63), "dropped by M2"),
        rule("M2", "64 bytes", {}, sized(64), flooded), rule("M2", "1518 bytes", {}, sized(1518), flooded),
        rule("M2", "1519 bytes", {}, sized(1519), "dropped by M2"),
        rule("M2", "1522 bytes with a tag", {}, sized(1522, true), flooded),
        rule("M2", "1523 bytes with a tag", {}, sized(1523, true), "dropped by M2"),
        rule("M2", "MaxFrame 1632 bytes", {set(0x1B, 0x04, 0x0400)}, sized(1632), flooded),
        rule("M2", "MaxFrame 1633 bytes", {set(0x1B, 0x04, 0x0400)}, sized(1633), "dropped by M2"),
        rule("M2", "MaxFrame 1632 bytes with a tag", {set(0x1B, 0x04, 0x0400)}, sized(1632, true), flooded),
        rule("M2", "MaxFrame 1633 bytes with a tag", {set(0x1B, 0x04, 0x0400)}, sized(1633, true),
             "dropped by M2"),
        rule("M2", "pause", {}, pause(), "dropped by M2")),
    nameOf<Step>);

// Port 04: 1:0 PortState, 9:8 FrameMode, 11 Header.
INSTANTIATE_TEST_SUITE_P(
    Port, Marvell88E6096RulesTest,
    testing::Values(rule("M3", "disabled", {set(0x11, 0x04, 0x007C)}, untagged(), "dropped by M3"),
                    rule("M3", "forwarding", {set(0x11, 0x04, 0x007F)}, untagged(), flooded),
                    rule("M4", "DSA", {set(0x11, 0x04, 0x017F)}, untagged(), "refused by M4"),
                    rule("M4", "provider", {set(0x11, 0x04, 0x027F)}, untagged(), "refused by M4"),
                    rule("M4", "EtherType DSA", {set(0x11, 0x04, 0x037F)}, untagged(), "refused by M4"),
                    rule("M4", "Header", {set(0x11, 0x04, 0x087F)}, untagged(), "refused by M4")),
    nameOf<Step>);

// Port 08: 9 DiscardTagged, 8 DiscardUntagged.
INSTANTIATE_TEST_SUITE_P(
    Tag, Marvell88E6096RulesTest,
    testing::Values(rule("M5", "DiscardTagged, tag", {set(0x11, 0x08, 0x0280)}, tagged(5),
                         "dropped by M5; InFiltered of 1"),
                    rule("M5", "DiscardTagged, no tag", {set(0x11, 0x08, 0x0280)}, untagged(), flooded),
                    rule("M5", "DiscardTagged, VID 0", {set(0x11, 0x08, 0x0280)}, tagged(0), flooded),
                    rule("M5", "DiscardUntagged, tag", {set(0x11, 0x08, 0x0180)}, tagged(5), flooded5),
                    rule("M5", "DiscardUntagged, no tag", {set(0x11, 0x08, 0x0180)}, untagged(),
                         "dropped by M5; InFiltered of 1"),
                    rule("M5", "DiscardUntagged, VID 0", {set(0x11, 0x08, 0x0180)}, tagged(0),
                         "dropped by M5; InFiltered of 1"),
                    rule("M5", "both, tag", {set(0x11, 0x08, 0x0380)}, tagged(5),
                         "dropped by M5; InFiltered of 1")),
    nameOf<Step>);

// Global 2 05: 3 RSVD2CPU; 03, 02: a bit for each 01:80:C2:00:00:0x, :2x. Global 1 1A: 7:4 CPUDest.
INSTANTIATE_TEST_SUITE_P(
    Management, Marvell88E6096RulesTest,
    testing::Values(rule("M6", "bridges, nothing enabled",
                         {set(0x1C, 0x05, 0x0000), set(0x1C, 0x03, 0x0001), set(0x1B, 0x1A, 0x0040)},
                         untagged(bridges), flooded),
                    rule("M6", "bridges",
                         {set(0x1C, 0x05, 0x0008), set(0x1C, 0x03, 0x0001), set(0x1B, 0x1A, 0x0040)},
                         untagged(bridges), "4r"),
                    rule("M6", "bridges, their bit off",
                         {set(0x1C, 0x05, 0x0008), set(0x1C, 0x03, 0xFFFE), set(0x1B, 0x1A, 0x0040)},
                         untagged(bridges), flooded),
                    rule("M6", "GARP 21",
                         {set(0x1C, 0x05, 0x0008), set(0x1C, 0x02, 0x0002), set(0x1B, 0x1A, 0x0040)},
                         untagged(garp), "4r"),
                    rule("M6", "GARP 21, its bit off",
                         {set(0x1C, 0x05, 0x0008), set(0x1C, 0x02, 0xFFFD), set(0x1B, 0x1A, 0x0040)},
                         untagged(garp), flooded),
                    rule("M6", "another group",
                         {set(0x1C, 0x05, 0x0008), set(0x1C, 0x03, 0xFFFF), set(0x1C, 0x02, 0xFFFF),
                          set(0x1B, 0x1A, 0x0040)},
                         untagged(0x0180C2000010), flooded),
                    rule("M6", "a blocking port",
                         {set(0x1C, 0x05, 0x0008), set(0x1C, 0x03, 0x0001), set(0x1B, 0x1A, 0x0040),
                          set(0x11, 0x04, 0x007D)},
                         untagged(bridges), "4r"),
                    rule("M6", "a disabled port",
                         {set(0x1C, 0x05, 0x0008), set(0x1C, 0x03, 0x0001), set(0x1B, 0x1A, 0x0040),
                          set(0x11, 0x04, 0x007C)},
                         untagged(bridges), "dropped by M3"),
                    rule("M6", "to a port 11",
                         {set(0x1C, 0x05, 0x0008), set(0x1C, 0x03, 0x0001), set(0x1B, 0x1A, 0x00B0)},
                         untagged(bridges), "dropped by M6"),
                    rule("M6", "to a DSA port",
                         {set(0x1C, 0x05, 0x0008), set(0x1C, 0x03, 0x0001), set(0x1B, 0x1A, 0x0040),
                          set(0x14, 0x04, 0x017F)},
                         untagged(bridges), "refused by M6"),
                    rule("M6", "past VLANs and VLANTable",
                         {set(0x1C, 0x05, 0x0008), set(0x1C, 0x03, 0x0001), set(0x1B, 0x1A, 0x0070),
                          set(0x11, 0x08, 0x0C80)},
                         untagged(bridges), "7r")),
    nameOf<Step>);

// Port 08: 11:10 mode, 0 off, 1 fallback, 2 check, 3 secure. Port 07: 12 ForceDefaultVID, 11:0 DefaultVID.
INSTANTIATE_TEST_SUITE_P(
    Vlan, Marvell88E6096RulesTest,
    testing::Values(
        rule("M7", "off, the VTU has the VID", {set(0x11, 0x08, 0x0080)}, tagged(5), flooded5),
        rule("M7", "off, no tag", {set(0x11, 0x07, 0x0006)}, untagged(), "VLAN 6: 2r 3r 4r; learnt 0/0027"),
        rule("M7", "off, VID forced", {set(0x11, 0x07, 0x1006)}, tagged(5), flooded5),
        rule("M7", "fallback, hit", {set(0x11, 0x08, 0x0480)}, tagged(5), vlan5Tagged),
        rule("M7", "fallback, miss", {set(0x11, 0x08, 0x0480)}, tagged(77),
             "VLAN 77: 2r 3r 4r; learnt 0/0027; VTUProb"),
        rule("M7", "fallback, no member", {set(0x11, 0x08, 0x0480)}, tagged(6),
             "VLAN 6: 2r 3u 4t6.0; learnt 60/0027; VTUProb"),
        rule("M7", "check, hit", {set(0x11, 0x08, 0x0880)}, tagged(5), vlan5Tagged),
        rule("M7", "check, miss", {set(0x11, 0x08, 0x0880)}, tagged(77),
             "VLAN 77: dropped by M7; InFiltered of 1; VTUProb"),
        rule("M7", "check, no member", {set(0x11, 0x08, 0x0880)}, tagged(6),
             "VLAN 6: 2r 3u 4t6.0; learnt 60/0027; VTUProb"),
        rule("M7", "secure, hit", {set(0x11, 0x08, 0x0C80)}, tagged(5), vlan5Tagged),
        rule("M7", "secure, miss", {set(0x11, 0x08, 0x0C80)}, tagged(77),
             "VLAN 77: dropped by M7; InFiltered of 1; VTUProb"),
        rule("M7", "secure, no member", {set(0x11, 0x08, 0x0C80)}, tagged(6),
             "VLAN 6: dropped by M7; InFiltered of 1; VTUProb"),
        rule("M7", "secure, no tag", {set(0x11, 0x08, 0x0C80), set(0x11, 0x07, 0x0005)}, untagged(),
             "VLAN 5: 2r 3u 4t5.0; learnt 50/0027"),
        rule("M7", "secure, VID 0", {set(0x11, 0x08, 0x0C80), set(0x11, 0x07, 0x0005)}, tagged(0),
             "VLAN 5: 2r 3u 4t5.0; learnt 50/0027"),
        rule("M7", "secure, VID forced", {set(0x11, 0x08, 0x0C80), set(0x11, 0x07, 0x1005)}, tagged(77),
             "VLAN 5: 2r 3u 4t5.0; learnt 50/0027"),
        rule("M7", "the sender's mode does not count", {set(0x12, 0x08, 0x0C80), set(0x13, 0x08, 0x0C80)},
             tagged(77), "VLAN 77: 2r 3r 4r; learnt 0/0027")),
    nameOf<Step>);

// STU data: bits 3:2 of each port's nibble, ports 0 to 3 in the first word. Port 05: 7:0 FID 11:4, port 06:
// 15:12 FID 3:0.
INSTANTIATE_TEST_SUITE_P(
    State, Marvell88E6096RulesTest,
    testing::Values(rule("M8", "SID with code 1 for the port",
                         {set(0x11, 0x08, 0x0C80), vlan5(9), states(9, 0x0040, 0)}, tagged(5),
                         "VLAN 5: dropped by M10"),
                    rule("M8", "SID with code 2", {set(0x11, 0x08, 0x0C80), vlan5(9), states(9, 0x0080, 0)},
                         tagged(5), "VLAN 5: dropped by M10; learnt 50/0027"),
                    rule("M8", "SID with code 3, own state learning",
                         {set(0x11, 0x08, 0x0C80), vlan5(9), states(9, 0x00C0, 0), set(0x11, 0x04, 0x007E)},
                         tagged(5), vlan5Tagged),
                    rule("M8", "SID with code 3, own state disabled",
                         {set(0x11, 0x08, 0x0C80), vlan5(9), states(9, 0x00C0, 0), set(0x11, 0x04, 0x007C)},
                         tagged(5), "dropped by M3"),
                    rule("M8", "SID with code 0, own state blocking",
                         {set(0x11, 0x08, 0x0C80), vlan5(9), states(9, 0x0000, 0), set(0x11, 0x04, 0x007D)},
                         tagged(5), "VLAN 5: dropped by M10"),
                    rule("M8", "SID without an entry",
                         {set(0x11, 0x08, 0x0C80), vlan5(9), states(8, 0x4444, 0x4444)}, tagged(5),
                         vlan5Tagged),
                    rule("M8", "SID 0 with an entry", {set(0x11, 0x08, 0x0C80), states(0, 0x0040, 0)},
                         tagged(5), "VLAN 5: dropped by M10"),
                    rule("M8", "no hit, the STU does not count",
                         {states(0, 0x4444, 0x4444), states(9, 0x4444, 0x4444)}, tagged(5), flooded5),
                    rule("M8", "no hit, FID of the port", {set(0x11, 0x05, 0x0001), set(0x11, 0x06, 0x201C)},
                         untagged(), "VLAN 1: 2r 3r 4r; learnt 18/0027"),
                    rule("M8", "hit, FID of the VLAN",
                         {set(0x11, 0x05, 0x0001), set(0x11, 0x06, 0x201C), set(0x11, 0x08, 0x0480)},
                         tagged(5), vlan5Tagged)),
    nameOf<Step>);

// Port 0B: 13 LockedPort, 10:0 PAV. Port 05: 14 TrunkPort, 11:8 TrunkID. ATU data: 15 trunk, 14:4 ports, 3:0
// state.
INSTANTIATE_TEST_SUITE_P(
    Learning, Marvell88E6096RulesTest,
    testing::Values(
        rule("M9", "PAV of two ports", {set(0x11, 0x0B, 0x0021)}, untagged(),
             "VLAN 1: 2r 3r 4r; learnt 0/0217"),
        rule("M9", "PAV 0", {set(0x11, 0x0B, 0x0000)}, untagged(), "VLAN 1: 2r 3r 4r"),
        rule("M9", "locked", {set(0x11, 0x0B, 0x2002)}, untagged(), "VLAN 1: 2r 3r 4r"),
        rule("M9", "a group for a sender", {}, from(0x030000000001), "VLAN 1: 2r 3r 4r"),
        rule("M9", "trunk 3", {set(0x11, 0x05, 0x4300)}, untagged(), "VLAN 1: 2r 3r 4r; learnt 0/8037"),
        rule("M9", "trunk id without TrunkPort", {set(0x11, 0x05, 0x0300)}, untagged(), flooded),
        rule("M9", "learning", {set(0x11, 0x04, 0x007E)}, untagged(),
             "VLAN 1: dropped by M10; learnt 0/0027"),
        rule("M9", "blocking", {set(0x11, 0x04, 0x007D)}, untagged(), "VLAN 1: dropped by M10"),
        rule("M9", "an older entry elsewhere", {address(0, stationA, 0x0803)}, untagged(), flooded),
        rule("M9", "a static entry elsewhere", {address(0, stationA, 0x080E)}, untagged(),
             "VLAN 1: 2r 3r 4r; kept 0/080E")),
    nameOf<Step>);

// Port 08: 7 MapDA. Port 04: 3:2 EgressFloods. Global 2 08: 15 update, 14:11 trunk, 10:0 its ports.
INSTANTIATE_TEST_SUITE_P(
    Destination, Marvell88E6096RulesTest,
    testing::Values(
        rule("M11", "MapDA, hit", {address(0, stationB, 0x0047)}, untagged(), "VLAN 1: 2r; learnt 0/0027"),
        rule("M11", "MapDA, hit of a group", {address(0, group, 0x0187)}, untagged(group),
             "VLAN 1: 3r 4r; learnt 0/0027"),
        rule("M11", "MapDA, hit in another FID", {address(1, stationB, 0x0047)}, untagged(), flooded),
        rule("M11", "no MapDA", {set(0x11, 0x08, 0x0000), address(0, stationB, 0x0047)}, untagged(), flooded),
        rule("M11", "trunk 3", {set(0x1C, 0x08, 0x9814), address(0, stationB, 0x8037)}, untagged(),
             "VLAN 1: 2r 4r; learnt 0/0027"),
        rule("M11", "a trunk without ports", {address(0, stationB, 0x8037)}, untagged(),
             "VLAN 1: dropped by M11; learnt 0/0027"),
        rule("M11", "EgressFloods 0 of 2, unicast", {set(0x12, 0x04, 0x0073)}, untagged(),
             "VLAN 1: 3r 4r; learnt 0/0027"),
        rule("M11", "EgressFloods 0 of 2, group", {set(0x12, 0x04, 0x0073)}, untagged(group),
             "VLAN 1: 3r 4r; learnt 0/0027"),
        rule("M11", "EgressFloods 1 of 2, unicast", {set(0x12, 0x04, 0x0077)}, untagged(), flooded),
        rule("M11", "EgressFloods 1 of 2, group", {set(0x12, 0x04, 0x0077)}, untagged(group),
             "VLAN 1: 3r 4r; learnt 0/0027"),
        rule("M11", "EgressFloods 1 of 2, broadcast", {set(0x12, 0x04, 0x0077)}, untagged(broadcast),
             "VLAN 1: 3r 4r; learnt 0/0027"),
        rule("M11", "EgressFloods 2 of 2, unicast", {set(0x12, 0x04, 0x007B)}, untagged(),
             "VLAN 1: 3r 4r; learnt 0/0027"),
        rule("M11", "EgressFloods 2 of 2, group", {set(0x12, 0x04, 0x007B)}, untagged(group), flooded),
        rule("M11", "EgressFloods 2 of 2, broadcast", {set(0x12, 0x04, 0x007B)}, untagged(broadcast),
             flooded),
        rule("M11", "EgressFloods 0, known", {set(0x12, 0x04, 0x0073), address(0, stationB, 0x0047)},
             untagged(), "VLAN 1: 2r; learnt 0/0027")),
    nameOf<Step>);

// Port 06: 10:0 VLANTable. Global 2 07: 15 update, 14:12 number, 10:0 mask; from A to B the number is 3. Port
// 04: 7 VLANTunnel.
INSTANTIATE_TEST_SUITE_P(
    Masks, Marvell88E6096RulesTest,
    testing::Values(
        rule("M12", "VLANTable, off", {set(0x11, 0x06, 0x0208)}, untagged(), "VLAN 1: 3r 9r; learnt 0/0027"),
        rule("M12", "VLANTable, secure", {set(0x11, 0x08, 0x0C80), set(0x11, 0x06, 0x0208)}, tagged(5),
             "VLAN 5: 3u; learnt 50/0027"),
        rule("M12", "VLANTable with the own port", {set(0x11, 0x06, 0x0006)}, untagged(),
             "VLAN 1: 1r 2r; learnt 0/0027"),
        rule("M12", "VLANTable without the known port", {address(0, stationB, 0x0207)}, untagged(),
             "VLAN 1: dropped by M12; learnt 0/0027"),
        rule("M12", "known at the port where it came in", {address(0, stationB, 0x0027)}, untagged(),
             "VLAN 1: dropped by M12; learnt 0/0027"),
        rule("M12", "VTU, flood past others", {set(0x11, 0x08, 0x0C80), set(0x11, 0x06, 0x07FD)}, tagged(5),
             vlan5Tagged),
        rule("M12", "VTU, known outside",
             {set(0x11, 0x08, 0x0C80), set(0x11, 0x06, 0x07FD), address(50, stationB, 0x0207)}, tagged(5),
             "VLAN 5: dropped by M12; learnt 50/0027; OutFiltered of 5"),
        rule("M12", "VTU, known inside and outside",
             {set(0x11, 0x08, 0x0C80), set(0x11, 0x06, 0x07FD), address(50, stationB, 0x0247)}, tagged(5),
             "VLAN 5: 2r; learnt 50/0027; OutFiltered of 5"),
        rule("M12", "trunk mask 3", {set(0x1C, 0x07, 0xB004)}, untagged(), "VLAN 1: 2r; learnt 0/0027"),
        rule("M12", "another trunk mask", {set(0x1C, 0x07, 0xA004)}, untagged(), flooded),
        rule("M12", "trunk mask 7 for the third bits", {set(0x1C, 0x07, 0xF004)}, from(0x020000000005),
             "VLAN 1: 2r; learnt 0/0027"),
        rule("M12", "VLANTunnel, static", {set(0x11, 0x04, 0x00FF), address(0, stationB, 0x020E)}, untagged(),
             "VLAN 1: 5r; learnt 0/0027"),
        rule("M12", "VLANTunnel, learnt", {set(0x11, 0x04, 0x00FF), address(0, stationB, 0x0207)}, untagged(),
             "VLAN 1: dropped by M12; learnt 0/0027"),
        rule("M12", "VLANTunnel, group", {set(0x11, 0x04, 0x00FF), address(0, group, 0x0207)},
             untagged(group), "VLAN 1: dropped by M12; learnt 0/0027"),
        rule("M12", "no VLANTunnel, static", {address(0, stationB, 0x020E)}, untagged(),
             "VLAN 1: dropped by M12; learnt 0/0027"),
        rule("M12", "VLANTunnel, trunk mask 3",
             {set(0x11, 0x04, 0x00FF), address(0, stationB, 0x020E), set(0x1C, 0x07, 0xB004)}, untagged(),
             "VLAN 1: dropped by M12; learnt 0/0027")),
    nameOf<Step>);

INSTANTIATE_TEST_SUITE_P(
    Sender, Marvell88E6096RulesTest,
    testing::Values(
        rule("M13", "no link", {unplugged(2)}, untagged(), "VLAN 1: 3r 4r; learnt 0/0027"),
        rule("M13", "forced down", {set(0x12, 0x01, 0x0013)}, untagged(), "VLAN 1: 3r 4r; learnt 0/0027"),
        rule("M13", "disabled", {set(0x12, 0x04, 0x007C)}, untagged(), "VLAN 1: 3r 4r; learnt 0/0027"),
        rule("M13", "blocking", {set(0x12, 0x04, 0x007D)}, untagged(), "VLAN 1: 3r 4r; learnt 0/0027"),
        rule("M13", "learning", {set(0x12, 0x04, 0x007E)}, untagged(), "VLAN 1: 3r 4r; learnt 0/0027"),
        rule("M13", "nobody left", {address(0, stationB, 0x0047), unplugged(2)}, untagged(),
             "VLAN 1: dropped by M13; learnt 0/0027"),
        rule("M13", "blocking in the VLAN", {set(0x11, 0x08, 0x0C80), vlan5(9), states(9, 0x0400, 0)},
             tagged(5), "VLAN 5: 3u 4t5.0; learnt 50/0027"),
        rule("M13", "forwarding in the VLAN, blocking without",
             {set(0x11, 0x08, 0x0C80), vlan5(9), states(9, 0x0C00, 0), set(0x12, 0x04, 0x007D)}, tagged(5),
             vlan5Tagged),
        rule("M13", "forwarding in the VLAN, disabled",
             {set(0x11, 0x08, 0x0C80), vlan5(9), states(9, 0x0C00, 0), set(0x12, 0x04, 0x007C)}, tagged(5),
             "VLAN 5: 3u 4t5.0; learnt 50/0027")),
    nameOf<Step>);

// Port 04: 13:12 EgressMode. Port 07: 15:13 DefaultPri.
INSTANTIATE_TEST_SUITE_P(
    Form, Marvell88E6096RulesTest,
    testing::Values(rule("M14", "hit, no tag", {set(0x11, 0x08, 0x0C80), set(0x11, 0x07, 0x6005)}, untagged(),
                         "VLAN 5: 2r 3u 4t5.3; learnt 50/0027"),
                    rule("M14", "hit, tag with priority", {set(0x11, 0x08, 0x0C80), set(0x11, 0x07, 0x6005)},
                         tagged(5, 7), "VLAN 5: 2r 3u 4t5.7; learnt 50/0027"),
                    rule("M14", "hit, tag that may be dropped", {set(0x11, 0x08, 0x0C80)},
                         untagged().withTagPushed({5, 1, true}), "VLAN 5: 2r 3u 4t5.1d; learnt 50/0027"),
                    rule("M14", "hit, VID 0 with priority",
                         {set(0x11, 0x08, 0x0C80), set(0x11, 0x07, 0x6005)}, tagged(0, 7),
                         "VLAN 5: 2r 3u 4t5.7; learnt 50/0027"),
                    rule("M14", "hit, EgressMode does not count",
                         {set(0x11, 0x08, 0x0C80), set(0x12, 0x04, 0x107F), set(0x13, 0x04, 0x207F),
                          set(0x14, 0x04, 0x307F)},
                         tagged(5), vlan5Tagged),
                    rule("M14", "EgressMode 1, tag", {set(0x12, 0x04, 0x107F)}, tagged(5),
                         "VLAN 5: 2u 3r 4r; learnt 0/0027"),
                    rule("M14", "EgressMode 1, no tag", {set(0x12, 0x04, 0x107F)}, untagged(),
                         "VLAN 1: 2u 3r 4r; learnt 0/0027"),
                    rule("M14", "EgressMode 2, tag", {set(0x12, 0x04, 0x207F)}, tagged(5, 4),
                         "VLAN 5: 2t5.4 3r 4r; learnt 0/0027"),
                    rule("M14", "EgressMode 2, no tag", {set(0x12, 0x04, 0x207F), set(0x11, 0x07, 0xE009)},
                         untagged(), "VLAN 9: 2t9.7 3r 4r; learnt 0/0027"),
                    rule("M14", "EgressMode 3, tag", {set(0x12, 0x04, 0x307F)}, tagged(5, 4),
                         "VLAN 5: 2a5.4+5.4 3r 4r; learnt 0/0027"),
                    rule("M14", "EgressMode 3, no tag", {set(0x12, 0x04, 0x307F), set(0x11, 0x07, 0xE009)},
                         untagged(), "VLAN 9: 2a9.7 3r 4r; learnt 0/0027"),
                    rule("M14", "a DSA port among the senders", {set(0x14, 0x04, 0x017F)}, untagged(),
                         "VLAN 1: refused by M14; learnt 0/0027"),
                    rule("M14", "a tunnel to no member",
                         {set(0x11, 0x08, 0x0C80), set(0x11, 0x04, 0x00FF), set(0x15, 0x04, 0x107F),
                          address(50, stationB, 0x020E)},
                         tagged(5), "VLAN 5: 5u; learnt 50/0027"),
                    rule("M14", "fallback, miss", {set(0x11, 0x08, 0x0480), set(0x12, 0x04, 0x107F)},
                         tagged(77), "VLAN 77: 2u 3r 4r; learnt 0/0027; VTUProb")),
    nameOf<Step>);

} // namespace

} // namespace simulation_test::marvell_rules
