#pragma once

#include <fmt/format.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/simulation/ForwardingFixture.hpp"
#include "tests/simulation/conformance/Rule.hpp"

/// The registers of an 88E6096 and frames. Port 1 gets the frames. VLANTable lets it send to ports 2, 3 and
/// 4; all ports have link, the other registers hold what a reset leaves.
namespace simulation_test::marvell_rules {

class MarvellRules;
using Step = std::function<void(MarvellRules&)>;
using MarvellRule = Rule<Step>;

class MarvellRules : public ForwardingFixture, public testing::WithParamInterface<MarvellRule> {
public:
    using BoardFixture::chip;
    using BoardFixture::loadStu;
    using BoardFixture::loadVtu;
    using BoardFixture::write;
    using ForwardingFixture::addAddress;
    using ForwardingFixture::addStates;

protected:
    // Ports of VLAN 5: 1 and 2 unmodified, 3 untagged, 4 tagged. VLAN 6 is the same without port 1.
    MarvellRules() {
        write(port0 + 1, 0x06, 0x001C);
        loadVtu(5, 50, 0, 0x1003, 0x3332, 0x0333);
        loadVtu(6, 60, 0, 0x1033, 0x3332, 0x0333);
        for (Step const& step : GetParam().steps) {
            step(*this);
        }
    }

    // What the address table has of the sender: "; learnt 50/0027" with FID and data.
    std::string learnt(bool isLearnt) {
        std::string text;
        for (unsigned fid = 0; fid < 64; ++fid) {
            if (unsigned const data = addressData(fid, GetParam().frame.getSource())) {
                text += fmt::format("; {} {}/{:04X}", isLearnt ? "learnt" : "kept", fid, data);
            }
        }
        return isLearnt && text.empty() ? "; learnt nowhere" : text;
    }

    // Bits of the global status: 5 VTUProb, 3 ATUProb.
    std::string violations() {
        unsigned const status = chip().peek("global 1", 0x00);
        return fmt::format("{}{}", (status & 0x20) == 0 ? "" : "; VTUProb",
                           (status & 0x08) == 0 ? "" : "; ATUProb");
    }

    std::string filtered() {
        std::string text;
        for (unsigned port = 0; port < 11; ++port) {
            text += inFiltered(port) == 0 ? "" : fmt::format("; InFiltered of {}", port);
            text += outFiltered(port) == 0 ? "" : fmt::format("; OutFiltered of {}", port);
        }
        return text;
    }
};

inline MarvellRule rule(char const* number, char const* question, std::vector<Step> const& steps,
                        Frames::Frame const& frame, char const* outcome) {
    return {number, question, steps, frame, outcome};
}

// A register of a device: 10 to 1A port 0 to 10, 1B and 1C global.
inline Step set(unsigned device, unsigned reg, unsigned value) {
    return [=](MarvellRules& test) { test.write(device, reg, value); };
}
inline Step states(unsigned sid, unsigned data0, unsigned data1) {
    return [=](MarvellRules& test) { test.loadStu(sid, data0, data1, 0); };
}
// VLAN 5 once more, with its states in the STU.
inline Step vlan5(unsigned sid) {
    return [=](MarvellRules& test) { test.loadVtu(5, 50, sid, 0x1003, 0x3332, 0x0333); };
}
inline Step address(unsigned fid, Frames::Frame::Address address, unsigned data) {
    return [=](MarvellRules& test) { test.addAddress(fid, address, data); };
}
inline Step unplugged(unsigned port) {
    return [=](MarvellRules& test) { test.chip().unplugLink(port); };
}
inline Step level(unsigned port, bool up) {
    return [=](MarvellRules& test) { test.chip().setLinkLevel(port, up); };
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
inline Frames::Frame sized(std::size_t octets, bool isTagged = false) {
    return Frames::sized(octets, Frames::Frame::Fcs::good, isTagged ? tagged(1) : untagged());
}
inline Frames::Frame damaged(std::size_t octets) {
    return Frames::sized(octets, Frames::Frame::Fcs::bad);
}
inline Frames::Frame pause() {
    return Frames::Frame::make(0x0180C2000001, Frames::stationA, 0x8808, {0x00, 0x01, 0xFF, 0xFF});
}

constexpr auto stationA = Frames::stationA;
constexpr auto stationB = Frames::stationB;
constexpr auto group = Frames::group;
constexpr auto broadcast = Frames::broadcast;
constexpr Frames::Frame::Address bridges = 0x0180C2000000;
constexpr Frames::Frame::Address garp = 0x0180C2000021;

} // namespace simulation_test::marvell_rules
