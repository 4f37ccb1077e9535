#include "marvell/MarvellSwitch.hpp"

#include "host/Application.hpp"
#include "marvell/Global1Registers.hpp"
#include "marvell/MarvellMultiMdioManagementCommunications.hpp"
#include "marvell/MarvellPort.hpp"
#include "marvell/PortRegisters.hpp"
#include "model/SwitchDocument.hpp"

namespace {

constexpr SwitchDocument::Wording wording{
    "MarvellSwitch::MarvellSwitch(Application&, unsigned int, const uint8_t*, Xml&, bool):", false, "to be"};

/// The ATU control field for an age time, with a warning when the chip cannot keep it.
unsigned short ageTimeUnits(Application& application, unsigned short seconds) {
    using namespace global1::atu_control;
    constexpr unsigned int longest = longestAgeTime * secondsPerUnit;
    if (seconds == 0) {
        return 0;
    }
    if (seconds < secondsPerUnit) {
        application.logWarning(
            "MarvellSwitch::setATUAgeTime requested %d seconds, minimum is 15 seconds. Setting to 15.\n",
            seconds);
        return 1;
    }
    if (seconds > longest) {
        application.logWarning(
            "MarvellSwitch::setATUAgeTime requested %d seconds, maximum is 3825 seconds. Setting to 3825.\n",
            seconds);
        return longestAgeTime;
    }
    return static_cast<unsigned short>((seconds + secondsPerUnit / 2) / secondsPerUnit);
}

} // namespace

char const* const MarvellSwitch::_xmlDescriptionString = "88e6096";

MarvellSwitch::MarvellSwitch(Application& application, unsigned int switchId, std::uint8_t const* macAddress,
                             Xml& document, bool noHardwareAccess)
    : ManagedSwitch(application, switchId, macAddress, document, noHardwareAccess),
      _communications(std::make_unique<MarvellMultiMdioManagementCommunications>(
          application, static_cast<unsigned short>(switchId), noHardwareAccess)) {
    SwitchDocument const configuration(document, *this, wording);
    if (!configuration.hasSwitch()) {
        application.logInfo("MarvellSwitch::MarvellSwitch(Application&, unsigned int, const uint8_t*, Xml&, "
                            "bool)(%d): Unknown switch id:%d\n",
                            switchId, switchId);
        return;
    }
    configuration.createPorts(configuration.ports(), [this](auto&&... port) { insertNewPort(port...); });
    configuration.createTrunkGroups();
}

MarvellSwitch::MarvellSwitch(Application& application, unsigned int switchId, unsigned short numberOfPorts,
                             bool noHardwareAccess)
    : ManagedSwitch(application, switchId, numberOfPorts, noHardwareAccess),
      _communications(std::make_unique<MarvellMultiMdioManagementCommunications>(
          application, static_cast<unsigned short>(switchId), noHardwareAccess)) {
    for (unsigned int portId = 0; portId < numberOfPorts; ++portId) {
        insertNewPort(portId, "external", "forwarding", nullptr);
    }
}

MarvellSwitch::~MarvellSwitch() = default;

void MarvellSwitch::insertNewPort(unsigned int portId, std::string const& connectedTo,
                                  std::string const& portStatus, _xmlNode* node) {
    // GCOVR_EXCL_BR_START: memory
    std::pair<unsigned int, ManagedSwitchPort*> entry(
        portId, new MarvellPort(*this, *_communications, portId, connectedTo, portStatus, node));
    // GCOVR_EXCL_BR_STOP
    insertPort(entry);
}

bool MarvellSwitch::detectSwitch(Application& application, unsigned short switchId, bool noHardwareAccess) {
    using namespace port_registers;
    MarvellMultiMdioManagementCommunications communications(application, switchId, noHardwareAccess);
    communications.initialise();
    MarvellManagementCommunications::MarvelRegisterValues identifier(firstDevice, switchIdentifier);
    communications.readRegister(identifier);
    unsigned int const product = switch_identifier::productNumber.in(identifier.value);
    application.log(3, "SwitchManager::detectMarvellSwitches switch Id %d product Number found %x \n",
                    switchId, product);
    return product == switch_identifier::product88E6096;
}

bool MarvellSwitch::setATUAgeTime(unsigned short seconds) {
    using namespace global1::atu_control;
    Application& application = *getApplication();
    unsigned short const units = ageTimeUnits(application, seconds);
    application.log(2,
                    "MarvellSwitch::setATUAgeTime setting age time to %d seconds (register value 0x%02x)\n",
                    units * secondsPerUnit, units);
    unsigned short control = 0;
    if (!readGlobal1(global1::atuControl, control)) {
        application.logError("MarvellSwitch::setATUAgeTime failed to read ATU Control register\n");
        return false;
    }
    if (!writeGlobal1(global1::atuControl, ageTime.replaced(control, units))) {
        application.logError("MarvellSwitch::setATUAgeTime failed to write ATU Control register\n");
        return false;
    }
    application.logInfo("MarvellSwitch::setATUAgeTime successfully set age time to %d seconds\n",
                        units * secondsPerUnit);
    return true;
}

std::pair<bool, unsigned short> MarvellSwitch::getATUAgeTime() {
    using namespace global1::atu_control;
    unsigned short control = 0;
    if (!readGlobal1(global1::atuControl, control)) {
        getApplication()->logError("MarvellSwitch::getATUAgeTime failed to read ATU Control register\n");
        return {false, static_cast<unsigned short>(0)};
    }
    unsigned short const units = ageTime.in(control);
    auto const seconds = static_cast<unsigned short>(units * secondsPerUnit);
    getApplication()->log(
        2, "MarvellSwitch::getATUAgeTime read age time as %d seconds (register value 0x%02x)\n", seconds,
        units);
    return {true, seconds};
}

bool MarvellSwitch::phyReadRegister(unsigned short phyAddress, unsigned short phyRegister,
                                    unsigned short& value) {
    return _communications->phyReadRegister(phyAddress, phyRegister, value);
}

bool MarvellSwitch::phyWriteRegister(unsigned short phyAddress, unsigned short phyRegister,
                                     unsigned short value) {
    return _communications->phyWriteRegister(phyAddress, phyRegister, value);
}

bool MarvellSwitch::macTableCommand(MacAddressCommand /*command*/) {
    return true;
}

bool MarvellSwitch::readMulticastGroup(std::string /*ip*/, unsigned short /*vlanId*/,
                                       std::map<unsigned int, ManagedSwitchPort*>& /*ports*/) {
    getApplication()->log(1, "MarvellSwitch::::readMulticastGroup Unimplemented Function in Marvell");
    return false;
}

bool MarvellSwitch::writeMulticastGroup(std::string /*ip*/, unsigned short /*vlanId*/,
                                        std::map<unsigned int, ManagedSwitchPort*> /*ports*/) {
    getApplication()->log(1, "MarvellSwitch::::writeMulticastGroup Unimplemented Function in Marvell");
    return false;
}

bool MarvellSwitch::writeAggregationGroup(std::map<unsigned int const, ManagedSwitchPort*> /*ports*/) {
    getApplication()->log(1, "MarvellSwitch::::writeAggregationGroup Unimplemented Function in Marvell");
    return false;
}
