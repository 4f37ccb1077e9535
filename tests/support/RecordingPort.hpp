#pragma once

#include <set>

#include "model/ManagedSwitchPort.hpp"
#include "tests/support/CallLog.hpp"

namespace test_support {

/// A port of no chip at all. Every operation of the chip becomes a line such as
/// "0.3 setPort 1 1 1 0": the port, the operation, the arguments as numbers.
class RecordingPort : public ManagedSwitchPort {
public:
    RecordingPort(ManagedSwitch& owner, unsigned int id, std::string const& type, std::string const& state,
                  CallLog& calls, _xmlNode* node = nullptr);
    ~RecordingPort() override;

    /// From now on operations of that name return false.
    void fail(std::string const& operation) { _failing.insert(operation); }

    bool initialise() override;
    bool setPort(SpeedSetting speed, DuplexSetting duplex, FlowControlSetting flowControl,
                 LinkSetting link) override;
    bool setPort(LinkSetting link) override;
    unsigned short portStatus() override;
    bool dumpStatistics(std::ostream& out) override;
    bool addPortToVlan(unsigned short vlanId, IngressTagSetting ingress, EgressTagSetting egress) override;
    bool addPortToSpanningTree(unsigned short vlanId, PortEnabledStatus state) override;
    bool portBasedVlanRouteToPort(ManagedSwitchPort& destination) override;
    bool portBasedVlanRouteToPort(std::list<ManagedSwitchPort*> destinations) override;
    bool addPortToMulticastGroup(std::string ip, unsigned short vlanId) override;
    bool removePortFromMulticastGroup(std::string ip, unsigned short vlanId) override;
    bool setMdix(MdixSetting setting) override;
    bool clearStatistics() override;
    bool setPortLearningEnable(bool enable) override;

private:
    bool record(std::string const& operation, std::string const& arguments = "");

    CallLog& _calls;
    std::string _name;
    std::set<std::string> _failing;
};

} // namespace test_support
