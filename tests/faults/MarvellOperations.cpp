#include <functional>
#include <sstream>
#include <utility>

#include "marvell/MarvellPort.hpp"
#include "marvell/MarvellSwitch.hpp"
#include "tests/faults/ChipOperation.hpp"

namespace fault_test {

namespace {

using Values = ChipOperation::Values;
using Egress = ManagedSwitchPort::EgressTagSetting;
using Ingress = ManagedSwitchPort::IngressTagSetting;
using Speed = ManagedSwitchPort::SpeedSetting;
using Duplex = ManagedSwitchPort::DuplexSetting;
using FlowControl = ManagedSwitchPort::FlowControlSetting;
using Link = ManagedSwitchPort::LinkSetting;
using Mdix = ManagedSwitchPort::MdixSetting;
using PortState = ManagedSwitchPort::PortEnabledStatus;

constexpr unsigned switchId = 0;
constexpr unsigned short ports = 11;
constexpr unsigned portId = 3;

template <typename Call> ChipOperation onSwitch(std::string name, Call call) {
    return {"MarvellSwitch::" + std::move(name),
            [call](Application&, ManagedSwitch* device, Values& values) -> bool {
                return call(dynamic_cast<MarvellSwitch&>(*device), values);
            }};
}

template <typename Call> ChipOperation onPort(std::string name, Call call) {
    return {"MarvellPort::" + std::move(name),
            [call](Application&, ManagedSwitch* device, Values& values) -> bool {
                return call(dynamic_cast<MarvellPort&>(*device->getPort(portId)), values);
            }};
}

ChipOperation asQuestion(ChipOperation operation) {
    operation.isQuestion = true;
    return operation;
}

std::vector<ChipOperation> beforeASwitch() {
    return {{"MarvellSwitch::detectSwitch",
             [](Application& application, ManagedSwitch*, Values&) {
                 return MarvellSwitch::detectSwitch(application, switchId, false);
             },
             false},
            {"MarvellSwitch::MarvellSwitch",
             [](Application& application, ManagedSwitch*, Values&) {
                 MarvellSwitch const device(application, switchId, ports, false);
                 return true;
             },
             false}};
}

std::vector<ChipOperation> ofTheSwitch() {
    using Switch = MarvellSwitch;
    using States = std::map<unsigned short, Switch::VtuEgressState>;
    return {
        onSwitch("setATUAgeTime", [](Switch& device, Values&) { return device.setATUAgeTime(600); }),
        onSwitch("getATUAgeTime",
                 [](Switch& device, Values& values) {
                     auto const age = device.getATUAgeTime();
                     values.push_back(age.second);
                     return age.first;
                 }),
        asQuestion(
            onSwitch("isVlanTableBusy", [](Switch& device, Values&) { return device.isVlanTableBusy(); })),
        onSwitch("waitVlanTableReady", [](Switch& device, Values&) { return device.waitVlanTableReady(); }),
        onSwitch("writeVlanTable",
                 [](Switch& device, Values&) {
                     return device.writeVlanTable({{1, Switch::VtuEgressState::tagged},
                                                   {5, Switch::VtuEgressState::untagged},
                                                   {10, Switch::VtuEgressState::notMember}});
                 }),
        onSwitch("readVlanTable",
                 [](Switch& device, Values& values) {
                     States states;
                     bool const done = device.readVlanTable(states);
                     for (auto const& [port, state] : states) {
                         values.push_back(static_cast<unsigned>(state));
                     }
                     return done;
                 }),
        onSwitch("writeVlanTableCommand",
                 [](Switch& device, Values&) { return device.writeVlanTableCommand(9); }),
        onSwitch("readVlanTableCommand",
                 [](Switch& device, Values& values) {
                     values.push_back(device.readVlanTableCommand(9) ? 1 : 0);
                     return true;
                 }),
        onSwitch("clearVlanTable", [](Switch& device, Values&) { return device.clearVlanTable(); }),
        onSwitch("initialiseVlan", [](Switch& device, Values&) { return device.initialiseVlan(9); }),
        onSwitch("initialiseSpanningTree",
                 [](Switch& device, Values&) { return device.initialiseSpanningTree(9); }),
        onSwitch(
            "writeSpanningTreeTable",
            [](Switch& device, Values&) {
                return device.writeSpanningTreeTable({{1, PortState::forwarding}, {9, PortState::learning}});
            }),
        onSwitch("writeSpanningTreeTableCommand",
                 [](Switch& device, Values&) { return device.writeSpanningTreeTableCommand(9); }),
        onSwitch("readSpanningTreeTableCommand",
                 [](Switch& device, Values& values) {
                     values.push_back(device.readSpanningTreeTableCommand(9) ? 1 : 0);
                     return true;
                 }),
        onSwitch("phyReadRegister",
                 [](Switch& device, Values& values) {
                     unsigned short value = 0;
                     bool const done = device.phyReadRegister(portId, 4, value);
                     values.push_back(value);
                     return done;
                 }),
        onSwitch("phyWriteRegister",
                 [](Switch& device, Values&) { return device.phyWriteRegister(portId, 4, 0x01E1); }),
    };
}

std::vector<ChipOperation> ofALink() {
    using Port = MarvellPort;
    return {
        onPort("initialise", [](Port& port, Values&) { return port.initialise(); }),
        onPort("setPort(100, full, on, enabled)",
               [](Port& port, Values&) {
                   return port.setPort(Speed::speed100, Duplex::full, FlowControl::forcedOn, Link::enabled);
               }),
        onPort("setPort(10, half, off, disabled)",
               [](Port& port, Values&) {
                   return port.setPort(Speed::speed10, Duplex::forcedHalf, FlowControl::forcedOff,
                                       Link::disabled);
               }),
        onPort("setPort(enabled)", [](Port& port, Values&) { return port.setPort(Link::enabled); }),
        onPort("setPort(disabled)", [](Port& port, Values&) { return port.setPort(Link::disabled); }),
        onPort("portStatus",
               [](Port& port, Values& values) {
                   values.push_back(port.portStatus());
                   return true;
               }),
        onPort("disablePPUPort", [](Port& port, Values&) { return port.disablePPUPort(); }),
        onPort("setForceLink",
               [](Port& port, Values&) { return port.setForceLink(Port::ForceLinkSetting::up); }),
        onPort("setFlowControl",
               [](Port& port, Values&) { return port.setFlowControl(FlowControl::forcedOn); }),
        onPort("setDuplex", [](Port& port, Values&) { return port.setDuplex(Duplex::full); }),
        onPort("setSpeed", [](Port& port, Values&) { return port.setSpeed(Speed::speed100); }),
        onPort("setEnabled",
               [](Port& port, Values&) { return port.setEnabled(Port::PortForwardingSeting::learning); }),
        onPort("setMdix", [](Port& port, Values&) { return port.setMdix(Mdix::mdix); }),
    };
}

std::vector<ChipOperation> ofVlans() {
    using Port = MarvellPort;
    return {
        onPort("addPortToVlan",
               [](Port& port, Values&) { return port.addPortToVlan(9, Ingress::addTag, Egress::stripTag); }),
        onPort("ingressAddTag", [](Port& port, Values&) { return port.ingressAddTag(9); }),
        onPort("ingressAddTagIfUntagged",
               [](Port& port, Values&) { return port.ingressAddTagIfUntagged(9); }),
        onPort("ingressValidateTag", [](Port& port, Values&) { return port.ingressValidateTag(); }),
        onPort("ieee802_1QMode",
               [](Port& port, Values&) { return port.ieee802_1QMode(Port::Ieee802_1QModeVal::secure); }),
        onPort("addPortToVlanTable",
               [](Port& port, Values&) { return port.addPortToVlanTable(9, Egress::validateTag); }),
        onPort("removePortFromVlanTable",
               [](Port& port, Values&) { return port.removePortFromVlanTable(9); }),
        onPort("addPortToSpanningTree",
               [](Port& port, Values&) { return port.addPortToSpanningTree(9, PortState::forwarding); }),
        onPort("portBasedVlanRouteToPort",
               [](Port& port, Values&) { return port.portBasedVlanRouteToPort(port); }),
        onPort("portBasedVlanRouteToPort(list)",
               [](Port& port, Values&) {
                   return port.portBasedVlanRouteToPort(
                       std::list<ManagedSwitchPort*>{&port, port.getSwitch().getPort(1)});
               }),
    };
}

std::vector<ChipOperation> ofStatistics() {
    using Port = MarvellPort;
    return {
        onPort("statsCommand",
               [](Port& port, Values&) {
                   return port.statsCommand(Port::StatsOperationCommand::capturePort, 0, portId);
               }),
        onPort("waitForStatsCommand", [](Port& port, Values&) { return port.waitForStatsCommand(); }),
        onPort("clearStatistics", [](Port& port, Values&) { return port.clearStatistics(); }),
        onPort("dumpStatistics",
               [](Port& port, Values& values) {
                   std::ostringstream text;
                   bool const done = port.dumpStatistics(text);
                   values.push_back(std::hash<std::string>()(text.str()));
                   return done;
               }),
    };
}

} // namespace

std::vector<ChipOperation> marvellOperations() {
    std::vector<ChipOperation> all;
    for (auto const& group : {beforeASwitch(), ofTheSwitch(), ofALink(), ofVlans(), ofStatistics()}) {
        all.insert(all.end(), group.begin(), group.end());
    }
    return all;
}

} // namespace fault_test
