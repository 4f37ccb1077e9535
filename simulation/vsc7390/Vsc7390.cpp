#include "simulation/vsc7390/Vsc7390.hpp"

#include "simulation/BoardBuses.hpp"

namespace simulation {

namespace {

using namespace vitesse;

/// Of the unit that initialises the chip's memories.
enum MemoryRegister : unsigned { initialise = 0x00, result = 0x01 };

constexpr unsigned wordsOfCapture = 256;

RegisterTable memoryTable() {
    return {Register(initialise, "MEMINIT").staging().field("Command", 31, 0),
            Register(result, "MEMRES").staging().field("Result", 31, 0)};
}

RegisterTable captureTable() {
    RegisterTable table;
    for (unsigned word = 0; word < wordsOfCapture; ++word) {
        table.add(
            Register(word, "Word" + std::to_string(word)).unstable().changedByRead().field("Data", 31, 0));
    }
    return table;
}

} // namespace

Vsc7390::Vsc7390(Services& services, unsigned id, Vsc7390Options const& options)
    : _context{services, "switch " + std::to_string(id), options},
      _analyser(_context),
      _arbiter(_context,
               [this](unsigned port) { return port < _ports.size() && _ports[port].getMac().receives; }),
      _memory(services,
              {_context.chip,
               UnitKind::memory,
               0,
               {UnitPlace::Space::block, block::memoryAndMii, block::memorySubBlock}},
              memoryTable()),
      _system(_context, [this] { reset(); }),
      _bus(_context, _system, _units) {
    for (unsigned number = 0; number < Vsc7390TestSide::numberOfPorts; ++number) {
        _ports.emplace_back(_context, number);
    }
    for (unsigned number = 0; number < Vsc7390TestSide::numberOfPhys; ++number) {
        _phys.emplace_back(_context, number);
    }
    for (unsigned number = 0; number < block::miiControllers; ++number) {
        _miis.emplace_back(_context, number, number == mii::controllerOfPhys ? &_phys : nullptr);
    }
    RegisterTable const capture = captureTable();
    for (unsigned number = 0; number < block::captureSubBlocks; ++number) {
        UnitPlace const place{UnitPlace::Space::block, block::capture, number};
        _captures.emplace_back(services, UnitIdentity(_context.chip, UnitKind::capture, number, place),
                               capture);
    }
    _units.addAll(_ports);
    _units.add(_analyser);
    _units.add(_arbiter);
    _units.addAll(_miis);
    _units.add(_memory);
    _units.addAll(_captures);
    _units.add(_system);
    _units.addAll(_phys);
    _forwarding.emplace(_context, _analyser, _ports, _phys);
    _testSide = std::make_unique<Vsc7390TestSide>(*this);
}

Vsc7390::~Vsc7390() = default;

void Vsc7390::reset() {
    for (RegisterFile* const unit : _units.getAll()) {
        if (unit->getIdentity().place.space != UnitPlace::Space::phy) {
            unit->reset();
        }
    }
    for (vitesse::Port& port : _ports) {
        port.clearCounters();
    }
    _analyser.clearTables();
    _arbiter.forget();
    for (vitesse::Mii& mii : _miis) {
        mii.forget();
    }
    _forwarding->getSnapshot().refresh();
}

std::string Vsc7390::getModel() const {
    return "vsc7390";
}

void Vsc7390::attach(BoardBuses& buses) {
    buses.addWindow(Vsc7390TestSide::physicalAddress, Vsc7390TestSide::windowSize, _bus);
}

ChipTestSide& Vsc7390::getTestSide() {
    return *_testSide;
}

std::uint64_t Vsc7390::getBusNanoseconds() const {
    return _bus.getBusNanoseconds();
}

} // namespace simulation
