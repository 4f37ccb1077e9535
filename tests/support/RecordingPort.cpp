#include "tests/support/RecordingPort.hpp"

#include <initializer_list>

#include "model/ManagedSwitch.hpp"

namespace test_support {

namespace {

std::string numbers(std::initializer_list<unsigned int> values) {
    std::string text;
    for (auto const value : values) {
        text += " " + std::to_string(value);
    }
    return text;
}

template <typename Setting> unsigned int number(Setting setting) {
    return static_cast<unsigned int>(setting);
}

} // namespace

RecordingPort::RecordingPort(ManagedSwitch& owner, unsigned int id, std::string const& type,
                             std::string const& state, CallLog& calls, _xmlNode* node)
    : ManagedSwitchPort(owner, id, type, state, node),
      _calls(calls),
      _name(std::to_string(owner.getId()) + "." + std::to_string(id)) {}

RecordingPort::~RecordingPort() {
    _calls.push_back(_name + " destroyed");
}

bool RecordingPort::record(std::string const& operation, std::string const& arguments) {
    _calls.push_back(_name + " " + operation + arguments);
    return _failing.count(operation) == 0;
}

bool RecordingPort::initialise() {
    return record("initialise");
}

bool RecordingPort::setPort(SpeedSetting speed, DuplexSetting duplex, FlowControlSetting flowControl,
                            LinkSetting link) {
    return record("setPort", numbers({number(speed), number(duplex), number(flowControl), number(link)}));
}

bool RecordingPort::setPort(LinkSetting link) {
    return record("setPort", numbers({number(link)}));
}

unsigned short RecordingPort::portStatus() {
    return record("portStatus") ? 1 : 0;
}

bool RecordingPort::dumpStatistics(std::ostream&) {
    return record("dumpStatistics");
}

bool RecordingPort::addPortToVlan(unsigned short vlanId, IngressTagSetting ingress, EgressTagSetting egress) {
    return record("addPortToVlan", numbers({vlanId, number(ingress), number(egress)}));
}

bool RecordingPort::addPortToSpanningTree(unsigned short vlanId, PortEnabledStatus state) {
    return record("addPortToSpanningTree", numbers({vlanId, number(state)}));
}

bool RecordingPort::portBasedVlanRouteToPort(ManagedSwitchPort& destination) {
    return record("portBasedVlanRouteToPort", numbers({destination.getId()}));
}

bool RecordingPort::portBasedVlanRouteToPort(std::list<ManagedSwitchPort*> destinations) {
    std::string text = " [";
    for (auto const* destination : destinations) {
        text += destination == nullptr ? " null"
                                       : " " + std::to_string(destination->getSwitch().getId()) + "." +
                                             std::to_string(destination->getId());
    }
    return record("portBasedVlanRouteToPort", text + " ]");
}

bool RecordingPort::addPortToMulticastGroup(std::string ip, unsigned short vlanId) {
    return record("addPortToMulticastGroup", " " + ip + numbers({vlanId}));
}

bool RecordingPort::removePortFromMulticastGroup(std::string ip, unsigned short vlanId) {
    return record("removePortFromMulticastGroup", " " + ip + numbers({vlanId}));
}

bool RecordingPort::setMdix(MdixSetting setting) {
    return record("setMdix", numbers({number(setting)}));
}

bool RecordingPort::clearStatistics() {
    return record("clearStatistics");
}

bool RecordingPort::setPortLearningEnable(bool enable) {
    return record("setPortLearningEnable", numbers({enable ? 1U : 0U}));
}

} // namespace test_support
