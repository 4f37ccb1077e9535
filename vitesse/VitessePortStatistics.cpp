// The counters of VitessePort.

#include <iomanip>
#include <ostream>
#include <string>

#include "vitesse/PortMacRegisters.hpp"
#include "vitesse/VitessePort.hpp"

namespace {

using namespace vsc7390;

/// The packet counters in words. No operation prints them yet.
// NOLINTNEXTLINE(cert-err58-cpp): without memory for it there is no process
[[maybe_unused]] std::string const counterDescriptions[5] = {
    "Good and Bad Packets          ", "Good broadcasts and multicasts", "Bad packets                   ",
    "Good broadcasts               ", "Good multicasts               ",
};

constexpr int digits = 6;

struct Counter {
    unsigned short address;
    char const* label;
    char const* lineEnd; ///< what follows the value; a counter that does not end its line has nothing
};

constexpr Counter portCounters[] = {
    {port_mac::inOctets, "inGoodandBadOctets\t", ""},
    {port_mac::inPackets, "\tinGoodandBadPackets\t", "\n"},
    {port_mac::inBroadcastAndMulticast, "inMulticastBroadCast\t", "\n"},
    {port_mac::inErrorPackets, "inErrorPackets\t\t", ""},
    {port_mac::inDrops, "\tinTotalDrops\t\t", "\n"},
    {port_mac::inClass3, "inClassifiedClass3Qos\t", "\n\n"},
    {port_mac::outOctets, "outGoodandBadOctets\t", ""},
    {port_mac::outPackets, "\toutGoodandBadPackets\t", "\n"},
    {port_mac::outBroadcastAndMulticast, "outMulticastBroadCast\t", "\n"},
    {port_mac::outErrorPackets, "outErrorPackets\t\t", ""},
    {port_mac::outDrops, "\toutTotalDrops\t\t", "\n"},
    {port_mac::outClass3, "outClassifiedClass3Qos\t", "\n"},
};

} // namespace

void VitessePort::readCounters(std::array<unsigned int, numberOfPortCounters>& counters) {
    for (std::size_t index = 0; index < counters.size(); ++index) {
        Bsa location;
        registerAt(portCounters[index].address, location);
        _communications.readRegister(location, counters[index]);
    }
}

bool VitessePort::dumpStatistics(std::ostream& out) {
    Bsa clearing;
    if (!registerAt(port_mac::inPackets, clearing)) {
        return false;
    }
    std::array<unsigned int, numberOfPortCounters> counters{};
    readCounters(counters);
    _communications.writeRegister(clearing, 0);
    _counters = counters;
    out << std::hex << std::setfill('0');
    for (std::size_t index = 0; index < _counters.size(); ++index) {
        out << portCounters[index].label << std::setw(digits) << _counters[index];
        for (char const* end = portCounters[index].lineEnd; *end != '\0'; ++end) {
            out << std::endl;
        }
    }
    return true;
}

bool VitessePort::clearStatistics() {
    return true;
}
