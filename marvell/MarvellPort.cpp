#include "marvell/MarvellPort.hpp"

#include <utility>

#include "host/Application.hpp"
#include "marvell/PhyRegisters.hpp"
#include "marvell/PortRegisters.hpp"

namespace {

constexpr unsigned int numberNotTold = ~0U;

/// A control word with a value forced to 0 or 1; any other setting leaves it to negotiation.
unsigned short forced(unsigned short control, BitField<unsigned short> force, BitField<unsigned short> value,
                      unsigned int setting) {
    return setting > 1 ? force.cleared(control) : value.replaced(force.set(control), setting);
}

} // namespace

MarvellPort::MarvellPort(ManagedSwitch& owner, MarvellManagementCommunications& communications,
                         unsigned int portId, std::string connectedTo, std::string portStatus, _xmlNode* node)
    : ManagedSwitchPort(owner, portId, std::move(connectedTo), std::move(portStatus), node),
      _communications(communications),
      _portDeviceBase(port_registers::firstDevice),
      _statsTimeout(1),
      _numberOfCounters(numberOfChipCounters) {}

bool MarvellPort::hasRegisters() const {
    return getId() != numberNotTold;
}

unsigned short MarvellPort::portNumber() const {
    return static_cast<unsigned short>(getId());
}

unsigned short MarvellPort::device() const {
    return static_cast<unsigned short>(_portDeviceBase + getId());
}

bool MarvellPort::readPort(unsigned short registerNumber, unsigned short& value) {
    Registers registers(device(), registerNumber);
    if (!hasRegisters() || !_communications.readRegister(registers)) {
        return false;
    }
    value = registers.value;
    return true;
}

/// Reads a register of the port and the control register of its PHY, has both changed, and writes
/// both back, the port's first.
template <typename Change> bool MarvellPort::modifyPortAndPhy(unsigned short registerNumber, Change change) {
    Registers port(device(), registerNumber);
    unsigned short phy = 0;
    if (!hasRegisters() || !_communications.readRegister(port) ||
        !_communications.phyReadRegister(portNumber(), phy_registers::control, phy)) {
        return false;
    }
    change(port.value, phy);
    return _communications.writeRegister(port) &&
           _communications.phyWriteRegister(portNumber(), phy_registers::control, phy);
}

bool MarvellPort::initialise() {
    return ieee802_1QMode(Ieee802_1QModeVal::secure);
}

bool MarvellPort::setForceLink(ForceLinkSetting setting) {
    using namespace port_registers::physical_control;
    return modifyPort(port_registers::physicalControl, [setting](unsigned short control) {
        return forced(control, forcedLink, linkValue, static_cast<unsigned int>(setting));
    });
}

bool MarvellPort::setFlowControl(FlowControlSetting setting) {
    using namespace port_registers::physical_control;
    return modifyPort(port_registers::physicalControl, [setting](unsigned short control) {
        return forced(control, forcedFlowControl, flowControlValue, static_cast<unsigned int>(setting));
    });
}

bool MarvellPort::disablePPUPort() {
    return modifyPort(port_registers::portStatus, [](unsigned short value) {
        return port_registers::port_status::phyDetect.cleared(value);
    });
}

bool MarvellPort::setDuplex(DuplexSetting setting) {
    using namespace port_registers::physical_control;
    using phy_registers::control_bits::duplex;
    return modifyPortAndPhy(port_registers::physicalControl, [&](unsigned short& port, unsigned short& phy) {
        switch (setting) {
        case DuplexSetting::full:
            port = duplexValue.set(forcedDuplex.set(port));
            phy = duplex.set(phy);
            break;
        case DuplexSetting::forcedHalf:
            port = duplexValue.cleared(forcedDuplex.set(port));
            phy = duplex.cleared(phy);
            break;
        default:
            getSwitch().getApplication()->logError(
                "MarvellPort::setDuplex Default condition should never happen\n");
        }
    });
}

bool MarvellPort::setSpeed(SpeedSetting setting) {
    using port_registers::physical_control::forcedSpeed;
    using namespace phy_registers::control_bits;
    return modifyPortAndPhy(port_registers::physicalControl, [&](unsigned short& port, unsigned short& phy) {
        switch (setting) {
        case SpeedSetting::speed10:
            phy = speedHigh.cleared(speedLow.cleared(phy));
            break;
        case SpeedSetting::speed100:
            phy = speedHigh.cleared(speedLow.set(phy));
            break;
        case SpeedSetting::speed1000:
            // These PHYs are given both select bits for 1000 Mbit/s, not the high one alone.
            phy = speedHigh.set(speedLow.set(phy));
            break;
        default:
            getSwitch().getApplication()->logError(
                "MarvellPort::setSpeed Default condition should never happen\n");
            return;
        }
        port = forcedSpeed.replaced(port, static_cast<unsigned int>(setting));
    });
}

bool MarvellPort::setEnabled(PortForwardingSeting setting) {
    using port_registers::port_control::portState;
    using namespace phy_registers::control_bits;
    return modifyPortAndPhy(port_registers::portControl, [&](unsigned short& port, unsigned short& phy) {
        if (setting > PortForwardingSeting::forwarding) {
            getSwitch().getApplication()->logError(
                "MarvellPort::setEnabled Default condition should never happen\n");
            return;
        }
        phy = reset.set(powerDown.replaced(phy, setting == PortForwardingSeting::disabled ? 1 : 0));
        port = portState.replaced(port, static_cast<unsigned int>(setting));
    });
}

bool MarvellPort::setMdix(MdixSetting setting) {
    unsigned short phy = 0;
    if (!hasRegisters() ||
        !_communications.phyReadRegister(portNumber(), phy_registers::specificControl, phy)) {
        return false;
    }
    if (setting <= MdixSetting::automatic) {
        phy = phy_registers::specific_control::mdiMode.replaced(phy, static_cast<unsigned int>(setting));
    } else {
        getSwitch().getApplication()->logError(
            "MarvellPort::setMDIX Default condition should never happen\n");
    }
    return _communications.phyWriteRegister(portNumber(), phy_registers::specificControl, phy);
}

unsigned short MarvellPort::portStatus() {
    unsigned short control = 0;
    readPort(port_registers::portControl, control);
    return port_registers::port_control::portState.in(control);
}

bool MarvellPort::setPort(SpeedSetting speed, DuplexSetting duplex, FlowControlSetting flowControl,
                          LinkSetting link) {
    bool const linkDown = setForceLink(ForceLinkSetting::down);
    bool const polling = disablePPUPort();
    bool const pause = setFlowControl(flowControl);
    bool const duplexSet = setDuplex(duplex);
    bool const speedSet = setSpeed(speed);
    bool const linkSet = setPort(link);
    return linkDown && polling && pause && duplexSet && speedSet && linkSet;
}

bool MarvellPort::setPort(LinkSetting link) {
    bool const enable = link != LinkSetting::disabled;
    bool const forced = setForceLink(enable ? ForceLinkSetting::up : ForceLinkSetting::down);
    bool const stateSet =
        setEnabled(enable ? PortForwardingSeting::forwarding : PortForwardingSeting::disabled);
    return forced && stateSet;
}

bool MarvellPort::setPortLearningEnable(bool /*enable*/) {
    return true;
}
