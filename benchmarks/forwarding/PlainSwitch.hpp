#pragma once

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "simulation/network/Decision.hpp"
#include "simulation/network/EthernetFrame.hpp"

namespace benchmarks {

/// A switch that does nothing but look into the tables that a chip has, count, and make a copy for each port
/// that sends. Plain arrays and one hash table; no rules that are written down, no reasons, no options, no
/// lock, no clock but a number. Used by one thread.
class PlainSwitch {
public:
    using Frame = simulation::EthernetFrame;
    using Form = simulation::Decision::Form;

    static constexpr unsigned mostPorts = 32;

    struct Vlan {
        /// Bit n for port n.
        std::uint32_t members = 0;
        unsigned fid = 0;
        /// Of its ports' states.
        unsigned sid = 0;
        std::array<Form, mostPorts> forms{};
    };

    struct Port {
        unsigned vid = 0;
        /// The frame's own tag says nothing.
        bool forcesVid = false;
        /// Where its frames may go.
        std::uint32_t mask = 0;
        std::size_t longest = 1518;
        bool learns = true;
    };

    struct Copy {
        unsigned port;
        Form form;
        Frame frame;
    };

    std::vector<Vlan> vlans = std::vector<Vlan>(4096);
    std::vector<Port> ports = std::vector<Port>(mostPorts);
    /// The ports that forward, by the number of the states.
    std::array<std::uint32_t, 64> states{};
    /// The members of trunks that send, by a hash of both addresses.
    std::array<std::uint32_t, 16> trunkMasks{};
    /// Where frames to unknown addresses go, and what sends.
    std::uint32_t flood = 0;
    std::uint32_t senders = 0;

    /// The copies stay until the next frame.
    std::vector<Copy> const& receive(unsigned port, Frame const& frame);

    /// A register of a port has changed: takes its settings from its registers.
    void decode(unsigned port, std::array<std::uint32_t, 8> const& registers);

private:
    /// FID above the 48 bits of the address.
    using Key = std::uint64_t;

    struct Address {
        Key key = 0;
        unsigned port = 0;
        std::uint64_t seen = 0;
    };

    using Counters = std::array<std::uint32_t, 8>;

    static Key keyOf(unsigned fid, Frame::Address address) { return Key{fid} << 48 | address; }
    /// The place of the key, or where it would be.
    Address& place(Key key);
    static void count(Counters& counters, Frame const& frame);

    static constexpr unsigned addressBits = 14;
    std::vector<Address> _addresses = std::vector<Address>(1U << addressBits);
    std::array<Counters, mostPorts> _received{};
    std::array<Counters, mostPorts> _sent{};
    std::uint64_t _now = 0;
    std::vector<Copy> _copies;
};

} // namespace benchmarks
