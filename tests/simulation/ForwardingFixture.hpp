#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "simulation/network/ChipForwarding.hpp"
#include "tests/simulation/BoardFixture.hpp"
#include "tests/simulation/Frames.hpp"

namespace simulation_test {

/// An 88E6096 whose ports all have link, registers as after reset.
class ForwardingFixture : public BoardFixture, protected Frames {
protected:
    using Decision = simulation::Decision;
    using Options = simulation::Marvell88E6096Options;

    ForwardingFixture();

    /// A new board, all links up.
    void restart(Options const& options = {});

    Decision receive(unsigned port, Frame const& frame);
    Decision decide(unsigned port, Frame const& frame);
    /// Ports that a frame leaves by, bit n for port n.
    std::uint32_t ports(unsigned port, Frame const& frame);
    /// The number of the rule that had the last say.
    static std::string lastRule(Decision const& decision);

    /// The port's register with some bits changed.
    void change(unsigned port, unsigned reg, unsigned mask, unsigned bits);
    /// 802.1QMode: 0 off, 1 fallback, 2 check, 3 secure.
    void setMode(unsigned port, unsigned mode) { change(port, 0x08, 0x0C00, mode << 10); }
    void setState(unsigned port, unsigned state) { change(port, 0x04, 0x0003, state); }

    /// A VLAN with FID = VID; codes of ports 0 to 10 as a text of digits: 0 member, 1 untagged, 2 tagged, 3
    /// no member.
    void addVlan(unsigned vid, std::string const& codes, unsigned sid = 0);
    /// Codes of ports 0 to 10: 0 own state, 1 blocking, 2 learning, 3 forwarding.
    void addStates(unsigned sid, std::string const& codes);
    /// \param data bits 14:4 port vector, 3:0 state; 15 trunk.
    void addAddress(unsigned fid, Frame::Address address, unsigned data);
    /// Data of the entry, 0 when there is none.
    unsigned addressData(unsigned fid, Frame::Address address);

    unsigned counter(unsigned port, unsigned number) { return chip().getCounter(port, number); }
    unsigned inFiltered(unsigned port) { return chip().peek("port " + std::to_string(port), 0x12); }
    unsigned outFiltered(unsigned port) { return chip().peek("port " + std::to_string(port), 0x13); }

private:
    void stageAddress(Frame::Address address);
};

} // namespace simulation_test
