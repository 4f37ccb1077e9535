#include "benchmarks/RequiredRun.hpp"

#include "benchmarks/required/BringUp.hpp"
#include "benchmarks/required/Marvell.hpp"
#include "benchmarks/required/Vitesse.hpp"

namespace benchmarks {

using required::Egress;
using required::Ingress;
using required::PortKind;
using required::PortPlan;
using required::PortState;
using required::TagMembership;

namespace {

constexpr TagMembership membership{MeasuredRun::vlan, Ingress::addTagIfUntagged, Egress::stripTag};

PortPlan uplink(unsigned port) {
    return {port, PortKind::interlink, PortState::forwarding, {}, {}, {}};
}

required::SwitchPlan const* firstOf(required::BoardPlan const& board, bool isMarvell) {
    for (required::SwitchPlan const& plan : board.switches) {
        if (plan.isMarvell == isMarvell) {
            return &plan;
        }
    }
    return nullptr;
}

} // namespace

RequiredRun::RequiredRun(Xml& document)
    : _plan(required::BoardPlan::of(document)),
      _board(document),
      _clock(_board.getClock()),
      _memory(_board),
      _application(_log, _memory) {}

RequiredRun::~RequiredRun() = default;

simulation::SimulatedBoard& RequiredRun::getBoard() {
    return _board;
}

void RequiredRun::bringUp() {
    required::bringUp(_plan, _application);
}

std::vector<MeasuredRun::Operation> RequiredRun::getOperations() {
    std::vector<Operation> operations;
    if (required::SwitchPlan const* const plan = firstOf(_plan, true)) {
        addMarvell(*plan, operations);
    }
    if (required::SwitchPlan const* const plan = firstOf(_plan, false)) {
        addVitesse(*plan, operations);
    }
    return operations;
}

void RequiredRun::addMarvell(required::SwitchPlan const& plan, std::vector<Operation>& operations) {
    namespace marvell = required::marvell;
    _mac = marvell::sectionOf(_application);
    marvell::openMac(*_mac);
    marvell::Chip const chip{*_mac, plan.id, plan.countedPorts};
    unsigned const port = plan.ports.front().id;
    constexpr unsigned device = 0x10;
    constexpr unsigned portControl = 4;
    constexpr unsigned forwarding = 3;
    constexpr unsigned phyControl = 0;
    constexpr unsigned phyPowerUp = 0x3100;
    operations.insert(
        operations.end(),
        {
            {"88e6096 look for it",
             [=] {
                 required::probe({plan.id, true}, _application);
             }},
            {"88e6096 read a register", [=] { marvell::read(chip, device + port, portControl); }},
            {"88e6096 write a register",
             [=] { marvell::write(chip, device + port, portControl, forwarding); }},
            {"88e6096 read a PHY register", [=] { marvell::readPhy(chip, port, phyControl); }},
            {"88e6096 write a PHY register", [=] { marvell::writePhy(chip, port, phyControl, phyPowerUp); }},
            {"88e6096 set the age time", [=] { marvell::setAgeTime(chip, ageSeconds); }},
            {"88e6096 port into a new VLAN", [=] { marvell::addToVlan(chip, port, membership); }},
            {"88e6096 port into that VLAN again", [=] { marvell::addToVlan(chip, port, membership); }},
            {"88e6096 link of a port", [=] { marvell::setLink(chip, uplink(port)); }},
            {"88e6096 counters of a port", [=] { marvell::readCounters(chip, port); }},
        });
}

void RequiredRun::addVitesse(required::SwitchPlan const& plan, std::vector<Operation>& operations) {
    namespace vitesse = required::vitesse;
    _bus = vitesse::sectionOf(_application);
    vitesse::openBus(*_bus);
    vitesse::Chip const chip{*_bus, plan.countedPorts, plan.ports};
    unsigned const port = plan.ports.front().id;
    constexpr unsigned analyser = 2;
    constexpr unsigned learnMask = 0x0D;
    constexpr unsigned allPorts = 0xFFFFFF;
    constexpr unsigned phyControl = 0;
    constexpr unsigned phyPowerUp = 0x3100;
    operations.insert(
        operations.end(),
        {
            {"vsc7390 look for it",
             [=] {
                 required::probe({plan.id, false}, _application);
             }},
            {"vsc7390 read a register", [=] { vitesse::read(*_bus, analyser, 0, learnMask); }},
            {"vsc7390 write a register", [=] { vitesse::write(*_bus, analyser, 0, learnMask, allPorts); }},
            {"vsc7390 read a PHY register", [=] { vitesse::readPhy(chip, port, phyControl); }},
            {"vsc7390 write a PHY register", [=] { vitesse::writePhy(chip, port, phyControl, phyPowerUp); }},
            {"vsc7390 port into a new VLAN", [=] { vitesse::addToVlan(chip, port, membership); }},
            {"vsc7390 port into a new group",
             [=] {
                 vitesse::joinGroup(chip, port, {group, vlan});
             }},
            {"vsc7390 port into that group again",
             [=] {
                 vitesse::joinGroup(chip, port, {group, vlan});
             }},
            {"vsc7390 trunk of two ports",
             [=] {
                 vitesse::aggregate(chip, {plan.ports[0].id, plan.ports[1].id});
             }},
            {"vsc7390 link of a port", [=] { vitesse::setLink(chip, uplink(port)); }},
            {"vsc7390 counters of a port", [=] { vitesse::readCounters(chip, port); }},
        });
}

} // namespace benchmarks
