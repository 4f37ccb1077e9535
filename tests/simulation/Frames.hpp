#pragma once

#include <cstddef>

#include "simulation/network/EthernetFrame.hpp"

namespace simulation_test {

/// Stations and the frames that tests send between them: of 64 bytes, or 68 with a tag, unless a test asks
/// for others.
struct Frames {
    using Frame = simulation::EthernetFrame;

    static constexpr Frame::Address stationA = 0x020000000001;
    static constexpr Frame::Address stationB = 0x020000000002;
    static constexpr Frame::Address group = 0x03000000000A;
    /// Of 239.129.1.2.
    static constexpr Frame::Address ipGroup = 0x01005E010102;
    static constexpr Frame::Address broadcast = 0xFFFFFFFFFFFF;

    static Frame untagged(Frame::Address to = stationB, Frame::Address from = stationA) {
        return Frame::make(to, from, 0x0800);
    }

    static Frame tagged(Frame const& frame, unsigned vid, unsigned priority = 0) {
        return frame.withTagPushed({vid, priority, false});
    }
    static Frame tagged(unsigned vid, unsigned priority = 0, Frame::Address to = stationB,
                        Frame::Address from = stationA) {
        return tagged(untagged(to, from), vid, priority);
    }

    /// A frame cut or filled up.
    /// \param octets on the wire, FCS included.
    static Frame sized(std::size_t octets, Frame::Fcs fcs = Frame::Fcs::good,
                       Frame const& frame = untagged()) {
        Frame::Bytes bytes = frame.getBytes();
        bytes.resize(octets - Frame::fcsLength);
        return Frame(bytes, fcs);
    }
};

} // namespace simulation_test
