#pragma once

#include <array>
#include <cstdint>
#include <deque>

#include "simulation/88e6096/Global1.hpp"
#include "simulation/88e6096/Global2.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"
#include "simulation/88e6096/PortSettings.hpp"

namespace simulation::marvell {

/// What the registers of a chip say about frames, kept ready. Tables are not in it: they are asked where they
/// are.
class Snapshot {
public:
    static constexpr unsigned numberOfPorts = Marvell88E6096TestSide::numberOfPorts;

    /// All must outlive the snapshot.
    Snapshot(std::deque<Port> const& ports, Global1 const& global1, Global2 const& global2);

    void markPort(unsigned port) { _stalePorts |= bit(port); }
    void markChip() { _isChipStale = true; }
    void markAll();
    /// Reads anew what was marked.
    void refresh();

    PortSettings const& port(unsigned number) const { return _settings[number]; }

    bool allowsLongFrames() const { return _allowsLongFrames; }
    /// 11 to 15: no port.
    unsigned getCpuPort() const { return _cpuPort; }
    /// Whether frames to 01:80:C2:00:00:0x or 2x, by the last byte of the address, go to that port only.
    bool isForCpu(unsigned lastByte) const;
    bool hashesAddresses() const { return _hashesAddresses; }
    std::uint32_t getTrunkMask(unsigned hash) const { return _global2.getTrunkMask(hash); }
    std::uint32_t getTrunkMembers(unsigned trunk) const { return _global2.getTrunkMembers(trunk); }

private:
    void refreshChip();

    std::deque<Port> const& _ports;
    Global1 const& _global1;
    Global2 const& _global2;
    std::array<PortSettings, numberOfPorts> _settings;
    std::uint32_t _stalePorts = 0;
    bool _isChipStale = false;
    bool _allowsLongFrames = false;
    unsigned _cpuPort = 0;
    std::uint32_t _forCpu0x = 0;
    std::uint32_t _forCpu2x = 0;
    bool _hashesAddresses = false;
};

} // namespace simulation::marvell
