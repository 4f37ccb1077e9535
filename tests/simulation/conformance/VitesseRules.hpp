#pragma once

#include <fmt/format.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/simulation/Vsc7390ForwardingFixture.hpp"
#include "tests/simulation/conformance/Rule.hpp"

/// The registers of a VSC7390 and frames. Ports 0 to 5 are on; port 1 gets the frames, and its source mask
/// has ports 2, 3 and 4. The other registers hold what a reset leaves.
namespace simulation_test::vitesse_rules {

class VitesseRules;
using Step = std::function<void(VitesseRules&)>;
using VitesseRule = Rule<Step>;

class VitesseRules : public Vsc7390ForwardingFixture, public testing::WithParamInterface<VitesseRule> {
public:
    using Vsc7390Fixture::chip;
    using Vsc7390Fixture::writeAnalyser;
    using Vsc7390Fixture::writeMac;
    using Vsc7390Fixture::writePort;
    using Vsc7390Fixture::writeVlan;

protected:
    // VLAN 5 has ports 1, 2 and 3, VLAN 6 ports 2, 3 and 4. Others have all.
    VitesseRules() {
        writeAnalyser(0x81, 0x0000001C);
        writeVlan(5, 0x00000038);
        writeVlan(6, 0x00000070);
        for (Step const& step : GetParam().steps) {
            step(*this);
        }
    }

    // What the MAC table has of the sender: "; learnt 111/1 to 1" with row, VID and destination.
    std::string learnt(bool isLearnt) {
        std::string text;
        for (auto const& [place, entry] : chip().getMacTable()) {
            if (entry.mac == GetParam().frame.getSource()) {
                text += fmt::format("; {} {:03X}/{} to {}{}", isLearnt ? "learnt" : "kept", place.first,
                                    entry.vid, entry.destination, entry.aged ? " aged" : "");
            }
        }
        return isLearnt && text.empty() ? "; learnt nowhere" : text;
    }

    std::string drops() {
        std::string text;
        for (unsigned port = 0; port < 24; ++port) {
            text += readPort(port, 0x55) == 0 ? "" : fmt::format("; drop of {}", port);
        }
        return text;
    }
};

inline VitesseRule rule(char const* number, char const* question, std::vector<Step> const& steps,
                        Frames::Frame const& frame, char const* outcome) {
    return {number, question, steps, frame, outcome};
}

inline Step port(unsigned number, unsigned reg, unsigned value) {
    return [=](VitesseRules& test) { test.writePort(number, reg, value); };
}
inline Step analyser(unsigned reg, unsigned value) {
    return [=](VitesseRules& test) { test.writeAnalyser(reg, value); };
}
inline Step vlan(unsigned vid, unsigned word) {
    return [=](VitesseRules& test) { test.writeVlan(vid, word); };
}
inline Step mac(unsigned index, unsigned high, unsigned low, unsigned word) {
    return [=](VitesseRules& test) { test.writeMac(index, high, low, word); };
}
inline Step unplugged(unsigned number) {
    return [=](VitesseRules& test) { test.chip().unplugLink(number); };
}

inline Frames::Frame untagged(Frames::Frame::Address to = Frames::stationB) {
    return Frames::untagged(to);
}
inline Frames::Frame from(Frames::Frame::Address source) {
    return Frames::untagged(Frames::stationB, source);
}
inline Frames::Frame tagged(unsigned vid, unsigned priority = 0) {
    return Frames::tagged(vid, priority);
}
/// VID 77 before VID 5.
inline Frames::Frame twiceTagged() {
    return Frames::tagged(tagged(5), 77);
}
inline Frames::Frame sized(std::size_t octets, Frames::Frame const& frame = untagged()) {
    return Frames::sized(octets, Frames::Frame::Fcs::good, frame);
}
inline Frames::Frame damaged(Frames::Frame::Address to = Frames::stationB) {
    return Frames::sized(64, Frames::Frame::Fcs::bad, untagged(to));
}
/// MAC control: opcode 1 is pause.
inline Frames::Frame control(Frames::Frame::Address to) {
    return Frames::Frame::make(to, Frames::stationA, 0x8808, {0x00, 0x01, 0xFF, 0xFF});
}
inline Frames::Frame pause() {
    return control(0x0180C2000001);
}

constexpr auto stationB = Frames::stationB;
constexpr auto group = Frames::group;
constexpr auto ipGroup = Frames::ipGroup;
constexpr auto broadcast = Frames::broadcast;
constexpr Frames::Frame::Address bridges = 0x0180C2000000;

} // namespace simulation_test::vitesse_rules
