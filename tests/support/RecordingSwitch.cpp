#include "tests/support/RecordingSwitch.hpp"

namespace test_support {

RecordingSwitch::RecordingSwitch(Application& application, unsigned int id, CallLog& calls)
    : ManagedSwitch(application, id, static_cast<unsigned short>(0), false), _calls(calls) {}

RecordingSwitch::RecordingSwitch(Application& application, unsigned int id, unsigned char const* macAddress,
                                 Xml& configuration, CallLog& calls)
    : ManagedSwitch(application, id, macAddress, configuration, false), _calls(calls) {}

RecordingPort& RecordingSwitch::addPort(unsigned int id, std::string const& type, std::string const& state) {
    auto* const port = new RecordingPort(*this, id, type, state, _calls);
    std::pair<unsigned int, ManagedSwitchPort*> entry(id, port);
    insertPort(entry);
    return *port;
}

bool RecordingSwitch::record(std::string const& operation) {
    _calls.push_back(std::to_string(getId()) + " " + operation);
    return _result;
}

bool RecordingSwitch::clearVlanTable() {
    return record("clearVlanTable");
}

bool RecordingSwitch::phyReadRegister(unsigned short, unsigned short, unsigned short&) {
    return record("phyReadRegister");
}

bool RecordingSwitch::phyWriteRegister(unsigned short, unsigned short, unsigned short) {
    return record("phyWriteRegister");
}

bool RecordingSwitch::macTableCommand(MacAddressCommand) {
    return record("macTableCommand");
}

bool RecordingSwitch::readMulticastGroup(std::string, unsigned short,
                                         std::map<unsigned int, ManagedSwitchPort*>&) {
    return record("readMulticastGroup");
}

bool RecordingSwitch::writeMulticastGroup(std::string, unsigned short,
                                          std::map<unsigned int, ManagedSwitchPort*>) {
    return record("writeMulticastGroup");
}

bool RecordingSwitch::writeAggregationGroup(std::map<unsigned int const, ManagedSwitchPort*> ports) {
    std::string text = "writeAggregationGroup";
    for (auto const& port : ports) {
        text += " " + std::to_string(port.first) + (port.second == nullptr ? "(null)" : "");
    }
    return record(text);
}

} // namespace test_support
