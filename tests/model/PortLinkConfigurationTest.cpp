#include "model/MulticastGroup.hpp"
#include "tests/model/ModelTest.hpp"

using test_support::CallLog;
using test_support::Lines;

namespace {

struct LinkCase {
    char const* type;
    char const* state;
    CallLog calls;
    char const* displayName;
    char const* error;
};

class PortLinkConfigurationTest : public ModelTest {
protected:
    void check(LinkCase const& expected, unsigned int id) {
        SCOPED_TRACE(std::string(expected.type) + " " + expected.state);
        auto& port = chip.addPort(id, expected.type, expected.state);
        log.take();
        calls.clear();
        port.configurePorts();
        std::string const number = std::to_string(id);
        CallLog expectedCalls;
        for (auto const& call : expected.calls) {
            expectedCalls.push_back("0." + number + " " + call);
        }
        EXPECT_EQ(calls, expectedCalls);
        Lines lines{"2|ManagedSwitchPort::configurePorts:  Configuring Port " + number + " as " +
                    expected.displayName + "\n"};
        if (expected.error != nullptr) {
            lines.push_back("error|ManagedSwitchPort::configurePorts:  Unknown link type Port " + number +
                            " as " + expected.error + "\n");
        }
        EXPECT_EQ(log.take(), lines);
    }
};

TEST_F(PortLinkConfigurationTest, SetsLinksUpByTypeAndState) {
    LinkCase const cases[] = {
        {"smac", "disabled", {"initialise", "setPort 1 1 1 0", "setMdix 1"}, "smacPortType", nullptr},
        {"smac", "forwarding", {"initialise", "setPort 1 1 1 1", "setMdix 1"}, "smacPortType", nullptr},
        {"smac", "listening", {"initialise", "setPort 1 1 1 0", "setMdix 1"}, "smacPortType", "2"},
        {"smac", "learning", {"initialise", "setPort 1 1 1 0", "setMdix 1"}, "smacPortType", "2"},
        {"hmac", "disabled", {"initialise", "setPort 1 1 1 0"}, "hmacPortType", nullptr},
        {"hmac", "forwarding", {"initialise", "setPort 1 1 1 1"}, "hmacPortType", nullptr},
        {"hmac", "listening", {"initialise", "setPort 1 1 1 0"}, "hmacPortType", "3"},
        {"hmac", "learning", {"initialise", "setPort 1 1 1 0"}, "hmacPortType", "3"},
        {"switchInterlink", "disabled", {"initialise", "setPort 2 1 1 0"}, "switchInterlink", nullptr},
        {"switchInterlink", "listening", {"initialise", "setPort 2 1 1 0"}, "switchInterlink", nullptr},
        {"switchInterlink", "learning", {"initialise", "setPort 2 1 1 0"}, "switchInterlink", nullptr},
        {"switchInterlink", "forwarding", {"initialise", "setPort 2 1 1 1"}, "switchInterlink", nullptr},
    };
    unsigned int id = 0;
    for (auto const& expected : cases) {
        check(expected, id++);
    }
}

TEST_F(PortLinkConfigurationTest, OnlyInitialisesAllOtherTypes) {
    unsigned int id = 0;
    for (auto const* state : {"disabled", "listening", "learning", "forwarding"}) {
        check({"external", state, {"initialise"}, "ethernetPortType", nullptr}, id++);
        check({"cpu", state, {"initialise"}, "cpuPortType", nullptr}, id++);
        check({"dsp", state, {"initialise"}, "dspPortType", nullptr}, id++);
        check({"something else", state, {"initialise"}, "unknownPortType", nullptr}, id++);
    }
}

TEST_F(PortLinkConfigurationTest, GoesOnWhenTheChipRefuses) {
    auto& port = chip.addPort(1, "smac", "forwarding");
    port.fail("initialise");
    port.fail("setPort");
    port.fail("setMdix");
    log.take();
    port.configurePorts();
    EXPECT_EQ(calls, (CallLog{"0.1 initialise", "0.1 setPort 1 1 1 1", "0.1 setMdix 1"}));
    EXPECT_EQ(log.take(),
              (Lines{"2|ManagedSwitchPort::configurePorts:  Configuring Port 1 as smacPortType\n"}));
}

TEST_F(PortLinkConfigurationTest, ReportsTheStateBetweenLinkAndCrossover) {
    auto& port = chip.addPort(1, "smac", "learning");
    log.take();
    port.configurePorts();
    EXPECT_EQ(log.take(),
              (Lines{"2|ManagedSwitchPort::configurePorts:  Configuring Port 1 as smacPortType\n",
                     "error|ManagedSwitchPort::configurePorts:  Unknown link type Port 1 as 2\n"}));
}

TEST_F(PortLinkConfigurationTest, JoinsMulticastGroupsInTheOrderTheyWereAdded) {
    auto& port = chip.addPort(4);
    MulticastGroup first(application, "239.9.9.9", 10);
    MulticastGroup second(application, "239.1.1.1", 0);
    first.addPort(port, nullptr);
    second.addPort(port, nullptr);
    port.fail("addPortToMulticastGroup");
    log.take();
    port.configureMulticastFilters();
    EXPECT_EQ(calls, (CallLog{"0.4 addPortToMulticastGroup 239.9.9.9 10",
                              "0.4 addPortToMulticastGroup 239.1.1.1 0"}));
    EXPECT_EQ(log.take(), (Lines{"3|ManagedSwitchPort::configurePorts: Configuring MultiCastFilters for "
                                 "port4 Address 239.9.9.9 Vlan 10\n",
                                 "3|ManagedSwitchPort::configurePorts: Configuring MultiCastFilters for "
                                 "port4 Address 239.1.1.1 Vlan 0\n"}));
}

TEST_F(PortLinkConfigurationTest, WithoutMulticastGroupsThereIsNothingToDo) {
    chip.addPort(4).configureMulticastFilters();
    EXPECT_EQ(calls, CallLog{});
    EXPECT_EQ(log.take(), Lines{});
}

} // namespace
