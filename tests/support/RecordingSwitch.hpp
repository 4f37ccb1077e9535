#pragma once

#include "model/ManagedSwitch.hpp"
#include "tests/support/CallLog.hpp"
#include "tests/support/RecordingPort.hpp"

namespace test_support {

/// A switch of no chip at all. Every operation of the chip becomes a line such as
/// "0 writeAggregationGroup 8 9": the switch, the operation, the arguments.
class RecordingSwitch : public ManagedSwitch {
public:
    RecordingSwitch(Application& application, unsigned int id, CallLog& calls);
    RecordingSwitch(Application& application, unsigned int id, unsigned char const* macAddress,
                    Xml& configuration, CallLog& calls);

    /// Makes a port and gives it to the switch.
    RecordingPort& addPort(unsigned int id, std::string const& type = "external",
                           std::string const& state = "forwarding");

    /// What all operations return.
    void succeed(bool result) { _result = result; }

    bool clearVlanTable() override;
    bool phyReadRegister(unsigned short phyAddress, unsigned short registerAddress,
                         unsigned short& value) override;
    bool phyWriteRegister(unsigned short phyAddress, unsigned short registerAddress,
                          unsigned short value) override;
    bool macTableCommand(MacAddressCommand command) override;
    bool readMulticastGroup(std::string ip, unsigned short vlanId,
                            std::map<unsigned int, ManagedSwitchPort*>& ports) override;
    bool writeMulticastGroup(std::string ip, unsigned short vlanId,
                             std::map<unsigned int, ManagedSwitchPort*> ports) override;
    bool writeAggregationGroup(std::map<unsigned int const, ManagedSwitchPort*> ports) override;

private:
    bool record(std::string const& operation);

    CallLog& _calls;
    bool _result = true;
};

} // namespace test_support
