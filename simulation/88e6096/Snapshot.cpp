#include "simulation/88e6096/Snapshot.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

namespace {

constexpr Field lowNibble{"Low", 3, 0};
constexpr unsigned firstOf2x = 0x20;

} // namespace

Snapshot::Snapshot(std::deque<Port> const& ports, Global1 const& global1, Global2 const& global2)
    : _ports(ports), _global1(global1), _global2(global2) {
    markAll();
}

void Snapshot::markAll() {
    _stalePorts = bit(numberOfPorts) - 1;
    _isChipStale = true;
}

void Snapshot::refresh() {
    for (unsigned number = 0; _stalePorts != 0; ++number) {
        if ((_stalePorts & bit(number)) != 0) {
            _settings[number] = PortSettings(_ports[number]);
            _stalePorts &= ~bit(number);
        }
    }
    if (_isChipStale) {
        refreshChip();
        _isChipStale = false;
    }
}

void Snapshot::refreshChip() {
    _allowsLongFrames = _global1.getStored(global1::control, global1::maxFrame) != 0;
    _cpuPort = _global1.getStored(global1::monitorControl, global1::cpuDestination);
    bool const isOn = _global2.getStored(global2::switchManagement, global2::reservedToCpu) != 0;
    _forCpu0x = isOn ? _global2.getStored(global2::managementEnable0x) : 0;
    _forCpu2x = isOn ? _global2.getStored(global2::managementEnable2x) : 0;
    _hashesAddresses = _global2.getStored(global2::trunkMask, global2::hashTrunk) != 0;
}

bool Snapshot::isForCpu(unsigned lastByte) const {
    std::uint32_t const enabled = lastByte < firstOf2x ? _forCpu0x : _forCpu2x;
    return (enabled & bit(lowNibble.get(lastByte))) != 0;
}

} // namespace simulation::marvell
