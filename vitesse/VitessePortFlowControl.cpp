// Pause frames and buffer watermarks of VitessePort.

#include "vitesse/PortMacRegisters.hpp"
#include "vitesse/VitessePort.hpp"

using namespace vsc7390;

namespace {

enum WatermarkRecord : std::size_t { setA, setB, setC, setD, setE };
enum EgressRecord : std::size_t { egressA, egressB, egressJumbo, egressE };

} // namespace

VitessePort::WatermarkSet VitessePort::chooseWatermarks(FlowControlSetting flowControl, SpeedSetting speed,
                                                        unsigned int frameLength) const {
    bool const jumbo = frameLength > _normalFrameLimit;
    if (flowControl == FlowControlSetting::forcedOn) {
        return jumbo ? WatermarkSet{setE, egressE} : WatermarkSet{setB, egressB};
    }
    if (!jumbo) {
        return {setA, egressA};
    }
    return {speed == SpeedSetting::speed1000 ? setC : setD, egressJumbo};
}

bool VitessePort::setFlowControl(FlowControlSetting flowControl, SpeedSetting speed) {
    Bsa location;
    if (!registerAt(port_mac::maximumLength, location)) {
        return false;
    }
    auto const write = [&](unsigned short address, unsigned int value) {
        registerAt(address, location);
        _communications.writeRegister(location, value);
    };
    unsigned char mac[6];
    getMacAddress(mac);
    namespace bytes = port_mac::flow_control_mac;
    write(port_mac::flowControlMacHigh,
          bytes::firstByte.of(mac[0]) | bytes::secondByte.of(mac[1]) | bytes::thirdByte.of(mac[2]));
    write(port_mac::flowControlMacLow, 0);

    unsigned int frameLength = 0;
    registerAt(port_mac::maximumLength, location);
    _communications.readRegister(location, frameLength);
    if (flowControl != FlowControlSetting::forcedOff && flowControl != FlowControlSetting::forcedOn) {
        return true;
    }
    WatermarkSet const set = chooseWatermarks(flowControl, speed, frameLength);
    write(port_mac::miscellaneousPoolControl, _poolControls[set.record].value());
    write(port_mac::flowControlWatermarks, _flowControls[set.record].value());
    write(port_mac::egressMaxWatermarks, _egressLimits[set.egressRecord].value());
    write(port_mac::flowControlConfiguration,
          flowControl == FlowControlSetting::forcedOn ? _pauseOn : _pauseOff);
    return true;
}
