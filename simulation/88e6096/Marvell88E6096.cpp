#include "simulation/88e6096/Marvell88E6096.hpp"

#include "simulation/88e6096/Marvell88E6096TestAccess.hpp"
#include "simulation/88e6096/Registers.hpp"
#include "simulation/BoardBuses.hpp"
#include "simulation/MdioBus.hpp"

namespace simulation {

namespace {

std::unique_ptr<marvell::Phy> makePhy(marvell::Context& context, unsigned number) {
    return std::make_unique<marvell::Phy>(context, number);
}

marvell::Global2::Phys makePhys(marvell::Context& context) {
    marvell::Global2::Phys phys;
    for (unsigned number = 0; number < phys.size(); ++number) {
        phys[number] = makePhy(context, number);
    }
    return phys;
}

} // namespace

Marvell88E6096::Marvell88E6096(Services& services, unsigned id, Marvell88E6096Options const& options)
    : _id(id),
      _context{services, "switch " + std::to_string(id), options},
      _phys(makePhys(_context)),
      _global1(_context),
      _global2(_context, _phys),
      _smi(_context, [this](unsigned device) -> RegisterFile& { return findDevice(device); }),
      _testSide(std::make_unique<Marvell88E6096TestAccess>(*this)) {
    for (unsigned number = 0; number < _ports.size(); ++number) {
        marvell::Phy const* const phy = number < _phys.size() ? _phys[number].get() : nullptr;
        _ports[number] = std::make_unique<marvell::Port>(_context, number, phy);
    }
}

Marvell88E6096::~Marvell88E6096() = default;

std::string Marvell88E6096::getModel() const {
    return "88e6096";
}

void Marvell88E6096::attach(BoardBuses& buses) {
    buses.getMdioBus().attach(_id, _smi);
}

ChipTestSide& Marvell88E6096::getTestSide() {
    return *_testSide;
}

MdioDevice& Marvell88E6096::getMdioDevice() {
    return _smi;
}

Marvell88E6096TestSide& Marvell88E6096::getMarvellTestSide() {
    return *_testSide;
}

RegisterFile& Marvell88E6096::findDevice(unsigned device) {
    if (device >= marvell::firstPortDevice && device < marvell::firstPortDevice + _ports.size()) {
        return _ports[device - marvell::firstPortDevice]->getRegisters();
    }
    if (device == marvell::global1Device) {
        return _global1.getRegisters();
    }
    if (device == marvell::global2Device) {
        return _global2.getRegisters();
    }
    auto& unknown = _unknownDevices[device];
    if (unknown == nullptr) {
        unknown = std::make_unique<RegisterFile>(_context.services, _context.chip,
                                                 "device " + std::to_string(device), RegisterTable());
    }
    return *unknown;
}

std::vector<RegisterFile*> Marvell88E6096::getUnits() {
    std::vector<RegisterFile*> units;
    for (auto const& port : _ports) {
        units.push_back(&port->getRegisters());
    }
    units.push_back(&_global1.getRegisters());
    units.push_back(&_global2.getRegisters());
    for (auto const& phy : _phys) {
        units.push_back(&phy->getRegisters());
    }
    return units;
}

} // namespace simulation
