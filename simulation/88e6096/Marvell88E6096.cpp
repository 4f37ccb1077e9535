#include "simulation/88e6096/Marvell88E6096.hpp"

#include "simulation/BoardBuses.hpp"
#include "simulation/MdioBus.hpp"

namespace simulation {

Marvell88E6096::Marvell88E6096(Services& services, unsigned id, Marvell88E6096Options const& options)
    : _address(id),
      _context{services, "switch " + std::to_string(id), options},
      _global1(_context, [this] { reset(); }),
      _global2(_context, _phys),
      _forwarding(_context, _ports, _global1, _global2),
      _smi(_context, [this](unsigned device) -> RegisterFile& { return findDevice(device); }) {
    for (unsigned number = 0; number < Marvell88E6096TestSide::numberOfPhys; ++number) {
        _phys.emplace_back(_context, number);
    }
    for (unsigned number = 0; number < Marvell88E6096TestSide::numberOfPorts; ++number) {
        _ports.emplace_back(_context, number, number < _phys.size() ? &_phys[number] : nullptr);
    }
    _units.addAll(_ports);
    _units.add(_global1);
    _units.add(_global2);
    _units.addAll(_phys);
    listen();
    _testSide = std::make_unique<Marvell88E6096TestSide>(*this);
}

void Marvell88E6096::reset() {
    for (marvell::Phy& phy : _phys) {
        phy.reset();
    }
    for (marvell::Port& port : _ports) {
        port.reset();
    }
    _global1.resetAll();
    _global2.resetAll();
    _forwarding.markAll();
}

void Marvell88E6096::listen() {
    for (unsigned number = 0; number < _ports.size(); ++number) {
        auto const changed = [this, number](unsigned /*address*/) { _forwarding.markPort(number); };
        _ports[number].onChange(changed);
        if (number < _phys.size()) {
            _phys[number].onChange(changed);
        }
    }
    _global1.onChange([this](unsigned /*address*/) {
        _global1.getAtu().followAgeTime();
        _forwarding.markChip();
    });
    _global2.onChange([this](unsigned /*address*/) { _forwarding.markChip(); });
}

Marvell88E6096::~Marvell88E6096() = default;

std::string Marvell88E6096::getModel() const {
    return "88e6096";
}

void Marvell88E6096::attach(BoardBuses& buses) {
    _mdioBus = &buses.getMdioBus();
    _mdioBus->attach(_address, _smi);
}

ChipTestSide& Marvell88E6096::getTestSide() {
    return *_testSide;
}

RegisterFile& Marvell88E6096::findDevice(unsigned device) {
    UnitPlace const place{UnitPlace::Space::device, 0, device};
    if (RegisterFile* const unit = _units.find(place)) {
        return *unit;
    }
    auto& unknown = _unknownDevices[device];
    if (unknown == nullptr) {
        unknown = std::make_unique<RegisterFile>(
            _context.services, UnitIdentity(_context.chip, "device " + std::to_string(device), place));
    }
    return *unknown;
}

} // namespace simulation
