#include "simulation/vsc7390/Vsc7390.hpp"

#include "simulation/BoardBuses.hpp"
#include "simulation/vsc7390/Vsc7390TestAccess.hpp"

namespace simulation {

namespace {

using namespace vitesse;

/// Of the unit that initialises the chip's memories.
enum MemoryRegister : unsigned { initialise = 0x00, result = 0x01 };

constexpr unsigned wordsOfCapture = 256;

Mii::Phys makePhys(Context& context) {
    Mii::Phys phys;
    for (unsigned number = 0; number < phys.size(); ++number) {
        phys[number] = std::make_unique<Phy>(context, number);
    }
    return phys;
}

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
      _phys(makePhys(_context)),
      _analyser(_context),
      _arbiter(_context,
               [this](unsigned port) { return port < _ports.size() && _ports[port]->getMac().receives; }),
      _miis{{{_context, 0, nullptr}, {_context, mii::controllerOfPhys, &_phys}}},
      _memory(services, _context.chip, "memory", memoryTable()),
      _system(_context),
      _bus(_context, _system, [this](unsigned block, unsigned sub) { return findBlock(block, sub); }),
      _testSide(std::make_unique<Vsc7390TestAccess>(*this)) {
    for (unsigned number = 0; number < _ports.size(); ++number) {
        _ports[number] = std::make_unique<Port>(_context, number);
    }
    RegisterTable const capture = captureTable();
    for (unsigned number = 0; number < block::captureSubBlocks; ++number) {
        _captures.emplace_back(services, _context.chip, "capture " + std::to_string(number), capture);
    }
}

Vsc7390::~Vsc7390() = default;

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

RegisterFile* Vsc7390::findBlock(unsigned block, unsigned subBlock) {
    bool const isFirst = subBlock == 0;
    switch (block) {
    case block::lowPorts:
        return &_ports[subBlock]->getRegisters();
    case block::highPorts:
        return subBlock < block::portsInHigh ? &_ports[block::portsInLow + subBlock]->getRegisters()
                                             : nullptr;
    case block::memoryAndMii:
        return findMiiOrMemory(subBlock);
    case block::capture:
        return &_captures[subBlock];
    case block::analyser:
        return isFirst ? &_analyser.getRegisters() : nullptr;
    case block::arbiter:
        return isFirst ? &_arbiter.getRegisters() : nullptr;
    case block::system:
        return isFirst ? &_system.getRegisters() : nullptr;
    default:
        return nullptr;
    }
}

RegisterFile* Vsc7390::findMiiOrMemory(unsigned subBlock) {
    if (subBlock < _miis.size()) {
        return &_miis[subBlock].getRegisters();
    }
    return subBlock == block::memorySubBlock ? &_memory : nullptr;
}

std::vector<RegisterFile*> Vsc7390::getUnits() {
    std::vector<RegisterFile*> units;
    for (auto const& port : _ports) {
        units.push_back(&port->getRegisters());
    }
    units.push_back(&_analyser.getRegisters());
    units.push_back(&_arbiter.getRegisters());
    for (Mii& mii : _miis) {
        units.push_back(&mii.getRegisters());
    }
    units.push_back(&_memory);
    for (RegisterFile& capture : _captures) {
        units.push_back(&capture);
    }
    units.push_back(&_system.getRegisters());
    for (auto const& phy : _phys) {
        units.push_back(&phy->getRegisters());
    }
    return units;
}

} // namespace simulation
