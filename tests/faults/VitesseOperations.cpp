#include <functional>
#include <sstream>
#include <utility>

#include "tests/faults/ChipOperation.hpp"
#include "vitesse/VitessePort.hpp"
#include "vitesse/VitesseSwitch.hpp"

namespace fault_test {

namespace {

using Values = ChipOperation::Values;
using Egress = ManagedSwitchPort::EgressTagSetting;
using Ingress = ManagedSwitchPort::IngressTagSetting;
using Speed = ManagedSwitchPort::SpeedSetting;
using Duplex = ManagedSwitchPort::DuplexSetting;
using FlowControl = ManagedSwitchPort::FlowControlSetting;
using Link = ManagedSwitchPort::LinkSetting;
using Command = ManagedSwitch::MacAddressCommand;

constexpr unsigned switchId = 0;
constexpr unsigned short ports = 4;
constexpr unsigned portId = 3;
constexpr unsigned short vid = 9;
char const* const group = "239.1.2.3";
/// Last byte of the address first.
constexpr unsigned char groupMac[6] = {3, 2, 1, 0x5E, 0, 1};

template <typename Call> ChipOperation onSwitch(std::string name, Call call) {
    return {"VitesseSwitch::" + std::move(name),
            [call](Application&, ManagedSwitch* device, Values& values) -> bool {
                return call(dynamic_cast<VitesseSwitch&>(*device), values);
            }};
}

template <typename Call> ChipOperation onPort(std::string name, Call call) {
    return {"VitessePort::" + std::move(name),
            [call](Application&, ManagedSwitch* device, Values& values) -> bool {
                return call(dynamic_cast<VitessePort&>(*device->getPort(portId)), values);
            }};
}

ChipOperation asQuestion(ChipOperation operation) {
    operation.isQuestion = true;
    return operation;
}

std::vector<ChipOperation> beforeASwitch() {
    return {{"VitesseSwitch::detectSwitch",
             [](Application& application, ManagedSwitch*, Values&) {
                 return VitesseSwitch::detectSwitch(application, false);
             },
             false},
            {"VitesseSwitch::VitesseSwitch",
             [](Application& application, ManagedSwitch*, Values&) {
                 VitesseSwitch const device(application, switchId, ports, false);
                 return true;
             },
             false}};
}

std::vector<ChipOperation> ofVlanTable() {
    using Switch = VitesseSwitch;
    return {
        onSwitch("initialiseSetup", [](Switch& device, Values&) { return device.initialiseSetup(); }),
        onSwitch("clearVlanTable", [](Switch& device, Values&) { return device.clearVlanTable(); }),
        onSwitch("cleanPortBaseVlans", [](Switch& device, Values&) { return device.cleanPortBaseVlans(); }),
        onSwitch("waitforVlanTableReady",
                 [](Switch& device, Values&) { return device.waitforVlanTableReady(); }),
        asQuestion(
            onSwitch("isVlanTableIdle", [](Switch& device, Values&) { return device.isVlanTableIdle(); })),
        onSwitch("writeVlanTableCommand",
                 [](Switch& device, Values&) { return device.writeVlanTableCommand(vid, {0x1000003C}); }),
        onSwitch("readVlanTableCommand",
                 [](Switch& device, Values& values) {
                     Switch::VlanTableCommand command;
                     bool const done = device.readVlanTableCommand(vid, command);
                     // The command itself, in the low bits, is also the busy flag.
                     values.push_back(command.word >> 2);
                     return done;
                 }),
        onSwitch("readVlanMask",
                 [](Switch& device, Values& values) {
                     unsigned mask = 0;
                     values.push_back(device.readVlanMask(vid, mask) ? 1 : 0);
                     values.push_back(mask);
                     return true;
                 }),
    };
}

std::vector<ChipOperation> ofMacTable() {
    using Switch = VitesseSwitch;
    using Ports = std::map<unsigned, ManagedSwitchPort*>;
    using Trunk = std::map<unsigned const, ManagedSwitchPort*>;
    return {
        onSwitch("macTableCommand",
                 [](Switch& device, Values& values) {
                     values.push_back(device.macTableCommand(Command::readEntry) ? 1 : 0);
                     return true;
                 }),
        onSwitch("waitForMacTableReady",
                 [](Switch& device, Values&) { return device.waitForMacTableReady(); }),
        asQuestion(
            onSwitch("isMacTableIdle", [](Switch& device, Values&) { return device.isMacTableIdle(); })),
        onSwitch("findMulticastGroup",
                 [](Switch& device, Values& values) {
                     values.push_back(device.findMulticastGroup(groupMac, vid) ? 1 : 0);
                     return true;
                 }),
        onSwitch(
            "findMulticastGroupUseableBucket",
            [](Switch& device, Values&) { return device.findMulticastGroupUseableBucket(groupMac, vid); }),
        onSwitch("writeMulticastGroup",
                 [](Switch& device, Values&) {
                     return device.writeMulticastGroup(group, vid, Ports{{1, device.getPort(1)}});
                 }),
        onSwitch("readMulticastGroup",
                 [](Switch& device, Values& values) {
                     Ports members;
                     values.push_back(device.readMulticastGroup(group, vid, members) ? 1 : 0);
                     values.push_back(members.size());
                     return true;
                 }),
        onSwitch(
            "writeAggregationGroup",
            [](Switch& device, Values&) {
                return device.writeAggregationGroup(Trunk{{1, device.getPort(1)}, {2, device.getPort(2)}});
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
    using Port = VitessePort;
    return {
        onPort("initialise", [](Port& port, Values&) { return port.initialise(); }),
        onPort("setPort(100, full, on, enabled)",
               [](Port& port, Values&) {
                   return port.setPort(Speed::speed100, Duplex::full, FlowControl::forcedOn, Link::enabled);
               }),
        onPort("setPort(1000, full, off, disabled)",
               [](Port& port, Values&) {
                   return port.setPort(Speed::speed1000, Duplex::full, FlowControl::forcedOff,
                                       Link::disabled);
               }),
        onPort("setPort(enabled)", [](Port& port, Values&) { return port.setPort(Link::enabled); }),
        onPort("setPort(disabled)", [](Port& port, Values&) { return port.setPort(Link::disabled); }),
        onPort("portStatus",
               [](Port& port, Values& values) {
                   values.push_back(port.portStatus());
                   return true;
               }),
        onPort("setReceiveEnable", [](Port& port, Values&) { return port.setReceiveEnable(true); }),
        onPort("setTransmitEnable", [](Port& port, Values&) { return port.setTransmitEnable(true); }),
        onPort("setArbiterDiscardEnable",
               [](Port& port, Values&) { return port.setArbiterDiscardEnable(true); }),
        asQuestion(onPort("isArbiterEmpty", [](Port& port, Values&) { return port.isArbiterEmpty(); })),
        onPort(
            "setMacConfigurationReset",
            [](Port& port, Values&) { return port.setMacConfigurationReset(Port::MacResetMode::intoReset); }),
        onPort("setMacSpeed", [](Port& port, Values&) { return port.setMacSpeed(Speed::speed1000); }),
        onPort("setMacDuplex", [](Port& port, Values&) { return port.setMacDuplex(Duplex::full); }),
        onPort("setInterframeGap", [](Port& port, Values&) { return port.setInterframeGap(9); }),
        onPort("setSeed", [](Port& port, Values&) { return port.setSeed(); }),
        onPort("setPortLearningEnable",
               [](Port& port, Values&) { return port.setPortLearningEnable(false); }),
        onPort("setFrameForwardingtoPort",
               [](Port& port, Values&) {
                   return port.setFrameForwardingtoPort(1, Port::FrameForwardingSourceMask::block);
               }),
        onPort(
            "setFlowControl",
            [](Port& port, Values&) { return port.setFlowControl(FlowControl::forcedOn, Speed::speed100); }),
        onPort("updateSourceMasks", [](Port& port, Values&) { return port.updateSourceMasks(); }),
    };
}

std::vector<ChipOperation> ofVlansAndGroups() {
    using Port = VitessePort;
    return {
        onPort(
            "addPortToVlan",
            [](Port& port, Values&) { return port.addPortToVlan(vid, Ingress::addTag, Egress::stripTag); }),
        onPort("ingressAddTag", [](Port& port, Values&) { return port.ingressAddTag(vid); }),
        onPort("ingressAddTagIfUntagged",
               [](Port& port, Values&) { return port.ingressAddTagIfUntagged(vid); }),
        onPort("ingressValidateTag", [](Port& port, Values&) { return port.ingressValidateTag(); }),
        onPort("egressStripTag", [](Port& port, Values&) { return port.egressStripTag(vid); }),
        onPort("egressValidateTag", [](Port& port, Values&) { return port.egressValidateTag(); }),
        onPort("addPortToVlanTable", [](Port& port, Values&) { return port.addPortToVlanTable(vid); }),
        onPort("removePortFromVlanTable",
               [](Port& port, Values&) { return port.removePortFromVlanTable(vid); }),
        onPort("portBasedVlanRouteToPort",
               [](Port& port, Values&) { return port.portBasedVlanRouteToPort(port); }),
        onPort("portBasedVlanRouteToPort(list)",
               [](Port& port, Values&) {
                   return port.portBasedVlanRouteToPort(
                       std::list<ManagedSwitchPort*>{&port, port.getSwitch().getPort(1)});
               }),
        onPort("addPortToMulticastGroup",
               [](Port& port, Values&) { return port.addPortToMulticastGroup(group, vid); }),
        onPort("removePortFromMulticastGroup",
               [](Port& port, Values& values) {
                   values.push_back(port.removePortFromMulticastGroup(group, vid) ? 1 : 0);
                   return true;
               }),
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

std::vector<ChipOperation> vitesseOperations() {
    std::vector<ChipOperation> all;
    for (auto const& part : {beforeASwitch(), ofVlanTable(), ofMacTable(), ofALink(), ofVlansAndGroups()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace fault_test
