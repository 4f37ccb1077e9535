#include "vitesse/VitesseManagementCommunications.hpp"

#include "vitesse/PortMacRegisters.hpp"

VitesseManagementCommunications::VitesseManagementCommunications(Application& application, bool /*flag*/)
    : _application(&application) {}

VitesseManagementCommunications::~VitesseManagementCommunications() = default;

bool VitesseManagementCommunications::portToBSA(unsigned char port, Bsa& location) {
    using namespace vsc7390;
    location.address = 0;
    if (port >= port_mac::numberOfPorts) {
        return false;
    }
    bool const low = port < port_mac::firstHighPort;
    location.block = low ? port_mac::blockOfLowPorts : port_mac::blockOfHighPorts;
    location.subBlock = static_cast<unsigned short>(low ? port : port - port_mac::firstHighPort);
    return true;
}
