#include "benchmarks/LibraryRun.hpp"

#include <map>
#include <ostream>
#include <stdexcept>

#include "host/Threads.hpp"
#include "marvell/MarvellSwitch.hpp"
#include "model/ManagedSwitchPort.hpp"
#include "vitesse/VitesseSwitch.hpp"

namespace benchmarks {

using Port = ManagedSwitchPort;

namespace {

template <typename Family> Family* firstOf(SwitchManager& manager) {
    for (auto const& entry : manager.getManagedSwitches()) {
        if (auto* const found = dynamic_cast<Family*>(entry.second)) {
            return found;
        }
    }
    return nullptr;
}

Port& firstPort(ManagedSwitch& chip) {
    return *chip.getPorts().begin()->second;
}

void putIntoVlan(Port& port) {
    port.addPortToVlan(MeasuredRun::vlan, Port::IngressTagSetting::addTagIfUntagged,
                       Port::EgressTagSetting::stripTag);
}

void setLink(Port& port) {
    port.setPort(Port::SpeedSetting::speed1000, Port::DuplexSetting::full, Port::FlowControlSetting::forcedOn,
                 Port::LinkSetting::enabled);
}

constexpr unsigned short phyControl = 0;
constexpr unsigned short phyPowerUp = 0x3100;

} // namespace

LibraryRun::LibraryRun(Xml& document, Hardware hardware)
    : _hardware(hardware),
      _board(document),
      _clock(_board.getClock()),
      _memory(_board),
      _log(nullptr),
      _application(_log, _memory),
      _manager(_application, document, false, hardware == Hardware::leftAlone) {
    _application.getThreads().setStartHook([this](Thread&) {
        simulation::VirtualClock::adopt(&_board.getClock());
        _reported.get_future().wait();
    });
}

LibraryRun::~LibraryRun() {
    _finished.set_value();
    _application.getThreads().endEventLoops();
}

simulation::SimulatedBoard& LibraryRun::getBoard() {
    return _board;
}

void LibraryRun::bringUp() {
    _manager.setStartUpEndedCallback([this](char const* failure) {
        _monitor.reportEnd(failure);
        _finished.get_future().wait();
    });
    _manager.start();
    _manager.phyInterfacesHaveNowBeenSetup();
    _reported.set_value();
    board::StartUpMonitor::Outcome const outcome = _monitor.wait();
    if (!outcome.populated) {
        throw std::runtime_error("start-up failed: " + outcome.reason);
    }
}

std::vector<MeasuredRun::Operation> LibraryRun::getOperations() {
    std::vector<Operation> operations;
    if (_hardware == Hardware::leftAlone) {
        return operations;
    }
    if (auto* const chip = firstOf<MarvellSwitch>(_manager)) {
        addMarvell(*chip, operations);
    }
    if (auto* const chip = firstOf<VitesseSwitch>(_manager)) {
        addVitesse(*chip, operations);
    }
    return operations;
}

void LibraryRun::readCounters(unsigned switchId, unsigned portId) {
    std::ostream nowhere(nullptr);
    timespec time{};
    std::string text;
    _manager.collectSwitchPortDiagnostics(switchId, portId, nowhere, time, text);
}

void LibraryRun::addMarvell(MarvellSwitch& chip, std::vector<Operation>& operations) {
    using Registers = MarvellManagementCommunications::MarvelRegisterValues;
    Application& application = *chip.getApplication();
    auto const id = static_cast<unsigned short>(chip.getId());
    Port& port = firstPort(chip);
    auto const number = static_cast<unsigned short>(port.getId());
    _smi = std::make_unique<MarvellMultiMdioManagementCommunications>(application, id, false);
    constexpr unsigned firstDevice = 0x10;
    constexpr unsigned short portControl = 4;
    constexpr unsigned short forwarding = 3;
    auto const device = static_cast<unsigned short>(firstDevice + number);
    operations.insert(operations.end(),
                      {
                          {"88e6096 look for it",
                           [=, &application] { MarvellSwitch::detectSwitch(application, id, false); }},
                          {"88e6096 read a register",
                           [=] {
                               Registers registers(device, portControl);
                               _smi->readRegister(registers);
                           }},
                          {"88e6096 write a register",
                           [=] { _smi->writeRegister(Registers(device, portControl, forwarding)); }},
                          {"88e6096 read a PHY register",
                           [=, &chip] {
                               unsigned short value = 0;
                               chip.phyReadRegister(number, phyControl, value);
                           }},
                          {"88e6096 write a PHY register",
                           [=, &chip] { chip.phyWriteRegister(number, phyControl, phyPowerUp); }},
                          {"88e6096 set the age time", [&chip] { chip.setATUAgeTime(ageSeconds); }},
                          {"88e6096 port into a new VLAN", [&port] { putIntoVlan(port); }},
                          {"88e6096 port into that VLAN again", [&port] { putIntoVlan(port); }},
                          {"88e6096 link of a port", [&port] { setLink(port); }},
                          {"88e6096 counters of a port", [=] { readCounters(id, number); }},
                      });
}

void LibraryRun::addVitesse(VitesseSwitch& chip, std::vector<Operation>& operations) {
    using Bsa = VitesseManagementCommunications::Bsa;
    Application& application = *chip.getApplication();
    unsigned const id = chip.getId();
    Port& port = firstPort(chip);
    Port* const second = std::next(chip.getPorts().begin())->second;
    auto const number = static_cast<unsigned short>(port.getId());
    _bus = std::make_unique<VitesseParallelCommunication>(application, false);
    constexpr unsigned short analyser = 2;
    constexpr unsigned short learnMask = 0x0D;
    constexpr unsigned allPorts = 0xFFFFFF;
    Bsa const location{analyser, 0, learnMask};
    operations.insert(
        operations.end(),
        {
            {"vsc7390 look for it", [&application] { VitesseSwitch::detectSwitch(application, false); }},
            {"vsc7390 read a register",
             [=] {
                 unsigned value = 0;
                 _bus->readRegister(location, value);
             }},
            {"vsc7390 write a register", [=] { _bus->writeRegister(location, allPorts); }},
            {"vsc7390 read a PHY register",
             [=, &chip] {
                 unsigned short value = 0;
                 chip.phyReadRegister(number, phyControl, value);
             }},
            {"vsc7390 write a PHY register",
             [=, &chip] { chip.phyWriteRegister(number, phyControl, phyPowerUp); }},
            {"vsc7390 port into a new VLAN", [&port] { putIntoVlan(port); }},
            {"vsc7390 port into a new group", [&port] { port.addPortToMulticastGroup(group, vlan); }},
            {"vsc7390 port into that group again", [&port] { port.addPortToMulticastGroup(group, vlan); }},
            {"vsc7390 trunk of two ports",
             [=, &chip, &port] {
                 chip.writeAggregationGroup({{port.getId(), &port}, {second->getId(), second}});
             }},
            {"vsc7390 link of a port", [&port] { setLink(port); }},
            {"vsc7390 counters of a port", [=] { readCounters(id, number); }},
        });
}

} // namespace benchmarks
