#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulation/network/ChipForwarding.hpp"
#include "tests/simulation/Vsc7390Fixture.hpp"

namespace simulation_test {

/// Frames for a VSC7390 whose ports 0 to 5 are on; 3 gets the frames. All masks are as after a reset.
class Vsc7390ForwardingFixture : public Vsc7390Fixture {
protected:
    using Decision = simulation::Decision;
    using EthernetFrame = simulation::EthernetFrame;
    using Form = Decision::Form;

    static constexpr std::uint64_t station = 0x020000000001;
    static constexpr std::uint64_t other = 0x020000000002;
    static constexpr std::uint64_t multicast = 0x030000000009;
    /// 239.129.1.2; in VLAN 1 its row is 0x0CA.
    static constexpr std::uint64_t group = 0x01005E010102;
    static constexpr std::uint64_t broadcast = 0xFFFFFFFFFFFF;

    /// Sender and receiver on, full duplex, 1000 Mbit/s.
    static constexpr unsigned on = 0x10050001;

    /// A frame of 100 bytes.
    static EthernetFrame frameTo(std::uint64_t destination) {
        return EthernetFrame::make(destination, station, 0x0800, EthernetFrame::Bytes(100 - 18, 0x55));
    }

    static EthernetFrame tagged(EthernetFrame const& frame, unsigned vid, unsigned priority = 0) {
        return frame.withTagPushed({vid, priority, false});
    }

    Vsc7390ForwardingFixture() { start(); }

    void start(Options const& options = {}) {
        rebuild(options);
        for (unsigned port = 0; port < 6; ++port) {
            writePort(port, 0x00, on);
        }
    }

    Decision decide(EthernetFrame const& frame, unsigned port = 3) {
        return chip().getForwarding()->decide(port, frame);
    }
    Decision receive(EthernetFrame const& frame, unsigned port = 3) {
        return chip().getForwarding()->receive(port, frame);
    }
    std::uint32_t portsOf(EthernetFrame const& frame, unsigned port = 3) {
        return decide(frame, port).getPorts();
    }
    /// The rule that ended a frame's way to no port.
    std::string end(EthernetFrame const& frame, unsigned port = 3) {
        Decision const decision = decide(frame, port);
        EXPECT_EQ(decision.getPorts(), 0U);
        EXPECT_FALSE(decision.dropReason.empty());
        return std::string(decision.rules.back());
    }

    std::vector<std::uint32_t> counters(unsigned port) {
        std::vector<std::uint32_t> values;
        for (unsigned counter = 0x50; counter <= 0x5B; ++counter) {
            values.push_back(readPort(port, counter));
        }
        return values;
    }
};

} // namespace simulation_test
