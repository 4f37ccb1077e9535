#include "vitesse/VitesseManagementCommunications.hpp"

#include "vitesse/PortMacRegisters.hpp"

VitesseManagementCommunications::VitesseManagementCommunications(Application& application,
                                                                 bool /*noHardwareAccess*/)
    : _application(&application) {}

VitesseManagementCommunications::~VitesseManagementCommunications() = default;

bool VitesseManagementCommunications::portToBSA(unsigned char port, Bsa& location) {
    using namespace vsc7390;
    location.address = 0;
    if (port >= port_mac::numberOfPorts) {
        return false;
    }
    location.block = port_mac::blockOf(port);
    location.subBlock = port_mac::subBlockOf(port);
    return true;
}
