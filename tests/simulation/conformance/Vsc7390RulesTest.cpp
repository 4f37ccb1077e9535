// What a VSC7390 does with frames, rule by rule. A frame that keeps no tag leaves untagged, also if it came
// so.

#include "tests/simulation/conformance/VitesseRules.hpp"

namespace simulation_test::vitesse_rules {

namespace {

constexpr char const* flooded = "VLAN 1: 2u 3u 4u; learnt 111/1 to 1";
constexpr char const* flooded5 = "VLAN 5: 2u 3u; learnt 151/5 to 1";
constexpr char const* flooded6 = "VLAN 6: 2u 3u 4u; learnt 161/6 to 1";
constexpr char const* flooded77 = "VLAN 77: 2u 3u 4u; learnt 1D1/77 to 1";
constexpr char const* onlyTo2 = "VLAN 1: 2u; learnt 111/1 to 1";
constexpr char const* notTo2 = "VLAN 1: 3u 4u; learnt 111/1 to 1";

class Vsc7390RulesTest : public VitesseRules {};

TEST_P(Vsc7390RulesTest, Rule) {
    auto const& rule = GetParam();
    std::string const foreseen = decide(rule.frame, 1).describe();
    Decision const decision = receive(rule.frame, 1);
    EXPECT_EQ(decision.describe(), foreseen);
    EXPECT_EQ(outcomeOf(decision, rule.frame) + learnt(decision.learnt) + drops(), rule.outcome)
        << decision.describe();
}

// Port 00: 28 TX_EN, 16 RX_EN, 29 PORT_RST, 5 MAC_RX_RST, 4 MAC_TX_RST.
INSTANTIATE_TEST_SUITE_P(
    Receiver, Vsc7390RulesTest,
    testing::Values(rule("V1", "on", {port(1, 0x00, 0x10050001)}, untagged(), flooded),
                    rule("V1", "no RX_EN", {port(1, 0x00, 0x10040001)}, untagged(), "dropped by V1"),
                    rule("V1", "PORT_RST", {port(1, 0x00, 0x30050001)}, untagged(), "dropped by V1"),
                    rule("V1", "MAC_RX_RST", {port(1, 0x00, 0x10050021)}, untagged(), "dropped by V1"),
                    rule("V1", "no TX_EN", {port(1, 0x00, 0x00050001)}, untagged(), flooded),
                    rule("V1", "MAC_TX_RST", {port(1, 0x00, 0x10050011)}, untagged(), flooded),
                    rule("V1", "nobody at the other end", {unplugged(1)}, untagged(), "dropped by V1")),
    nameOf<Step>);

// Port 00: 14 VLAN_AWR, 15 VLAN_DBLAWR. Port 10: MAXLEN, 1518.
INSTANTIATE_TEST_SUITE_P(
    Mac, Vsc7390RulesTest,
    testing::Values(rule("V2", "bad FCS", {}, damaged(), "dropped by V2"),
                    rule("V2", "63 bytes", {}, sized(63), "dropped by V2"),
                    rule("V2", "1518 bytes", {}, sized(1518), flooded),
                    rule("V2", "1519 bytes", {}, sized(1519), "dropped by V2"),
                    rule("V2", "1519 bytes with a tag", {}, sized(1519, tagged(5)), "dropped by V2"),
                    rule("V2", "AWR, 1519 bytes", {port(1, 0x00, 0x10054001)}, sized(1519), "dropped by V2"),
                    rule("V2", "AWR, 1522 bytes with a tag", {port(1, 0x00, 0x10054001)},
                         sized(1522, tagged(5)), flooded5),
                    rule("V2", "AWR, 1523 bytes with a tag", {port(1, 0x00, 0x10054001)},
                         sized(1523, tagged(5)), "dropped by V2"),
                    rule("V2", "AWR, 1523 bytes with two tags", {port(1, 0x00, 0x10054001)},
                         sized(1523, twiceTagged()), "dropped by V2"),
                    rule("V2", "DBLAWR, 1523 bytes with a tag", {port(1, 0x00, 0x1005C001)},
                         sized(1523, tagged(5)), "dropped by V2"),
                    rule("V2", "DBLAWR, 1526 bytes with two tags", {port(1, 0x00, 0x1005C001)},
                         sized(1526, twiceTagged()), "VLAN 77: 2u5.0 3u5.0 4u5.0; learnt 1D1/77 to 1"),
                    rule("V2", "DBLAWR, 1527 bytes with two tags", {port(1, 0x00, 0x1005C001)},
                         sized(1527, twiceTagged()), "dropped by V2"),
                    rule("V2", "MAXLEN 200, 200 bytes", {port(1, 0x10, 200)}, sized(200), flooded),
                    rule("V2", "MAXLEN 200, 201 bytes", {port(1, 0x10, 200)}, sized(201), "dropped by V2")),
    nameOf<Step>);

// Port 6E: 4 FWD_CTRL, 3 FWD_PAUSE.
INSTANTIATE_TEST_SUITE_P(
    Reserved, Vsc7390RulesTest,
    testing::Values(
        rule("V3", "pause", {}, pause(), "dropped by V3"),
        rule("V3", "pause, FWD_PAUSE", {port(1, 0x6E, 0x08)}, pause(), flooded),
        rule("V3", "pause, FWD_CTRL", {port(1, 0x6E, 0x10)}, pause(), "dropped by V3"),
        rule("V3", "MAC control", {}, control(stationB), "dropped by V3"),
        rule("V3", "MAC control, FWD_CTRL", {port(1, 0x6E, 0x10)}, control(stationB), flooded),
        rule("V3", "MAC control, FWD_PAUSE", {port(1, 0x6E, 0x08)}, control(stationB), "dropped by V3"),
        rule("V3", "MAC control behind a tag", {}, Frames::tagged(control(stationB), 5), flooded5),
        rule("V3", "to bridges, 0", {}, untagged(bridges), "dropped by V3"),
        rule("V3", "to bridges, F", {}, untagged(0x0180C200000F), "dropped by V3"),
        rule("V3", "to bridges, 10", {}, untagged(0x0180C2000010), flooded),
        rule("V3", "to GARP", {}, untagged(0x0180C2000021), flooded)),
    nameOf<Step>);

// Port 6E: 6 DROP_MC_SMAC, 2 UNTAGGED_ENA, 1 TAGGED_ENA, 0 NULL_MAC.
INSTANTIATE_TEST_SUITE_P(
    Drop, Vsc7390RulesTest,
    testing::Values(
        rule("V4", "TAGGED_ENA, tag", {port(1, 0x6E, 0x02)}, tagged(5), "dropped by V4; drop of 1"),
        rule("V4", "TAGGED_ENA, no tag", {port(1, 0x6E, 0x02)}, untagged(), flooded),
        rule("V4", "TAGGED_ENA, VID 0", {port(1, 0x6E, 0x02)}, tagged(0), flooded),
        rule("V4", "UNTAGGED_ENA, tag", {port(1, 0x6E, 0x04)}, tagged(5), flooded5),
        rule("V4", "UNTAGGED_ENA, no tag", {port(1, 0x6E, 0x04)}, untagged(), "dropped by V4; drop of 1"),
        rule("V4", "UNTAGGED_ENA, VID 0", {port(1, 0x6E, 0x04)}, tagged(0), "dropped by V4; drop of 1"),
        rule("V4", "a group for a sender", {}, from(0x030000000001), "VLAN 1: 2u 3u 4u"),
        rule("V4", "DROP_MC_SMAC, a group for a sender", {port(1, 0x6E, 0x40)}, from(0x030000000001),
             "dropped by V4; drop of 1"),
        rule("V4", "DROP_MC_SMAC, to a group", {port(1, 0x6E, 0x40)}, untagged(group), flooded),
        rule("V4", "to address 0", {}, untagged(0), flooded),
        rule("V4", "NULL_MAC, to address 0", {port(1, 0x6E, 0x01)}, untagged(0), "dropped by V4; drop of 1"),
        rule("V4", "NULL_MAC, from address 0", {port(1, 0x6E, 0x01)}, from(0), "dropped by V4; drop of 1"),
        rule("V4", "NULL_MAC, other addresses", {port(1, 0x6E, 0x01)}, untagged(), flooded)),
    nameOf<Step>);

// Port 79: 8 TCI_IGNORE, 7 KEEP_TAG. Port 7A: 11:0 port VID.
INSTANTIATE_TEST_SUITE_P(
    Classify, Vsc7390RulesTest,
    testing::Values(
        rule("V5", "no tag", {port(1, 0x7A, 0x0005)}, untagged(), "VLAN 5: 2u 3u; learnt 151/5 to 1"),
        rule("V5", "VID 0", {port(1, 0x7A, 0x0005)}, tagged(0), flooded5),
        rule("V5", "tag", {}, tagged(77), flooded77),
        rule("V5", "two tags", {}, twiceTagged(), "VLAN 77: 2u5.0 3u5.0 4u5.0; learnt 1D1/77 to 1"),
        rule("V5", "TCI_IGNORE", {port(1, 0x79, 0x0100)}, tagged(77), flooded),
        rule("V5", "KEEP_TAG", {port(1, 0x79, 0x0080)}, tagged(5), "VLAN 5: 2r 3r; learnt 151/5 to 1"),
        rule("V5", "KEEP_TAG and TCI_IGNORE", {port(1, 0x79, 0x0180)}, tagged(77),
             "VLAN 1: 2r 3r 4r; learnt 111/1 to 1")),
    nameOf<Step>);

// V8 has the last say on frames that V7 refuses: whether their senders are learnt. Analyser 10: RECVMASK, 05:
// VLANMASK, 03: 25 of ADVLEARN. VLAN table: 30 LEARN_DISABLED, 28 SRC_CHECK, 26:2 ports.
INSTANTIATE_TEST_SUITE_P(
    Ingress, Vsc7390RulesTest,
    testing::Values(rule("V6", "port not in the mask", {analyser(0x10, 0x01FFFFFD)}, untagged(),
                         "VLAN 1: dropped by V6; drop of 1"),
                    rule("V6", "only that port in the mask", {analyser(0x10, 0x00000002)}, untagged(),
                         flooded),
                    rule("V7", "no check, no member", {}, tagged(6), flooded6),
                    rule("V7", "SRC_CHECK, no member", {vlan(6, 0x10000070)}, tagged(6),
                         "VLAN 6: dropped by V8; learnt 161/6 to 1; drop of 1"),
                    rule("V7", "SRC_CHECK, member", {vlan(5, 0x10000038)}, tagged(5), flooded5),
                    rule("V7", "VLANMASK, no member", {analyser(0x05, 0x00000002)}, tagged(6),
                         "VLAN 6: dropped by V8; learnt 161/6 to 1; drop of 1"),
                    rule("V7", "VLANMASK, member", {analyser(0x05, 0x00000002)}, tagged(5), flooded5),
                    rule("V7", "VLANMASK of others", {analyser(0x05, 0x01FFFFFD)}, tagged(6), flooded6),
                    rule("V8", "ADVLEARN, no member", {analyser(0x03, 0x02000000), vlan(6, 0x10000070)},
                         tagged(6), "VLAN 6: dropped by V8; drop of 1"),
                    rule("V8", "ADVLEARN, member", {analyser(0x03, 0x02000000), vlan(5, 0x10000038)},
                         tagged(5), flooded5)),
    nameOf<Step>);

// Analyser 0D: LEARNMASK. MAC table: 11 AGED_FLAG, 10 VALID, 9 LOCKED, 8:3 DEST_IDX, 2:0 command 7; A of VLAN
// 1 is in row 111.
INSTANTIATE_TEST_SUITE_P(
    Learning, Vsc7390RulesTest,
    testing::Values(
        rule("V8", "port not in LEARNMASK", {analyser(0x0D, 0x01FFFFFD)}, untagged(), "VLAN 1: 2u 3u 4u"),
        rule("V8", "only that port in LEARNMASK", {analyser(0x0D, 0x00000002)}, untagged(), flooded),
        rule("V8", "LEARN_DISABLED", {vlan(1, 0x47FFFFFC)}, untagged(), "VLAN 1: 2u 3u 4u"),
        rule("V8", "LEARN_DISABLED of another VLAN", {vlan(2, 0x47FFFFFC)}, untagged(), flooded),
        rule("V8", "known elsewhere", {mac(0x0111, 0x00010200, 0x00000001, 0x0427)}, untagged(), flooded),
        rule("V8", "known elsewhere, locked", {mac(0x0111, 0x00010200, 0x00000001, 0x0627)}, untagged(),
             "VLAN 1: 2u 3u 4u; kept 111/1 to 4"),
        rule("V8", "aged", {mac(0x0111, 0x00010200, 0x00000001, 0x0C0F)}, untagged(), flooded),
        rule("V8", "known in the third bucket", {mac(0x1111, 0x00010200, 0x00000001, 0x0427)}, untagged(),
             flooded),
        rule("V8", "a row of others, one aged",
             {mac(0x0111, 0x00010200, 0x11, 0x0427), mac(0x0911, 0x00010200, 0x12, 0x0C27),
              mac(0x1111, 0x00010200, 0x13, 0x0427), mac(0x1911, 0x00010200, 0x14, 0x0427)},
             untagged(), flooded),
        rule("V8", "a row of locked others",
             {mac(0x0111, 0x00010200, 0x11, 0x0627), mac(0x0911, 0x00010200, 0x12, 0x0627),
              mac(0x1111, 0x00010200, 0x13, 0x0627), mac(0x1911, 0x00010200, 0x14, 0x0627)},
             untagged(), "VLAN 1: 2u 3u 4u")),
    nameOf<Step>);

// MAC table: 14 CPU_COPY, 13 FWD_KILL, 12 IGNORE_VLAN; B of VLAN 1 is in row 112. Analyser 40 to 7F:
// DSTMASKS, 0E, 0F, 04: floods to unicast, groups, IP groups.
INSTANTIATE_TEST_SUITE_P(
    Destination, Vsc7390RulesTest,
    testing::Values(
        rule("V9", "known at 2", {mac(0x0112, 0x00010200, 0x00000002, 0x0417)}, untagged(), onlyTo2),
        rule("V9", "known in the last bucket", {mac(0x1912, 0x00010200, 0x00000002, 0x0417)}, untagged(),
             onlyTo2),
        rule("V9", "known at 2 with another mask",
             {mac(0x0112, 0x00010200, 0x00000002, 0x0417), analyser(0x42, 0x0000000C)}, untagged(),
             "VLAN 1: 2u 3u; learnt 111/1 to 1"),
        rule("V9", "known by mask 7F",
             {mac(0x0112, 0x00010200, 0x00000002, 0x05FF), analyser(0x7F, 0x00000004)}, untagged(), onlyTo2),
        rule("V9", "FWD_KILL", {mac(0x0112, 0x00010200, 0x00000002, 0x2417)}, untagged(),
             "VLAN 1: dropped by V9; learnt 111/1 to 1"),
        rule("V9", "CPU_COPY", {mac(0x0112, 0x00010200, 0x00000002, 0x4417)}, untagged(),
             "VLAN 1: 2u processor; learnt 111/1 to 1"),
        rule("V9", "known in another VLAN", {mac(0x0112, 0x00410200, 0x00000002, 0x0417)}, untagged(),
             flooded),
        rule("V9", "an empty bucket with the address", {mac(0x0112, 0x00010200, 0x00000002, 0x0017)},
             untagged(), flooded),
        rule("V9", "flood of unicast", {analyser(0x0E, 0x00000004)}, untagged(), onlyTo2),
        rule("V9", "flood of unicast is not that of groups", {analyser(0x0E, 0x00000004)}, untagged(group),
             flooded),
        rule("V9", "flood of groups", {analyser(0x0F, 0x00000004)}, untagged(group), onlyTo2),
        rule("V9", "flood of groups, broadcast", {analyser(0x0F, 0x00000004)}, untagged(broadcast), onlyTo2),
        rule("V9", "flood of groups is not that of unicast", {analyser(0x0F, 0x00000004)}, untagged(),
             flooded),
        rule("V9", "flood of groups is not that of IP groups", {analyser(0x0F, 0x00000004)},
             untagged(ipGroup), flooded),
        rule("V9", "flood of IP groups", {analyser(0x04, 0x00000004)}, untagged(ipGroup), onlyTo2),
        rule("V9", "flood of IP groups is not that of 01005E8", {analyser(0x04, 0x00000004)},
             untagged(0x01005E800102), flooded),
        rule("V9", "flood to nobody", {analyser(0x0E, 0x00000000)}, untagged(),
             "VLAN 1: dropped by V9; learnt 111/1 to 1")),
    nameOf<Step>);

// Groups: LOCKED and AGED_FLAG, a port mask above the low 24 bits. 239.129.1.2 of VLAN 1 is in row 0CA, of
// VLAN 10 in 07A.
INSTANTIATE_TEST_SUITE_P(
    Group, Vsc7390RulesTest,
    testing::Values(
        rule("V9", "group of 2 and 3", {mac(0x00CA, 0x00010000, 0x0C010102, 0x1E07)}, untagged(ipGroup),
             "VLAN 1: 2u 3u; learnt 111/1 to 1"),
        rule("V9", "group of nobody", {mac(0x00CA, 0x00010000, 0x00010102, 0x1E07)}, untagged(ipGroup),
             "VLAN 1: dropped by V9; learnt 111/1 to 1"),
        rule("V9", "group with other low bits", {mac(0x00CA, 0x00010000, 0x0C010103, 0x1E07)},
             untagged(ipGroup), flooded),
        rule("V9", "group of another VLAN in the row", {mac(0x00CA, 0x00410000, 0x0C010102, 0x1E07)},
             untagged(ipGroup), flooded),
        rule("V9", "locked only", {mac(0x00CA, 0x00010000, 0x0C010102, 0x1607)}, untagged(ipGroup), flooded),
        rule("V9", "group past VLANs", {mac(0x00CA, 0x00010000, 0x0C010102, 0x1E07), vlan(1, 0x00000018)},
             untagged(ipGroup), "VLAN 1: 2u 3u; learnt 111/1 to 1"),
        rule("V9", "group not past VLANs", {mac(0x00CA, 0x00010000, 0x0C010102, 0x0E07), vlan(1, 0x00000018)},
             untagged(ipGroup), onlyTo2),
        rule("V9", "group not past source masks", {mac(0x00CA, 0x00010000, 0x24010102, 0x1E07)},
             untagged(ipGroup), onlyTo2)),
    nameOf<Step>);

// Analyser 81: source mask of port 1; 26, 27 mirror and processor's copy. 30 to 3F: aggregation masks by the
// addresses' nibbles; from A to B 3. VLAN table: 29 VLAN_MIRROR.
INSTANTIATE_TEST_SUITE_P(
    Masks, Vsc7390RulesTest,
    testing::Values(
        rule("V10", "VLAN", {vlan(1, 0x0000001C)}, untagged(), onlyTo2),
        rule("V10", "VLAN, known outside", {vlan(1, 0x0000001C), mac(0x0112, 0x00010200, 0x00000002, 0x041F)},
             untagged(), "VLAN 1: dropped by V10; learnt 111/1 to 1"),
        rule("V10", "VLAN, known outside, IGNORE_VLAN",
             {vlan(1, 0x00000010), mac(0x0112, 0x00010200, 0x00000002, 0x1417)}, untagged(), onlyTo2),
        rule("V10", "source mask with the own port", {analyser(0x81, 0x00000006)}, untagged(),
             "VLAN 1: 1u 2u; learnt 111/1 to 1"),
        rule("V10", "source mask of nobody", {analyser(0x81, 0x00000000)}, untagged(),
             "VLAN 1: dropped by V10; learnt 111/1 to 1"),
        rule("V10", "source mask of others", {analyser(0x80, 0x00000000), analyser(0x82, 0x00000000)},
             untagged(), flooded),
        rule("V10", "known where it came in", {mac(0x0112, 0x00010200, 0x00000002, 0x040F)}, untagged(),
             "VLAN 1: dropped by V10; learnt 111/1 to 1"),
        rule("V10", "aggregation mask 3", {analyser(0x33, 0x00000004)}, untagged(), onlyTo2),
        rule("V10", "other aggregation masks",
             {analyser(0x30, 0), analyser(0x31, 0), analyser(0x32, 0), analyser(0x3F, 0)}, untagged(),
             flooded),
        rule("V10", "aggregation mask 8 of the lowest nibbles", {analyser(0x38, 0x00000004)},
             from(0x020000000008 ^ 0x2), "VLAN 1: 2u; learnt 11A/1 to 1"),
        rule("V10", "aggregation mask 1 of all nibbles", {analyser(0x31, 0x00000004)}, from(0x0A0B0C0D0E0F),
             "VLAN 1: 2u; learnt 68B/1 to 1"),
        rule("V10", "mirror", {analyser(0x81, 0x0400001C)}, untagged(), "VLAN 1: refused by V10"),
        rule("V10", "processor's copy", {analyser(0x81, 0x0800001C)}, untagged(), "VLAN 1: refused by V10"),
        rule("V10", "VLAN_MIRROR", {vlan(1, 0x27FFFFFC)}, untagged(), "VLAN 1: refused by V10"),
        rule("V10", "processor's port", {analyser(0x81, 0x0100001C)}, untagged(),
             "VLAN 1: 2u 3u 4u processor; learnt 111/1 to 1")),
    nameOf<Step>);

INSTANTIATE_TEST_SUITE_P(
    Sender, Vsc7390RulesTest,
    testing::Values(
        rule("V11", "no TX_EN", {port(2, 0x00, 0x00050001)}, untagged(), notTo2),
        rule("V11", "PORT_RST", {port(2, 0x00, 0x30050001)}, untagged(), notTo2),
        rule("V11", "MAC_TX_RST", {port(2, 0x00, 0x10050011)}, untagged(), notTo2),
        rule("V11", "MAC_RX_RST", {port(2, 0x00, 0x10050021)}, untagged(), flooded),
        rule("V11", "no RX_EN", {port(2, 0x00, 0x10040001)}, untagged(), flooded),
        rule("V11", "nobody at the other end", {unplugged(2)}, untagged(), notTo2),
        rule("V11", "a port of the upper block, off", {analyser(0x81, 0x00100004)}, untagged(), onlyTo2),
        rule("V11", "a port of the upper block, on", {analyser(0x81, 0x00100004), port(20, 0x00, 0x10050001)},
             untagged(), "VLAN 1: 2u 20u; learnt 111/1 to 1"),
        rule("V11", "nobody left", {analyser(0x81, 0x00000004), port(2, 0x00, 0x00050001)}, untagged(),
             "VLAN 1: dropped by V11; learnt 111/1 to 1")),
    nameOf<Step>);

// Port 24: 15:4 UNTAGGED_VID, 3 UNTAGGED_VID_ENA, 0 INSERT_TAG. Port 7A: 15 CFI, 14:12 priority.
INSTANTIATE_TEST_SUITE_P(
    Form, Vsc7390RulesTest,
    testing::Values(
        rule("V12", "INSERT_TAG, no tag", {port(2, 0x24, 0x0001)}, untagged(),
             "VLAN 1: 2t1.0 3u 4u; learnt 111/1 to 1"),
        rule("V12", "INSERT_TAG, priority of the port", {port(2, 0x24, 0x0001), port(1, 0x7A, 0x3001)},
             untagged(), "VLAN 1: 2t1.3 3u 4u; learnt 111/1 to 1"),
        rule("V12", "INSERT_TAG, tag with priority", {port(2, 0x24, 0x0001), port(1, 0x7A, 0x3001)},
             tagged(5, 6), "VLAN 5: 2t5.6 3u; learnt 151/5 to 1"),
        rule("V12", "INSERT_TAG, tag that may be dropped", {port(2, 0x24, 0x0001)},
             untagged().withTagPushed({5, 1, true}), "VLAN 5: 2t5.1d 3u; learnt 151/5 to 1"),
        rule("V12", "INSERT_TAG, CFI of the port", {port(2, 0x24, 0x0001), port(1, 0x7A, 0xB001)}, untagged(),
             "VLAN 1: 2t1.3d 3u 4u; learnt 111/1 to 1"),
        rule("V12", "INSERT_TAG, TCI_IGNORE, priority of the port",
             {port(2, 0x24, 0x0001), port(1, 0x7A, 0x3001), port(1, 0x79, 0x0100)}, tagged(77, 6),
             "VLAN 1: 2t1.3 3u 4u; learnt 111/1 to 1"),
        rule("V12", "INSERT_TAG, VID 0 with priority", {port(2, 0x24, 0x0001), port(1, 0x7A, 0x3001)},
             tagged(0, 6), "VLAN 1: 2t1.6 3u 4u; learnt 111/1 to 1"),
        rule("V12", "INSERT_TAG, KEEP_TAG", {port(2, 0x24, 0x0001), port(1, 0x79, 0x0080)}, tagged(5, 6),
             "VLAN 5: 2a5.6+5.6 3r; learnt 151/5 to 1"),
        rule("V12", "a sender that rewrites priorities", {port(4, 0x24, 0x00020000)}, untagged(),
             "VLAN 1: refused by V12"),
        rule("V12", "a sender that rewrites priorities, CPU_COPY",
             {port(2, 0x24, 0x00020000), mac(0x0112, 0x00010200, 0x00000002, 0x4417)}, untagged(),
             "VLAN 1: refused by V12"),
        rule("V12", "UNTAGGED_VID", {port(2, 0x24, 0x0019)}, untagged(), flooded),
        rule("V12", "UNTAGGED_VID, not enabled any more", {port(2, 0x24, 0x0019), port(2, 0x24, 0x0011)},
             untagged(), "VLAN 1: 2t1.0 3u 4u; learnt 111/1 to 1"),
        rule("V12", "UNTAGGED_VID, tag", {port(2, 0x24, 0x0059)}, tagged(5), flooded5),
        rule("V12", "UNTAGGED_VID, another VLAN", {port(2, 0x24, 0x0059)}, untagged(),
             "VLAN 1: 2t1.0 3u 4u; learnt 111/1 to 1"),
        rule("V12", "UNTAGGED_VID without ENA", {port(2, 0x24, 0x0011)}, untagged(),
             "VLAN 1: 2t1.0 3u 4u; learnt 111/1 to 1"),
        rule("V12", "UNTAGGED_VID without INSERT_TAG", {port(2, 0x24, 0x0058)}, untagged(), flooded),
        rule("V12", "UNTAGGED_VID, KEEP_TAG", {port(2, 0x24, 0x0059), port(1, 0x79, 0x0080)}, tagged(5),
             "VLAN 5: 2r 3r; learnt 151/5 to 1")),
    nameOf<Step>);

} // namespace

} // namespace simulation_test::vitesse_rules
