#pragma once

#include <cstdint>

#include "simulation/88e6096/Port.hpp"

namespace simulation::marvell {

/// What the registers of a port say about frames.
struct PortSettings {
    PortSettings() = default;
    explicit PortSettings(Port const& port);

    bool hasLink = false;

    unsigned state = 0;
    unsigned saFiltering = 0;
    unsigned egressMode = 0;
    bool hasHeader = false;
    unsigned frameMode = 0;
    bool isTunnel = false;
    bool floodsUnicast = false;
    bool floodsGroups = false;

    bool isTrunk = false;
    unsigned trunkId = 0;
    unsigned fid = 0;
    /// Bit n for port n.
    std::uint32_t vlanTable = 0;

    unsigned defaultPriority = 0;
    bool isVidForced = false;
    unsigned defaultVid = 0;

    bool ignoresFcs = false;
    unsigned mode8021Q = 0;
    bool discardsTagged = false;
    bool discardsUntagged = false;
    bool mapsDa = false;

    bool isLocked = false;
    std::uint32_t associationVector = 0;
};

} // namespace simulation::marvell
