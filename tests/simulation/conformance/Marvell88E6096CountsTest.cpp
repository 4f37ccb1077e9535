// What an 88E6096 counts.

#include <set>

#include "simulation/88e6096/FrameCounters.hpp"
#include "tests/simulation/conformance/MarvellRules.hpp"

namespace simulation_test::marvell_rules {

namespace {

class Marvell88E6096CountsTest : public MarvellRules {
protected:
    // All counters that are not 0: port/number+value, then InFiltered and OutFiltered.
    std::string counted() {
        std::string text;
        for (unsigned port = 0; port < 11; ++port) {
            for (unsigned number = 0; number < 32; ++number) {
                unsigned const value = counter(port, number);
                text += value == 0
                            ? ""
                            : fmt::format("{}{}/{:02X}+{}", text.empty() ? "" : " ", port, number, value);
            }
        }
        return text + filtered();
    }
};

TEST_P(Marvell88E6096CountsTest, Frame) {
    auto const& rule = GetParam();
    decide(1, rule.frame);
    EXPECT_EQ(counted(), "");
    Decision const decision = receive(1, rule.frame);
    EXPECT_EQ(counted(), rule.outcome) << decision.describe();
}

// In: 00 good octets, 02 bad octets, 04 unicast, 07 multicast, 06 broadcast, 16 pause, 18 undersize, 19
// fragments, 1A oversize, 1B jabber, 1D FCS errors. Both: 08 to 0D by length. Out: 0E octets, 10 unicast, 12
// multicast, 13 broadcast. Port 2 alone gets the frames.
Step toPort2() {
    return set(0x11, 0x06, 0x0004);
}

INSTANTIATE_TEST_SUITE_P(
    Good, Marvell88E6096CountsTest,
    testing::Values(
        rule("M14", "unicast", {toPort2()}, untagged(), "1/00+64 1/04+1 1/08+1 2/08+1 2/0E+64 2/10+1"),
        rule("M14", "group", {toPort2()}, untagged(group), "1/00+64 1/07+1 1/08+1 2/08+1 2/0E+64 2/12+1"),
        rule("M14", "broadcast", {toPort2()}, untagged(broadcast),
             "1/00+64 1/06+1 1/08+1 2/08+1 2/0E+64 2/13+1"),
        rule("M14", "65 bytes", {toPort2()}, sized(65), "1/00+65 1/04+1 1/09+1 2/09+1 2/0E+65 2/10+1"),
        rule("M14", "127 bytes", {toPort2()}, sized(127), "1/00+127 1/04+1 1/09+1 2/09+1 2/0E+127 2/10+1"),
        rule("M14", "128 bytes", {toPort2()}, sized(128), "1/00+128 1/04+1 1/0A+1 2/0A+1 2/0E+128 2/10+1"),
        rule("M14", "255 bytes", {toPort2()}, sized(255), "1/00+255 1/04+1 1/0A+1 2/0A+1 2/0E+255 2/10+1"),
        rule("M14", "256 bytes", {toPort2()}, sized(256), "1/00+256 1/04+1 1/0B+1 2/0B+1 2/0E+256 2/10+1"),
        rule("M14", "511 bytes", {toPort2()}, sized(511), "1/00+511 1/04+1 1/0B+1 2/0B+1 2/0E+511 2/10+1"),
        rule("M14", "512 bytes", {toPort2()}, sized(512), "1/00+512 1/04+1 1/0C+1 2/0C+1 2/0E+512 2/10+1"),
        rule("M14", "1023 bytes", {toPort2()}, sized(1023),
             "1/00+1023 1/04+1 1/0C+1 2/0C+1 2/0E+1023 2/10+1"),
        rule("M14", "1024 bytes", {toPort2()}, sized(1024),
             "1/00+1024 1/04+1 1/0D+1 2/0D+1 2/0E+1024 2/10+1"),
        rule("M14", "a tag less", {toPort2(), set(0x12, 0x04, 0x107F)}, tagged(5),
             "1/00+68 1/04+1 1/09+1 2/08+1 2/0E+64 2/10+1"),
        rule("M14", "a tag more", {toPort2(), set(0x12, 0x04, 0x207F)}, untagged(),
             "1/00+64 1/04+1 1/08+1 2/09+1 2/0E+68 2/10+1"),
        rule("M14", "two ports", {set(0x11, 0x06, 0x000C)}, untagged(),
             "1/00+64 1/04+1 1/08+1 2/08+1 2/0E+64 2/10+1 3/08+1 3/0E+64 3/10+1"),
        rule("M14", "management", {set(0x1C, 0x05, 0x0008), set(0x1C, 0x03, 0x0001), set(0x1B, 0x1A, 0x0020)},
             untagged(bridges), "1/00+64 1/07+1 1/08+1 2/08+1 2/0E+64 2/12+1")),
    nameOf<Step>);

INSTANTIATE_TEST_SUITE_P(
    Dropped, Marvell88E6096CountsTest,
    testing::Values(
        rule("M1", "no link", {unplugged(1)}, untagged(), ""),
        rule("M2", "bad FCS", {}, damaged(64), "1/02+64 1/1D+1"),
        rule("M2", "short", {}, sized(63), "1/02+63 1/18+1"),
        rule("M2", "short with bad FCS", {}, damaged(63), "1/02+63 1/19+1"),
        rule("M2", "long", {}, sized(1519), "1/02+1519 1/1A+1"),
        rule("M2", "long with bad FCS", {}, damaged(1519), "1/02+1519 1/1B+1"),
        rule("M2", "as long as it may be with bad FCS", {}, damaged(1518), "1/02+1518 1/1D+1"),
        rule("M2", "pause", {}, pause(), "1/00+64 1/08+1 1/16+1"),
        rule("M3", "disabled", {set(0x11, 0x04, 0x007C)}, untagged(), ""),
        rule("M3", "disabled with bad FCS", {set(0x11, 0x04, 0x007C)}, damaged(64), ""),
        rule("M5", "filtered", {set(0x11, 0x08, 0x0180)}, untagged(),
             "1/00+64 1/04+1 1/08+1; InFiltered of 1"),
        rule("M7", "no such VLAN", {set(0x11, 0x08, 0x0C80)}, untagged(group),
             "1/00+64 1/07+1 1/08+1; InFiltered of 1"),
        rule("M10", "blocking", {set(0x11, 0x04, 0x007D)}, untagged(broadcast), "1/00+64 1/06+1 1/08+1"),
        rule("M12", "known elsewhere", {address(0, stationB, 0x0027)}, untagged(), "1/00+64 1/04+1 1/08+1"),
        rule("M12", "known outside the VLAN",
             {set(0x11, 0x08, 0x0C80), set(0x11, 0x06, 0x07FD), address(50, stationB, 0x0207)}, tagged(5),
             "1/00+68 1/04+1 1/09+1; OutFiltered of 5")),
    nameOf<Step>);

class Marvell88E6096CountersTest : public ForwardingFixture {};

TEST_F(Marvell88E6096CountersTest, EachMovesOrIsSaidToStay) {
    for (unsigned const octets : {0x00U, 0x0EU}) {
        chip().setCounter(1, octets, 0xFFFFFFFF); // the next frame reaches the high half
    }
    for (auto const& frame :
         {sized(64), sized(65), sized(128), sized(256), sized(512), sized(1024), sized(63), sized(1519),
          damaged(63), damaged(64), damaged(1519), pause(), untagged(group), untagged(broadcast)}) {
        receive(1, frame);
        receive(2, frame);
    }
    change(1, 0x08, 0x0F00, 0x0D00); // secure, DiscardUntagged
    receive(1, untagged());
    addAddress(5, stationB, 0x0027);
    addVlan(5, "03333333333");
    setMode(0, 2);
    receive(0, tagged(5));
    using simulation::marvell::FrameCounters;
    std::set<unsigned> still;
    for (auto const& counter : FrameCounters::stillCounters) {
        still.insert(counter.counter);
    }
    for (unsigned number = 0; number < 32; ++number) {
        EXPECT_EQ(counter(1, number) == 0, still.count(number) == 1) << number;
    }
    still.clear();
    for (auto const& counter : FrameCounters::stillRegisters) {
        still.insert(counter.counter);
    }
    for (unsigned reg = 0x10; reg <= 0x13; ++reg) {
        EXPECT_EQ(read(port0 + 1, reg) == 0, still.count(reg) == 1) << reg;
    }
}

} // namespace

} // namespace simulation_test::marvell_rules
