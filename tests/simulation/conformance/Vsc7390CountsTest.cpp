// What a VSC7390 counts.

#include "tests/simulation/conformance/VitesseRules.hpp"

namespace simulation_test::vitesse_rules {

namespace {

class Vsc7390CountsTest : public VitesseRules {
protected:
    // All counters that are not 0: port/address+value.
    std::string counted() {
        std::string text;
        for (unsigned port = 0; port < 24; ++port) {
            for (unsigned address = 0x50; address <= 0x5B; ++address) {
                unsigned const value = readPort(port, address);
                text += value == 0
                            ? ""
                            : fmt::format("{}{}/{:02X}+{}", text.empty() ? "" : " ", port, address, value);
            }
        }
        return text;
    }
};

TEST_P(Vsc7390CountsTest, Frame) {
    auto const& rule = GetParam();
    decide(rule.frame, 1);
    EXPECT_EQ(counted(), "");
    Decision const decision = receive(rule.frame, 1);
    EXPECT_EQ(counted(), rule.outcome) << decision.describe();
}

// In and out: 50 and 51 octets, 52 and 57 packets, 53 and 58 of them to groups and broadcast. In: 54 errors,
// 55 drops. Port 2 alone gets the frames.
Step toPort2() {
    return analyser(0x81, 0x00000004);
}

INSTANTIATE_TEST_SUITE_P(
    Good, Vsc7390CountsTest,
    testing::Values(rule("V12", "unicast", {toPort2()}, untagged(), "1/50+64 1/52+1 2/51+64 2/57+1"),
                    rule("V12", "group", {toPort2()}, untagged(group),
                         "1/50+64 1/52+1 1/53+1 2/51+64 2/57+1 2/58+1"),
                    rule("V12", "broadcast", {toPort2()}, untagged(broadcast),
                         "1/50+64 1/52+1 1/53+1 2/51+64 2/57+1 2/58+1"),
                    rule("V12", "a tag less", {toPort2()}, tagged(5), "1/50+68 1/52+1 2/51+64 2/57+1"),
                    rule("V12", "a tag more", {toPort2(), port(2, 0x24, 0x0001)}, untagged(),
                         "1/50+64 1/52+1 2/51+68 2/57+1"),
                    rule("V12", "two ports", {analyser(0x81, 0x0000000C)}, untagged(),
                         "1/50+64 1/52+1 2/51+64 2/57+1 3/51+64 3/57+1"),
                    rule("V12", "back to the own port", {analyser(0x81, 0x00000002)}, untagged(),
                         "1/50+64 1/51+64 1/52+1 1/57+1")),
    nameOf<Step>);

INSTANTIATE_TEST_SUITE_P(
    Dropped, Vsc7390CountsTest,
    testing::Values(rule("V1", "off", {port(1, 0x00, 0x10040001)}, untagged(), ""),
                    rule("V2", "bad FCS", {}, damaged(), "1/50+64 1/52+1 1/54+1"),
                    rule("V2", "short", {}, sized(63), "1/50+63 1/52+1 1/54+1"),
                    rule("V2", "long", {}, sized(1519), "1/50+1519 1/52+1 1/54+1"),
                    rule("V3", "pause", {}, pause(), "1/50+64 1/52+1 1/53+1"),
                    rule("V3", "to bridges", {}, untagged(bridges), "1/50+64 1/52+1 1/53+1"),
                    rule("V4", "tag", {port(1, 0x6E, 0x02)}, tagged(5), "1/50+68 1/52+1 1/55+1"),
                    rule("V6", "not received", {analyser(0x10, 0x01FFFFFD)}, untagged(group),
                         "1/50+64 1/52+1 1/53+1 1/55+1"),
                    rule("V7", "no member", {analyser(0x05, 0x00000002)}, tagged(6), "1/50+68 1/52+1 1/55+1"),
                    rule("V9", "nowhere to flood", {analyser(0x0E, 0x00000000)}, untagged(),
                         "1/50+64 1/52+1"),
                    rule("V10", "no path", {analyser(0x81, 0x00000000)}, untagged(), "1/50+64 1/52+1")),
    nameOf<Step>);

} // namespace

} // namespace simulation_test::vitesse_rules
