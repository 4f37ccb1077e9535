#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulation/network/ChipForwarding.hpp"
#include "tests/simulation/Frames.hpp"
#include "tests/simulation/Vsc7390Fixture.hpp"

namespace simulation_test {

/// Frames for a VSC7390 whose ports 0 to 5 are on; 3 gets the frames. All masks are as after a reset.
class Vsc7390ForwardingFixture : public Vsc7390Fixture, protected Frames {
protected:
    using Decision = simulation::Decision;
    using Form = Decision::Form;

    /// Sender and receiver on, full duplex, 1000 Mbit/s.
    static constexpr unsigned on = 0x10050001;

    Vsc7390ForwardingFixture() { start(); }

    void start(Options const& options = {}) {
        rebuild(options);
        for (unsigned port = 0; port < 6; ++port) {
            writePort(port, 0x00, on);
        }
    }

    Decision decide(Frame const& frame, unsigned port = 3) {
        return chip().getForwarding()->decide(port, frame);
    }
    Decision receive(Frame const& frame, unsigned port = 3) {
        return chip().getForwarding()->receive(port, frame);
    }
    std::uint32_t portsOf(Frame const& frame, unsigned port = 3) { return decide(frame, port).getPorts(); }
    /// The rule that ended a frame's way to no port.
    std::string end(Frame const& frame, unsigned port = 3) {
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
