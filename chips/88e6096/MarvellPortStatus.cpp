#include "chips/88e6096/MarvellPortStatus.hpp"

#include <array>

#include "simulation/88e6096/Marvell88E6096TestSide.hpp"
#include "simulation/88e6096/Registers.hpp"

namespace chips {

using simulation::UnitKind;

namespace {

namespace port = simulation::marvell::port;

constexpr simulation::Field flowControl{"FlowCtrl", 4};
constexpr simulation::Field forcedFlowControl{"ForcedFC", 6};
constexpr simulation::Field flowControlValue{"FCValue", 7};

constexpr std::array<char const*, 4> stateNames = {"disabled", "blocking", "learning", "forwarding"};
constexpr std::array<char const*, 4> egressNames = {"kept", "untagged", "tagged", "reserved"};
constexpr std::array<char const*, 4> modeNames = {"off", "fallback", "check", "secure"};
constexpr std::array<unsigned, 3> megabitsBySpeed = {10, 100, 1000};

} // namespace

void MarvellPortStatus::readInto(unsigned port, PortStatus& status) {
    readLink(port, status);
    readSettings(port, status);
    if (port < simulation::Marvell88E6096TestSide::numberOfPhys) {
        status.phy = readIdentity(port);
    }
}

// Speed and duplex of a port without link are those of the next one or the last.
void MarvellPortStatus::readLink(unsigned port, PortStatus& status) {
    auto const word = tryRead(UnitKind::port, port, port::status);
    auto const control = tryRead(UnitKind::port, port, port::physicalControl);
    status.link =
        PortStatus::Fact<bool>::of(word, [](std::uint32_t value) { return port::link.isSet(value); });
    if (!word) {
        status.megabits = PortStatus::Fact<unsigned>::unread();
        status.fullDuplex = PortStatus::Fact<bool>::unread();
    } else if (port::link.isSet(*word)) {
        unsigned const speed = port::speed.get(*word);
        if (speed < megabitsBySpeed.size()) {
            status.megabits = megabitsBySpeed.at(speed);
        }
        status.fullDuplex = port::duplex.isSet(*word);
    }
    status.flowControl = PortStatus::Fact<std::string>::unread();
    if (word && control) {
        bool const isOn =
            forcedFlowControl.isSet(*control) ? flowControlValue.isSet(*control) : flowControl.isSet(*word);
        status.flowControl = std::string(isOn ? "on" : "off");
    }
}

void MarvellPortStatus::readSettings(unsigned port, PortStatus& status) {
    using Text = PortStatus::Fact<std::string>;
    auto const control = tryRead(UnitKind::port, port, port::portControl);
    auto const vlan = tryRead(UnitKind::port, port, port::defaultVlan);
    auto const control2 = tryRead(UnitKind::port, port, port::portControl2);
    status.state = Text::of(control, [](auto word) { return stateNames.at(port::state.get(word)); });
    status.tagging = Text::of(control, [](auto word) { return egressNames.at(port::egressMode.get(word)); });
    status.defaultVid =
        PortStatus::Fact<unsigned>::of(vlan, [](auto word) { return port::defaultVid.get(word); });
    status.filtering = Text::of(control2, [](auto word) { return modeNames.at(port::mode8021Q.get(word)); });
}

} // namespace chips
