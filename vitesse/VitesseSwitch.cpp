#include "vitesse/VitesseSwitch.hpp"

#include <utility>

#include "host/Application.hpp"
#include "model/ElapsedTime.hpp"
#include "model/SwitchDocument.hpp"
#include "vitesse/AnalyserRegisters.hpp"
#include "vitesse/SystemRegisters.hpp"
#include "vitesse/VitesseParallelCommunication.hpp"
#include "vitesse/VitessePortAccess.hpp"

namespace {

constexpr SwitchDocument::Wording wording{"ManagedSwitch::ManagedSwitch", true, "connected to"};

} // namespace

char const* const VitesseSwitch::_xmlDescriptionString = "vsc7390";

VitesseSwitch::VitesseSwitch(Application& application, unsigned int id, unsigned char const* macAddress,
                             Xml& document, bool noHardwareAccess)
    : ManagedSwitch(application, id, macAddress, document, noHardwareAccess),
      _communications(std::make_unique<VitesseParallelCommunication>(application, noHardwareAccess)) {
    SwitchDocument const configuration(document, *this, wording);
    if (configuration.hasSwitch()) {
        configuration.createPorts(configuration.portsOfAllSwitches(),
                                  [this](auto&&... port) { insertNewPort(port...); });
        configuration.createTrunkGroups();
    } else {
        application.logInfo("ManagedSwitch::ManagedSwitch: Unknown switch id:%d\n", id);
    }
    initialiseSetup();
}

VitesseSwitch::VitesseSwitch(Application& application, unsigned int id, unsigned short numberOfPorts,
                             bool noHardwareAccess)
    : ManagedSwitch(application, id, numberOfPorts, noHardwareAccess),
      _communications(std::make_unique<VitesseParallelCommunication>(application, noHardwareAccess)) {
    for (unsigned int portId = 0; portId < numberOfPorts; ++portId) {
        insertNewPort(portId, "external", "forwarding", nullptr);
    }
    initialiseSetup();
}

VitesseSwitch::~VitesseSwitch() = default;

void VitesseSwitch::insertNewPort(unsigned int portId, std::string const& connectedTo,
                                  std::string const& portStatus, _xmlNode* node) {
    // GCOVR_EXCL_BR_START: memory
    std::pair<unsigned int, ManagedSwitchPort*> entry(
        portId, new VitessePort(*this, *_communications, portId, connectedTo, portStatus, node));
    // GCOVR_EXCL_BR_STOP
    insertPort(entry);
}

bool VitesseSwitch::detectSwitch(Application& application, bool noHardwareAccess) {
    using namespace vsc7390::system;
    VitesseParallelCommunication communication(application, noHardwareAccess);
    VitesseManagementCommunications::Bsa const identification{block, subBlock, chipIdentification};
    unsigned int value = 0;
    communication.readRegister(identification, value);
    unsigned int const product = chip_identification::productNumber.in(value);
    if (product != chip_identification::productVsc7390) {
        return false;
    }
    application.log(3, "SwitchManager::detectVitesseSwitches vitesse switch product Number found %x \n",
                    product);
    return true;
}

bool VitesseSwitch::initialiseSetup() {
    using namespace vsc7390::analyser;
    writeAnalyser(setUp, set_up::value);
    unsigned int capture = 0;
    readAnalyser(captureEnable, capture);
    return writeAnalyser(captureEnable, capture_enable::enable.set(capture));
}

bool VitesseSwitch::readAnalyser(unsigned int address, unsigned int& value) {
    return _communications->readRegister(analyserRegister(address), value);
}

bool VitesseSwitch::writeAnalyser(unsigned int address, unsigned int value) {
    return _communications->writeRegister(analyserRegister(address), value);
}

bool VitesseSwitch::phyReadRegister(unsigned short phy, unsigned short reg, unsigned short& value) {
    return _communications->phyReadRegister(
        VitesseManagementCommunications::MiiManagementLocation::controller1, phy, reg, value);
}

bool VitesseSwitch::phyWriteRegister(unsigned short phy, unsigned short reg, unsigned short value) {
    return _communications->phyWriteRegister(
        VitesseManagementCommunications::MiiManagementLocation::controller1, phy, reg, value);
}

timespec VitesseSwitch::clock_timediff(timespec start, timespec end) {
    return elapsedTime(start, end);
}
