#include "vitesse/VitessePort.hpp"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "host/Application.hpp"
#include "vitesse/AnalyserRegisters.hpp"
#include "vitesse/ArbiterRegisters.hpp"
#include "vitesse/PortMacRegisters.hpp"
#include "vitesse/VitessePortAccess.hpp"

using namespace vsc7390;
namespace mac_bits = port_mac::mac_configuration;

namespace {

constexpr useconds_t drainPauseMicroseconds = 10;
constexpr useconds_t seedLoadMicroseconds = 2;

constexpr std::size_t gapOf1000 = 0;
constexpr std::size_t gapOf100 = 1;
constexpr std::size_t gapOf10 = 2;

} // namespace

VitessePort::VitessePort(ManagedSwitch& owner, VitesseManagementCommunications& access, unsigned int id,
                         std::string connectedTo, std::string portStatus, _xmlNode* node)
    : ManagedSwitchPort(owner, id, std::move(connectedTo), std::move(portStatus), node),
      _interframeGaps{6, 17, 17},
      _communications(access),
      _numberOfCounters(numberOfPortCounters),
      _baseMacAddress(port_mac::flow_control_mac::baseAddress),
      _normalFrameLimit(1536),
      // Sets A to E: without and with flow control; the same for jumbo frames, where without flow
      // control the speed counts, too.
      _poolControls{MiscellaneousPoolControl(32, 0, 0, 0, 0), MiscellaneousPoolControl(36, 0, 0, 0, 1),
                    MiscellaneousPoolControl(39, 39, 0, 2, 0), MiscellaneousPoolControl(32, 39, 0, 0, 0),
                    MiscellaneousPoolControl(36, 0, 0, 0, 1)},
      _flowControls{FlowControlWatermarks(36, 38), FlowControlWatermarks(12, 8),
                    FlowControlWatermarks(33, 39), FlowControlWatermarks(39, 39),
                    FlowControlWatermarks(10, 6)},
      _egressLimits{EgressMaxWatermarks(19, 22, 25, 28), EgressMaxWatermarks(12, 12, 12, 12),
                    EgressMaxWatermarks(13, 14, 15, 16), EgressMaxWatermarks(12, 12, 12, 12)},
      _pauseOn(port_mac::flow_control_configuration::on),
      _pauseOff(port_mac::flow_control_configuration::off) {}

bool VitessePort::registerAt(unsigned short address, Bsa& location) const {
    // As portToBSA() but without a call: updating the source masks has every port read every other's status.
    if (getId() >= port_mac::numberOfPorts) {
        return false;
    }
    location = {port_mac::blockOf(getId()), port_mac::subBlockOf(getId()), address};
    return true;
}

bool VitessePort::isOnChip() const {
    Bsa location;
    return registerAt(0, location);
}

unsigned int VitessePort::bit() const {
    return analyser::portBit(getId());
}

Application& VitessePort::application() const {
    return *getSwitch().getApplication();
}

bool VitessePort::setMaskBit(Bsa const& mask, unsigned int bits, bool on, FailedRead failedRead) {
    return isOnChip() &&
           _communications.modifyRegister(
               mask, [=](unsigned int value) { return on ? value | bits : value & ~bits; }, failedRead);
}

bool VitessePort::initialise() {
    return setMaskBit(analyserRegister(analyser::vlanMask), bit(), true);
}

bool VitessePort::setReceiveEnable(bool enable) {
    std::array<Change, 2> changes{{{{}, 0}, {analyserRegister(analyser::receiveMask), 0}}};
    if (!registerAt(port_mac::macConfiguration, changes[0].location)) {
        return false;
    }
    readAll(changes);
    changes[0].value = mac_bits::receiveEnable.replaced(changes[0].value, enable ? 1 : 0);
    changes[1].value = enable ? changes[1].value | bit() : changes[1].value & ~bit();
    return writeAll(changes);
}

bool VitessePort::setTransmitEnable(bool enable) {
    return modifyMac(port_mac::macConfiguration, [enable](unsigned int value) {
        return mac_bits::transmitEnable.replaced(value, enable ? 1 : 0);
    });
}

bool VitessePort::setArbiterDiscardEnable(bool enable) {
    return setMaskBit(arbiterRegister(arbiter::discard), bit(), enable);
}

bool VitessePort::isArbiterEmpty() {
    unsigned int empty = 0;
    if (isOnChip()) {
        _communications.readRegister(arbiterRegister(arbiter::empty), empty);
    }
    return (empty & bit()) != 0;
}

bool VitessePort::setMacConfigurationReset(MacResetMode mode) {
    if (mode != MacResetMode::intoReset && mode != MacResetMode::outOfReset) {
        application().logError("VitessePort::setMacConfigurationReset invalid resetState\n");
    }
    return modifyMac(port_mac::macConfiguration, [mode](unsigned int value) {
        return mode == MacResetMode::intoReset ? value | mac_bits::allResets : value & ~mac_bits::allResets;
    });
}

bool VitessePort::setMacSpeed(SpeedSetting speed) {
    unsigned int clock = mac_bits::clock1000;
    std::size_t gap = gapOf1000;
    bool known = true;
    switch (speed) {
    case SpeedSetting::speed10:
        clock = mac_bits::clock10;
        gap = gapOf10;
        break;
    case SpeedSetting::speed100:
        clock = mac_bits::clock100;
        gap = gapOf100;
        break;
    case SpeedSetting::speed1000:
        break;
    default:
        known = false;
        application().logError("VitessePort::setMacSpeed invalid speed\n");
    }
    bool const written = modifyMac(port_mac::macConfiguration, [&](unsigned int value) {
        value = mac_bits::gigabitMode.replaced(value, speed == SpeedSetting::speed1000 ? 1 : 0);
        return mac_bits::clockSelect.replaced(value, clock);
    });
    return written && known && setInterframeGap(_interframeGaps[gap]);
}

bool VitessePort::setMacDuplex(DuplexSetting duplex) {
    return modifyMac(port_mac::macConfiguration, [duplex](unsigned int value) {
        return mac_bits::fullDuplex.replaced(value, static_cast<unsigned int>(duplex));
    });
}

bool VitessePort::setInterframeGap(unsigned short gap) {
    return modifyMac(port_mac::macConfiguration,
                     [gap](unsigned int value) { return mac_bits::interframeGap.replaced(value, gap); });
}

bool VitessePort::setSeed() {
    Bsa location;
    if (!registerAt(port_mac::macConfiguration, location)) {
        return false;
    }
    unsigned int value = 0;
    _communications.readRegister(location, value);
    value = mac_bits::seedLoad.set(mac_bits::seed.replaced(value, getId()));
    if (!_communications.writeRegister(location, value)) {
        return false;
    }
    usleep(seedLoadMicroseconds);
    return _communications.writeRegister(location, mac_bits::seedLoad.cleared(value));
}

bool VitessePort::setPortLearningEnable(bool enable) {
    return setMaskBit(analyserRegister(analyser::learnMask), bit(), enable);
}

bool VitessePort::setFrameForwardingtoPort(unsigned short port, FrameForwardingSourceMask mode) {
    return setMaskBit(analyserRegister(analyser::sourceMasks + getId()), analyser::portBit(port),
                      mode == FrameForwardingSourceMask::allow, FailedRead::endsChange);
}

void VitessePort::getMacAddress(unsigned char (&mac)[6]) {
    std::copy(_baseMacAddress.begin(), _baseMacAddress.end(), mac);
    mac[5] = static_cast<unsigned char>(mac[5] + getId());
    if (mac[5] < getId() && ++mac[4] == 0) { // GCOVR_EXCL_BR_LINE: the base ends in other bytes than FF:xx
        ++mac[3];                            // GCOVR_EXCL_LINE: as above
    }
}

unsigned short VitessePort::portStatus() {
    Bsa location;
    unsigned int value = 0;
    if (registerAt(port_mac::macConfiguration, location)) {
        _communications.readRegister(location, value);
    }
    return mac_bits::transmitEnable.isSet(value) && mac_bits::receiveEnable.isSet(value) ? 1 : 0;
}

bool VitessePort::setMdix(MdixSetting /*setting*/) {
    return true;
}

bool VitessePort::setPort(SpeedSetting speed, DuplexSetting duplex, FlowControlSetting flowControl,
                          LinkSetting link) {
    if (!isOnChip()) {
        return false;
    }
    bool result = setReceiveEnable(false);
    result &= setTransmitEnable(false);
    result &= setArbiterDiscardEnable(true);
    while (!isArbiterEmpty()) {
        usleep(drainPauseMicroseconds);
    }
    result &= setMacConfigurationReset(MacResetMode::intoReset);
    result &= setMacSpeed(speed);
    result &= setMacDuplex(duplex);
    result &= setSeed();
    result &= setPortLearningEnable(true);
    result &= setFlowControl(flowControl, speed);
    result &= setArbiterDiscardEnable(false);
    result &= setMacConfigurationReset(MacResetMode::outOfReset);
    if (link != LinkSetting::disabled) {
        result &= setReceiveEnable(true);
        result &= setTransmitEnable(true);
    }
    updateSourceMasksOfSwitch();
    return result;
}

bool VitessePort::setPort(LinkSetting link) {
    if (!isOnChip()) {
        return false;
    }
    bool const enable = link != LinkSetting::disabled;
    bool result = setReceiveEnable(enable);
    result &= setTransmitEnable(enable);
    updateSourceMasksOfSwitch();
    return result;
}

void VitessePort::updateSourceMasksOfSwitch() {
    for (auto const& entry : getSwitch().getPorts()) {
        auto* const port = dynamic_cast<VitessePort*>(entry.second); // GCOVR_EXCL_BR_LINE: the cast asks, too
        if (port != nullptr) {
            port->updateSourceMasks();
        }
    }
}

bool VitessePort::updateSourceMasks() {
    if (!isOnChip()) {
        return false;
    }
    unsigned int mask = 0;
    if (portStatus() != 0) {
        for (auto const& entry : getSwitch().getPorts()) {
            if (entry.second != nullptr && entry.second != this && entry.second->portStatus() != 0) {
                mask |= analyser::portBit(entry.second->getId());
            }
        }
    }
    unsigned int destinations = 0;
    _communications.readRegister(analyserRegister(analyser::destinationMasks + getId()), destinations);
    return _communications.writeRegister(analyserRegister(analyser::sourceMasks + getId()),
                                         mask & ~destinations);
}
