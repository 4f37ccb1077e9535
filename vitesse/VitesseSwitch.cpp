#include "vitesse/VitesseSwitch.hpp"

#include <stdexcept>
#include <utility>

#include "host/Application.hpp"
#include "model/ElapsedTime.hpp"
#include "model/SwitchDocument.hpp"
#include "vitesse/AnalyserRegisters.hpp"
#include "vitesse/SystemRegisters.hpp"
#include "vitesse/VitesseParallelCommunication.hpp"
#include "vitesse/VitessePort.hpp"

namespace {

using Bsa = VitesseManagementCommunications::Bsa;

constexpr double tableTimeoutSeconds = 1.0;
constexpr unsigned short reservedValue = 20;
constexpr unsigned short bucketsPerRow = 4;
constexpr unsigned short numberOfAggregationMasks = 16;

} // namespace

char const* const VitesseSwitch::_xmlDescriptionString = "vsc7390";

VitesseSwitch::VitesseSwitch(Application& application, unsigned int id, unsigned char const* macAddress,
                             Xml& document, bool noHardwareAccess)
    : ManagedSwitch(application, id, macAddress, document, noHardwareAccess),
      _communications(std::make_unique<VitesseParallelCommunication>(application, noHardwareAccess)),
      _vlanTimeout(tableTimeoutSeconds),
      _macTableTimeout(tableTimeoutSeconds),
      _reserved20(reservedValue),
      _multicastBuckets(bucketsPerRow),
      _aggregationMasks(numberOfAggregationMasks) {
    SwitchDocument const configuration(document, id);
    int const switchCount = configuration.switches().count();
    if (switchCount > 1) {
        application.logInfo("ManagedSwitch::ManagedSwitch: Unknown switch count %d\n", switchCount);
        throw std::runtime_error("Roting xml or other catastrophic error");
    }
    if (switchCount == 0) {
        application.logInfo("ManagedSwitch::ManagedSwitch: Unknown switch id:%d\n", id);
    } else {
        createPorts(configuration);
        createTrunkGroups(configuration);
    }
    initialiseSetup();
}

VitesseSwitch::VitesseSwitch(Application& application, unsigned int id, unsigned short numberOfPorts,
                             bool noHardwareAccess)
    : ManagedSwitch(application, id, numberOfPorts, noHardwareAccess),
      _communications(std::make_unique<VitesseParallelCommunication>(application, noHardwareAccess)),
      _vlanTimeout(tableTimeoutSeconds),
      _macTableTimeout(tableTimeoutSeconds),
      _reserved20(reservedValue),
      _multicastBuckets(bucketsPerRow),
      _aggregationMasks(numberOfAggregationMasks) {
    for (unsigned int portId = 0; portId < numberOfPorts; ++portId) {
        insertNewPort(portId, "external", "forwarding", nullptr);
    }
    initialiseSetup();
}

VitesseSwitch::~VitesseSwitch() = default;

void VitesseSwitch::createPorts(SwitchDocument const& configuration) {
    XmlNodes const nodes = configuration.portsOfAllSwitches();
    getApplication()->log(2, "ManagedSwitch::ManagedSwitch(%d): %d ports to configure\n", getId(),
                          nodes.count());
    for (_xmlNode* const node : nodes) {
        createPort(node);
    }
}

void VitesseSwitch::createPort(_xmlNode* node) {
    SwitchDocument::PortElement const element(node);
    if (!element.hasId) {
        getApplication()->logError(
            "ManagedSwitch::ManagedSwitch(%d): Port id is not a valid integer value %s\n", getId(),
            element.idText.printable());
    }
    for (XmlText const* const setting : {&element.connectedTo, &element.portStatus}) {
        getApplication()->log(2, "ManagedSwitch::ManagedSwitch(%d): configure port %d connected to %s\n",
                              getId(), element.id, setting->text());
    }
    insertNewPort(static_cast<unsigned int>(element.id), element.connectedTo.text(),
                  element.portStatus.text(), element.node);
}

void VitesseSwitch::insertNewPort(unsigned int portId, std::string const& connectedTo,
                                  std::string const& portStatus, _xmlNode* node) {
    auto port = std::make_unique<VitessePort>(*this, *_communications, portId, connectedTo, portStatus, node);
    std::pair<unsigned int, ManagedSwitchPort*> entry(portId, port.release());
    insertPort(entry);
}

void VitesseSwitch::createTrunkGroups(SwitchDocument const& configuration) {
    configuration.createTrunkGroups(
        *this,
        [this] {
            getApplication()->logError(
                "ManagedSwitch::ManagedSwitch(%d): Turnk Id is not a valid integer value\n", getId());
        },
        [this](int trunkId) {
            getApplication()->logError(
                "ManagedSwitch::ManagedSwitch(%d): port id in Trunk Id %s is not a valid integer value\n",
                getId(), std::to_string(trunkId).c_str());
        });
}

bool VitesseSwitch::detectSwitch(Application& application, bool noHardwareAccess) {
    using namespace vsc7390::system;
    VitesseParallelCommunication communication(application, noHardwareAccess);
    Bsa const identification{block, subBlock, chipIdentification};
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
    Bsa const location{vsc7390::analyser::block, vsc7390::analyser::subBlock,
                       static_cast<unsigned short>(address)};
    return _communications->readRegister(location, value);
}

bool VitesseSwitch::writeAnalyser(unsigned int address, unsigned int value) {
    Bsa const location{vsc7390::analyser::block, vsc7390::analyser::subBlock,
                       static_cast<unsigned short>(address)};
    return _communications->writeRegister(location, value);
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
